#include "RenderSupport.h"

#include <cstring>
#include <fstream>
#include <osg/Image>
#include <osgDB/WriteFile>
#include <sstream>

#include "quillon/quillon.h"

namespace quillon::app {

bool ReadFile(const std::string& path, std::string& text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream buffer;
  buffer << in.rdbuf();
  text = buffer.str();
  return true;
}

OffscreenViewer::OffscreenViewer(int w, int h) : ctrl(quillon_create()), width(w), height(h) {
  windowReady = ctrl && quillon_create_window(ctrl, 0, width, height) == 0;
}

OffscreenViewer::~OffscreenViewer() {
  if (!ctrl) return;
  quillon_destroy_window(ctrl);
  quillon_destroy(ctrl);
}

bool OffscreenViewer::load(const std::string& xml) {
  std::string text = xml;
  char* document = text.data();
  char* annotated = nullptr;
  char* groups = nullptr;
  QuillonBytes result = quillon_InitializeViewer_v1(ctrl, &document, &annotated, &groups);
  // A refused document comes back annotated at its first fault.
  const bool refused = annotated && *annotated;
  quillon_free(result.data);
  quillon_free(annotated);
  quillon_free(groups);
  return !refused;
}

std::string OffscreenViewer::errorText() const {
  char* text = quillon_error_text(ctrl);
  std::string result = text ? text : "";
  quillon_free(text);
  for (char& c : result)
    if (c == '\xA7') c = '\n';
  return result;
}

void OffscreenViewer::viewAll() { quillon_ViewAll_v2(ctrl); }

bool OffscreenViewer::setCamera(const std::string& position, const std::string& orientation) {
  std::string texts[2] = {position, orientation};
  char* in[2] = {texts[0].data(), texts[1].data()};
  // The other four stay null, so they take their defaults; what comes back is ours to free.
  char* rest[4] = {};
  const int ok = quillon_SetCameraPosition_v1(ctrl, &in[0], &in[1], &rest[0], &rest[1], &rest[2], &rest[3]);
  for (int i = 0; i < 2; ++i)
    if (in[i] != texts[i].data()) quillon_free(in[i]);
  for (char* p : rest) quillon_free(p);
  return ok != 0;
}

void OffscreenViewer::send(const std::vector<unsigned char>& message) {
  QuillonBytes result = quillon_SendChannels_v1(ctrl, message.data(), static_cast<long>(message.size()));
  quillon_free(result.data);
}

bool OffscreenViewer::writePng(const std::string& path) {
  osg::ref_ptr<osg::Image> image = new osg::Image();
  image->allocateImage(width, height, 1, GL_RGBA, GL_UNSIGNED_BYTE);
  const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
  if (quillon_render_rgba(ctrl, image->data(), size) != 0) return false;
  // The control's rows run top down; the image writer expects OpenGL's bottom-up order.
  image->flipVertical();
  return osgDB::writeImageFile(*image, path);
}

}  // namespace quillon::app
