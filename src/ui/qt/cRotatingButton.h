#pragma once
// Thumbwheels that report how far they are turned.

#include <QPoint>
#include <QSvgRenderer>
#include <QWidget>
#include <array>
#include <cstdint>

namespace quillon {

/// Receives a rotating button's reports: the message, the turn (degrees, or dolly steps) and
/// the button's tag. Returns false when it does not know the tag.
class IRotatingButtonTarget {
 public:
  virtual ~IRotatingButtonTarget() = default;
  virtual bool rotatingButtonMessage(unsigned int message, int value, std::uint32_t tag) = 0;
};

/// A thumbwheel dragged with the left button: each move reports the drag since the last one,
/// scaled so that a drag over `length` pixels is a whole turn of 360.
class cRotatingButton : public QWidget {
 public:
  void setTarget(IRotatingButtonTarget* t) { target = t; }
  void setTag(std::uint32_t t) { tag = t; }
  void setLength(int pixels) { length = pixels; }
  QSize sizeHint() const override;

 protected:
  /// `images` is the resource prefix of the wheel's pictures: neutral, then two turning frames.
  cRotatingButton(Qt::Orientation orientation, unsigned int message, const QString& images, QWidget* parent);
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::Orientation orientation;
  unsigned int message;
  IRotatingButtonTarget* target = nullptr;
  std::uint32_t tag = 0;
  int length = 0;
  bool dragging = false;
  QPoint last;
  int frame = 0;  // 0 at rest, else the turning frame 1 or 2
  std::array<QSvgRenderer, 3> pictures;
};

/// Turned up and down; reports message 1152 with the vertical drag.
class cVerticalRotatingButton final : public cRotatingButton {
 public:
  static constexpr unsigned int kMessage = 0x400 + 128;
  explicit cVerticalRotatingButton(const QString& images, QWidget* parent = nullptr)
      : cRotatingButton(Qt::Vertical, kMessage, images, parent) {}
};

/// Turned left and right; reports message 1280 with the horizontal drag.
class cHorizontalRotatingButton final : public cRotatingButton {
 public:
  static constexpr unsigned int kMessage = 0x400 + 256;
  explicit cHorizontalRotatingButton(const QString& images, QWidget* parent = nullptr)
      : cRotatingButton(Qt::Horizontal, kMessage, images, parent) {}
};

}  // namespace quillon
