#pragma once
// quillon view's main window: the viewer with what the program puts round it.

#include <QMainWindow>
#include <QTimer>
#include <vector>

#include "channels/ChannelStream.h"
#include "widget/QuillonWidget.h"

namespace quillon::app {

class PlotDock;
class QualityLegend;
class Replay;
class ReplayTimeline;

/// The viewer in the middle, a tool bar with screenshots and plots, the quality legend in the
/// status bar, the values of a part in a tooltip when the pointer rests on it, and, for a
/// recording, the timeline under the viewer.
class ViewerWindow final : public QMainWindow {
 public:
  /// `label` names the screenshots, which go to `screenshotFolder`.
  ViewerWindow(QString label, QString screenshotFolder);
  ~ViewerWindow() override;

  QuillonWidget& viewer() { return *widget; }
  /// Adds the timeline of a replay, and has the plots take their values from its recording.
  void setReplay(Replay& replay, const std::vector<ChannelStreamRecord>& recording);
  /// The plots follow the viewer's values live.
  void plotLive();

  /// Saves what the render area shows; the path written, or empty. The status bar says which.
  QString saveScreenshot();

  QualityLegend* legend() const { return qualityLegend; }
  PlotDock* plots() const { return plotDock; }
  ReplayTimeline* timeline() const { return replayTimeline; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void showValues(const RoutePick& pick);
  void addPlots(const std::vector<ChannelStreamRecord>* recording, Replay* replay);

  QuillonWidget* widget;
  QString documentLabel;
  QString folder;
  QualityLegend* qualityLegend;
  PlotDock* plotDock = nullptr;
  ReplayTimeline* replayTimeline = nullptr;
  QAction* plotsAction = nullptr;
  QTimer tipRefresh;  // keeps a shown tooltip's values current
  QPoint tipAt;
};

}  // namespace quillon::app
