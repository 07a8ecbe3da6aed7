#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "vrml/Nodes.h"

namespace VRML {
namespace {

TEST(NodeModel, FieldsLookUpByNameAndClonesAreIndependent) {
  Transform transform;
  transform.setName("T");
  EXPECT_EQ(transform.field(""), nullptr);
  EXPECT_EQ(transform.field("radius"), nullptr);
  auto children = std::make_unique<MFNode>();
  children->nodes.push_back(std::make_unique<Shape>());
  children->nodes.push_back(nullptr);
  children->set = true;
  *transform.field("translation") = std::make_unique<SFVec3f>(1.0f, 2.0f, 3.0f);
  *transform.field("children") = std::move(children);
  EXPECT_EQ(transform.valueOf<SFFloat>("translation"), nullptr);

  auto copy = transform.clone();
  auto& copied = dynamic_cast<Transform&>(*copy);
  EXPECT_STREQ(copied.name(), "");
  ASSERT_EQ(copied.children()->size(), 2u);
  EXPECT_NE(copied.children()->nodes[0].get(), transform.children()->nodes[0].get());
  EXPECT_EQ(copied.children()->nodes[0]->typeName(), "Shape");
  EXPECT_EQ(copied.children()->nodes[1], nullptr);
  EXPECT_TRUE(copied.children()->set);
  transform.clearFields();
  EXPECT_EQ(*transform.field("translation"), nullptr);
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

  SFRotation rotation(0.0f, 1.0f, 0.0f, 3.0f);
  rotation.clear();
  EXPECT_EQ(rotation.x, 1.0f);
  EXPECT_EQ(rotation.angle, 0.0f);
  EXPECT_FALSE(rotation.set);
}

}  // namespace
}  // namespace VRML
