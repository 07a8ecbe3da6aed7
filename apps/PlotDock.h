#pragma once
// The dock of quillon view that plots chosen channels over the last seconds.

#include <QDockWidget>
#include <QElapsedTimer>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "ChannelHistory.h"

class QChart;
class QComboBox;
class QDoubleSpinBox;
class QLineSeries;
class QValueAxis;

namespace quillon::app {

/// Plots the values of the channels added to it over the last seconds, with their qualities on
/// an axis of their own and the two thresholds drawn across it. With a recording the values come
/// from the recording, up to where the replay stands; live, from the viewer as they arrive.
/// Channels are added from the list of the document's routes, or by clicking a part.
class PlotDock final : public QDockWidget {
 public:
  /// `recording` may be null (live); `now` tells where the replay stands, in seconds.
  PlotDock(QuillonWidget& viewer, const std::vector<ChannelStreamRecord>* recording, std::function<double()> now,
           QWidget* parent = nullptr);
  ~PlotDock() override;

  /// Plots the route's channel, once however often it is added.
  void addRoute(const RouteState& route);
  void clear();
  /// How many seconds back from now the plot reaches.
  void setSpan(double seconds);
  /// Draws the window of the plot that ends now.
  void refresh();

  /// The channels plotted, as their routes name them.
  QStringList channels() const;
  /// The points of each value series (per component) and of each quality series, as drawn.
  std::vector<int> pointCounts() const;

 private:
  struct Plotted;

  void refreshChoices();
  double now() const;

  QuillonWidget& viewer;
  const std::vector<ChannelStreamRecord>* recording;
  std::function<double()> clock;
  QElapsedTimer liveClock;
  QComboBox* choices;
  QDoubleSpinBox* span;
  QChart* chart;
  QValueAxis* timeAxis;
  QValueAxis* valueAxis;
  QValueAxis* qualityAxis;
  QLineSeries* nominalLine;
  QLineSeries* meaningfulLine;
  std::vector<std::unique_ptr<Plotted>> plotted;
  QTimer redraw;
};

}  // namespace quillon::app
