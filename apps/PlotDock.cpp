#include "PlotDock.h"

#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineSeries>
#include <QPen>
#include <QToolButton>
#include <QVBoxLayout>
#include <QValueAxis>
#include <algorithm>
#include <cmath>
#include <limits>

#include "RouteText.h"

namespace quillon::app {
namespace {

constexpr int kRedrawMs = 100;
constexpr double kDefaultSpan = 10.0;
const char* const kAxisNames[] = {"x", "y", "z"};

// The range of the numbers, a little wider so that no line runs along the frame.
void fit(QValueAxis* axis, double low, double high) {
  if (!(low <= high)) low = 0, high = 1;
  if (high - low < 1e-9) low -= 1, high += 1;
  const double margin = (high - low) * 0.05;
  axis->setRange(low - margin, high + margin);
  axis->applyNiceNumbers();  // round ticks, whose labels fit
}

}  // namespace

/// One plotted channel: its history and its series.
struct PlotDock::Plotted {
  explicit Plotted(const RouteState& route) : history(route) {}
  ChannelHistory history;
  std::vector<QLineSeries*> values;  // one per component
  QLineSeries* quality = nullptr;
};

PlotDock::PlotDock(QuillonWidget& widget, const std::vector<ChannelStreamRecord>* recorded,
                   std::function<double()> replayClock, QWidget* parent)
    : QDockWidget(QStringLiteral("Plots"), parent),
      viewer(widget),
      recording(recorded),
      clock(std::move(replayClock)),
      choices(new QComboBox),
      span(new QDoubleSpinBox),
      chart(new QChart),
      timeAxis(new QValueAxis),
      valueAxis(new QValueAxis),
      qualityAxis(new QValueAxis),
      nominalLine(new QLineSeries),
      meaningfulLine(new QLineSeries) {
  setObjectName(QStringLiteral("plots"));
  liveClock.start();

  auto* content = new QWidget(this);
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(2, 2, 2, 2);
  auto* controls = new QHBoxLayout;
  choices->setToolTip(QStringLiteral("Add a route's channel to the plot; clicking a part adds its channels too"));
  choices->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  controls->addWidget(choices, 1);
  span->setRange(0.5, 3600);
  span->setValue(kDefaultSpan);
  span->setSuffix(QStringLiteral(" s"));
  span->setToolTip(QStringLiteral("How far back the plot reaches"));
  controls->addWidget(new QLabel(QStringLiteral("last")));
  controls->addWidget(span);
  auto* clearButton = new QToolButton;
  clearButton->setText(QStringLiteral("Clear"));
  controls->addWidget(clearButton);
  layout->addLayout(controls);

  // One entry a line: side by side, the names of several channels would not fit.
  chart->legend()->setAlignment(Qt::AlignRight);
  chart->legend()->setShowToolTips(true);
  chart->setMargins(QMargins(2, 2, 2, 2));
  timeAxis->setTitleText(QStringLiteral("s"));
  valueAxis->setTitleText(QStringLiteral("value"));
  qualityAxis->setTitleText(QStringLiteral("quality"));
  for (QValueAxis* axis : {timeAxis, valueAxis, qualityAxis}) axis->setLabelFormat(QStringLiteral("%g"));
  chart->addAxis(timeAxis, Qt::AlignBottom);
  chart->addAxis(valueAxis, Qt::AlignLeft);
  chart->addAxis(qualityAxis, Qt::AlignRight);
  for (QLineSeries* line : {nominalLine, meaningfulLine}) {
    chart->addSeries(line);
    line->attachAxis(timeAxis);
    line->attachAxis(qualityAxis);
  }
  nominalLine->setPen(QPen(QColor(0, 170, 0), 1.5, Qt::DashLine));
  meaningfulLine->setPen(QPen(QColor(255, 128, 0), 1.5, Qt::DashLine));
  auto* view = new QChartView(chart);
  view->setRenderHint(QPainter::Antialiasing);
  view->setMinimumSize(480, 280);
  layout->addWidget(view, 1);
  setWidget(content);

  connect(choices, &QComboBox::activated, this, [this](int index) {
    const std::vector<RouteState> routes = viewer.routes();
    const int route = choices->itemData(index).toInt();
    if (route >= 0 && static_cast<std::size_t>(route) < routes.size())
      addRoute(routes[static_cast<std::size_t>(route)]);
    choices->setCurrentIndex(0);
  });
  connect(span, &QDoubleSpinBox::valueChanged, this, [this] { refresh(); });
  connect(clearButton, &QToolButton::clicked, this, [this] { clear(); });
  connect(&viewer, &QuillonWidget::documentLoaded, this, [this] { refreshChoices(); });
  connect(&viewer, &QuillonWidget::routedNodeClicked, this, [this](const RoutePick& pick) {
    if (isVisible())
      for (const RouteState& route : pick.routes) addRoute(route);
  });
  // Live, the values are taken as they come; a recording has them all already.
  if (!recording)
    connect(&viewer, &QuillonWidget::channelsSent, this, [this] {
      if (plotted.empty()) return;
      const double at = now();
      for (const RouteState& route : viewer.routes())
        for (auto& p : plotted)
          if (p->history.channel() == route.from) p->history.follow(route, at);
    });
  connect(&redraw, &QTimer::timeout, this, [this] {
    if (isVisible()) refresh();
  });
  redraw.start(kRedrawMs);
  refreshChoices();
  refresh();
}

PlotDock::~PlotDock() = default;

double PlotDock::now() const { return clock ? clock() : static_cast<double>(liveClock.elapsed()) / 1000.0; }

void PlotDock::refreshChoices() {
  choices->clear();
  choices->addItem(QStringLiteral("Add a channel…"), -1);
  const std::vector<RouteState> routes = viewer.routes();
  for (std::size_t i = 0; i < routes.size(); ++i) choices->addItem(RouteTitle(routes[i]), static_cast<int>(i));
}

void PlotDock::addRoute(const RouteState& route) {
  const bool known = std::any_of(plotted.begin(), plotted.end(),
                                 [&route](const auto& p) { return p->history.channel() == route.from; });
  if (known || route.from.empty()) return;
  auto p = std::make_unique<Plotted>(route);
  if (recording) p->history.readRecording(*recording);
  const QString name = QString::fromStdString(route.from);
  const int components = p->history.components();
  for (int i = 0; i < components; ++i) {
    auto* series = new QLineSeries;
    series->setName(components == 1 ? name : QStringLiteral("%1 %2").arg(name, QLatin1String(kAxisNames[i])));
    chart->addSeries(series);
    series->attachAxis(timeAxis);
    series->attachAxis(valueAxis);
    p->values.push_back(series);
  }
  p->quality = new QLineSeries;
  p->quality->setName(QStringLiteral("%1 quality").arg(name));
  chart->addSeries(p->quality);
  p->quality->attachAxis(timeAxis);
  p->quality->attachAxis(qualityAxis);
  QPen dotted = p->quality->pen();
  dotted.setStyle(Qt::DotLine);
  p->quality->setPen(dotted);
  plotted.push_back(std::move(p));
  refresh();
}

void PlotDock::clear() {
  for (auto& p : plotted) {
    for (QLineSeries* series : p->values) {
      chart->removeSeries(series);
      delete series;
    }
    chart->removeSeries(p->quality);
    delete p->quality;
  }
  plotted.clear();
  refresh();
}

void PlotDock::setSpan(double seconds) { span->setValue(seconds); }

void PlotDock::refresh() {
  const double end = now();
  const double start = end - span->value();
  timeAxis->setRange(start, end);
  const float nominal = viewer.nominalThreshold();
  const float meaningful = viewer.meaningfulThreshold();
  nominalLine->setName(QStringLiteral("nominal ≤ %1").arg(ThresholdText(nominal)));
  meaningfulLine->setName(QStringLiteral("meaningful ≤ %1").arg(ThresholdText(meaningful)));
  nominalLine->replace({QPointF(start, static_cast<double>(nominal)), QPointF(end, static_cast<double>(nominal))});
  meaningfulLine->replace(
      {QPointF(start, static_cast<double>(meaningful)), QPointF(end, static_cast<double>(meaningful))});

  double low = std::numeric_limits<double>::infinity(), high = -low;
  double qualityLow = std::min(0.0, static_cast<double>(nominal));
  double qualityHigh = std::isfinite(meaningful) ? static_cast<double>(meaningful) : 1.0;
  for (auto& p : plotted) {
    // Live, what has scrolled out of every span the plot can show is dropped.
    if (!recording) p->history.forgetBefore(end - span->maximum());
    const std::vector<ChannelPoint> points = p->history.between(start, end);
    for (std::size_t c = 0; c < p->values.size(); ++c) {
      QList<QPointF> line;
      line.reserve(static_cast<qsizetype>(points.size()));
      for (const ChannelPoint& point : points) {
        const double v = point.value[c];
        if (!std::isfinite(v)) continue;
        line.append({point.time, v});
        low = std::min(low, v);
        high = std::max(high, v);
      }
      p->values[c]->replace(line);
    }
    QList<QPointF> qualities;
    for (const ChannelPoint& point : points) {
      if (!std::isfinite(point.quality)) continue;  // a quality never sent
      qualities.append({point.time, point.quality});
      qualityLow = std::min(qualityLow, point.quality);
      qualityHigh = std::max(qualityHigh, point.quality);
    }
    p->quality->replace(qualities);
  }
  fit(valueAxis, low, high);
  fit(qualityAxis, qualityLow, qualityHigh);
}

QStringList PlotDock::channels() const {
  QStringList list;
  for (const auto& p : plotted) list << QString::fromStdString(p->history.channel());
  return list;
}

std::vector<int> PlotDock::pointCounts() const {
  std::vector<int> counts;
  for (const auto& p : plotted) {
    for (const QLineSeries* series : p->values) counts.push_back(static_cast<int>(series->count()));
    counts.push_back(static_cast<int>(p->quality->count()));
  }
  return counts;
}

}  // namespace quillon::app
