#include "Replay.h"

#include <QWidget>
#include <algorithm>
#include <iostream>

#include "widget/QuillonWidget.h"

namespace quillon::app {

Replay::Replay(QuillonWidget& widget, std::vector<ChannelStreamRecord> messages, double speed, QString title,
               std::string_view neededGroups, std::function<void()> reloadDocument)
    : viewer(widget),
      stream(std::move(messages)),
      errors(neededGroups),
      reload(std::move(reloadDocument)),
      factor(speed),
      label(std::move(title)) {
  QObject::connect(&timer, &QTimer::timeout, &timer, [this] { tick(); });
}

void Replay::start() {
  second.start();
  seekToMessage(0);
  play();
}

void Replay::play() {
  if (running) return;
  // Playing on from the end starts again.
  if (stream.finished() && position() >= duration()) seekToMessage(0);
  running = true;
  setClock(base);
  second.restart();
  sent = 0;
  timer.start(kTickMs);
  showRate();
}

void Replay::pause() {
  if (!running) return;
  base = position();
  running = false;
  timer.stop();
  showRate();
}

void Replay::setSpeed(double speed) {
  if (!(speed > 0)) return;
  base = position();
  factor = speed;
  setClock(base);
}

std::uint64_t Replay::position() const {
  if (!running) return base;
  const auto elapsed = static_cast<std::uint64_t>(static_cast<double>(clock.nsecsElapsed()) / 1000.0 * factor);
  return std::min(base + elapsed, std::max(duration(), base));
}

std::uint64_t Replay::duration() const { return stream.size() == 0 ? 0 : stream.messages().back().timeMicroseconds; }

void Replay::seek(std::uint64_t time) {
  const std::uint64_t at = std::min(time, duration());
  moveTo(stream.countUpTo(at));
  setClock(at);
}

void Replay::seekToMessage(std::size_t count) {
  count = std::min(count, stream.size());
  moveTo(count);
  setClock(count == 0 ? 0 : stream.messages()[count - 1].timeMicroseconds);
}

void Replay::moveTo(std::size_t count) {
  if (count < stream.passed()) {
    if (reload) reload();
    stream.moveTo(0);
  }
  for (std::size_t i = stream.passed(); i < count; ++i) apply(i);
  stream.moveTo(count);
}

void Replay::stepForward() {
  pause();
  if (!stream.finished()) seekToMessage(stream.passed() + 1);
}

void Replay::stepBack() {
  pause();
  if (stream.passed() > 0) seekToMessage(stream.passed() - 1);
}

void Replay::setClock(std::uint64_t at) {
  base = at;
  clock.start();
}

void Replay::apply(std::size_t index) {
  const ChannelStreamRecord& record = stream.messages()[index];
  const std::string answer = viewer.sendChannels(record.message.data(), record.message.size());
  // A message applied again after going back has been noted already.
  if (index >= noted) {
    errors.note(index, record.message, answer);
    noted = index + 1;
  }
}

void Replay::tick() {
  const std::uint64_t now = position();
  const std::size_t before = stream.passed();
  for (const ChannelStreamRecord* record : stream.due(now)) {
    apply(stream.indexOf(record));
    ++decoded;
  }
  sent += stream.passed() - before;
  if (second.elapsed() >= 1000) showRate();
  if (!stream.finished() || now < duration()) return;
  if (looping && stream.size() > 0) {
    seekToMessage(0);
    return;
  }
  pause();
  reportErrors();
}

void Replay::reportErrors() {
  if (reported) return;
  reported = true;
  errors.report(std::cerr, "quillon view");
}

void Replay::showRate() {
  const double rate =
      second.elapsed() > 0 ? static_cast<double>(sent) * 1000.0 / static_cast<double>(second.elapsed()) : 0.0;
  viewer.window()->setWindowTitle(QStringLiteral("%1 — %2 messages/s").arg(label).arg(rate, 0, 'f', 0));
  sent = 0;
  second.restart();
}

}  // namespace quillon::app
