#include "control/HostEvents.h"

#ifdef QUILLON_NATIVE_WINDOWS
#include <QCoreApplication>
#include <QThread>

#include "ui/qt/cEmbeddedViewer.h"
#endif

namespace quillon {

void ProcessEmbeddedViewerEvents(IRenderArea* area) {
#ifdef QUILLON_NATIVE_WINDOWS
  if (!dynamic_cast<cEmbeddedViewer*>(area)) return;
  const QCoreApplication* application = QCoreApplication::instance();
  if (!application || application->thread() != QThread::currentThread()) return;
  QCoreApplication::processEvents();
#else
  (void)area;
#endif
}

}  // namespace quillon
