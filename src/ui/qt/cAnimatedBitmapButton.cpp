#include "ui/qt/cAnimatedBitmapButton.h"

#include <QMouseEvent>

namespace quillon {

cAnimatedBitmapButton::cAnimatedBitmapButton(QWidget* parent) : QToolButton(parent) {
  timer.setInterval(kPressDelayMs);
  QObject::connect(&timer, &QTimer::timeout, this, [this] { pressTimerFired(); });
}

void cAnimatedBitmapButton::mousePressEvent(QMouseEvent* event) {
  QToolButton::mousePressEvent(event);
  if (event->button() == Qt::LeftButton && commandId != 0) {
    timer.start();
    pressTimerId = kPressTimerId;
  }
}

void cAnimatedBitmapButton::pressTimerFired() {
  timer.stop();  // once per press
  pressTimerId = 0;
  if (!isDown()) return;
  ICommandTarget* to = owner ? owner : dynamic_cast<ICommandTarget*>(parentWidget());
  if (to) to->onCommand(commandId);
}

}  // namespace quillon
