// Every node type the reader knows, with the fields, types and defaults of the node model, and
// what the reader passes over. The expectations are written down here independently of the
// reader's own tables, so that a wrong default, type, access word or limit there fails a row.
#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "ReaderTestSupport.h"

namespace VRML {
namespace {

using test::parseScene;

// How the model shows a value back, in the text's own notation, so that defaults and read values
// compare with what a scene writer would type.
std::string show(const FieldValue* value) {
  if (!value) return "";
  std::ostringstream out;  // numbers as "%g" writes them
  const auto put = [&out](const auto&... v) { ((out << (out.tellp() > 0 ? " " : "") << v), ...); };
  const auto list = [&out](const auto& items, const auto& each) {
    out << "[";
    for (const auto& item : items) each(item);
    out << " ]";
  };
  if (const auto* b = dynamic_cast<const SFBool*>(value)) return b->value ? "TRUE" : "FALSE";
  if (const auto* i = dynamic_cast<const SFInt32*>(value)) return std::to_string(i->value);
  if (const auto* n = dynamic_cast<const SFNode*>(value)) return n->node ? std::string(n->node->typeName()) : "NULL";
  if (const auto* f = dynamic_cast<const SFFloat*>(value)) put(f->value);
  if (const auto* v = dynamic_cast<const SFVec3f*>(value)) put(v->value.x, v->value.y, v->value.z);
  if (const auto* c = dynamic_cast<const SFColor*>(value)) put(c->value.red, c->value.green, c->value.blue);
  if (const auto* r = dynamic_cast<const SFRotation*>(value)) put(r->x, r->y, r->z, r->angle);
  if (const auto* l = dynamic_cast<const MFInt32*>(value)) list(l->values, [&](std::int32_t i) { put(i); });
  if (const auto* l = dynamic_cast<const MFVec3f*>(value)) list(l->values, [&](const Vec3f& v) { put(v.x, v.y, v.z); });
  if (const auto* l = dynamic_cast<const MFColor*>(value))
    list(l->values, [&](const Color3f& c) { put(c.red, c.green, c.blue); });
  if (const auto* l = dynamic_cast<const MFNode*>(value))
    list(l->nodes, [&](const auto& n) { put(n ? n->typeName() : std::string_view("-")); });
  return out.str();
}

// A value of each field type as a scene writes it; show() gives it back unchanged.
std::string_view sampleOf(std::string_view type) {
  static const std::map<std::string_view, std::string_view> samples = {
      {"SFBool", "FALSE"},      {"SFInt32", "7"},          {"SFFloat", "0.5"},
      {"SFVec3f", "1 2 3"},     {"SFColor", "0.25 0.5 1"}, {"SFRotation", "0 1 0 1.5"},
      {"SFNode", "Group"},      {"MFInt32", "[ 1 2 -1 ]"}, {"MFVec3f", "[ 1 2 3 4 5 6 ]"},
      {"MFColor", "[ 1 0 0 ]"}, {"MFNode", "[ Shape - ]"}};
  return samples.at(type);
}

// The sample as the reader takes it: node values need their bodies, lists an empty entry's word.
std::string textOf(std::string_view type) {
  if (type == "SFNode") return "Group { }";
  if (type == "MFNode") return "[ Shape { } NULL ]";
  return std::string(sampleOf(type));
}

// A field as a row names it: "name type initial", the initial value in the text's notation and
// empty for an empty slot. Rows list their fields separated by semicolons.
struct FieldEntry {
  std::string name, type, initial;
};

std::vector<FieldEntry> fieldEntries(std::string_view list) {
  std::vector<FieldEntry> fields;
  std::istringstream in{std::string(list)};
  for (std::string entry; std::getline(in, entry, ';');) {
    std::istringstream words(entry);
    FieldEntry& field = fields.emplace_back();
    words >> field.name >> field.type >> std::ws;
    std::getline(words, field.initial);
  }
  return fields;
}

struct NodeType {
  std::string_view name;
  std::unique_ptr<Node> (*make)();
  std::string_view kept;  // in the order of the node's records, with the constructor's defaults
  std::string_view discarded;
  std::string_view accessWords;
  std::size_t fieldLimit;
  bool forgiving;  // a bad SFBool or SFFloat value keeps the default instead of failing the read
};

void PrintTo(const NodeType& row, std::ostream* out) { *out << row.name; }

template <class T>
std::unique_ptr<Node> make() {
  return std::make_unique<T>();
}

const NodeType kNodeTypes[] = {
    {"Appearance", &make<Appearance>, "material SFNode", "texture SFNode; textureTransform SFNode", "exposedField", 3,
     false},
    {"Box", &make<Box>, "size SFVec3f 2 2 2", "", "field", 1, false},
    {"Color", &make<Color>, "color MFColor", "", "exposedField", 1, false},
    {"Cone", &make<Cone>, "bottomRadius SFFloat 1; height SFFloat 2; side SFBool TRUE; bottom SFBool TRUE", "", "field",
     4, true},
    {"Coordinate", &make<Coordinate>, "point MFVec3f", "", "exposedField", 1, false},
    {"Cylinder", &make<Cylinder>,
     "bottom SFBool TRUE; height SFFloat 2; radius SFFloat 1; side SFBool TRUE; top SFBool TRUE", "", "field", 5, true},
    {"Group", &make<Group>, "children MFNode",
     "bboxCenter SFVec3f; bboxSize SFVec3f; addChildren MFNode; removeChildren MFNode", "field exposedField eventIn", 5,
     false},
    {"IndexedFaceSet", &make<IndexedFaceSet>,
     "color SFNode; coord SFNode; normal SFNode; colorIndex MFInt32; colorPerVertex SFBool TRUE; coordIndex MFInt32; "
     "normalIndex MFInt32; normalPerVertex SFBool TRUE",
     "texCoord SFNode; texCoordIndex MFInt32; ccw SFBool; convex SFBool; solid SFBool; creaseAngle SFFloat; "
     "set_colorIndex MFInt32; set_coordIndex MFInt32; set_normalIndex MFInt32; set_texCoordIndex MFInt32",
     "field exposedField eventIn", 18, false},
    {"IndexedLineSet", &make<IndexedLineSet>,
     "color SFNode; coord SFNode; colorIndex MFInt32; colorPerVertex SFBool TRUE; coordIndex MFInt32",
     "set_colorIndex MFInt32; set_coordIndex MFInt32", "field exposedField eventIn", 7, false},
    {"Material", &make<Material>,
     "ambientIntensity SFFloat; diffuseColor SFColor; emissiveColor SFColor; shininess SFFloat; specularColor "
     "SFColor; transparency SFFloat",
     "", "exposedField", 5, false},
    {"Normal", &make<Normal>, "vector MFVec3f", "", "exposedField", 1, false},
    {"Shape", &make<Shape>, "appearance SFNode; geometry SFNode", "", "exposedField", 2, false},
    {"Sphere", &make<Sphere>, "radius SFFloat", "", "field", 1, false},
    {"Switch", &make<Switch>, "choice MFNode; whichChoice SFInt32 -1", "", "exposedField", 2, false},
    {"Transform", &make<Transform>,
     "center SFVec3f 0 0 0; children MFNode; rotation SFRotation 0 0 1 0; scale SFVec3f 1 1 1; scaleOrientation "
     "SFRotation 0 0 1 0; translation SFVec3f",
     "bboxCenter SFVec3f; bboxSize SFVec3f", "field exposedField eventIn", 10, false},
};

class NodeTypes : public testing::TestWithParam<NodeType> {
 protected:
  const NodeType& row() const { return GetParam(); }
  // Reads `body` as the body of one node of this row's type: the node, or null when it failed.
  const Node* read(const std::string& body) {
    parsed = parseScene(std::string(row().name) + " { " + body + " }\n");
    const Node* node = parsed.size() == 1 ? parsed.at(0) : nullptr;
    if (node) {
      EXPECT_EQ(node->typeName(), row().name);
    }
    return node;
  }
  static std::string shown(const Node* node, std::string_view field) {
    const auto* slot = node->field(field);
    return slot ? show(slot->get()) : "(no such field)";
  }
  static std::string given(const FieldEntry& field) { return field.name + " " + textOf(field.type); }
  const std::vector<FieldEntry> kept = fieldEntries(GetParam().kept);
  const std::vector<FieldEntry> discarded = fieldEntries(GetParam().discarded);
  test::Parsed parsed;
};

TEST_P(NodeTypes, ModelHoldsTheKeptFieldsInOrderWithTheirDefaults) {
  const auto node = row().make();
  EXPECT_EQ(node->typeName(), row().name);
  ASSERT_EQ(node->fields().size(), kept.size());
  for (std::size_t i = 0; i < kept.size(); ++i) {
    SCOPED_TRACE(kept[i].name);
    EXPECT_EQ(node->fields()[i].name, kept[i].name);
    const FieldValue* value = node->fields()[i].value.get();
    EXPECT_EQ(show(value), kept[i].initial);
    if (value) {
      EXPECT_EQ(value->typeName(), kept[i].type);
      EXPECT_TRUE(value->set);
    }
  }
}

TEST_P(NodeTypes, ReadsEveryKeptFieldWithOrWithoutItsTypeWord) {
  for (const FieldEntry& field : kept) {
    for (const std::string& prefix : {std::string(), field.type + " "}) {
      SCOPED_TRACE(prefix + given(field));
      const Node* node = read(prefix + given(field));
      ASSERT_NE(node, nullptr);
      EXPECT_EQ(shown(node, field.name), sampleOf(field.type));
      EXPECT_EQ((*node->field(field.name))->typeName(), field.type);
    }
  }
}

TEST_P(NodeTypes, ReadsTheDiscardedFieldsAsTheirTypesAndKeepsNothing) {
  const FieldEntry& after = kept.front();
  for (const FieldEntry& field : discarded) {
    // A value read as the wrong type would leave the position off, and the next field would fail.
    const std::string body = given(field) + " " + given(after);
    SCOPED_TRACE(body);
    const Node* node = read(body);
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(node->field(field.name), nullptr);
    EXPECT_EQ(shown(node, after.name), sampleOf(after.type));
  }
}

TEST_P(NodeTypes, AcceptsOnlyItsOwnAccessWords) {
  for (const std::string word : {"field", "exposedField", "eventIn", "eventOut"}) {
    SCOPED_TRACE(word);
    const bool accepted = (" " + std::string(row().accessWords) + " ").find(" " + word + " ") != std::string::npos;
    EXPECT_EQ(read(word + " " + given(kept.front())) != nullptr, accepted);
  }
}

TEST_P(NodeTypes, StopsAtTheFieldLimitAndRefusesAnUnknownName) {
  // Every accepted name once, then the first one again: past the limit it is passed over with
  // the rest of the body, below the limit it is a repeat, which fails the node.
  std::string body;
  for (const auto* list : {&kept, &discarded})
    for (const FieldEntry& field : *list) body += given(field) + " ";
  body += given(kept.front());

  const Node* node = read(body);
  if (row().fieldLimit > kept.size() + discarded.size()) {
    EXPECT_EQ(node, nullptr);
  } else {
    ASSERT_NE(node, nullptr);
    for (std::size_t i = 0; i < kept.size(); ++i)
      EXPECT_EQ(shown(node, kept[i].name), i < row().fieldLimit ? sampleOf(kept[i].type) : kept[i].initial)
          << kept[i].name;
  }
  EXPECT_EQ(read("unknownField 1"), nullptr);
}

TEST_P(NodeTypes, BadNumbersAndWordsKeepTheDefaultOnlyWhereForgiving) {
  for (const FieldEntry& field : kept) {
    if (field.type != "SFBool" && field.type != "SFFloat") continue;
    // A bad SFBool word is put back and read as the next field's name; a bad number is consumed.
    const FieldEntry* other = kept.size() > 1 ? &kept[&field == &kept[0] ? 1 : 0] : nullptr;
    const std::string body = field.name + " " + (field.type == "SFFloat" || !other ? "x" : given(*other));
    SCOPED_TRACE(body);
    const Node* node = read(body);
    if (!row().forgiving) {
      EXPECT_EQ(node, nullptr);
      continue;
    }
    ASSERT_NE(node, nullptr);
    EXPECT_EQ(shown(node, field.name), field.initial);
    if (field.type == "SFBool") {
      EXPECT_EQ(shown(node, other->name), sampleOf(other->type));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Reader, NodeTypes, testing::ValuesIn(kNodeTypes),
                         [](const testing::TestParamInfo<NodeType>& param) { return std::string(param.param.name); });

// The tree in brief: a node's type name, then the nodes in its node-valued fields in record
// order; "-" for an empty entry or an empty node field.
std::string outline(const Node* node) {
  if (!node) return "-";
  std::string items;
  for (const Field& record : node->fields()) {
    if (const auto* one = dynamic_cast<const SFNode*>(record.value.get()))
      items += (items.empty() ? "" : " ") + outline(one->node.get());
    if (const auto* list = dynamic_cast<const MFNode*>(record.value.get()))
      for (const auto& item : list->nodes) items += (items.empty() ? "" : " ") + outline(item.get());
  }
  return std::string(node->typeName()) + (items.empty() ? "" : "(" + items + ")");
}

std::string outline(const test::Parsed& parsed) {
  std::string text;
  for (std::size_t i = 0; i < parsed.size(); ++i) text += (i ? " " : "") + outline(parsed.at(i));
  return text;
}

struct SkipCase {
  const char* name;
  std::string scene;
  std::string outline;
};

void PrintTo(const SkipCase& c, std::ostream* out) { *out << c.name; }

class SkipRules : public testing::TestWithParam<SkipCase> {};

TEST_P(SkipRules, PassOverWhatTheModelDoesNotHold) {
  EXPECT_EQ(outline(parseScene(GetParam().scene)), GetParam().outline);
}

INSTANTIATE_TEST_SUITE_P(
    Reader, SkipRules,
    testing::Values(
        SkipCase{"TypeNamesAreCaseSensitive", "shape { }\nGroup { }\n", "- Group"},
        SkipCase{"WordsBeforeABodyAreIgnored", "Shape junk 1 2 { }\nGroup { }\n", "Shape Group"},
        SkipCase{"WordsBeforeAListAreIgnored", "Group { children junk [ Shape { } ] }\n", "Group(Shape)"},
        SkipCase{"SkippedTypesInAListLeaveEmptyEntries", "Group { children [ Viewpoint { } Shape { } ] }\n",
                 "Group(- Shape)"},
        SkipCase{"SkippedTypesInANodeFieldLeaveItEmpty",
                 "Shape { geometry Text { string \"a\" } appearance Appearance { } }\n", "Shape(Appearance -)"},
        SkipCase{"ATopLevelDefCannotBeUsed", "DEF A Group { }\nGroup { children [ USE A ] }\n", "Group Group(-)"},
        SkipCase{"ADefInADiscardedFieldCanBeUsed", "Group { addChildren [ DEF B Shape { } ] children [ USE B ] }\n",
                 "Group(Shape)"},
        SkipCase{"ADefinedSkippedTypeCannotBeUsed", "Group { children [ DEF V Viewpoint { } USE V Shape { } ] }\n",
                 "Group(- - Shape)"},
        SkipCase{"ATextureInADiscardedFieldIsPassedOver",
                 "Appearance { texture ImageTexture { url \"a.png\" } material Material { } }\n",
                 "Appearance(Material)"},
        SkipCase{"AListStartingWithAQuotedStringIsEmpty", "Group { children [ \"x\" Shape { } ] }\nShape { }\n",
                 "Group Shape"},
        SkipCase{"ANumericListPassesOverTheCharacterAfterItsBracket", "Coordinate { point [ 1 2 3 ]x }\nShape { }\n",
                 "Coordinate Shape"},
        SkipCase{"ANodeListPassesOverNothingAfterItsBracket",
                 "Transform { children [ Shape { } ]translation 1 2 3 }\nShape { }\n", "Transform(Shape) Shape"},
        SkipCase{"CommentsInsideABody", "Group { # children [ Box { } ]\n children [ Shape { } ] }\n", "Group(Shape)"}),
    [](const testing::TestParamInfo<SkipCase>& param) { return std::string(param.param.name); });

TEST(SkipRules, RecognisedButUnmodelledTypesAreSkippedWhole) {
  std::istringstream types(
      "Anchor AudioClip Background Billboard Collision ColorInterpolator CoordinateInterpolator CylinderSensor "
      "DirectionalLight ElevationGrid Extrusion Fog FontStyle ImageTexture Inline LOD MovieTexture NavigationInfo "
      "NormalInterpolator OrientationInterpolator PixelTexture PlaneSensor PointLight PointSet PositionInterpolator "
      "ProximitySensor ScalarInterpolator Script Sound SphereSensor SpotLight Text TextureCoordinate TextureTransform "
      "TimeSensor TouchSensor Viewpoint VisibilitySensor WorldInfo");
  for (std::string type; types >> type;) {
    // A modelled reader would fail on the unknown field and end the read.
    EXPECT_EQ(outline(parseScene(type + " { size 1 2 3 children [ ] }\nShape { }\n")), "- Shape") << type;
  }
}

}  // namespace
}  // namespace VRML
