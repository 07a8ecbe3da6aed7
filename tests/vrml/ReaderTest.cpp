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
        Case{"TooFewNumbersFail", kHeader + "Box { size 1 2 }\n", 0, "-"},
        Case{"ARepeatedFieldFails", kHeader + "Cone { height 3 height 4 }\n", 0, "-"},
        Case{"AnAccessWordWithoutAFieldFails", kHeader + "Group { children [ Shape { } ] eventIn }\n", 0, "-"},
        Case{"AccessAndTypeWordsTogether", kHeader + "Transform { exposedField SFVec3f translation 1 2 3 }\n", 0, "T"},
        Case{"FieldsPastTheLimitArePassedOver",
             kHeader + "Material { ambientIntensity 0.1 diffuseColor 1 0 0 emissiveColor 0 1 0 shininess 0.5 "
                       "specularColor 0 0 1 transparency 0.5 }\nShape { }\n",
             0, "MS"},
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

TEST(Reader, UseInsideAFieldYieldsAnIndependentCopyAndNullAnEmptyOne) {
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

  const auto withNull = parseScene("Shape { geometry NULL }\n");
  const auto* empty = withNull.as<Shape>(0);
  ASSERT_NE(empty, nullptr);
  EXPECT_TRUE(empty->geometry()->set);
  EXPECT_EQ(empty->geometry()->node, nullptr);
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
