#include "ui/qt/cRotatingButton.h"

#include <QMouseEvent>
#include <QPainter>

namespace quillon {

cRotatingButton::cRotatingButton(Qt::Orientation o, unsigned int m, const QString& images, QWidget* parent)
    : QWidget(parent), orientation(o), message(m) {
  pictures[0].load(images + "N.svg");
  pictures[1].load(images + "1.svg");
  pictures[2].load(images + "2.svg");
  setCursor(orientation == Qt::Vertical ? Qt::SizeVerCursor : Qt::SizeHorCursor);
  setSizePolicy(orientation == Qt::Vertical ? QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred)
                                            : QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed));
}

QSize cRotatingButton::sizeHint() const { return orientation == Qt::Vertical ? QSize(24, 96) : QSize(96, 24); }

void cRotatingButton::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
  dragging = true;
  last = event->position().toPoint();
}

void cRotatingButton::mouseMoveEvent(QMouseEvent* event) {
  if (!dragging) return QWidget::mouseMoveEvent(event);
  const QPoint now = event->position().toPoint();
  if (target && tag != 0 && length != 0) {
    const int moved = orientation == Qt::Vertical ? now.y() - last.y() : now.x() - last.x();
    const int value = static_cast<int>(static_cast<double>(moved) / length * 360.0);
    target->rotatingButtonMessage(message, value, tag);
    if (moved != 0) {
      frame = frame == 1 ? 2 : 1;
      update();
    }
  }
  last = now;
}

void cRotatingButton::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QWidget::mouseReleaseEvent(event);
  dragging = false;
  frame = 0;
  update();
}

void cRotatingButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  pictures[static_cast<std::size_t>(frame)].render(&painter, QRectF(rect()));
}

}  // namespace quillon
