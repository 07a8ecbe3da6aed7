#include "ui/qt/cEmbeddedViewer.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QThread>
#include <cstdint>
#include <cstdlib>

#include "ui/qt/cViewerHolderWnd.h"

namespace quillon {
namespace {

// Set once this library has made the application itself: nobody else runs its event loop then.
bool ownApplication = false;

bool windowExists(xcb_connection_t* connection, unsigned long id) {
  if (id == 0 || id > UINT32_MAX) return false;
  xcb_generic_error_t* error = nullptr;
  xcb_get_window_attributes_reply_t* reply = xcb_get_window_attributes_reply(
      connection, xcb_get_window_attributes(connection, static_cast<xcb_window_t>(id)), &error);
  const bool found = reply && !error;
  std::free(reply);
  std::free(error);
  return found;
}

// Asks the X server whether the id names a window, so that a wrong id fails here rather than
// in the middle of Qt.
bool isX11Window(unsigned long id) {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool found = !xcb_connection_has_error(connection) && windowExists(connection, id);
  xcb_disconnect(connection);
  return found;
}

// A widget application on the X11 platform on this thread, made when the host has none. Qt
// would end the process were its platform unable to start, so the display is checked first.
bool haveWidgetApplication() {
  if (QCoreApplication* existing = QCoreApplication::instance())
    return qobject_cast<QApplication*>(existing) && existing->thread() == QThread::currentThread() &&
           QGuiApplication::platformName() == QStringLiteral("xcb");
  static int argc = 3;
  static char name[] = "quillon", platformOption[] = "-platform", platform[] = "xcb";
  static char* argv[] = {name, platformOption, platform, nullptr};
  new QApplication(argc, argv);  // kept for the life of the process, as Qt expects
  ownApplication = true;
  return true;
}

void handleEvents() {
  static bool busy = false;  // a redraw asked for while the events are handled waits for the paint
  if (!ownApplication || busy) return;
  busy = true;
  QCoreApplication::processEvents();
  busy = false;
}

}  // namespace

std::unique_ptr<cEmbeddedViewer> cEmbeddedViewer::create(ISceneGraphImplementor& sceneGraph, unsigned long parent,
                                                         int width, int height) {
  if (width <= 0 || height <= 0 || !isX11Window(parent) || !haveWidgetApplication()) return nullptr;
  std::unique_ptr<QWindow> nativeParent(QWindow::fromWinId(static_cast<WId>(parent)));
  if (!nativeParent) return nullptr;
  auto holder = std::make_unique<cViewerHolderWnd>(&sceneGraph);
  holder->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
  holder->winId();  // the native window must exist before it can change parents
  holder->windowHandle()->setParent(nativeParent.get());
  holder->setGeometry(0, 0, width, height);
  holder->show();
  std::unique_ptr<cEmbeddedViewer> viewer(new cEmbeddedViewer(std::move(nativeParent), std::move(holder)));
  handleEvents();
  return viewer;
}

cEmbeddedViewer::cEmbeddedViewer(std::unique_ptr<QWindow> parent, std::unique_ptr<cViewerHolderWnd> window)
    : nativeParent(std::move(parent)), holder(std::move(window)), area(holder->renderAreaPanel()) {}

cEmbeddedViewer::~cEmbeddedViewer() = default;

// A host may destroy its window before it lets the viewer go, and the X server then destroys
// the viewer window with it. Qt would go on presenting into it, which takes the process down
// in the GL driver, so the window is looked for before Qt's events are handled.
bool cEmbeddedViewer::stillShown() {
  if (destroyed) return false;
  auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 && !windowExists(x11->connection(), static_cast<unsigned long>(holder->winId()))) {
    destroyed = true;
    holder->setUpdatesEnabled(false);
  }
  return !destroyed;
}

void cEmbeddedViewer::resize(int width, int height) {
  if (!stillShown()) return;
  if (width > 0 && height > 0) holder->resize(width, height);
  handleEvents();
}

bool cEmbeddedViewer::makeCurrent() { return !destroyed && area.makeCurrent(); }

void cEmbeddedViewer::triggerRedraw() {
  if (!stillShown()) return;
  area.triggerRedraw();
  handleEvents();
}

bool cEmbeddedViewer::readPixels(unsigned char* rgba, std::size_t size) {
  return !destroyed && area.readPixels(rgba, size);
}

}  // namespace quillon
