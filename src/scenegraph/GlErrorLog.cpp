#include "scenegraph/GlErrorLog.h"

#ifdef QUILLON_CHECK_GL
#include <cstdio>
#include <osg/GL>
#include <osg/Notify>
#include <osg/State>
#include <string_view>

#include "core/Trace.h"
#endif

namespace quillon {

#ifdef QUILLON_CHECK_GL
namespace {

struct Log {
  std::size_t count = 0;
  std::string last;
};

Log& log() {
  static Log l;
  return l;
}

// Goes to standard error as well as to the trace, so that a test fails on it whatever the host
// did with the trace.
void record(std::string text) {
  while (!text.empty() && (text.back() == '\n' || text.back() == ' ')) text.pop_back();
  ++log().count;
  log().last = text;
  std::fprintf(stderr, "quillon: OpenGL error %s\n", text.c_str());
  Trace("OpenGL error %s\n", text.c_str());
}

const char* errorName(GLenum e) {
  switch (e) {
    case GL_INVALID_ENUM:
      return "invalid enumerant";
    case GL_INVALID_VALUE:
      return "invalid value";
    case GL_INVALID_OPERATION:
      return "invalid operation";
    case GL_STACK_OVERFLOW:
      return "stack overflow";
    case GL_STACK_UNDERFLOW:
      return "stack underflow";
    case GL_OUT_OF_MEMORY:
      return "out of memory";
    case 0x0506:
      return "invalid framebuffer operation";
    default:
      return "unknown error";
  }
}

// The runtime reports an error after an attribute as a warning, but one at the end of its draw
// only as a notice, which the default level drops. This handler takes every such report, and
// the cull's word of values that are not numbers, and hands everything else on as before.
class NoticeCatcher final : public osg::NotifyHandler {
 public:
  NoticeCatcher(osg::NotifyHandler* previous, osg::NotifySeverity previousLevel)
      : next(previous), nextLevel(previousLevel) {}

  void notify(osg::NotifySeverity severity, const char* message) override {
    const std::string_view text(message ? message : "");
    static constexpr std::string_view kReport = "detected OpenGL error ";
    if (const auto at = text.find(kReport); at != std::string_view::npos) {
      record(std::string(text.substr(at + kReport.size())));
      return;
    }
    // A matrix or bound that is not a number, met while the scene is culled, is on its way to
    // OpenGL; the runtime only drops the drawable and says so.
    if (text.find("detected NaN") != std::string_view::npos) {
      std::string said(text);
      for (char& c : said)
        if (c == '\n' || c == '\t') c = ' ';
      record("'not a number' on its way to OpenGL: " + said);
      return;
    }
    if (next && severity <= nextLevel) next->notify(severity, message);
  }

 private:
  osg::ref_ptr<osg::NotifyHandler> next;
  osg::NotifySeverity nextLevel;
};

void catchNotices() {
  static const bool installed = [] {
    const osg::NotifySeverity level = osg::getNotifyLevel();
    osg::setNotifyHandler(new NoticeCatcher(osg::getNotifyHandler(), level));
    if (level < osg::NOTICE) osg::setNotifyLevel(osg::NOTICE);
    return true;
  }();
  (void)installed;
}

}  // namespace

bool GlErrorChecksEnabled() { return true; }

void WatchGlErrors(osg::State* state) {
  catchNotices();
  if (state && state->getCheckForGLErrors() != osg::State::ONCE_PER_ATTRIBUTE)
    state->setCheckForGLErrors(osg::State::ONCE_PER_ATTRIBUTE);
}

int CheckGlErrors(const char* where) {
  int n = 0;
  // A lost context reports an error for ever; a bounded loop still ends.
  for (GLenum e = glGetError(); e != GL_NO_ERROR && n < 16; e = glGetError(), ++n)
    record(std::string("'") + errorName(e) + "' " + (where ? where : ""));
  return n;
}

std::size_t GlErrorCount() { return log().count; }

std::string LastGlError() { return log().last; }

#else

bool GlErrorChecksEnabled() { return false; }
void WatchGlErrors(osg::State*) {}
int CheckGlErrors(const char*) { return 0; }
std::size_t GlErrorCount() { return 0; }
std::string LastGlError() { return {}; }

#endif

}  // namespace quillon
