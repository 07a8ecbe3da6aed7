#include "vrml/Reader.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "core/LargeBuffers.h"
#include "core/Trace.h"
#include "vrml/Grammar.h"
#include "vrml/Lexer.h"
#include "vrml/NumberToken.h"

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

bool isAccessWord(std::string_view token, AccessWords allowed) {
  return (allowed.field && token == keyword(Keyword::kField)) ||
         (allowed.exposedField && token == keyword(Keyword::kExposedField)) ||
         (allowed.eventIn && token == keyword(Keyword::kEventIn));
}

// A field-type word is accepted when it names the type of one of the node type's fields.
bool isTypeWord(std::string_view token, const NodeRule& rule) {
  if (token.size() < 6 || (token[0] != 'S' && token[0] != 'M') || token[1] != 'F') return false;
  return std::any_of(rule.fields.begin(), rule.fields.end(),
                     [token](const FieldRule& field) { return fieldTypeName(field.type) == token; });
}

struct DispatchRow {
  std::string_view name;
  Reader::NodeReader reader;
};

// The modelled types, each with its own reader, then the recognised ones, which are skipped.
template <class... Modelled>
constexpr auto dispatchRows() {
  std::array<DispatchRow, sizeof...(Modelled) + grammar::kUnmodelledNodeTypes.size()> rows{
      {{Modelled::kRule.typeName, &Reader::readNode<Modelled>}...}};
  std::size_t row = sizeof...(Modelled);
  for (const std::string_view name : grammar::kUnmodelledNodeTypes) rows[row++] = {name, &Reader::skipNode};
  return rows;
}

constexpr auto kDispatch = dispatchRows<Appearance, Box, Color, Cone, Coordinate, Cylinder, Group, IndexedFaceSet,
                                        IndexedLineSet, Material, Normal, Shape, Sphere, Switch, Transform>();
static_assert(kDispatch.size() == 54);

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
  for (const Keyword word : {Keyword::kVrml, Keyword::kVersion, Keyword::kEncoding}) {
    if (kept(readToken(), kOuterBuffer) != keyword(word)) return;
  }
  while (pos) {
    std::string_view typeName = kept(readToken(), kOuterBuffer);
    if (typeName.empty()) break;
    std::string_view defName;
    if (typeName == keyword(Keyword::kDef)) {
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
  auto result = readBody(std::move(node), T::kRule);
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
  if (rule.singleField && (!pos || pos >= bodyEnd)) {
    fail();
    return nullptr;
  }
  std::uint32_t seen = 0;
  for (std::size_t count = 0;;) {
    if (!pos) return node;
    if (pos >= bodyEnd || count >= rule.fieldLimit) {
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
  if (field.use != FieldUse::kDiscarded) {
    // Kept fields come first, so the field's index is its record's. No value means that a bad
    // one left the default in place.
    if (value) node.fields()[index].value = std::move(value);
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
  switch (field.type) {
    case FieldType::SFBool:
      return readBool(field);
    case FieldType::SFInt32: {
      std::int32_t v;
      if (readInt(v)) return std::make_unique<SFInt32>(v);
      break;
    }
    case FieldType::SFFloat:
      return readSingleFloat(field);
    case FieldType::SFVec3f: {
      float x, y, z;
      if (readFloat(x) && readFloat(y) && readFloat(z)) return std::make_unique<SFVec3f>(x, y, z);
      break;
    }
    case FieldType::SFColor: {
      float r, g, b;
      if (readFloat(r) && readFloat(g) && readFloat(b)) return std::make_unique<SFColor>(r, g, b);
      break;
    }
    case FieldType::SFRotation: {
      float x, y, z, a;
      if (readFloat(x) && readFloat(y) && readFloat(z) && readFloat(a)) return std::make_unique<SFRotation>(x, y, z, a);
      break;
    }
    case FieldType::SFNode: {
      auto node = readNodeItem();
      if (!failed) return std::make_unique<SFNode>(std::move(node));
      break;
    }
    case FieldType::MFInt32:
      return readIntList();
    case FieldType::MFVec3f:
      return readTripleList<MFVec3f>();
    case FieldType::MFColor:
      return readTripleList<MFColor>();
    case FieldType::MFNode:
      return readNodeList();
    default:
      break;
  }
  fail();
  return nullptr;
}

std::unique_ptr<FieldValue> Reader::readBool(const FieldRule& field) {
  const char* before = pos;
  const std::string_view token = kept(readToken(), kBoolBuffer);
  if (token == keyword(Keyword::kTrue)) return std::make_unique<SFBool>(true);
  if (token == keyword(Keyword::kFalse)) return std::make_unique<SFBool>(false);
  if (field.use != FieldUse::kForgiving) {
    fail();
    return nullptr;
  }
  // The word goes back to be read as what follows.
  pos = before;
  return nullptr;
}

std::unique_ptr<FieldValue> Reader::readSingleFloat(const FieldRule& field) {
  float value;
  if (readFloat(value)) return std::make_unique<SFFloat>(value);
  if (field.use != FieldUse::kForgiving) fail();
  return nullptr;
}

std::unique_ptr<Node> Reader::readNodeItem() {
  const std::string_view token = kept(readToken(), kInnerBuffer);
  if (token.empty()) {
    fail();
    return nullptr;
  }
  if (token == keyword(Keyword::kNull)) return nullptr;
  if (token == keyword(Keyword::kUse)) return useDefinition(kept(readToken(), kInnerBuffer));
  if (token != keyword(Keyword::kDef)) {
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
    quillon::ReserveLarge(value->values, lexer::countTokens(pos, close));
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
    quillon::ReserveLarge(value->values, lexer::countTokens(pos, close) / 3 + 1);
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
