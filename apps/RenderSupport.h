#pragma once
// A headless viewer through the C interface, for the commands that write images.

#include <array>
#include <string>
#include <vector>

#include "Diagnostics.h"

struct QuillonCtrl;

namespace quillon::app {

/// A control with an offscreen window of a fixed size.
class OffscreenViewer {
 public:
  OffscreenViewer(int width, int height);
  ~OffscreenViewer();
  OffscreenViewer(const OffscreenViewer&) = delete;
  OffscreenViewer& operator=(const OffscreenViewer&) = delete;

  bool ok() const { return windowReady; }
  LoadOutcome load(const std::string& xml);
  void viewAll();
  /// Places the camera: position "x y z" in metres, orientation "axis-x axis-y axis-z angle".
  bool setCamera(const std::string& position, const std::string& orientation);
  /// Places the camera with the six texts of SetCameraPosition_v1; an empty one takes its default.
  bool setCamera(const std::array<std::string, 6>& texts);
  /// Sends one message; returns the viewer's error text, empty when it decoded cleanly.
  std::string send(const std::vector<unsigned char>& message);
  /// Writes what the view shows as a PNG image. A failed write leaves no file behind.
  bool writePng(const std::string& path);

 private:
  QuillonCtrl* ctrl;
  int width, height;
  bool windowReady = false;
};

}  // namespace quillon::app
