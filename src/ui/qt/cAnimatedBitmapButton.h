#pragma once
// Push buttons that also send their command after a long press.

#include <QTimer>
#include <QToolButton>

namespace quillon {

/// Carries out the commands of buttons and menus; false for a command it does not know.
class ICommandTarget {
 public:
  virtual ~ICommandTarget() = default;
  virtual bool onCommand(int commandId) = 0;
};

/// A tool button with a picture that, held down with the left button for 500 ms, sends its
/// command once to its owner, or to its parent widget when it has no owner. A parent that
/// takes no commands lets it drop, as a window without a handler would.
class cAnimatedBitmapButton : public QToolButton {
 public:
  static constexpr int kPressTimerId = 1;
  static constexpr int kPressDelayMs = 500;

  explicit cAnimatedBitmapButton(QWidget* parent = nullptr);
  void setCommandId(int id) { commandId = id; }
  int command() const { return commandId; }
  void setOwner(ICommandTarget* o) { owner = o; }
  /// kPressTimerId while the long-press timer runs, else 0.
  int pressTimer() const { return pressTimerId; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void pressTimerFired();

  int commandId = 0;
  ICommandTarget* owner = nullptr;
  int pressTimerId = 0;
  QTimer timer;
};

}  // namespace quillon
