#pragma once
// The bar under quillon view's viewer that drives the replay of a recording.

#include <QTimer>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QSlider;
class QToolButton;

namespace quillon::app {

class Replay;

/// Play and pause, a message back and on, the position in the recording as a slider, the speed
/// and looping; space, the left and right arrows, Home and End do the same from the keyboard.
class ReplayTimeline final : public QWidget {
 public:
  explicit ReplayTimeline(Replay& replay, QWidget* parent = nullptr);

  /// Puts the keys on a window, wherever its focus is.
  void addShortcuts(QWidget* window);
  /// Brings the controls up to date with the replay; a timer does it while the window is open.
  void refresh();

  QSlider* slider() const { return position; }
  QLabel* timeLabel() const { return time; }

 private:
  void togglePlaying();
  void seekLater(int milliseconds);
  void toStart();
  void toEnd();
  void stepBack();
  void stepForward();

  Replay& replay;
  QToolButton* playButton;
  QSlider* position;
  QLabel* time;
  QComboBox* speeds;
  QCheckBox* loop;
  QTimer refresher;
  QTimer seeker;  // one seek for a burst of slider moves
  int pendingSeekMs = 0;
};

}  // namespace quillon::app
