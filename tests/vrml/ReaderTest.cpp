#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "ReaderTestSupport.h"
#include "core/Trace.h"

namespace VRML {
namespace {

using test::kHeader;
using test::parseScene;
using test::parseText;

struct Case {
  const char* name;
  std::string text;
  int result;
  std::string entries;  // one letter per top-level entry: the type's initial, '-' for an empty entry
};

void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

std::string entriesOf(const test::Parsed& parsed) {
  std::string letters;
  for (std::size_t i = 0; i < parsed.size(); ++i) letters += parsed.at(i) ? parsed.at(i)->typeName()[0] : '-';
  return letters;
}

class TopLevel : public testing::TestWithParam<Case> {};

TEST_P(TopLevel, ReadsTheExpectedEntries) {
  const auto parsed = parseText(GetParam().text);
  EXPECT_EQ(parsed.result, GetParam().result);
  EXPECT_EQ(entriesOf(parsed), GetParam().entries);
}

INSTANTIATE_TEST_SUITE_P(
    Reader, TopLevel,
    testing::Values(
        // Header
        Case{"ExactHeader", kHeader + "Shape { }\n", 0, "S"}, Case{"NoHash", "VRML V2.0 utf8\nShape { }\n", 1, ""},
        Case{"OtherVersion", "#VRML V1.0 utf8\nShape { }\n", 1, ""}, Case{"HeaderOnly", kHeader, 1, ""},
        Case{"Empty", "", 1, ""},
        Case{"WordAfterHeaderSkipsTheFirstBody", "#VRML V2.0 utf8 note\nShape { }\nGroup { }\n", 0, "-G"},
        // Separators and comments
        Case{"CommentsCarriageReturnsAndCommas",
             "#VRML V2.0 utf8\r\n# a { comment [\r\nShape { geometry Box { size 1,2;3 } }\r\n", 0, "S"},
        Case{"CommentRunsToTheEnd", kHeader + "Shape { }\n# no line feed", 0, "S"},
        Case{"NonUtf8Comment", kHeader + "# \xff\xfe\x80\nShape { }\n", 0, "S"},
        Case{"StrayClosersArePassedOver", kHeader + "] } Group { children [ Shape { } ] } ] }\nShape { }\n", 0, "GS"},
        Case{"NestedClosersBackToBack", kHeader + "Group { children [ Shape { }]}\nShape { }\n", 0, "GS"},
        Case{"CharacterAfterABraceIsPassedOverUnread", kHeader + "Shape { }Shape { }\n", 0, "S-"},
        Case{"TextMayEndOnABrace", kHeader + "Shape { }", 0, "S"},
        Case{"TextMayEndInsideABody", kHeader + "Group { children [ Shape {", 0, "G"},
        // Top-level statements
        Case{"UnknownWordsSkipTheNextBody", kHeader + "ROUTE A.x TO B.y\nShape { }\nGroup { }\n", 0, "-G"},
        Case{"SkippedTypesLeaveEmptyEntries", kHeader + "Viewpoint { position 0 0 10 }\nShape { }\n", 0, "-S"},
        Case{"SkippingEndsAfterTheFirstNestedPair",
             kHeader + "Anchor { children [ Shape { } Shape { } ] }\nGroup { }\n", 0, "-SG"},
        Case{"FailedOnlyNodeStillCounts", kHeader + "Box { }\n", 0, "-"},
        Case{"FailureEndsTheRead", kHeader + "Shape { }\nShape { nonsense 1 }\nShape { }\n", 0, "S-"},
        Case{"TopLevelUseIsAnUnknownWord", kHeader + "USE A\nShape { }\nGroup { }\n", 0, "-G"},
        Case{"DefWithoutTypeStops", kHeader + "Shape { }\nDEF A", 0, "S"},
        Case{"ProtoIsSkippedForgivingly", kHeader + "PROTO P [ field SFColor c 1 0 0 ] { Shape { } }\nGroup { }\n", 0,
             "-G"}),
    [](const testing::TestParamInfo<Case>& param) { return std::string(param.param.name); });

TEST(Reader, UnknownTypeNameWritesTheTrace) {
  std::string traced;
  auto previous = quillon::SetTraceSink([&](std::string_view line) { traced += line; });
  parseScene("Shape { }\nDEF Lonely");
  quillon::SetTraceSink(previous);
  EXPECT_EQ(traced, "Unknown error due to an unknown name\n");
}

TEST(Reader, TopLevelDefNamesTheNodeButIsNotUsable) {
  const auto parsed = parseScene("DEF A Group { }\nGroup { children [ USE A ] }\n");
  ASSERT_EQ(parsed.size(), 2u);
  EXPECT_STREQ(parsed.at(0)->name(), "A");
  const auto* second = parsed.as<Group>(1);
  ASSERT_NE(second, nullptr);
  ASSERT_EQ(second->children()->size(), 1u);
  EXPECT_EQ(second->children()->nodes[0], nullptr);
}

TEST(Reader, UseInsideAFieldYieldsAnIndependentCopy) {
  const auto parsed =
      parseScene("Switch { choice [ DEF A Shape { geometry Box { size 1 2 3 } } USE A USE Missing NULL ] }\n");
  const auto* choices = parsed.as<Switch>(0)->choice();
  ASSERT_EQ(choices->size(), 4u);
  const auto* first = dynamic_cast<const Shape*>(choices->nodes[0].get());
  const auto* second = dynamic_cast<const Shape*>(choices->nodes[1].get());
  ASSERT_TRUE(first && second);
  EXPECT_NE(first, second);
  EXPECT_NE(first->geometry()->node.get(), second->geometry()->node.get());
  EXPECT_EQ(static_cast<const Box&>(*second->geometry()->node).size()->value, (Vec3f{1, 2, 3}));
  EXPECT_STREQ(first->name(), "A");
  EXPECT_EQ(choices->nodes[2], nullptr);
  EXPECT_EQ(choices->nodes[3], nullptr);
}

TEST(Reader, DefInADiscardedFieldCanStillBeUsed) {
  const auto parsed = parseScene("Group { addChildren [ DEF B Shape { } ] children [ USE B ] }\n");
  const auto* group = parsed.as<Group>(0);
  ASSERT_NE(group, nullptr);
  ASSERT_EQ(group->children()->size(), 1u);
  EXPECT_NE(dynamic_cast<const Shape*>(group->children()->nodes[0].get()), nullptr);
}

TEST(Reader, BoxBodyHoldsExactlyItsSizeField) {
  for (const char* body : {"size 1 2 3", "field SFVec3f size 1 2 3", "field size 1 2 3", "SFVec3f size 1 2 3"}) {
    const auto parsed = parseScene(std::string("Box { ") + body + " }\n");
    ASSERT_NE(parsed.as<Box>(0), nullptr) << body;
    EXPECT_EQ(parsed.as<Box>(0)->size()->value, (Vec3f{1, 2, 3})) << body;
  }
  for (const char* body : {"", "exposedField size 1 2 3", "radius 1", "size 1 2"}) {
    EXPECT_EQ(parseScene(std::string("Box { ") + body + " }\n").as<Box>(0), nullptr) << body;
  }
}

TEST(Reader, ConeAndCylinderFallBackOnBadValues) {
  auto parsed = parseScene("Cone { height x }\n");
  ASSERT_NE(parsed.as<Cone>(0), nullptr);
  EXPECT_EQ(parsed.as<Cone>(0)->height()->value, 2.0f);

  // A bad SFBool puts its token back, so here it is read as the next field's name.
  parsed = parseScene("Cylinder { side height 3 top FALSE }\n");
  const auto* cylinder = parsed.as<Cylinder>(0);
  ASSERT_NE(cylinder, nullptr);
  EXPECT_TRUE(cylinder->side()->value);
  EXPECT_EQ(cylinder->height()->value, 3.0f);
  EXPECT_FALSE(cylinder->top()->value);

  EXPECT_EQ(parseScene("Cone { height 3 height 4 }\n").as<Cone>(0), nullptr);
  EXPECT_EQ(parseScene("Sphere { radius x }\n").as<Sphere>(0), nullptr);
  EXPECT_EQ(parseScene("Group { children [ Shape { geometry Box { size 1 2 3 } } ] eventIn }\n").as<Group>(0), nullptr);
}

TEST(Reader, MaterialStopsAfterFiveFields) {
  const auto parsed = parseScene(
      "Material { ambientIntensity 0.1 diffuseColor 1 0 0 emissiveColor 0 1 0 shininess 0.5 "
      "specularColor 0 0 1 transparency 0.5 }\nShape { }\n");
  const auto* material = parsed.as<Material>(0);
  ASSERT_NE(material, nullptr);
  EXPECT_EQ(material->diffuseColor()->value, (Color3f{1, 0, 0}));
  EXPECT_EQ(material->specularColor()->value, (Color3f{0, 0, 1}));
  EXPECT_EQ(material->transparency(), nullptr);
  EXPECT_NE(parsed.as<Shape>(1), nullptr);
}

TEST(Reader, TransformReadsEveryFieldAndDropsTheBoundingBox) {
  const auto parsed = parseScene(
      "DEF T Transform { exposedField SFVec3f translation 1 2 3 rotation 0 1 0 1.57 scale 2 2 2 "
      "eventIn bboxSize 1 1 1 center 4 5 6 scaleOrientation 1 0 0 0.5 children [ Group { } ] }\n");
  const auto* transform = parsed.as<Transform>(0);
  ASSERT_NE(transform, nullptr);
  EXPECT_STREQ(transform->name(), "T");
  EXPECT_EQ(transform->translation()->value, (Vec3f{1, 2, 3}));
  EXPECT_EQ(transform->rotation()->angle, 1.57f);
  EXPECT_EQ(transform->center()->value, (Vec3f{4, 5, 6}));
  EXPECT_EQ(transform->scaleOrientation()->angle, 0.5f);
  EXPECT_EQ(transform->children()->size(), 1u);
}

TEST(Reader, IndexedFaceSetListsAndTheirEnds) {
  const auto parsed = parseScene(
      "IndexedFaceSet { coord Coordinate { point [ 0 0 0, 1 0 0, 0 1 0 ] } "
      "coordIndex [ 0, 40000, 70000, -1 ]x solid FALSE colorIndex [ ] normalIndex [ \"x\" 1 ] "
      "color Color { color [ 1 0 0 ] } texCoord TextureCoordinate { point [ 0 0 ] } }\n");
  const auto* faces = parsed.as<IndexedFaceSet>(0);
  ASSERT_NE(faces, nullptr);
  EXPECT_EQ(faces->coordIndex()->values, (std::vector<std::int32_t>{0, 40000, 70000, -1}));
  const auto& points = static_cast<const Coordinate&>(*faces->coord()->node).point()->values;
  EXPECT_EQ(points, (std::vector<Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
  EXPECT_TRUE(faces->colorIndex()->set);
  EXPECT_TRUE(faces->colorIndex()->values.empty());
  EXPECT_TRUE(faces->normalIndex()->values.empty());
  EXPECT_EQ(static_cast<const Color&>(*faces->color()->node).color()->values, (std::vector<Color3f>{{1, 0, 0}}));

  // Without the white space after ']' the next field name loses its first letter.
  EXPECT_EQ(parseScene("IndexedFaceSet { coordIndex [ 0 1 2 ]solid FALSE }\n").as<IndexedFaceSet>(0), nullptr);
  // A value written without brackets takes a later list, or fails when there is none.
  EXPECT_EQ(parseScene("Coordinate { point 1 2 3 }\n").as<Coordinate>(0), nullptr);
}

TEST(Reader, NodeFieldsTakeNullAndSkippedTypes) {
  const auto parsed = parseScene(
      "Shape { appearance Appearance { texture ImageTexture { url \"a.png\" } material Material { } } "
      "geometry NULL }\n");
  const auto* shape = parsed.as<Shape>(0);
  ASSERT_NE(shape, nullptr);
  EXPECT_TRUE(shape->geometry()->set);
  EXPECT_EQ(shape->geometry()->node, nullptr);
  const auto& appearance = static_cast<const Appearance&>(*shape->appearance()->node);
  EXPECT_NE(dynamic_cast<const Material*>(appearance.material()->node.get()), nullptr);
}

TEST(Reader, LongNamesAreCutToTheirBuffers) {
  const std::string longName(300, 'q');
  auto parsed = parseScene("DEF " + longName + " Group { }\n");
  EXPECT_EQ(std::string(parsed.at(0)->name()), std::string(255, 'q'));

  // Names inside bodies keep 254 characters; a USE of the long name still finds its DEF.
  parsed = parseScene("Group { children [ DEF " + longName + " Shape { } USE " + longName + " ] }\n");
  const auto* group = parsed.as<Group>(0);
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(std::string(group->children()->nodes.at(0)->name()), std::string(254, 'q'));
  EXPECT_NE(group->children()->nodes.at(1), nullptr);

  // A field name is compared by its first 254 characters.
  EXPECT_EQ(parseScene("Shape { geometry" + std::string(300, 'y') + " Box { } }\n").as<Shape>(0), nullptr);
}

}  // namespace
}  // namespace VRML
