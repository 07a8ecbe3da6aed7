#include "ReplayTimeline.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QSlider>
#include <QStyle>
#include <QToolButton>
#include <cmath>

#include "Replay.h"

namespace quillon::app {
namespace {

constexpr int kRefreshMs = 40;
constexpr double kSpeeds[] = {0.1, 0.25, 0.5, 1.0, 2.0, 4.0, 10.0};

QToolButton* button(QWidget* parent, QStyle::StandardPixmap icon, const QString& tip) {
  auto* b = new QToolButton(parent);
  b->setIcon(parent->style()->standardIcon(icon));
  b->setToolTip(tip);
  b->setAutoRaise(true);
  // The keys belong to the window's shortcuts, never to a button that kept the focus.
  b->setFocusPolicy(Qt::NoFocus);
  return b;
}

QString seconds(std::uint64_t microseconds) { return QString::number(static_cast<double>(microseconds) / 1e6, 'f', 2); }

}  // namespace

ReplayTimeline::ReplayTimeline(Replay& r, QWidget* parent)
    : QWidget(parent),
      replay(r),
      playButton(button(this, QStyle::SP_MediaPlay, QStringLiteral("Play or pause (Space)"))),
      position(new QSlider(Qt::Horizontal, this)),
      time(new QLabel(this)),
      speeds(new QComboBox(this)),
      loop(new QCheckBox(QStringLiteral("Loop"), this)) {
  QToolButton* start = button(this, QStyle::SP_MediaSkipBackward, QStringLiteral("To the start (Home)"));
  QToolButton* back = button(this, QStyle::SP_MediaSeekBackward, QStringLiteral("One message back (Left)"));
  QToolButton* forward = button(this, QStyle::SP_MediaSeekForward, QStringLiteral("One message on (Right)"));
  QToolButton* end = button(this, QStyle::SP_MediaSkipForward, QStringLiteral("To the end (End)"));
  position->setRange(0, static_cast<int>(replay.duration() / 1000));
  position->setFocusPolicy(Qt::NoFocus);
  position->setToolTip(QStringLiteral("Where the replay stands in the recording"));
  time->setMinimumWidth(time->fontMetrics().horizontalAdvance(QStringLiteral("0000.00 / 0000.00 s · 000000 / 000000")));
  for (double speed : kSpeeds) speeds->addItem(QStringLiteral("%1×").arg(speed), speed);
  if (speeds->findData(replay.speed()) < 0) speeds->addItem(QStringLiteral("%1×").arg(replay.speed()), replay.speed());
  speeds->setCurrentIndex(speeds->findData(replay.speed()));
  speeds->setFocusPolicy(Qt::NoFocus);
  speeds->setToolTip(QStringLiteral("Replay speed; 1× is real time"));
  loop->setFocusPolicy(Qt::NoFocus);

  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(4, 2, 4, 2);
  for (QWidget* w : {static_cast<QWidget*>(start), static_cast<QWidget*>(back), static_cast<QWidget*>(playButton),
                     static_cast<QWidget*>(forward), static_cast<QWidget*>(end)})
    layout->addWidget(w);
  layout->addWidget(position, 1);
  layout->addWidget(time);
  layout->addWidget(speeds);
  layout->addWidget(loop);

  connect(start, &QToolButton::clicked, this, [this] { toStart(); });
  connect(back, &QToolButton::clicked, this, [this] { stepBack(); });
  connect(playButton, &QToolButton::clicked, this, [this] { togglePlaying(); });
  connect(forward, &QToolButton::clicked, this, [this] { stepForward(); });
  connect(end, &QToolButton::clicked, this, [this] { toEnd(); });
  connect(position, &QSlider::valueChanged, this, [this](int ms) { seekLater(ms); });
  connect(speeds, &QComboBox::currentIndexChanged, this,
          [this](int index) { replay.setSpeed(speeds->itemData(index).toDouble()); });
  connect(loop, &QCheckBox::toggled, this, [this](bool on) { replay.setLoop(on); });

  seeker.setSingleShot(true);
  seeker.setInterval(0);
  connect(&seeker, &QTimer::timeout, this, [this] {
    replay.seek(static_cast<std::uint64_t>(pendingSeekMs) * 1000);
    refresh();
  });
  connect(&refresher, &QTimer::timeout, this, [this] { refresh(); });
  refresher.start(kRefreshMs);
  refresh();
}

void ReplayTimeline::addShortcuts(QWidget* window) {
  auto add = [this, window](int key, void (ReplayTimeline::*action)()) {
    auto* shortcut = new QShortcut(QKeySequence(key), window);
    connect(shortcut, &QShortcut::activated, this, action);
  };
  add(Qt::Key_Space, &ReplayTimeline::togglePlaying);
  add(Qt::Key_Left, &ReplayTimeline::stepBack);
  add(Qt::Key_Right, &ReplayTimeline::stepForward);
  add(Qt::Key_Home, &ReplayTimeline::toStart);
  add(Qt::Key_End, &ReplayTimeline::toEnd);
}

void ReplayTimeline::refresh() {
  const std::uint64_t at = replay.position();
  if (!position->isSliderDown() && !seeker.isActive()) {
    const QSignalBlocker quiet(position);
    position->setValue(static_cast<int>(at / 1000));
  }
  playButton->setIcon(style()->standardIcon(replay.playing() ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
  time->setText(QStringLiteral("%1 / %2 s · %3 / %4")
                    .arg(seconds(at), seconds(replay.duration()))
                    .arg(replay.applied())
                    .arg(replay.size()));
  if (loop->isChecked() != replay.loops()) loop->setChecked(replay.loops());
}

void ReplayTimeline::togglePlaying() {
  if (replay.playing())
    replay.pause();
  else
    replay.play();
  refresh();
}

void ReplayTimeline::seekLater(int milliseconds) {
  pendingSeekMs = milliseconds;
  seeker.start();
}

void ReplayTimeline::toStart() {
  replay.seekToMessage(0);
  refresh();
}

void ReplayTimeline::toEnd() {
  replay.seekToMessage(replay.size());
  refresh();
}

void ReplayTimeline::stepBack() {
  replay.stepBack();
  refresh();
}

void ReplayTimeline::stepForward() {
  replay.stepForward();
  refresh();
}

}  // namespace quillon::app
