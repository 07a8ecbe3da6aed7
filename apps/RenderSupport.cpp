#include "RenderSupport.h"

#include <filesystem>
#include <fstream>
#include <osg/Image>
#include <osg/Notify>
#include <osgDB/Registry>

#include "quillon/quillon.h"

namespace quillon::app {
namespace {

// The image plug-ins report their failures on their own; the command says it once, its way.
class QuietNotify final : public osg::NotifyHandler {
 public:
  void notify(osg::NotifySeverity, const char*) override {}
};

bool WritePngTo(const osg::Image& image, std::ostream& out) {
  osgDB::ReaderWriter* png = osgDB::Registry::instance()->getReaderWriterForExtension("png");
  if (!png) return false;
  const osg::ref_ptr<osg::NotifyHandler> previous = osg::getNotifyHandler();
  osg::setNotifyHandler(new QuietNotify());
  const bool written = png->writeImage(image, out).success();
  osg::setNotifyHandler(previous.get());
  return written && out.flush();
}

}  // namespace

OffscreenViewer::OffscreenViewer(int w, int h) : ctrl(quillon_create()), width(w), height(h) {
  windowReady = ctrl && quillon_create_window(ctrl, 0, width, height) == 0;
}

OffscreenViewer::~OffscreenViewer() {
  if (!ctrl) return;
  quillon_destroy_window(ctrl);
  quillon_destroy(ctrl);
}

LoadOutcome OffscreenViewer::load(const std::string& xml) { return LoadDocument(ctrl, xml); }

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

bool OffscreenViewer::setCamera(const std::array<std::string, 6>& texts) {
  std::array<std::string, 6> copies = texts;
  char* in[6];
  for (std::size_t i = 0; i < 6; ++i) in[i] = copies[i].empty() ? nullptr : copies[i].data();
  const int ok = quillon_SetCameraPosition_v1(ctrl, &in[0], &in[1], &in[2], &in[3], &in[4], &in[5]);
  // Every text comes back as a new string, ours to free.
  for (std::size_t i = 0; i < 6; ++i)
    if (in[i] != (copies[i].empty() ? nullptr : copies[i].data())) quillon_free(in[i]);
  return ok != 0;
}

std::string OffscreenViewer::send(const std::vector<unsigned char>& message) {
  QuillonBytes result = quillon_SendChannels_v1(ctrl, message.data(), static_cast<long>(message.size()));
  std::string text(reinterpret_cast<const char*>(result.data), result.size);
  quillon_free(result.data);
  while (!text.empty() && text.back() == '\0') text.pop_back();
  return text;
}

bool OffscreenViewer::writePng(const std::string& path) {
  osg::ref_ptr<osg::Image> image = new osg::Image();
  image->allocateImage(width, height, 1, GL_RGBA, GL_UNSIGNED_BYTE);
  const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
  if (quillon_render_rgba(ctrl, image->data(), size) != 0) return false;
  // The control's rows run top down; the image writer expects OpenGL's bottom-up order.
  image->flipVertical();

  // Written beside the target and renamed into place, so a failure leaves nothing half written.
  const std::string partial = path + ".partial";
  bool written = false;
  {
    std::ofstream out(partial, std::ios::binary | std::ios::trunc);
    written = out && WritePngTo(*image, out);
  }
  std::error_code ec;
  if (written) std::filesystem::rename(partial, path, ec);
  if (!written || ec) {
    std::filesystem::remove(partial, ec);
    return false;
  }
  return true;
}

}  // namespace quillon::app
