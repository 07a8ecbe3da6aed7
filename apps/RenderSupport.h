#pragma once
// A headless viewer through the C interface, for the commands that write images.

#include <string>
#include <vector>

struct QuillonCtrl;

namespace quillon::app {

bool ReadFile(const std::string& path, std::string& text);

/// A control with an offscreen window of a fixed size.
class OffscreenViewer {
 public:
  OffscreenViewer(int width, int height);
  ~OffscreenViewer();
  OffscreenViewer(const OffscreenViewer&) = delete;
  OffscreenViewer& operator=(const OffscreenViewer&) = delete;

  bool ok() const { return windowReady; }
  /// False when the document was refused (the annotated document then marks the fault).
  bool load(const std::string& xml);
  std::string errorText() const;
  void viewAll();
  /// Places the camera: position "x y z" in metres, orientation "axis-x axis-y axis-z angle".
  bool setCamera(const std::string& position, const std::string& orientation);
  void send(const std::vector<unsigned char>& message);
  bool writePng(const std::string& path);

 private:
  QuillonCtrl* ctrl;
  int width, height;
  bool windowReady = false;
};

}  // namespace quillon::app
