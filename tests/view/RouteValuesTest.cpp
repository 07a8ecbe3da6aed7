// What a host reads of the routes: each bound route of the document with the newest value that
// reached its mapping, through a viewer component on a scene-graph holder of the test's own.
#include <gtest/gtest.h>

#include <thread>

#include "MessageBuilder.h"
#include "control/QuillonComponent.h"
#include "scenegraph/OSGSceneGraph.h"

namespace quillon::test {
namespace {

constexpr const char* kDocument = R"(<?xml version="1.0"?>
<Visualisation><Version>1.0</Version>
  <Settings><RenderInvalids>freeze</RenderInvalids><ColourMap>[0, 0, 1; 1, 0, 0]</ColourMap></Settings>
  <Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
DEF Arm Transform { children [
  Shape { appearance Appearance { material DEF Skin Material { } } geometry Box { size 0.1 0.1 0.1 } } ] }
DEF Pick Switch { choice [ Group { } Group { } ] }
]]></Scene>
  <ExternRoute from="Rig[3][0][6D]" to="Arm"/>
  <ExternRoute from="Rig[3][1][1D]" to="Skin.diffuseColor" scale="0.5"/>
  <ExternRoute from="Rig[3][2][1D]" to="Nowhere.diffuseColor"/>
  <ExternRoute from="Rig[3][3][1D]" to="Pick"/>
</Visualisation>
)";

// Group Rig[3]: a frame turned a quarter about z at (1, 2, 3), two numbers and a choice, each with
// its quality.
std::vector<unsigned char> message(double colour, double quality) {
  MessageBuilder m;
  m.Header(0x0001 | 0x0004 | 0x0008 | 0x0010, "Rig", 3, 4);
  m.U8(3).F64(1).F64(2).F64(3);
  for (double r : {0, 1, 0, -1, 0, 0, 0, 0, 1}) m.F64(r);  // column by column
  m.F64(0).U32(5).U32(77);
  m.U8(1).F64(colour).F64(quality).U32(6).U32(78);
  m.U8(1).F64(9).F64(0).U32(0).U32(0);
  m.U8(1).F64(1).F64(0).U32(0).U32(0);
  return m.bytes;
}

struct RouteValuesTest : ::testing::Test {
  RouteValuesTest() : component(std::make_unique<QuillonComponent>(MakeWindowlessParts(holder))) {}
  void load(const std::string& xml) {
    std::string annotated, groups;
    ASSERT_EQ(component->LoadDocument(xml, annotated, groups), 0);
  }
  void send(const std::vector<unsigned char>& m) { ASSERT_EQ(component->SendChannels(m.data(), m.size()), ""); }

  OSGSceneGraph holder;
  std::unique_ptr<QuillonComponent> component;
};

TEST_F(RouteValuesTest, ListsTheBoundRoutesInDocumentOrderWithWhatTheDocumentSays) {
  load(kDocument);
  const RouteValues& routes = component->Routes();
  // Each route as its channel (path, group, channel, kind), target, scale, hiding and colours.
  std::vector<std::string> listed;
  for (std::size_t i = 0; i < routes.Count(); ++i) {
    const RouteEntry& r = routes.At(i);
    listed.push_back(r.from + " " + r.controlPathName + " " + std::to_string(r.groupNumber) + " " +
                     std::to_string(r.channelNumber) + " " + std::to_string(static_cast<int>(r.kind)) + " -> " +
                     r.nodeName + "." + r.fieldName + " x" + std::to_string(r.scale) + (r.hide ? " hides" : "") +
                     " colours " + std::to_string(r.colourMap.size()) + " received " +
                     std::to_string(r.sample.received));
  }
  // The route to a node that is not there is bound to nothing.
  EXPECT_EQ(listed,
            (std::vector<std::string>{"Rig[3][0][6D] Rig 3 0 2 -> Arm. x1.000000 colours 0 received 0",
                                      "Rig[3][1][1D] Rig 3 1 0 -> Skin.diffuseColor x0.500000 colours 2 received 0",
                                      "Rig[3][3][1D] Rig 3 3 0 -> Pick. x1.000000 colours 0 received 0"}));
  EXPECT_EQ(routes.At(1).colourMap[1], (std::array<float, 3>{1, 0, 0}));
}

TEST_F(RouteValuesTest, KeepsTheNewestValueAndWhenItLastChanged) {
  load(kDocument);
  send(message(0.25, 40));
  const RouteValues& routes = component->Routes();
  const RouteSample& frame = routes.At(0).sample;
  EXPECT_EQ(frame.type, 3);
  // The position, then the rotation row by row.
  EXPECT_EQ(frame.numbers, (std::array<double, 12>{1, 2, 3, 0, -1, 0, 1, 0, 0, 0, 0, 1}));
  EXPECT_EQ(frame.status, 5);
  EXPECT_EQ(frame.timestamp, 77u);
  const RouteSample& colour = routes.At(1).sample;
  EXPECT_EQ(colour.numbers[0], 0.25);
  EXPECT_EQ(colour.quality, 40);
  EXPECT_EQ(colour.received, 1u);
  const auto firstChange = colour.changed;

  std::this_thread::sleep_for(std::chrono::milliseconds(5));
  send(message(0.25, 40));  // the same again: received, not changed
  EXPECT_EQ(colour.received, 2u);
  EXPECT_EQ(colour.changed, firstChange);
  send(message(0.25, 41));  // only the quality differs
  EXPECT_GT(colour.changed, firstChange);

  // A new document starts with no values.
  load(kDocument);
  EXPECT_EQ(component->Routes().At(1).sample.received, 0u);
}

TEST_F(RouteValuesTest, ThresholdsAreTheHostsOnceSet) {
  EXPECT_EQ(component->Routes().NominalThreshold(), 0.0f);
  EXPECT_EQ(component->Routes().MeaningfulThreshold(), 100.0f);
  component->SetNominalThreshold(2);
  component->SetMeaningfulThreshold(20);
  load(kDocument);
  EXPECT_EQ(component->Routes().NominalThreshold(), 2.0f);
  EXPECT_EQ(component->Routes().MeaningfulThreshold(), 20.0f);
}

}  // namespace
}  // namespace quillon::test
