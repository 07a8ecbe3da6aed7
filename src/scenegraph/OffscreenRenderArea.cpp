#include "scenegraph/OffscreenRenderArea.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <cstring>
#include <osg/GL>
#include <osgViewer/GraphicsWindow>
#include <vector>

#ifndef GL_FRAMEBUFFER
#define GL_FRAMEBUFFER 0x8D40
#define GL_READ_FRAMEBUFFER 0x8CA8
#define GL_DRAW_FRAMEBUFFER 0x8CA9
#define GL_RENDERBUFFER 0x8D41
#define GL_COLOR_ATTACHMENT0 0x8CE0
#define GL_DEPTH_STENCIL_ATTACHMENT 0x821A
#define GL_FRAMEBUFFER_COMPLETE 0x8CD5
#define GL_DEPTH24_STENCIL8 0x88F0
#define GL_MAX_SAMPLES 0x8D57
#endif

#include "core/Trace.h"
#include "scenegraph/GlErrorLog.h"

namespace quillon {

// The framebuffer functions are not in the OpenGL 1.x link interface, so they are fetched
// from EGL once a context exists.
struct OffscreenRenderArea::Gl {
  void(APIENTRY* genFramebuffers)(GLsizei, GLuint*) = nullptr;
  void(APIENTRY* deleteFramebuffers)(GLsizei, const GLuint*) = nullptr;
  void(APIENTRY* bindFramebuffer)(GLenum, GLuint) = nullptr;
  void(APIENTRY* genRenderbuffers)(GLsizei, GLuint*) = nullptr;
  void(APIENTRY* deleteRenderbuffers)(GLsizei, const GLuint*) = nullptr;
  void(APIENTRY* bindRenderbuffer)(GLenum, GLuint) = nullptr;
  void(APIENTRY* renderbufferStorageMultisample)(GLenum, GLsizei, GLenum, GLsizei, GLsizei) = nullptr;
  void(APIENTRY* framebufferRenderbuffer)(GLenum, GLenum, GLenum, GLuint) = nullptr;
  GLenum(APIENTRY* checkFramebufferStatus)(GLenum) = nullptr;
  void(APIENTRY* blitFramebuffer)(GLint, GLint, GLint, GLint, GLint, GLint, GLint, GLint, GLbitfield, GLenum) = nullptr;
  bool complete = false;  // every function was found

  template <class F>
  static bool load(F& f, const char* name) {
    f = reinterpret_cast<F>(eglGetProcAddress(name));
    return f != nullptr;
  }

  bool load() {
    return complete =
               load(genFramebuffers, "glGenFramebuffers") && load(deleteFramebuffers, "glDeleteFramebuffers") &&
               load(bindFramebuffer, "glBindFramebuffer") && load(genRenderbuffers, "glGenRenderbuffers") &&
               load(deleteRenderbuffers, "glDeleteRenderbuffers") && load(bindRenderbuffer, "glBindRenderbuffer") &&
               load(renderbufferStorageMultisample, "glRenderbufferStorageMultisample") &&
               load(framebufferRenderbuffer, "glFramebufferRenderbuffer") &&
               load(checkFramebufferStatus, "glCheckFramebufferStatus") && load(blitFramebuffer, "glBlitFramebuffer");
  }
};

namespace {

constexpr int kSamples = 4;
constexpr int kMaxSize = 16384;

bool hasExtension(const char* list, const char* name) {
  if (!list) return false;
  const std::size_t n = std::strlen(name);
  for (const char* p = list; (p = std::strstr(p, name)) != nullptr; p += n)
    if ((p == list || p[-1] == ' ') && (p[n] == ' ' || p[n] == '\0')) return true;
  return false;
}

EGLDisplay initialised(EGLDisplay display) {
  if (display == EGL_NO_DISPLAY) return EGL_NO_DISPLAY;
  EGLint major = 0, minor = 0;
  return eglInitialize(display, &major, &minor) ? display : EGL_NO_DISPLAY;
}

// The display of the process, found once and never terminated: terminating it would take
// every other area's context with it.
EGLDisplay sharedDisplay() {
  static const EGLDisplay display = [] {
    const char* clientExtensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    auto getPlatformDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (!getPlatformDisplay) return EGL_NO_DISPLAY;
    if (hasExtension(clientExtensions, "EGL_MESA_platform_surfaceless")) {
      EGLDisplay d = initialised(getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr));
      if (d != EGL_NO_DISPLAY) return d;
    }
    auto queryDevices = reinterpret_cast<PFNEGLQUERYDEVICESEXTPROC>(eglGetProcAddress("eglQueryDevicesEXT"));
    if (queryDevices && hasExtension(clientExtensions, "EGL_EXT_platform_device")) {
      EGLDeviceEXT devices[16];
      EGLint count = 0;
      if (queryDevices(16, devices, &count)) {
        for (EGLint i = 0; i < count; ++i) {
          EGLDisplay d = initialised(getPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, devices[i], nullptr));
          if (d != EGL_NO_DISPLAY) return d;
        }
      }
    }
    return EGL_NO_DISPLAY;
  }();
  return display;
}

// Leaves the thread's bound API as the host had it.
EGLContext createContext(EGLDisplay display) {
  const EGLenum api = eglQueryAPI();
  if (!eglBindAPI(EGL_OPENGL_API)) return EGL_NO_CONTEXT;
  const EGLint configAttributes[] = {
      EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_RED_SIZE, 8, EGL_GREEN_SIZE, 8, EGL_BLUE_SIZE, 8, EGL_NONE};
  EGLConfig config = nullptr;
  EGLint count = 0;
  if (!eglChooseConfig(display, configAttributes, &config, 1, &count) || count < 1) config = nullptr;
  // The fixed-function pipeline that the scene is drawn with needs the compatibility profile.
  const EGLint contextAttributes[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT,
                                      EGL_NONE};
  const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, contextAttributes);
  eglBindAPI(api);
  return context;
}

}  // namespace

std::unique_ptr<OffscreenRenderArea> OffscreenRenderArea::create(int width, int height) {
  if (width <= 0 || height <= 0 || width > kMaxSize || height > kMaxSize) return nullptr;
  EGLDisplay display = sharedDisplay();
  if (display == EGL_NO_DISPLAY) {
    Trace("OffscreenRenderArea: no EGL display\n");
    return nullptr;
  }
  EGLContext context = createContext(display);
  if (context == EGL_NO_CONTEXT) {
    Trace("OffscreenRenderArea: no OpenGL context (EGL error 0x%x)\n", static_cast<unsigned>(eglGetError()));
    return nullptr;
  }
  std::unique_ptr<OffscreenRenderArea> area(new OffscreenRenderArea());
  area->display = display;
  area->context = context;
  area->w = width;
  area->h = height;
  area->gl = std::make_unique<Gl>();
  if (!area->bind()) {
    // Under libglvnd a thread with another window system's context current (GLX) cannot
    // make an EGL one current.
    Trace("OffscreenRenderArea: the context cannot be made current (EGL error 0x%x)\n", area->bindError);
    return nullptr;
  }
  const bool made = area->gl->load() && area->createBuffers();
  CheckGlErrors("making the framebuffers");
  area->doneCurrent();
  if (!made) return nullptr;
  area->window = new osgViewer::GraphicsWindowEmbedded(0, 0, width, height);
  area->window->setDefaultFboId(area->drawFbo);
  return area;
}

OffscreenRenderArea::~OffscreenRenderArea() {
  if (!context) return;
  if (gl && gl->complete && bind()) deleteBuffers();
  window = nullptr;
  doneCurrent();
  eglDestroyContext(static_cast<EGLDisplay>(display), static_cast<EGLContext>(context));
}

bool OffscreenRenderArea::bind() {
  if (eglQueryAPI() == EGL_OPENGL_API && eglGetCurrentContext() == static_cast<EGLContext>(context)) return true;
  const Previous before{static_cast<unsigned>(eglQueryAPI()), eglGetCurrentDisplay(), eglGetCurrentSurface(EGL_DRAW),
                        eglGetCurrentSurface(EGL_READ), eglGetCurrentContext()};
  if (!eglBindAPI(EGL_OPENGL_API) || !eglMakeCurrent(static_cast<EGLDisplay>(display), EGL_NO_SURFACE, EGL_NO_SURFACE,
                                                     static_cast<EGLContext>(context))) {
    bindError = static_cast<unsigned>(eglGetError());
    eglBindAPI(before.api);
    return false;
  }
  previous = before;
  return true;
}

void OffscreenRenderArea::doneCurrent() {
  if (eglQueryAPI() != EGL_OPENGL_API || eglGetCurrentContext() != static_cast<EGLContext>(context)) return;
  eglMakeCurrent(static_cast<EGLDisplay>(display), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  if (previous.api) eglBindAPI(previous.api);
  if (previous.context != EGL_NO_CONTEXT)
    eglMakeCurrent(previous.display, previous.draw, previous.read, previous.context);
  previous = {};
}

bool OffscreenRenderArea::createBuffers() {
  GLint maxSamples = 0;
  glGetIntegerv(GL_MAX_SAMPLES, &maxSamples);
  const int wanted = maxSamples >= kSamples ? kSamples : 0;

  gl->genFramebuffers(1, &resolveFbo);
  gl->genRenderbuffers(1, &resolveColour);
  gl->bindRenderbuffer(GL_RENDERBUFFER, resolveColour);
  gl->renderbufferStorageMultisample(GL_RENDERBUFFER, 0, GL_RGBA8, w, h);
  gl->bindFramebuffer(GL_FRAMEBUFFER, resolveFbo);
  gl->framebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, resolveColour);
  if (gl->checkFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE) return false;

  // OpenSceneGraph's own multisampled set-up fails quietly under Mesa, so the area keeps
  // its own and resolves it by a blit.
  for (int samples : {wanted, 0}) {
    gl->genFramebuffers(1, &drawFbo);
    gl->genRenderbuffers(1, &drawColour);
    gl->genRenderbuffers(1, &drawDepth);
    gl->bindRenderbuffer(GL_RENDERBUFFER, drawColour);
    gl->renderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_RGBA8, w, h);
    gl->bindRenderbuffer(GL_RENDERBUFFER, drawDepth);
    gl->renderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_DEPTH24_STENCIL8, w, h);
    gl->bindFramebuffer(GL_FRAMEBUFFER, drawFbo);
    gl->framebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, drawColour);
    gl->framebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, drawDepth);
    if (gl->checkFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE) {
      sampleCount = samples > 0 ? samples : 1;
      glViewport(0, 0, w, h);
      return true;
    }
    gl->bindFramebuffer(GL_FRAMEBUFFER, 0);
    gl->deleteFramebuffers(1, &drawFbo);
    gl->deleteRenderbuffers(1, &drawColour);
    gl->deleteRenderbuffers(1, &drawDepth);
    drawFbo = drawColour = drawDepth = 0;
  }
  return false;
}

void OffscreenRenderArea::deleteBuffers() {
  gl->bindFramebuffer(GL_FRAMEBUFFER, 0);
  for (GLuint* fbo : {&drawFbo, &resolveFbo})
    if (*fbo) gl->deleteFramebuffers(1, fbo);
  for (GLuint* rb : {&drawColour, &drawDepth, &resolveColour})
    if (*rb) gl->deleteRenderbuffers(1, rb);
  drawFbo = resolveFbo = drawColour = drawDepth = resolveColour = 0;
}

void OffscreenRenderArea::resize(int width, int height) {
  if (width <= 0 || height <= 0 || width > kMaxSize || height > kMaxSize || (width == w && height == h)) return;
  if (!bind()) return;
  const int oldW = w, oldH = h;
  deleteBuffers();
  w = width;
  h = height;
  if (!createBuffers()) {
    // Keep an area that works at its old size rather than none.
    deleteBuffers();
    w = oldW;
    h = oldH;
    createBuffers();
  }
  CheckGlErrors("making the framebuffers of a new size");
  doneCurrent();
  window->setDefaultFboId(drawFbo);
  window->resized(0, 0, w, h);
}

bool OffscreenRenderArea::makeCurrent() {
  if (!drawFbo || !bind()) return false;
  gl->bindFramebuffer(GL_FRAMEBUFFER, drawFbo);
  return true;
}

void OffscreenRenderArea::present() {
  if (!makeCurrent()) return;
  gl->bindFramebuffer(GL_READ_FRAMEBUFFER, drawFbo);
  gl->bindFramebuffer(GL_DRAW_FRAMEBUFFER, resolveFbo);
  gl->blitFramebuffer(0, 0, w, h, 0, 0, w, h, GL_COLOR_BUFFER_BIT, GL_NEAREST);
  gl->bindFramebuffer(GL_FRAMEBUFFER, drawFbo);
  CheckGlErrors("resolving the multisampled framebuffer");
}

bool OffscreenRenderArea::readPixels(unsigned char* rgba, std::size_t size) {
  const std::size_t row = static_cast<std::size_t>(w) * 4;
  if (!rgba || size < row * static_cast<std::size_t>(h) || !makeCurrent()) return false;
  gl->bindFramebuffer(GL_READ_FRAMEBUFFER, resolveFbo);
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(0, 0, w, h, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
  gl->bindFramebuffer(GL_FRAMEBUFFER, drawFbo);
  CheckGlErrors("reading the pixels");
  doneCurrent();
  // OpenGL's rows run bottom up; the caller's run top down.
  std::vector<unsigned char> swap(row);
  for (int y = 0; y < h / 2; ++y) {
    unsigned char* top = rgba + static_cast<std::size_t>(y) * row;
    unsigned char* bottom = rgba + static_cast<std::size_t>(h - 1 - y) * row;
    std::memcpy(swap.data(), top, row);
    std::memcpy(top, bottom, row);
    std::memcpy(bottom, swap.data(), row);
  }
  return true;
}

osgViewer::GraphicsWindowEmbedded* OffscreenRenderArea::graphicsWindow() { return window.get(); }

}  // namespace quillon
