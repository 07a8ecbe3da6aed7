#include "live/qt/cLiveFeed.h"

#include <QSocketNotifier>
#include <algorithm>

namespace quillon {
namespace {

// ZeroMQ's descriptor is edge-triggered: a signal lost to a socket option change would leave
// messages waiting unseen, so the feed also looks now and then on its own.
constexpr std::chrono::milliseconds kLookAnyway{100};

}  // namespace

cLiveFeed::cLiveFeed(Apply applyMessage, QObject* parent) : QObject(parent), apply(std::move(applyMessage)) {
  notifier = std::make_unique<QSocketNotifier>(subscriber.fd(), QSocketNotifier::Read);
  connect(notifier.get(), &QSocketNotifier::activated, this, [this] { read(); });
  readOn.setSingleShot(true);
  connect(&readOn, &QTimer::timeout, this, [this] { read(); });
  applySoon.setSingleShot(true);
  applySoon.setTimerType(Qt::PreciseTimer);
  connect(&applySoon, &QTimer::timeout, this, [this] { applyWaiting(); });
  connect(&safety, &QTimer::timeout, this, [this] { read(); });
  safety.start(kLookAnyway);
}

cLiveFeed::~cLiveFeed() { notifier->setEnabled(false); }

std::string cLiveFeed::connectTo(const std::string& endpoint, const CurveKeys& keys) {
  return attach({LiveAttach::kConnect, endpoint}, keys);
}

std::string cLiveFeed::bindTo(const std::string& endpoint, const CurveKeys& keys) {
  return attach({LiveAttach::kBind, endpoint}, keys);
}

std::string cLiveFeed::attach(const LiveEndpoint& endpoint, const CurveKeys& keys) {
  std::string error = subscriber.secure(keys);
  if (error.empty()) error = subscriber.attach(endpoint);
  readOn.start(0);
  return error;
}

void cLiveFeed::setGroups(const std::vector<ChannelgroupAddress>& groups) {
  inbox.setTopics(groups);
  subscriber.subscribe(inbox.topics());
  readOn.start(0);
}

void cLiveFeed::read() {
  if (subscriber.drain(inbox, kReadBudget)) readOn.start(0);
  if (inbox.waiting() == 0 || applySoon.isActive()) return;
  const auto since = std::chrono::steady_clock::now() - lastApply;
  const auto wait = std::chrono::duration_cast<std::chrono::milliseconds>(kApplyInterval - since);
  applySoon.start(std::max(wait, std::chrono::milliseconds(0)));
}

void cLiveFeed::applyWaiting() {
  lastApply = std::chrono::steady_clock::now();
  inbox.apply([this](const std::vector<unsigned char>& message) {
    std::string error = apply(message.data(), message.size());
    if (error.empty()) return;
    ++refusals;
    refusal = std::move(error);
  });
}

}  // namespace quillon
