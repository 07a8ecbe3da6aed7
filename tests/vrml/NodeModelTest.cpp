#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "vrml/Nodes.h"

namespace VRML {
namespace {

TEST(NodeModel, FieldLooksUpByNameAndLetsTheCallerReplaceTheValue) {
  Box box;
  EXPECT_EQ(box.field(""), nullptr);
  EXPECT_EQ(box.field("radius"), nullptr);
  auto* slot = box.field("size");
  ASSERT_NE(slot, nullptr);
  *slot = std::make_unique<SFVec3f>(1.0f, 2.0f, 3.0f);
  EXPECT_EQ(box.size()->value, (Vec3f{1, 2, 3}));
  EXPECT_EQ(box.valueOf<SFFloat>("size"), nullptr);

  box.clearFields();
  EXPECT_EQ(*box.field("size"), nullptr);
}

TEST(NodeModel, CloneCopiesTheWholeSubtreeIndependently) {
  Transform transform;
  transform.setName("T");
  auto children = std::make_unique<MFNode>();
  children->nodes.push_back(std::make_unique<Shape>());
  children->nodes.push_back(nullptr);
  children->set = true;
  *transform.field("translation") = std::make_unique<SFVec3f>(1.0f, 2.0f, 3.0f);
  *transform.field("children") = std::move(children);

  auto copy = transform.clone();
  auto& copied = dynamic_cast<Transform&>(*copy);
  EXPECT_STREQ(copied.name(), "");
  ASSERT_EQ(copied.children()->size(), 2u);
  EXPECT_NE(copied.children()->nodes[0].get(), transform.children()->nodes[0].get());
  EXPECT_EQ(copied.children()->nodes[0]->typeName(), "Shape");
  EXPECT_EQ(copied.children()->nodes[1], nullptr);
  EXPECT_TRUE(copied.children()->set);

  *transform.field("translation") = std::make_unique<SFVec3f>(9.0f, 9.0f, 9.0f);
  EXPECT_EQ(copied.translation()->value, (Vec3f{1, 2, 3}));
}

TEST(FieldValues, ClearResetsPayloadAndFlag) {
  MFInt32 list;
  list.values = {1, 2, 3};
  list.set = true;
  auto copy = list.clone();
  list.clear();
  EXPECT_TRUE(list.values.empty());
  EXPECT_FALSE(list.set);
  EXPECT_EQ(static_cast<MFInt32&>(*copy).values.size(), 3u);
  EXPECT_EQ(copy->typeName(), "MFInt32");

  SFRotation rotation(0.0f, 1.0f, 0.0f, 3.0f);
  rotation.clear();
  EXPECT_EQ(rotation.x, 1.0f);
  EXPECT_EQ(rotation.angle, 0.0f);
  EXPECT_FALSE(rotation.set);
}

struct Recorder : NodeVisitor {
  std::vector<std::string_view> visited;
  void visitNode(const Node& node) override { visited.push_back(node.typeName()); }
  void visitShape(const Shape&) override { visited.push_back("shape!"); }
};

TEST(NodeModel, AcceptCallsTheOperationOfTheNodesOwnType) {
  Recorder recorder;
  Transform().accept(recorder);
  Shape().accept(recorder);
  IndexedFaceSet().accept(recorder);
  Appearance().accept(recorder);
  EXPECT_EQ(recorder.visited, (std::vector<std::string_view>{"Transform", "shape!", "IndexedFaceSet", "Appearance"}));
}

}  // namespace
}  // namespace VRML
