#include "RouteText.h"

#include <QMatrix3x3>
#include <QQuaternion>
#include <cmath>

namespace quillon::app {
namespace {

// The channel values' "nothing sent" markers.
constexpr std::int32_t kNoStatus = 32767;
constexpr std::uint32_t kNoTimestamp = 0xFFFFFFFFu;

QString number(double value) {
  if (std::isnan(value)) return QStringLiteral("NaN");
  if (std::isinf(value)) return value > 0 ? QStringLiteral("∞") : QStringLiteral("−∞");
  return QString::number(value, 'f', 3);
}

QString vector(const double* v) { return QStringLiteral("(%1, %2, %3)").arg(number(v[0]), number(v[1]), number(v[2])); }

// The rotation block of a frame as the turn about one axis, in degrees.
QString turnText(const std::vector<double>& frame) {
  float rows[9];
  for (int i = 0; i < 9; ++i) rows[i] = static_cast<float>(frame[3 + static_cast<std::size_t>(i)]);
  const QQuaternion turn = QQuaternion::fromRotationMatrix(QMatrix3x3(rows));
  QVector3D axis;
  float angle = 0;
  turn.getAxisAndAngle(&axis, &angle);
  if (std::abs(angle) < 1e-4f) return QStringLiteral("not turned");
  return QStringLiteral("turned %1° about (%2, %3, %4)")
      .arg(static_cast<double>(angle), 0, 'f', 1)
      .arg(static_cast<double>(axis.x()), 0, 'f', 3)
      .arg(static_cast<double>(axis.y()), 0, 'f', 3)
      .arg(static_cast<double>(axis.z()), 0, 'f', 3);
}

}  // namespace

QualityBand BandOf(double quality, float nominal, float meaningful) {
  if (quality <= static_cast<double>(nominal)) return QualityBand::Nominal;
  if (quality <= static_cast<double>(meaningful)) return QualityBand::Between;
  return QualityBand::NotMeaningful;
}

QString ThresholdText(float threshold) {
  const auto value = static_cast<double>(threshold);
  return std::isfinite(value) ? QString::number(value, 'g', 6) : number(value);
}

QString BandText(QualityBand band, float nominal, float meaningful) {
  switch (band) {
    case QualityBand::Nominal:
      return QStringLiteral("nominal (≤ %1)").arg(ThresholdText(nominal));
    case QualityBand::Between:
      return QStringLiteral("between the thresholds (%1 < q ≤ %2)")
          .arg(ThresholdText(nominal), ThresholdText(meaningful));
    case QualityBand::NotMeaningful:
      break;
  }
  return QStringLiteral("not meaningful (> %1)").arg(ThresholdText(meaningful));
}

QString ValueText(const RouteState& route) {
  const std::vector<double>& v = route.value;
  if (v.size() == 1) return number(v[0]);
  if (v.size() == 3) return vector(v.data());
  if (v.size() == 12) return QStringLiteral("at %1, %2").arg(vector(v.data()), turnText(v));
  return QStringLiteral("none yet");
}

QString AgeText(std::chrono::steady_clock::duration age) {
  const double seconds = std::chrono::duration<double>(age).count();
  if (seconds < 60) return QStringLiteral("%1 s ago").arg(std::max(seconds, 0.0), 0, 'f', 1);
  const auto whole = static_cast<long long>(seconds);
  if (whole < 3600) return QStringLiteral("%1 min %2 s ago").arg(whole / 60).arg(whole % 60);
  return QStringLiteral("%1 h %2 min ago").arg(whole / 3600).arg(whole / 60 % 60);
}

QString RouteTitle(const RouteState& route) {
  QString target = QString::fromStdString(route.node);
  if (!route.field.empty()) target += QLatin1Char('.') + QString::fromStdString(route.field);
  return QStringLiteral("%1 → %2%3")
      .arg(QString::fromStdString(route.from), target, route.cascading ? QStringLiteral(" and below") : QString());
}

QString RouteTooltip(const RoutePick& pick, float nominal, float meaningful,
                     std::chrono::steady_clock::time_point now) {
  QString html = QStringLiteral("<b>%1</b><table cellspacing=\"0\" cellpadding=\"1\">")
                     .arg(QString::fromStdString(pick.node).toHtmlEscaped());
  auto row = [&html](const QString& name, const QString& text) {
    html += QStringLiteral("<tr><td>%1&nbsp;</td><td>%2</td></tr>").arg(name, text.toHtmlEscaped());
  };
  for (const RouteState& route : pick.routes) {
    html += QStringLiteral("<tr><td colspan=\"2\"><hr/><b>%1</b></td></tr>").arg(RouteTitle(route).toHtmlEscaped());
    if (route.received == 0) {
      row(QStringLiteral("value"), QStringLiteral("none yet"));
      continue;
    }
    row(QStringLiteral("value"), ValueText(route));
    row(QStringLiteral("quality"),
        QStringLiteral("%1, %2").arg(number(route.quality),
                                     BandText(BandOf(route.quality, nominal, meaningful), nominal, meaningful)));
    const QString status = route.status == kNoStatus ? QStringLiteral("none") : QString::number(route.status);
    const QString stamp = route.timestamp == kNoTimestamp ? QStringLiteral("none") : QString::number(route.timestamp);
    row(QStringLiteral("status"), QStringLiteral("%1, time stamp %2").arg(status, stamp));
    row(QStringLiteral("changed"), AgeText(now - route.changed));
  }
  html += QStringLiteral("</table>");
  return html;
}

}  // namespace quillon::app
