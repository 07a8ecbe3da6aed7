#pragma once
// Alt and Ctrl as the window system reports them at this moment.

#include <QGuiApplication>

#include "ui/IKeyState.h"

namespace quillon {

/// Polls the keyboard's modifiers, so a key pressed outside the window still counts.
class cQtKeyState final : public IKeyState {
 public:
  bool isAltDown() const override { return QGuiApplication::queryKeyboardModifiers() & Qt::AltModifier; }
  bool isCtrlDown() const override { return QGuiApplication::queryKeyboardModifiers() & Qt::ControlModifier; }
};

}  // namespace quillon
