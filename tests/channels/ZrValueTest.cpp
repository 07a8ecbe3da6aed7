#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "channels/ChannelErrorCodes.h"
#include "channels/ZrValue1D.h"
#include "channels/ZrValue3D.h"
#include "channels/ZrValue6D.h"
#include "channels/ZrValueTime.h"
#include "core/ZrErrorHandler.h"

namespace quillon {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

TEST(ZrValueTest, ConstructedValuesSayNoDataYet) {
  const ZrValue1D v1;
  const ZrValue3D v3;
  const ZrValue6D v6;
  const ZrValueTime vt;
  for (const ZrValue* v : std::initializer_list<const ZrValue*>{&v1, &v3, &v6, &vt}) {
    EXPECT_EQ(v->GetStatus(), 32767);
    EXPECT_EQ(v->GetTimestamp(), 0xFFFFFFFFu);
  }
  EXPECT_TRUE(std::isnan(v1.GetValue()));
  EXPECT_EQ(v1.GetQuality(), kInf);
  EXPECT_TRUE(std::isnan(v3.X()));
  EXPECT_EQ(v3.W(), 1.0);
  EXPECT_EQ(v3.GetValue().Rows(), 4u);
  EXPECT_EQ(v6.GetQuality(), kInf);
  EXPECT_EQ(vt.GetQuality(), 0.0);
  EXPECT_EQ((std::vector<int>{v1.GetType(), v3.GetType(), v6.GetType(), vt.GetType()}), (std::vector<int>{1, 2, 3, 4}));
}

TEST(ZrValueTest, ScalarViewAndAssignment) {
  ZrValue3D v3;
  v3.SetPosition(3, 4, 12);
  EXPECT_EQ(v3.GetScalarValue(), 13.0);
  ZrValue1D v1;
  v1.Assign(v3);
  EXPECT_EQ(v1.GetValue(), 13.0);
  ZrValue6D v6;
  v6.Frame()(0, 3) = 3.0;
  v6.Frame()(1, 3) = 4.0;
  EXPECT_EQ(v6.GetScalarValue(), 5.0);
  v6.SetStatus(4);
  const auto clone = v6.Clone();
  EXPECT_EQ(clone->GetStatus(), 4);
  EXPECT_EQ(clone->GetScalarValue(), 5.0);
}

TEST(ZrValueTest, WritesAndReadsItself) {
  ZrValue1D v1;
  v1.SetValue(2.5);
  v1.SetQuality(0.5);
  v1.SetStatus(3);
  v1.SetTimestamp(77);
  std::ostringstream out;
  ASSERT_EQ(v1.WriteOn(out), 0);
  EXPECT_EQ(out.str(), "value = 2.500000;\nquality = 0.500000;\nstatus = 3;\ntimestamp =         77;\n");
  ZrValue1D back;
  ASSERT_EQ(back.ReadFrom(out.str(), 5), 0);
  EXPECT_EQ(back.GetValue(), 2.5);
  EXPECT_EQ(back.GetQuality(), 0.5);
  EXPECT_EQ(back.GetStatus(), 3);
  EXPECT_EQ(back.GetTimestamp(), 5u);  // from the argument, not the text

  ZrValue3D v3;
  v3.SetPosition(1, -2, 3);
  std::ostringstream out3;
  ASSERT_EQ(v3.WriteOn(out3), 0);
  ZrValue3D back3;
  ASSERT_EQ(back3.ReadFrom(out3.str(), 0), 0);
  EXPECT_EQ(back3.Y(), -2.0);
  EXPECT_EQ(back3.GetQuality(), kInf);

  ZrValue6D v6;
  v6.Frame()(2, 3) = 9.0;
  std::ostringstream out6;
  ASSERT_EQ(v6.WriteOn(out6), 0);
  ZrValue6D back6;
  ASSERT_EQ(back6.ReadFrom(out6.str(), 0), 0);
  EXPECT_EQ(back6.GetFrame(), v6.GetFrame());
}

TEST(ZrValueTest, StatusIsOptionalValueAndQualityAreNot) {
  ZrValue1D v;
  ASSERT_EQ(v.ReadFrom("value = 1;\nquality = 2;\n", 0), 0);
  EXPECT_EQ(v.GetStatus(), 0);
  ASSERT_EQ(v.ReadFrom("value = 1;\nquality = 2;\nstatus = x;\n", 0), 0);
  EXPECT_EQ(v.GetStatus(), 0);
  EXPECT_EQ(v.ReadFrom("value = 1;\n", 0), ZRCOREVALUE1D_READFROM);
  EXPECT_EQ(v.ReadFrom("quality = 1;\n", 0), ZRCOREVALUE1D_READFROM);
}

// The second double of a time goes with the object but never into or out of the text.
TEST(ZrValueTest, TimeTextLeavesTheSecondDoubleAlone) {
  ZrValueTime t;
  t.SetTime(12.5);
  t.SetSecond(0.75);
  t.SetStatus(2);
  t.SetTimestamp(7);
  std::ostringstream out;
  ASSERT_EQ(t.WriteOn(out), 0);
  EXPECT_EQ(out.str(), "value = 12.500000;\nquality = 0.000000;\nstatus = 2;\ntimestamp =          7;\n");
  EXPECT_EQ(static_cast<ZrValueTime&>(*t.Clone()).GetSecond(), 0.75);

  ASSERT_EQ(t.ReadFrom("value = 3;\nquality = 0.25;\nstatus = 4;\n", 9), 0);
  EXPECT_EQ(t.GetTime(), 3.0);
  EXPECT_EQ(t.GetSecond(), 0.75);
  EXPECT_EQ(t.GetQuality(), 0.0);
  EXPECT_EQ(t.GetStatus(), 4);
  EXPECT_EQ(t.GetTimestamp(), 9u);
  EXPECT_EQ(t.ReadFrom("value = 3;\n", 0), ZRARCHIVEM_READOBJECT);
}

TEST(ZrValueTest, ThreeDAcceptsColumnsOfThreeOrFour) {
  ZrValue3D v;
  EXPECT_EQ(v.ReadFrom("value = [1 2 3];\nquality = 0;\n", 0), ZRCOREVALUE3D_READFROM_BADDIMENSION);
  EXPECT_EQ(v.ReadFrom("value = [1 2 3 4 5]';\nquality = 0;\n", 0), ZRCOREVALUE3D_READFROM_BADDIMENSION);
  EXPECT_EQ(v.ReadFrom("value = 'p';\nquality = 0;\n", 0), ZRCOREVALUE3D_READFROM);
  ASSERT_EQ(v.ReadFrom("value = [1 2 3]';\nquality = 0;\n", 0), 0);
  EXPECT_EQ(v.Z(), 3.0);
  ASSERT_EQ(v.ReadFrom("value = [2; 4; 6; 2];\nquality = 0;\n", 0), 0);
  EXPECT_EQ(v.X(), 1.0);
  EXPECT_EQ(v.Z(), 3.0);
  EXPECT_EQ(v.W(), 1.0);
}

TEST(ZrValueTest, SixDTakesFramesAndStoresTheNearestRotation) {
  ZrValue6D v;
  EXPECT_EQ(v.ReadFrom("value = [1 2 3];\nquality = 1;\n", 0), ZRCOREVALUE6D_READFROM_BADDIMENSION);
  // The determinant of the rotation block diag(scale, 1, 1) decides.
  for (const auto& [scale, code] :
       {std::pair{1.0, ErrorCode{0}}, std::pair{1.05, ErrorCode{0}}, std::pair{0.85, ZRCOREVALUE6D_READFROM_NOTFRAME},
        std::pair{-1.0, ZRCOREVALUE6D_READFROM_NOTFRAME}}) {
    const std::string text =
        "value = [" + std::to_string(scale) + " 0 0 1; 0 1 0 2; 0 0 1 3; 0 0 0 1];\nquality = 1;\n";
    EXPECT_EQ(v.ReadFrom(text, 0), code) << scale;
  }
  // A slightly sheared, slightly scaled rotation about z.
  ASSERT_EQ(v.ReadFrom("value = [0.02 -1.03 0 5; 1.01 0.01 0 6; 0 0 0.98 7; 0 0 0 1];\nquality = 1;\n", 0), 0);
  const FltMatrix& f = v.GetFrame();
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j) {
      double dot = 0;
      for (std::size_t k = 0; k < 3; ++k) dot += f(k, i) * f(k, j);
      EXPECT_NEAR(dot, i == j ? 1.0 : 0.0, 1e-12);
    }
  EXPECT_NEAR(f(1, 0), 1.0, 0.02);
  EXPECT_NEAR(f(0, 1), -1.0, 0.02);
  EXPECT_EQ(f(0, 3), 5.0);
  EXPECT_EQ(f(2, 3), 7.0);
  EXPECT_TRUE(ZrValue6D::IsFrame(f));
}

}  // namespace
}  // namespace quillon
