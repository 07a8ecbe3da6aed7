#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "channels/ZrValue1D.h"
#include "channels/ZrValue3D.h"
#include "channels/ZrValue6D.h"
#include "mapping/ZrSceneMapping1D.h"
#include "mapping/ZrSceneMapping3D.h"
#include "mapping/ZrSceneMapping6D.h"

namespace quillon {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

// Fakes that keep the last thing written and how often something was written.
template <class Interface, class T>
struct Last : Interface {
  T last{};
  int calls = 0;
};
struct Colour final : Last<IColorProperty, std::vector<float>> {
  void SetColor(float r, float g, float b) override { last = {r, g, b}, ++calls; }
};
struct Number final : Last<IFloatProperty, float> {
  void SetValue(float v) override { last = v, ++calls; }
};
struct Integer final : Last<IInt32Property, std::int32_t> {
  void SetValue(std::int32_t v) override { last = v, ++calls; }
};
struct Translation final : Last<ITranslationProperty, std::vector<float>> {
  void SetTranslation(float x, float y, float z) override { last = {x, y, z}, ++calls; }
};
struct Rotation final : Last<IRotationProperty, RotationMatrix> {
  void SetRotation(const RotationMatrix& r) override { last = r, ++calls; }
};
struct Switch final : ISwitchProperty {
  void SetChoice(std::int32_t c) override { choices.push_back(c); }
  std::vector<std::int32_t> choices;
};
// Names the quality colour shown: "green", "orange" or "red", from the diffuse colour.
struct Material final : IMaterialProperty {
  void SetDiffuseColor(float r, float g, float) override { shown = r == 0 ? "green" : (g > 0 ? "orange" : "red"); }
  void SetEmissiveColor(float, float, float) override {}
  void SetTransparency(float t) override { transparency = t; }
  std::string shown = "grey";
  float transparency = -1;
};

ZrValue1D Value1D(double v, double quality) {
  ZrValue1D value;
  value.SetValue(v);
  value.SetQuality(quality);
  return value;
}

ZrValue3D Value3D(double x, double quality) {
  ZrValue3D value;
  value.SetPosition(x, 0, 0);
  value.SetQuality(quality);
  return value;
}

FltMatrix Rows(std::initializer_list<std::array<double, 3>> rows) {
  FltMatrix m(rows.size(), 3);
  std::size_t r = 0;
  for (const auto& row : rows) {
    for (std::size_t c = 0; c < 3; ++c) m(r, c) = row[c];
    ++r;
  }
  return m;
}

TEST(SceneMapping1D, ColourPicksTheEntryOfTheScaledValue) {
  const FltMatrix map = Rows({{0, 0, 1}, {0, 1, 0}, {1.5, -2, 0.5}, {1, 0, 0}});  // entries outside 0..1 clamp
  const struct {
    double value, quality;
    float scale;
    std::vector<float> expected;
  } cases[] = {
      {0.0, 0, 1, {0, 0, 1}},
      {0.24, 0, 1, {0, 0, 1}},
      {0.25, 0, 1, {0, 1, 0}},
      {0.6, 0, 1, {1, 0, 0.5f}},
      {1.0, 0, 1, {1, 0, 0}},
      {7.0, 0, 1, {1, 0, 0}},
      {-3.0, 0, 1, {0, 0, 1}},
      {5.0, 0, 0.1f, {1, 0, 0.5f}},
      {0.5, 100, 1, {1, 0, 0.5f}},  // a quality equal to the threshold is meaningful
      {0.5, 100.5, 1, {0.2f, 0.2f, 0.2f}},
      {kNaN, 0, 1, {0.2f, 0.2f, 0.2f}},
      {0.5, kNaN, 1, {0.2f, 0.2f, 0.2f}},
      {kInf, 0, 0, {0.2f, 0.2f, 0.2f}},
  };
  for (const auto& c : cases) {
    auto colour = MakeRef<Colour>();
    ZrSceneMapping1DSFColor mapping(colour, c.scale, map, Rows({{0.2, 0.2, 0.2}}));
    ZrValue1D value = Value1D(c.value, c.quality);
    mapping.ValueDecoded(&value);
    EXPECT_EQ(colour->last, c.expected) << c.value << " q " << c.quality;
  }
  // A one-entry map gives its colour for every value; without an invalid colour nothing is
  // written for a bad one.
  auto colour = MakeRef<Colour>();
  ZrSceneMapping1DSFColor single(colour, 1.0f, Rows({{0.3, 0.6, 0.9}}), FltMatrix());
  for (ZrValue1D v : {Value1D(-1, 0), Value1D(0.5, 0), Value1D(1e300, 0), Value1D(0.5, kInf)}) {
    colour->last.clear();
    single.ValueDecoded(&v);
    const std::vector<float> expected =
        std::isinf(v.GetQuality()) ? std::vector<float>() : std::vector<float>{0.3f, 0.6f, 0.9f};
    EXPECT_EQ(colour->last, expected);
  }
}

TEST(SceneMapping1D, IntegerRoundsHalvesAwayFromZero) {
  const struct {
    double value;
    float scale;
    std::int32_t expected;
  } cases[] = {{2.5, 1, 3},    {-2.5, 1, -3},        {-0.5, 1, -1},        {0.49, 1, 0},
               {1.0, 2.5f, 3}, {3e10, 1, INT32_MAX}, {-3e10, 1, INT32_MIN}};
  for (const auto& c : cases) {
    auto integer = MakeRef<Integer>();
    ZrSceneMapping1DSFInt32 mapping(integer, c.scale);
    ZrValue1D value = Value1D(c.value, 0);
    mapping.ValueDecoded(&value);
    EXPECT_EQ(integer->last, c.expected) << c.value;
  }
}

TEST(SceneMapping1D, NumbersAndIntegersIgnoreValuesThatAreNotMeaningful) {
  auto number = MakeRef<Number>();
  auto integer = MakeRef<Integer>();
  ZrSceneMapping1DSFFloat f(number, 2.0f);
  ZrSceneMapping1DSFInt32 i(integer, 1.0f);
  ZrValue1D good = Value1D(0.25, 3);
  f.ValueDecoded(&good);
  EXPECT_EQ(number->last, 0.5f);
  // A value straight from the decoder's constructor: NaN with infinite quality.
  ZrValue1D fresh;
  for (ZrValue1D v : {fresh, Value1D(1, 101), Value1D(kNaN, 0), Value1D(1e300, 0)}) {
    f.ValueDecoded(&v);  // 1e300 has no float
    if (v.GetValue() != 1e300) i.ValueDecoded(&v);
  }
  EXPECT_EQ(number->calls, 1);
  EXPECT_EQ(integer->calls, 0);
  // With an infinite threshold even the constructor's quality is meaningful.
  i.SetMeaningfulThreshold(std::numeric_limits<float>::infinity());
  ZrValue1D one = Value1D(1, kInf);
  i.ValueDecoded(&one);
  EXPECT_EQ(integer->last, 1);
}

// A 3D freeze mapping with the thresholds nominal 1, meaningful 10.
struct Freeze3D {
  Freeze3D() {
    mapping.SetNominalThreshold(1.0f);
    mapping.SetMeaningfulThreshold(10.0f);
  }
  void Send(double x, double quality) {
    ZrValue3D v = Value3D(x, quality);
    mapping.ValueDecoded(&v);
  }
  Ref<Translation> translation = MakeRef<Translation>();
  Ref<Material> material = MakeRef<Material>();
  ZrSceneMapping3DFreeze mapping{translation, 2.0f, material};
};

TEST(SceneMapping3D, FreezeMovesWhileMeaningfulAndFreezesRed) {
  Freeze3D f;
  EXPECT_EQ(f.mapping.GetState(), ZrSceneMapping::kUnknown);
  const struct {
    double x, quality;
    ZrSceneMapping::State state;
    const char* shown;
    float position, transparency;
  } steps[] = {
      {1, 0.5, ZrSceneMapping::kNominal, "green", 2, 0},
      {2, 1.0, ZrSceneMapping::kNominal, "green", 4, 0},
      {3, 5, ZrSceneMapping::kMeaningful, "orange", 6, 0},
      {4, 10, ZrSceneMapping::kMeaningful, "orange", 8, 0},
      {5, 10.5, ZrSceneMapping::kNotMeaningful, "red", 8, 0.5f},
      {kNaN, 0, ZrSceneMapping::kNotMeaningful, "red", 8, 0.5f},
      {6, kNaN, ZrSceneMapping::kNotMeaningful, "red", 8, 0.5f},
      {7, 0, ZrSceneMapping::kNominal, "green", 14, 0},
  };
  for (const auto& s : steps) {
    f.Send(s.x, s.quality);
    EXPECT_EQ(f.mapping.GetState(), s.state) << s.x;
    EXPECT_EQ(f.material->shown, s.shown) << s.x;
    EXPECT_EQ(f.material->transparency, s.transparency) << s.x;
    EXPECT_EQ(f.translation->last, (std::vector<float>{s.position, 0, 0})) << s.x;
  }
}

TEST(SceneMapping3D, FreezeTellsObserversOfStatesOneAndTwo) {
  Freeze3D parent, child;
  parent.mapping.AddObserver(&child.mapping);
  const struct {
    double quality;
    unsigned notNominal, notMeaningful;
  } steps[] = {{0, 0, 0}, {5, 1, 0}, {50, 0, 1}, {50, 0, 1}, {5, 1, 0}, {0, 0, 0}, {50, 0, 1}, {0, 0, 0}};
  for (const auto& s : steps) {
    parent.Send(1, s.quality);
    EXPECT_EQ(child.mapping.GetNotNominalCount(), s.notNominal) << s.quality;
    EXPECT_EQ(child.mapping.GetNotMeaningfulCount(), s.notMeaningful) << s.quality;
  }
  // The first value always notifies: start state 3 goes straight to 1 or 2.
  Freeze3D other, watcher;
  other.mapping.AddObserver(&watcher.mapping);
  other.Send(1, 50);
  EXPECT_EQ(watcher.mapping.GetNotMeaningfulCount(), 1u);
  // Counts never drop below 0.
  watcher.mapping.LeaveState1();
  EXPECT_EQ(watcher.mapping.GetNotNominalCount(), 0u);
}

TEST(SceneMapping3D, ABadLinkFreezesEverythingBelowAndAnOrangeOneTurnsItOrange) {
  Freeze3D top, middle, bottom;
  top.mapping.AddObserver(&middle.mapping);
  middle.mapping.AddObserver(&bottom.mapping);
  top.Send(1, 50);
  middle.Send(1, 5);
  EXPECT_EQ(bottom.mapping.GetNotMeaningfulCount(), 1u);
  EXPECT_EQ(bottom.mapping.GetNotNominalCount(), 1u);
  bottom.Send(2, 0);
  EXPECT_EQ(bottom.material->shown, "red");
  EXPECT_EQ(bottom.translation->calls, 0);  // frozen before it ever moved
  top.Send(1, 0);
  bottom.Send(3, 0);
  EXPECT_EQ(bottom.mapping.GetNotMeaningfulCount(), 0u);
  EXPECT_EQ(bottom.material->shown, "orange");  // its own value is good, but the middle is only meaningful
  EXPECT_EQ(bottom.translation->last, (std::vector<float>{6, 0, 0}));
  middle.Send(1, 0);
  bottom.Send(4, 0);
  EXPECT_EQ(bottom.material->shown, "green");
}

TEST(SceneMapping3D, HideHidesOncePerBadRunAndTellsOnlyOfStateOne) {
  auto translation = MakeRef<Translation>();
  auto material = MakeRef<Material>();
  auto choice = MakeRef<Switch>();
  ZrSceneMapping3DHide mapping(translation, 1.0f, material, choice);
  mapping.SetMeaningfulThreshold(10.0f);
  Freeze3D child;
  mapping.AddObserver(&child.mapping);
  for (double q : {0.0, 50.0, 60.0, 5.0, 70.0, 0.0}) {
    ZrValue3D v = Value3D(q, q);
    mapping.ValueDecoded(&v);
    if (q == 5.0) {
      EXPECT_EQ(child.mapping.GetNotNominalCount(), 1u);
    }
    EXPECT_EQ(child.mapping.GetNotMeaningfulCount(), 0u);
  }
  EXPECT_EQ(choice->choices, (std::vector<std::int32_t>{-1, 0, -1, 0}));
  EXPECT_EQ(child.mapping.GetNotNominalCount(), 0u);
  EXPECT_FALSE(mapping.IsHidden());
  EXPECT_EQ(translation->last, (std::vector<float>{0, 0, 0}));
  EXPECT_EQ(translation->calls, 3);  // hidden values leave the position alone
}

ZrValue6D Frame(double x, double quality) {
  ZrValue6D value;
  value.Frame()(0, 3) = x;
  value.Frame()(0, 1) = -1;  // a quarter turn about z
  value.Frame()(1, 0) = 1;
  value.Frame()(0, 0) = value.Frame()(1, 1) = 0;
  value.SetQuality(quality);
  return value;
}

TEST(SceneMapping6D, FreezeAndHideFollowTheirOwnValueOnly) {
  auto translation = MakeRef<Translation>();
  auto rotation = MakeRef<Rotation>();
  auto material = MakeRef<Material>();
  auto choice = MakeRef<Switch>();
  ZrSceneMapping6DFreeze freeze(translation, rotation, 0.5f, material);
  ZrSceneMapping6DHide hide(translation, rotation, 1.0f, material, choice);
  for (ZrSceneMapping6D* m : {static_cast<ZrSceneMapping6D*>(&freeze), static_cast<ZrSceneMapping6D*>(&hide)}) {
    m->SetMeaningfulThreshold(10.0f);
    m->EnterState2();  // a degraded source does not change a 6D display
  }
  ZrValue6D good = Frame(4, 0);
  freeze.ValueDecoded(&good);
  EXPECT_EQ(material->shown, "green");
  EXPECT_EQ(translation->last, (std::vector<float>{2, 0, 0}));
  EXPECT_EQ(rotation->last, (RotationMatrix{0, -1, 0, 1, 0, 0, 0, 0, 1}));
  ZrValue6D bad = Frame(8, 20);
  freeze.ValueDecoded(&bad);
  EXPECT_EQ(material->shown, "red");
  EXPECT_EQ(translation->last, (std::vector<float>{2, 0, 0}));
  EXPECT_EQ(rotation->calls, 1);

  ZrValue6D orange = Frame(8, 5);
  hide.ValueDecoded(&orange);
  EXPECT_EQ(material->shown, "orange");
  hide.ValueDecoded(&bad);
  hide.ValueDecoded(&bad);
  EXPECT_TRUE(hide.IsHidden());
  ZrValue6D broken = Frame(kNaN, 0);
  hide.ValueDecoded(&broken);
  EXPECT_EQ(translation->last, (std::vector<float>{8, 0, 0}));
  hide.ValueDecoded(&good);
  EXPECT_EQ(choice->choices, (std::vector<std::int32_t>{-1, 0}));
}

// A mapping keeps its properties alive through its own references, and lets them go with itself.
TEST(SceneMapping, HoldsItsPropertiesAndLinksForItsWholeLife) {
  struct Watched final : ITranslationProperty {
    explicit Watched(bool& flag) : alive(flag) { alive = true; }
    ~Watched() override { alive = false; }
    void SetTranslation(float, float, float) override {}
    bool& alive;
  };
  bool translationAlive = false;
  auto mapping = [&] {
    Ref<ITranslationProperty> translation = MakeRef<Watched>(translationAlive);
    auto m = std::make_unique<ZrSceneMapping3DFreeze>(translation, 1.0f, MakeRef<Material>());
    EXPECT_EQ(translation->ReferenceCount(), 2);
    return m;
  }();
  EXPECT_TRUE(translationAlive);
  ZrValue3D v = Value3D(1, 0);
  mapping->ValueDecoded(&v);  // writes through both properties
  mapping.reset();
  EXPECT_FALSE(translationAlive);

  // Links between mappings are undone whichever side goes first.
  auto parent = std::make_unique<Freeze3D>();
  auto child = std::make_unique<Freeze3D>();
  parent->mapping.AddObserver(&child->mapping);
  child.reset();
  EXPECT_TRUE(parent->mapping.GetObservers().empty());
  parent->Send(1, 50);  // tells nobody, and reads no freed memory
  auto watcher = std::make_unique<Freeze3D>();
  parent->mapping.AddObserver(&watcher->mapping);
  parent.reset();
  watcher->Send(1, 0);
  EXPECT_EQ(watcher->material->shown, "green");
}

}  // namespace
}  // namespace quillon
