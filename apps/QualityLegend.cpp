#include "QualityLegend.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <algorithm>

#include "RouteText.h"

namespace quillon::app {
namespace {

constexpr int kSwatch = 12;
constexpr int kScaleWidth = 72;

QLabel* swatch(QWidget* parent, const QColor& colour) {
  QPixmap pixmap(kSwatch, kSwatch);
  pixmap.fill(colour);
  QPainter(&pixmap).drawRect(0, 0, kSwatch - 1, kSwatch - 1);
  auto* label = new QLabel(parent);
  label->setPixmap(pixmap);
  return label;
}

// The colours side by side, each as wide as the share of values that picks it.
QLabel* strip(QWidget* parent, const std::vector<std::array<float, 3>>& colours) {
  QPixmap pixmap(kScaleWidth, kSwatch);
  QPainter painter(&pixmap);
  const auto n = static_cast<int>(colours.size());
  for (int i = 0; i < n; ++i) {
    const auto& c = colours[static_cast<std::size_t>(i)];
    const int left = i * kScaleWidth / n, right = (i + 1) * kScaleWidth / n;
    painter.fillRect(left, 0, right - left, kSwatch, QColor::fromRgbF(c[0], c[1], c[2]));
  }
  painter.drawRect(0, 0, kScaleWidth - 1, kSwatch - 1);
  painter.end();
  auto* label = new QLabel(parent);
  label->setPixmap(pixmap);
  return label;
}

QString rangeNumber(double value) { return QString::number(value, 'g', 4); }

}  // namespace

QualityLegend::QualityLegend(QWidget* parent) : QWidget(parent), row(new QHBoxLayout(this)) {
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(4);
  rebuild();
}

void QualityLegend::follow(QuillonWidget& viewer) {
  setThresholds(viewer.nominalThreshold(), viewer.meaningfulThreshold());
  setRoutes(viewer.routes());
  connect(&viewer, &QuillonWidget::thresholdsChanged, this, [this](float n, float m) { setThresholds(n, m); });
  connect(&viewer, &QuillonWidget::documentLoaded, this, [this, &viewer] { setRoutes(viewer.routes()); });
}

void QualityLegend::setThresholds(float nominalThreshold, float meaningfulThreshold) {
  nominal = nominalThreshold;
  meaningful = meaningfulThreshold;
  rebuild();
}

void QualityLegend::setRoutes(const std::vector<RouteState>& routes) {
  scales.clear();
  for (const RouteState& route : routes) {
    if (route.colourMap.empty()) continue;
    // value × scale from 0 to 1 runs through the map; a negative scale runs it backwards.
    Scale scale;
    scale.colours = route.colourMap;
    if (route.scale > 0) {
      scale.high = 1.0 / route.scale;
    } else if (route.scale < 0) {
      scale.low = 1.0 / route.scale;
      scale.high = 0;
      std::reverse(scale.colours.begin(), scale.colours.end());
    } else {
      scale.colours.resize(1);  // every value picks the first colour
    }
    QString target = QString::fromStdString(route.node);
    if (!route.field.empty()) target += QLatin1Char('.') + QString::fromStdString(route.field);
    auto same = std::find_if(scales.begin(), scales.end(), [&scale](const Scale& s) {
      return s.colours == scale.colours && s.low == scale.low && s.high == scale.high;
    });
    if (same != scales.end())
      same->routes << target;
    else
      scales.push_back({scale.colours, scale.low, scale.high, {target}});
  }
  rebuild();
}

QStringList QualityLegend::entries() const {
  QStringList list;
  for (const QLabel* label : findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
    if (!label->text().isEmpty()) list << label->text();
  return list;
}

void QualityLegend::rebuild() {
  while (QLayoutItem* item = row->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  auto text = [this](const QString& words) {
    auto* label = new QLabel(words, this);
    row->addWidget(label);
    return label;
  };
  const struct {
    QColor colour;
    QString words;
    QualityBand band;
  } bands[] = {
      {QColor(0, 255, 0), QStringLiteral("nominal ≤ %1").arg(ThresholdText(nominal)), QualityBand::Nominal},
      {QColor(255, 128, 0), QStringLiteral("≤ %1").arg(ThresholdText(meaningful)), QualityBand::Between},
      {QColor(255, 0, 0), QStringLiteral("not meaningful"), QualityBand::NotMeaningful},
  };
  for (const auto& band : bands) {
    QLabel* colour = swatch(this, band.colour);
    const QString meaning = QStringLiteral("Quality %1").arg(BandText(band.band, nominal, meaningful));
    colour->setToolTip(meaning);
    row->addWidget(colour);
    text(band.words)->setToolTip(meaning);
  }
  for (const Scale& scale : scales) {
    const QString names = scale.routes.join(QStringLiteral(", "));
    text(QStringLiteral("  %1: %2").arg(names, rangeNumber(scale.low)));
    QLabel* colours = strip(this, scale.colours);
    colours->setToolTip(QStringLiteral("%1 take their colour from this map: %2 picks the first colour, %3 the last")
                            .arg(names, rangeNumber(scale.low), rangeNumber(scale.high)));
    row->addWidget(colours);
    text(rangeNumber(scale.high));
  }
}

}  // namespace quillon::app
