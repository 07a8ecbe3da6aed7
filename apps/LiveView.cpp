#include "LiveView.h"

#include <QStatusBar>
#include <QTimer>
#include <iostream>

#include "Diagnostics.h"
#include "live/qt/cLiveFeed.h"
#include "widget/QuillonWidget.h"

namespace quillon::app {
namespace {

constexpr int kStatusEveryMs = 500;

}  // namespace

std::string ShowLive(QuillonWidget& viewer, const LiveOptions& options, QStatusBar& bar) {
  if (!options.bind.empty() && !options.serverKey.empty())
    return "a viewer that binds is the CURVE server: give it --curve-secret-key, and the publishers its public key";
  for (const std::string& endpoint : options.bind) {
    if (std::string error = viewer.bindTo(endpoint, options.secretKey, options.clientKeys); !error.empty())
      return error;
    std::cerr << "quillon view: bound " << viewer.liveFeed()->lastEndpoint() << std::endl;
  }
  for (const std::string& endpoint : options.connect)
    if (std::string error = viewer.connectTo(endpoint, options.serverKey, options.secretKey); !error.empty())
      return error;

  auto* timer = new QTimer(&bar);
  QObject::connect(timer, &QTimer::timeout, &bar, [&bar, &viewer] {
    std::string line = viewer.liveStatus();
    if (const std::uint64_t refused = viewer.liveFeed()->refused())
      line += " · " + std::to_string(refused) + " refused by the viewer";
    bar.showMessage(QString::fromStdString(line));
  });
  timer->start(kStatusEveryMs);
  return {};
}

void ReportLive(const QuillonWidget& viewer) {
  const cLiveFeed* feed = viewer.liveFeed();
  if (!feed) return;
  const LiveCounts& c = feed->counts();
  std::cerr << "quillon view: live: " << c.received << " received, " << c.applied << " applied, " << c.conflated
            << " conflated, " << c.droppedTotal() << " dropped\n";
  if (feed->refused() == 0) return;
  std::cerr << "quillon view: " << feed->refused() << " live messages were not taken cleanly; the last answer:\n";
  PrintErrorList(std::cerr, feed->lastRefusal());
}

}  // namespace quillon::app
