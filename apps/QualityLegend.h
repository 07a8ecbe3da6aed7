#pragma once
// The legend in quillon view's status bar: what the quality colours and the colour maps mean.

#include <QWidget>
#include <vector>

#include "widget/QuillonWidget.h"

class QHBoxLayout;

namespace quillon::app {

/// The three quality colours with the thresholds that separate them, then each colour map of the
/// document as a small scale from the value that picks its first colour to the one that picks
/// its last.
class QualityLegend final : public QWidget {
 public:
  explicit QualityLegend(QWidget* parent = nullptr);

  /// Follows the widget: its thresholds and the colour maps of each document it loads.
  void follow(QuillonWidget& viewer);
  void setThresholds(float nominal, float meaningful);
  void setRoutes(const std::vector<RouteState>& routes);

  /// The legend's words, one entry after the other, as it shows them.
  QStringList entries() const;

 private:
  void rebuild();

  float nominal = 0.0f;
  float meaningful = 100.0f;
  /// One scale per colour map and value range; the routes that use it share it.
  struct Scale {
    std::vector<std::array<float, 3>> colours;
    double low = 0, high = 1;
    QStringList routes;
  };
  std::vector<Scale> scales;
  QHBoxLayout* row;
};

}  // namespace quillon::app
