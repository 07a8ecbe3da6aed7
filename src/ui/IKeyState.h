#pragma once
// The modifier keys, polled when navigation needs them.

namespace quillon {

/// Whether Alt and Ctrl are held at this moment.
class IKeyState {
 public:
  virtual ~IKeyState() = default;
  virtual bool isAltDown() const = 0;
  virtual bool isCtrlDown() const = 0;
};

/// A keyboard on which nothing is ever held.
class cNoKeys final : public IKeyState {
 public:
  bool isAltDown() const override { return false; }
  bool isCtrlDown() const override { return false; }
};

}  // namespace quillon
