// How quillon view words values, qualities and screenshots, and the values its plots draw: one
// channel through a recording, or as it comes. Without a window.
#include <gtest/gtest.h>

#include <QDateTime>
#include <cmath>
#include <fstream>
#include <limits>

#include "ChannelHistory.h"
#include "RouteText.h"
#include "Screenshot.h"

namespace quillon::app::test {
namespace {

using namespace std::chrono_literals;

TEST(RouteTextTest, QualityFallsIntoItsBandWithTheThresholdsIncluded) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInf = std::numeric_limits<double>::infinity();
  const struct {
    double quality;
    float nominal, meaningful;
    QualityBand band;
    const char* text;
  } cases[] = {
      {0, 0, 100, QualityBand::Nominal, "nominal (≤ 0)"},
      {-3, 0, 100, QualityBand::Nominal, "nominal (≤ 0)"},
      {0.5, 0, 100, QualityBand::Between, "between the thresholds (0 < q ≤ 100)"},
      {100, 0, 100, QualityBand::Between, "between the thresholds (0 < q ≤ 100)"},
      {100.5, 0, 100, QualityBand::NotMeaningful, "not meaningful (> 100)"},
      {kInf, 0, 100, QualityBand::NotMeaningful, "not meaningful (> 100)"},
      {kNaN, 0, 100, QualityBand::NotMeaningful, "not meaningful (> 100)"},
      {kInf, 0, static_cast<float>(kInf), QualityBand::Between, "between the thresholds (0 < q ≤ ∞)"},
      {2.5, 2.5f, 7.25f, QualityBand::Nominal, "nominal (≤ 2.5)"},
  };
  for (const auto& c : cases) {
    const QualityBand band = BandOf(c.quality, c.nominal, c.meaningful);
    EXPECT_EQ(band, c.band) << c.quality;
    EXPECT_EQ(BandText(band, c.nominal, c.meaningful), QString::fromUtf8(c.text)) << c.quality;
  }
}

TEST(RouteTextTest, ValuesReadAsNumbersVectorsAndFramesAsPositionAndTurn) {
  RouteState route;
  EXPECT_EQ(ValueText(route), QStringLiteral("none yet"));
  route.value = {0.25};
  EXPECT_EQ(ValueText(route), QStringLiteral("0.250"));
  route.value = {0.1, -2, std::numeric_limits<double>::quiet_NaN()};
  EXPECT_EQ(ValueText(route), QStringLiteral("(0.100, -2.000, NaN)"));
  // A quarter turn about z, the rotation written row by row.
  route.value = {0, 0.02, 0, 0, -1, 0, 1, 0, 0, 0, 0, 1};
  EXPECT_EQ(ValueText(route), QStringLiteral("at (0.000, 0.020, 0.000), turned 90.0° about (0.000, 0.000, 1.000)"));
  route.value = {1, 2, 3, 1, 0, 0, 0, 1, 0, 0, 0, 1};
  EXPECT_EQ(ValueText(route), QStringLiteral("at (1.000, 2.000, 3.000), not turned"));
}

RouteState route(const char* node, const char* field, const char* from) {
  RouteState r;
  r.node = node;
  r.field = field;
  r.from = from;
  return r;
}

TEST(RouteTextTest, TooltipNamesTheNodeAndEachRoutesChannelValueQualityAndAge) {
  const auto now = std::chrono::steady_clock::now();
  RouteState colour = route("ProbeMaterial", "diffuseColor", "Probe1[2][1][1D]");
  colour.value = {0.5};
  colour.quality = 50;
  colour.status = 3;
  colour.timestamp = 1234;
  colour.received = 7;
  colour.changed = now - 2500ms;
  const RoutePick pick{"ProbeMaterial", QPoint(3, 4), {colour, route("Probe", "translation", "Probe1[2][0][3D]")}};

  const QString tip = RouteTooltip(pick, 0, 100, now);
  EXPECT_TRUE(tip.startsWith(QStringLiteral("<b>ProbeMaterial</b>"))) << tip.toStdString();
  for (const char* part :
       {"Probe1[2][1][1D] → ProbeMaterial.diffuseColor", "0.500", "50.000, between the thresholds (0 &lt; q ≤ 100)",
        "3, time stamp 1234", "2.5 s ago", "Probe1[2][0][3D] → Probe.translation", "none yet"})
    EXPECT_TRUE(tip.contains(QString::fromUtf8(part))) << part << "\n" << tip.toStdString();

  // The markers for a status and a time stamp that were never sent.
  colour.status = 32767;
  colour.timestamp = 0xFFFFFFFFu;
  EXPECT_TRUE(
      RouteTooltip({"ProbeMaterial", {}, {colour}}, 0, 100, now).contains(QStringLiteral("none, time stamp none")));
}

TEST(ScreenshotTest, NameKeepsTheLabelsWordsAndTheTime) {
  const QDateTime when(QDate(2024, 5, 1), QTime(12, 30, 5));
  EXPECT_EQ(ScreenshotName(QStringLiteral("A robot arm on a rail"), when),
            QStringLiteral("A_robot_arm_on_a_rail-2024-05-01_12-30-05.png"));
  EXPECT_EQ(ScreenshotName(QStringLiteral(" ../Öfen: 1/2 "), when), QStringLiteral("Öfen_1_2-2024-05-01_12-30-05.png"));
  EXPECT_EQ(ScreenshotName(QString(), when), QStringLiteral("quillon-2024-05-01_12-30-05.png"));
}

std::vector<ChannelStreamRecord> robotArm() {
  std::ifstream in(QUILLON_SOURCE_DIR "/examples/robot_arm.qcs", std::ios::binary);
  std::vector<ChannelStreamRecord> records;
  EXPECT_EQ(ChannelStreamReader::ReadAll(in, records), ChannelStreamReader::Status::kEnd);
  return records;
}

RouteState armRoute(const char* from, int channel, RouteState::Kind kind) {
  RouteState r = route("", "", from);
  r.controlPath = "Arm";
  r.group = 1;
  r.channel = static_cast<std::uint32_t>(channel);
  r.kind = kind;
  return r;
}

TEST(ChannelHistoryTest, ReadsOneChannelThroughARecordingAtItsTimes) {
  const std::vector<ChannelStreamRecord> records = robotArm();
  ASSERT_EQ(records.size(), 120u);

  // The motor temperature runs from 0 to 1 over the 120 messages, 50 ms apart.
  ChannelHistory temperature(armRoute("Arm[1][4][1D]", 4, RouteState::Kind::Value1D));
  temperature.readRecording(records);
  ASSERT_EQ(temperature.size(), 120u);
  EXPECT_EQ(temperature.components(), 1);
  const std::vector<ChannelPoint> window = temperature.between(1.0, 3.0);
  ASSERT_EQ(window.size(), 41u);  // both ends included
  EXPECT_DOUBLE_EQ(window.front().time, 1.0);
  EXPECT_DOUBLE_EQ(window.front().value[0], 20.0 / 120);
  EXPECT_DOUBLE_EQ(window.back().time, 3.0);

  // The elbow's frames: the position, and the quality that marks frames 50 to 69 bad.
  ChannelHistory elbow(armRoute("Arm[1][2][6D]", 2, RouteState::Kind::Frame6D));
  elbow.readRecording(records);
  EXPECT_EQ(elbow.components(), 3);
  const std::vector<ChannelPoint> all = elbow.between(0, 10);
  ASSERT_EQ(all.size(), 120u);
  EXPECT_DOUBLE_EQ(all[10].value[1], 0.2);
  EXPECT_EQ(all[49].quality, 0.0);
  EXPECT_EQ(all[50].quality, 1000.0);
  EXPECT_EQ(all[69].quality, 1000.0);
  EXPECT_EQ(all[70].quality, 0.0);

  EXPECT_TRUE(temperature.between(3.01, 3.04).empty());
  EXPECT_TRUE(temperature.between(7, 8).empty());
}

TEST(ChannelHistoryTest, FollowsTheViewerTakingEachValueOnce) {
  RouteState now = armRoute("Arm[1][0][3D]", 0, RouteState::Kind::Value3D);
  ChannelHistory history(now);
  history.follow(now, 0.5);  // nothing received yet
  EXPECT_EQ(history.size(), 0u);
  now.value = {1, 2, 3};
  now.quality = 7;
  now.received = 1;
  history.follow(now, 1.0);
  history.follow(now, 1.5);  // the same value, seen again
  now.value = {4, 5, 6};
  now.received = 2;
  history.follow(now, 2.0);
  ASSERT_EQ(history.size(), 2u);
  const std::vector<ChannelPoint> points = history.between(0, 5);
  EXPECT_EQ(points[0].value, (std::array<double, 3>{1, 2, 3}));
  EXPECT_EQ(points[0].quality, 7);
  EXPECT_EQ(points[1].time, 2.0);

  history.forgetBefore(1.5);
  ASSERT_EQ(history.size(), 1u);
  EXPECT_EQ(history.between(0, 5)[0].value[0], 4);
}

}  // namespace
}  // namespace quillon::app::test
