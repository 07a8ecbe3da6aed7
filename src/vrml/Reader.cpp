#include "vrml/Reader.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "core/Trace.h"
#include "vrml/Lexer.h"
#include "vrml/NumberToken.h"
#include "vrml/Vocabulary.h"

namespace VRML {

using lexer::endsToken;
using lexer::isSeparator;
using lexer::kept;

namespace {

// Token buffer sizes; a buffer of n bytes keeps n - 2 characters of a token.
constexpr std::size_t kOuterBuffer = 1024;  // header words, top-level type and DEF names
constexpr std::size_t kInnerBuffer = 256;   // field names, keywords and names in node bodies
constexpr std::size_t kBoolBuffer = 8;

// Copies made by USE may add this much to the model, plus four times the text's size.
constexpr std::size_t kCopyAllowance = std::size_t{64} << 20;

enum class Kind : std::uint8_t {
  SFBool,
  SFInt32,
  SFFloat,
  SFVec3f,
  SFColor,
  SFRotation,
  SFNode,
  MFInt32,
  MFVec3f,
  MFColor,
  MFNode
};

std::string_view kindName(Kind kind) {
  switch (kind) {
    case Kind::SFBool:
      return "SFBool";
    case Kind::SFInt32:
      return "SFInt32";
    case Kind::SFFloat:
      return "SFFloat";
    case Kind::SFVec3f:
      return "SFVec3f";
    case Kind::SFColor:
      return "SFColor";
    case Kind::SFRotation:
      return "SFRotation";
    case Kind::SFNode:
      return "SFNode";
    case Kind::MFInt32:
      return "MFInt32";
    case Kind::MFVec3f:
      return "MFVec3f";
    case Kind::MFColor:
      return "MFColor";
    case Kind::MFNode:
      return "MFNode";
  }
  return {};
}

enum Access : std::uint8_t { kField = 1, kExposedField = 2, kEventIn = 4 };

constexpr int kDiscard = -1;

}  // namespace

struct FieldRule {
  std::string_view name;
  Kind kind;
  int slot;  // index of the kept field record, or kDiscard
  bool hasFallback = false;
  float fallback = 0.0f;
};

struct NodeRule {
  std::span<const FieldRule> fields;
  std::uint8_t access;
  std::uint8_t limit;
  bool single;  // exactly one field, and an empty body fails
};

namespace {

constexpr FieldRule kAppearanceFields[] = {{"material", Kind::SFNode, Appearance::kMaterial},
                                           {"texture", Kind::SFNode, kDiscard},
                                           {"textureTransform", Kind::SFNode, kDiscard}};
constexpr FieldRule kBoxFields[] = {{"size", Kind::SFVec3f, Box::kSize}};
constexpr FieldRule kColorFields[] = {{"color", Kind::MFColor, Color::kColor}};
constexpr FieldRule kConeFields[] = {{"bottomRadius", Kind::SFFloat, Cone::kBottomRadius, true, 1.0f},
                                     {"height", Kind::SFFloat, Cone::kHeight, true, 2.0f},
                                     {"side", Kind::SFBool, Cone::kSide, true, 1.0f},
                                     {"bottom", Kind::SFBool, Cone::kBottom, true, 1.0f}};
constexpr FieldRule kCoordinateFields[] = {{"point", Kind::MFVec3f, Coordinate::kPoint}};
constexpr FieldRule kCylinderFields[] = {{"bottom", Kind::SFBool, Cylinder::kBottom, true, 1.0f},
                                         {"height", Kind::SFFloat, Cylinder::kHeight, true, 2.0f},
                                         {"radius", Kind::SFFloat, Cylinder::kRadius, true, 1.0f},
                                         {"side", Kind::SFBool, Cylinder::kSide, true, 1.0f},
                                         {"top", Kind::SFBool, Cylinder::kTop, true, 1.0f}};
constexpr FieldRule kGroupFields[] = {{"children", Kind::MFNode, Group::kChildren},
                                      {"bboxCenter", Kind::SFVec3f, kDiscard},
                                      {"bboxSize", Kind::SFVec3f, kDiscard},
                                      {"addChildren", Kind::MFNode, kDiscard},
                                      {"removeChildren", Kind::MFNode, kDiscard}};
constexpr FieldRule kFaceSetFields[] = {{"color", Kind::SFNode, IndexedFaceSet::kColor},
                                        {"coord", Kind::SFNode, IndexedFaceSet::kCoord},
                                        {"normal", Kind::SFNode, IndexedFaceSet::kNormal},
                                        {"colorIndex", Kind::MFInt32, IndexedFaceSet::kColorIndex},
                                        {"colorPerVertex", Kind::SFBool, IndexedFaceSet::kColorPerVertex},
                                        {"coordIndex", Kind::MFInt32, IndexedFaceSet::kCoordIndex},
                                        {"normalIndex", Kind::MFInt32, IndexedFaceSet::kNormalIndex},
                                        {"normalPerVertex", Kind::SFBool, IndexedFaceSet::kNormalPerVertex},
                                        {"texCoord", Kind::SFNode, kDiscard},
                                        {"texCoordIndex", Kind::MFInt32, kDiscard},
                                        {"ccw", Kind::SFBool, kDiscard},
                                        {"convex", Kind::SFBool, kDiscard},
                                        {"solid", Kind::SFBool, kDiscard},
                                        {"creaseAngle", Kind::SFFloat, kDiscard},
                                        {"set_colorIndex", Kind::MFInt32, kDiscard},
                                        {"set_coordIndex", Kind::MFInt32, kDiscard},
                                        {"set_normalIndex", Kind::MFInt32, kDiscard},
                                        {"set_texCoordIndex", Kind::MFInt32, kDiscard}};
constexpr FieldRule kLineSetFields[] = {{"color", Kind::SFNode, IndexedLineSet::kColor},
                                        {"coord", Kind::SFNode, IndexedLineSet::kCoord},
                                        {"colorIndex", Kind::MFInt32, IndexedLineSet::kColorIndex},
                                        {"colorPerVertex", Kind::SFBool, IndexedLineSet::kColorPerVertex},
                                        {"coordIndex", Kind::MFInt32, IndexedLineSet::kCoordIndex},
                                        {"set_colorIndex", Kind::MFInt32, kDiscard},
                                        {"set_coordIndex", Kind::MFInt32, kDiscard}};
constexpr FieldRule kMaterialFields[] = {{"ambientIntensity", Kind::SFFloat, Material::kAmbientIntensity},
                                         {"diffuseColor", Kind::SFColor, Material::kDiffuseColor},
                                         {"emissiveColor", Kind::SFColor, Material::kEmissiveColor},
                                         {"shininess", Kind::SFFloat, Material::kShininess},
                                         {"specularColor", Kind::SFColor, Material::kSpecularColor},
                                         {"transparency", Kind::SFFloat, Material::kTransparency}};
constexpr FieldRule kNormalFields[] = {{"vector", Kind::MFVec3f, Normal::kVector}};
constexpr FieldRule kShapeFields[] = {{"appearance", Kind::SFNode, Shape::kAppearance},
                                      {"geometry", Kind::SFNode, Shape::kGeometry}};
constexpr FieldRule kSphereFields[] = {{"radius", Kind::SFFloat, Sphere::kRadius}};
constexpr FieldRule kSwitchFields[] = {{"choice", Kind::MFNode, Switch::kChoice},
                                       {"whichChoice", Kind::SFInt32, Switch::kWhichChoice}};
constexpr FieldRule kTransformFields[] = {{"center", Kind::SFVec3f, Transform::kCenter},
                                          {"children", Kind::MFNode, Transform::kChildren},
                                          {"rotation", Kind::SFRotation, Transform::kRotation},
                                          {"scale", Kind::SFVec3f, Transform::kScale},
                                          {"scaleOrientation", Kind::SFRotation, Transform::kScaleOrientation},
                                          {"translation", Kind::SFVec3f, Transform::kTranslation},
                                          {"bboxCenter", Kind::SFVec3f, kDiscard},
                                          {"bboxSize", Kind::SFVec3f, kDiscard}};

constexpr std::uint8_t kAllAccess = kField | kExposedField | kEventIn;

template <class T>
struct Rules;
// Field limits: as many as the accepted names, except Material, which stops after five fields,
// and Transform, whose limit of ten is never reached.
template <>
struct Rules<Appearance> {
  static constexpr NodeRule rule{kAppearanceFields, kExposedField, 3, false};
};
template <>
struct Rules<Box> {
  static constexpr NodeRule rule{kBoxFields, kField, 1, true};
};
template <>
struct Rules<Color> {
  static constexpr NodeRule rule{kColorFields, kExposedField, 1, true};
};
template <>
struct Rules<Cone> {
  static constexpr NodeRule rule{kConeFields, kField, 4, false};
};
template <>
struct Rules<Coordinate> {
  static constexpr NodeRule rule{kCoordinateFields, kExposedField, 1, true};
};
template <>
struct Rules<Cylinder> {
  static constexpr NodeRule rule{kCylinderFields, kField, 5, false};
};
template <>
struct Rules<Group> {
  static constexpr NodeRule rule{kGroupFields, kAllAccess, 5, false};
};
template <>
struct Rules<IndexedFaceSet> {
  static constexpr NodeRule rule{kFaceSetFields, kAllAccess, 18, false};
};
template <>
struct Rules<IndexedLineSet> {
  static constexpr NodeRule rule{kLineSetFields, kAllAccess, 7, false};
};
template <>
struct Rules<Material> {
  static constexpr NodeRule rule{kMaterialFields, kExposedField, 5, false};
};
template <>
struct Rules<Normal> {
  static constexpr NodeRule rule{kNormalFields, kExposedField, 1, true};
};
template <>
struct Rules<Shape> {
  static constexpr NodeRule rule{kShapeFields, kExposedField, 2, false};
};
template <>
struct Rules<Sphere> {
  static constexpr NodeRule rule{kSphereFields, kField, 1, true};
};
template <>
struct Rules<Switch> {
  static constexpr NodeRule rule{kSwitchFields, kExposedField, 2, false};
};
template <>
struct Rules<Transform> {
  static constexpr NodeRule rule{kTransformFields, kAllAccess, 10, false};
};

bool isAccessWord(std::string_view token, std::uint8_t allowed) {
  return ((allowed & kField) && token == kKeywords[8]) || ((allowed & kExposedField) && token == kKeywords[9]) ||
         ((allowed & kEventIn) && token == kKeywords[10]);
}

bool isTypeWord(std::string_view token, const NodeRule& rule) {
  if (token.size() < 6 || (token[0] != 'S' && token[0] != 'M') || token[1] != 'F') return false;
  return std::any_of(rule.fields.begin(), rule.fields.end(),
                     [token](const FieldRule& field) { return kindName(field.kind) == token; });
}

struct DispatchRow {
  std::string_view name;
  Reader::NodeReader reader;
};

constexpr std::array<DispatchRow, 54> kDispatch = [] {
  std::array<DispatchRow, 54> rows{{
      {"Appearance", &Reader::readNode<Appearance>},
      {"Box", &Reader::readNode<Box>},
      {"Color", &Reader::readNode<Color>},
      {"Cone", &Reader::readNode<Cone>},
      {"Coordinate", &Reader::readNode<Coordinate>},
      {"Cylinder", &Reader::readNode<Cylinder>},
      {"Group", &Reader::readNode<Group>},
      {"IndexedFaceSet", &Reader::readNode<IndexedFaceSet>},
      {"IndexedLineSet", &Reader::readNode<IndexedLineSet>},
      {"Material", &Reader::readNode<Material>},
      {"Normal", &Reader::readNode<Normal>},
      {"Shape", &Reader::readNode<Shape>},
      {"Sphere", &Reader::readNode<Sphere>},
      {"Switch", &Reader::readNode<Switch>},
      {"Transform", &Reader::readNode<Transform>},
  }};
  for (std::size_t i = 0; i < kUnmodelledNodeTypes.size(); ++i)
    rows[15 + i] = {kUnmodelledNodeTypes[i], &Reader::skipNode};
  return rows;
}();

// Bytes of one node in the model, roughly: the object and its default values.
template <class T>
constexpr std::size_t nodeBytes() {
  return sizeof(T) + T::kFieldCount * 32;
}

}  // namespace

Reader::Reader(const char* t)
    : text(t),
      textEnd(t + std::strlen(t)),
      pos(t),
      copyLimit(kCopyAllowance + 4 * static_cast<std::size_t>(textEnd - t)),
      braces(t, textEnd, '{', '}'),
      brackets(t, textEnd, '[', ']') {}

Reader::~Reader() = default;

Reader::NodeReader Reader::lookup(std::string_view typeName) {
  if (typeName.empty()) return nullptr;
  for (const DispatchRow& row : kDispatch) {
    if (row.name[0] == typeName[0] && row.name == typeName) return row.reader;
  }
  return &Reader::skipNode;
}

void Reader::fail() {
  pos = nullptr;
  failed = true;
}

void Reader::skipSeparators() {
  const char* p = pos;
  if (!p) return;
  if (p >= skippedFrom && p <= skippedTo) {
    pos = skippedEnd;
    return;
  }
  const char* const start = p;
  bool comment = false;
  for (;;) {
    if (isSeparator(*p)) {
      ++p;
    } else if (*p == '#') {
      comment = true;
      p = std::strchr(p, '\n');
      if (!p) break;
      ++p;
    } else {
      break;
    }
  }
  // A run with a comment is not remembered: a start inside the comment would end elsewhere.
  if (p && !comment) {
    skippedFrom = start;
    skippedTo = p;
    skippedEnd = *p == '\0' ? nullptr : p;
  }
  pos = p && *p == '\0' ? nullptr : p;
}

std::string_view Reader::readToken() {
  skipSeparators();
  if (!pos) return {};
  const char* start = pos;
  const char* p = pos;
  while (!endsToken(*p)) ++p;
  pos = *p ? p : nullptr;
  return {start, static_cast<std::size_t>(p - start)};
}

bool Reader::readFloat(float& value) {
  skipSeparators();
  if (!pos) return false;
  // Plain decimal tokens convert directly from the text; every other token goes through its
  // kept characters and the standard conversion.
  const char* first = pos;
  const bool plus = *first == '+';
  if (plus) ++first;
  const char lead = (*first == '-' && !plus) ? first[1] : *first;
  if ((lead >= '0' && lead <= '9') || lead == '.') {
    float parsed;
    const auto result = fast_float::from_chars(first, textEnd, parsed);
    if (result.ec == std::errc() && endsToken(*result.ptr) &&
        static_cast<std::size_t>(result.ptr - pos) <= kNumberTokenChars) {
      value = parsed;
      pos = *result.ptr ? result.ptr : nullptr;
      return true;
    }
  }
  const std::string_view token = readToken();
  return convertFloat(token, value);
}

bool Reader::readInt(std::int32_t& value) {
  skipSeparators();
  if (!pos) return false;
  const char* p = pos;
  const bool negative = *p == '-';
  if (negative) ++p;
  const char* digits = p;
  std::uint32_t magnitude = 0;
  while (static_cast<unsigned>(*p - '0') < 10 && p - digits < 9)
    magnitude = magnitude * 10 + static_cast<unsigned>(*p++ - '0');
  if (p != digits && endsToken(*p)) {
    const auto signedMagnitude = static_cast<std::int32_t>(magnitude);
    value = negative ? -signedMagnitude : signedMagnitude;
    pos = *p ? p : nullptr;
    return true;
  }
  const std::string_view token = readToken();
  return convertInt(token, value);
}

const char* Reader::afterBody(const char* end) const {
  // The character right after a closing brace is passed over unread; at the text's end there is none.
  return *end ? end + 1 : nullptr;
}

void Reader::readScene(MFNode& children) {
  children.set = true;
  if (text[0] != '#') return;
  pos = text + 1;
  for (const std::string_view word : {kKeywords[2], kKeywords[3], kKeywords[4]}) {
    if (kept(readToken(), kOuterBuffer) != word) return;
  }
  while (pos) {
    std::string_view typeName = kept(readToken(), kOuterBuffer);
    if (typeName.empty()) break;
    std::string_view defName;
    if (typeName == kKeywords[0]) {
      defName = kept(readToken(), kOuterBuffer);
      typeName = kept(readToken(), kOuterBuffer);
    }
    const NodeReader reader = lookup(typeName);
    if (!reader) {
      quillon::Trace("Unknown error due to an unknown name\n");
      break;
    }
    children.nodes.push_back((this->*reader)(defName));
  }
}

std::unique_ptr<Node> Reader::skipNode(std::string_view) {
  if (!pos) return nullptr;
  const char* open = std::strchr(pos, '{');
  const char* close = open ? std::strchr(open + 1, '}') : nullptr;
  pos = close && close[1] ? close + 1 : nullptr;
  return nullptr;
}

template <class T>
std::unique_ptr<Node> Reader::readNode(std::string_view defName) {
  if (!pos) return nullptr;
  if (depth >= Group::kMaxDepth) {
    fail();
    return nullptr;
  }
  auto node = std::make_unique<T>();
  node->setName(defName);
  modelBytes += nodeBytes<T>();
  ++depth;
  deepest = std::max(deepest, depth);
  auto result = readBody(std::move(node), Rules<T>::rule);
  --depth;
  return result;
}

std::unique_ptr<Node> Reader::readBody(std::unique_ptr<Node> node, const NodeRule& rule) {
  const char* open = std::strchr(pos, '{');
  if (!open) {
    fail();
    return nullptr;
  }
  const char* close = braces.match(open);
  const char* bodyEnd = *close ? close + 1 : close;
  pos = open + 1;
  skipSeparators();
  if (rule.single && (!pos || pos >= bodyEnd)) {
    fail();
    return nullptr;
  }
  std::uint32_t seen = 0;
  for (int count = 0;;) {
    if (!pos) return node;
    if (pos >= bodyEnd || count >= rule.limit) {
      pos = afterBody(bodyEnd);
      return node;
    }
    if (!readField(*node, rule, seen)) {
      fail();
      return nullptr;
    }
    ++count;
    skipSeparators();
  }
}

bool Reader::readField(Node& node, const NodeRule& rule, std::uint32_t& seen) {
  std::string_view name = kept(readToken(), kInnerBuffer);
  if (isAccessWord(name, rule.access)) name = kept(readToken(), kInnerBuffer);
  if (isTypeWord(name, rule)) name = kept(readToken(), kInnerBuffer);
  if (name.empty()) return false;
  std::size_t index = 0;
  while (index < rule.fields.size() && rule.fields[index].name != name) ++index;
  if (index == rule.fields.size() || (seen & (1u << index))) return false;
  seen |= 1u << index;

  const FieldRule& field = rule.fields[index];
  const std::size_t definitionsBefore = definitions.size();
  std::unique_ptr<FieldValue> value = readValue(field);
  if (failed) return false;
  if (field.slot != kDiscard) {
    node.fields()[static_cast<std::size_t>(field.slot)].value = std::move(value);
  } else if (definitions.size() != definitionsBefore) {
    discarded.push_back(std::move(value));
  }
  return true;
}

std::unique_ptr<FieldValue> Reader::readValue(const FieldRule& field) {
  // A field name that ran up to the end of the text has no value: an empty token.
  if (!pos) {
    fail();
    return nullptr;
  }
  switch (field.kind) {
    case Kind::SFBool:
      return readBool(field);
    case Kind::SFInt32: {
      std::int32_t v;
      if (readInt(v)) return std::make_unique<SFInt32>(v);
      break;
    }
    case Kind::SFFloat:
      return readSingleFloat(field);
    case Kind::SFVec3f: {
      float x, y, z;
      if (readFloat(x) && readFloat(y) && readFloat(z)) return std::make_unique<SFVec3f>(x, y, z);
      break;
    }
    case Kind::SFColor: {
      float r, g, b;
      if (readFloat(r) && readFloat(g) && readFloat(b)) return std::make_unique<SFColor>(r, g, b);
      break;
    }
    case Kind::SFRotation: {
      float x, y, z, a;
      if (readFloat(x) && readFloat(y) && readFloat(z) && readFloat(a)) return std::make_unique<SFRotation>(x, y, z, a);
      break;
    }
    case Kind::SFNode: {
      auto node = readNodeItem();
      if (!failed) return std::make_unique<SFNode>(std::move(node));
      break;
    }
    case Kind::MFInt32:
      return readIntList();
    case Kind::MFVec3f:
      return readTripleList<MFVec3f>();
    case Kind::MFColor:
      return readTripleList<MFColor>();
    case Kind::MFNode:
      return readNodeList();
  }
  fail();
  return nullptr;
}

std::unique_ptr<FieldValue> Reader::readBool(const FieldRule& field) {
  const char* before = pos;
  const std::string_view token = kept(readToken(), kBoolBuffer);
  if (token == kKeywords[5]) return std::make_unique<SFBool>(true);
  if (token == kKeywords[6]) return std::make_unique<SFBool>(false);
  if (!field.hasFallback) {
    fail();
    return nullptr;
  }
  pos = before;
  return std::make_unique<SFBool>(field.fallback != 0.0f);
}

std::unique_ptr<FieldValue> Reader::readSingleFloat(const FieldRule& field) {
  float value;
  if (readFloat(value)) return std::make_unique<SFFloat>(value);
  if (!field.hasFallback) {
    fail();
    return nullptr;
  }
  return std::make_unique<SFFloat>(field.fallback);
}

std::unique_ptr<Node> Reader::readNodeItem() {
  const std::string_view token = kept(readToken(), kInnerBuffer);
  if (token.empty()) {
    fail();
    return nullptr;
  }
  if (token == kKeywords[7]) return nullptr;
  if (token == kKeywords[1]) return useDefinition(kept(readToken(), kInnerBuffer));
  if (token != kKeywords[0]) {
    const NodeReader reader = lookup(token);
    return (this->*reader)({});
  }
  const std::string_view defName = kept(readToken(), kInnerBuffer);
  const NodeReader reader = lookup(kept(readToken(), kInnerBuffer));
  if (!reader) {
    fail();
    return nullptr;
  }
  const int outerDeepest = deepest;
  const std::size_t bytesBefore = modelBytes;
  deepest = depth;
  std::unique_ptr<Node> node = (this->*reader)(defName);
  const int height = deepest - depth;
  deepest = std::max(outerDeepest, deepest);
  if (node) {
    definitions.push_back({node.get(), height, modelBytes - bytesBefore});
    firstDefinition.emplace(std::string_view(node->name()), definitions.size() - 1);
  }
  return node;
}

std::unique_ptr<Node> Reader::useDefinition(std::string_view name) {
  const auto found = firstDefinition.find(name);
  if (found == firstDefinition.end()) return nullptr;
  const Definition& definition = definitions[found->second];
  // A copy must respect the nesting limit and the copy allowance, or nested USEs could grow the
  // model exponentially from a small text.
  if (depth + definition.height > Group::kMaxDepth || copiedBytes + definition.bytes > copyLimit) {
    fail();
    return nullptr;
  }
  deepest = std::max(deepest, depth + definition.height);
  copiedBytes += definition.bytes;
  modelBytes += definition.bytes;
  return definition.node->clone();
}

const char* Reader::openList(const char*& close) {
  const char* open = std::strchr(pos, '[');
  if (!open) {
    fail();
    return nullptr;
  }
  close = brackets.match(open);
  pos = open + 1;
  skipSeparators();
  // A list whose first item is a quoted string counts as empty.
  if (pos && (*pos == '"' || pos > close)) return nullptr;
  return pos;
}

std::unique_ptr<FieldValue> Reader::readNodeList() {
  auto value = std::make_unique<MFNode>();
  value->set = true;
  const char* close = nullptr;
  if (!openList(close)) {
    if (!failed && pos) pos = *close ? close + 1 : nullptr;
    return failed ? nullptr : std::move(value);
  }
  for (;;) {
    value->nodes.push_back(readNodeItem());
    if (failed) return nullptr;
    skipSeparators();
    if (!pos) return value;
    if (pos > close) break;
  }
  pos = *close ? close + 1 : nullptr;
  return value;
}

std::unique_ptr<FieldValue> Reader::readIntList() {
  auto value = std::make_unique<MFInt32>();
  value->set = true;
  const char* close = nullptr;
  if (openList(close)) {
    value->values.reserve(lexer::countTokens(pos, close));
    for (;;) {
      std::int32_t item;
      if (!readInt(item)) {
        fail();
        return nullptr;
      }
      value->values.push_back(item);
      skipSeparators();
      if (!pos) return value;
      if (pos > close) break;
    }
  } else if (failed || !pos) {
    return failed ? nullptr : std::move(value);
  }
  modelBytes += value->values.capacity() * sizeof(std::int32_t);
  // Like a node body, the character after the closing bracket is passed over unread.
  pos = *close && close[1] ? close + 2 : nullptr;
  return value;
}

template <class Value>
std::unique_ptr<FieldValue> Reader::readTripleList() {
  auto value = std::make_unique<Value>();
  value->set = true;
  const char* close = nullptr;
  if (openList(close)) {
    value->values.reserve(lexer::countTokens(pos, close) / 3 + 1);
    for (;;) {
      float a, b, c;
      if (!readFloat(a) || !readFloat(b) || !readFloat(c)) {
        fail();
        return nullptr;
      }
      value->values.push_back({a, b, c});
      skipSeparators();
      if (!pos) return value;
      if (pos > close) break;
    }
  } else if (failed || !pos) {
    return failed ? nullptr : std::move(value);
  }
  modelBytes += value->values.capacity() * sizeof(value->values[0]);
  pos = *close && close[1] ? close + 2 : nullptr;
  return value;
}

int Group::parse(const char* text) {
  auto& slot = fields()[kChildren].value;
  if (!dynamic_cast<MFNode*>(slot.get())) slot = std::make_unique<MFNode>();
  auto& children = static_cast<MFNode&>(*slot);
  if (text) Reader(text).readScene(children);
  return children.nodes.empty() ? 1 : 0;
}

}  // namespace VRML
