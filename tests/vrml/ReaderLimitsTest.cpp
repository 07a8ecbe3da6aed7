#include <gtest/gtest.h>

#include <string>

#include "ReaderTestSupport.h"

namespace VRML {
namespace {

using test::parseScene;

std::string nestedGroups(int depth) {
  std::string text;
  for (int i = 0; i < depth; ++i) text += "Group { children [ ";
  text += "Shape { } ";
  for (int i = 0; i < depth; ++i) text += "] } ";
  return text + "\n";
}

int depthOf(const Node* node) {
  int depth = 0;
  while (node) {
    ++depth;
    const auto* group = dynamic_cast<const Group*>(node);
    node = group && group->children() && group->children()->size() ? group->children()->nodes[0].get() : nullptr;
  }
  return depth;
}

// Nesting past the limit, directly or through a USE deep down, and USE chains that would double
// at every level (2^40 nodes if copies were unbounded) all fail the one top-level node.
TEST(ReaderLimits, NestingAndCopiesStayBounded) {
  EXPECT_EQ(depthOf(parseScene(nestedGroups(Group::kMaxDepth - 1)).at(0)), Group::kMaxDepth);
  const int half = Group::kMaxDepth / 2 + 10;
  std::string deepUse = "Group { children [ DEF A " + nestedGroups(half);
  for (int i = 0; i < half; ++i) deepUse += "Group { children [ ";
  deepUse += "USE A ";
  for (int i = 0; i < half; ++i) deepUse += "] } ";
  std::string doubling = "Group { children [ DEF L0 Group { children [ Shape { } ] } ";
  for (int i = 1; i <= 40; ++i) {
    const std::string previous = "L" + std::to_string(i - 1);
    doubling += "DEF L" + std::to_string(i) + " Group { children [ USE " + previous + " USE " + previous + " ] } ";
  }
  for (const std::string& text : {nestedGroups(Group::kMaxDepth) + "Shape { }\n", nestedGroups(100000) + "Shape { }\n",
                                  deepUse + "] }\n", doubling + "] }\n"}) {
    const auto parsed = parseScene(text);
    EXPECT_EQ(parsed.result, 0);
    ASSERT_EQ(parsed.size(), 1u);
    EXPECT_EQ(parsed.at(0), nullptr);
  }
}

TEST(ReaderLimits, TextsEndingOnAClosingCharacterAreReadWithinBounds) {
  for (const char* tail : {"Coordinate { point [ 1 2 3 ]", "Coordinate { point [ 1 2 3 ] ", "Group { children [ ]",
                           "Group { children [ Shape { } ] }", "Switch { whichChoice 1", "Box { size 1 2 3",
                           "Group { children [ \"", "Box { size 1 2 3e", "Viewpoint {", "Viewpoint { }"}) {
    const auto parsed = parseScene(tail);
    EXPECT_EQ(parsed.size(), 1u) << tail;
  }
  EXPECT_NE(parseScene("Coordinate { point [ 1 2 3 ]").as<Coordinate>(0), nullptr);
}

}  // namespace
}  // namespace VRML
