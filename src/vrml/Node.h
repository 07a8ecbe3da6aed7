#pragma once
// The node part of the VRML97 node model: name, field records, visiting and deep copies.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include "vrml/FieldValue.h"
#include "vrml/Grammar.h"

namespace VRML {

class IVRMLVisitor;

/// One field of a node: its owned value (empty until a value is given) and its name.
struct Field {
  std::unique_ptr<FieldValue> value;
  std::string_view name;
};

/// Base of the fifteen modelled node types. A node owns its field values, and through SFNode and
/// MFNode values its children, so deleting the root deletes the tree.
class Node {
 public:
  /// Size of the name buffer; a name keeps at most kNameSize - 1 characters.
  static constexpr std::size_t kNameSize = 256;

  virtual ~Node() = default;
  Node(const Node&) = delete;
  Node& operator=(const Node&) = delete;

  /// Calls the visitor's operation for this node's own type. Does not descend into children.
  virtual void accept(IVRMLVisitor& visitor) const = 0;

  /// The value slot of the field of that name, so that a caller may read or replace the value.
  /// Null for an empty or unknown name.
  std::unique_ptr<FieldValue>* field(std::string_view fieldName);
  const std::unique_ptr<FieldValue>* field(std::string_view fieldName) const;

  /// The value of the named field when it is present and of type T, else null.
  template <class T>
  const T* valueOf(std::string_view fieldName) const {
    const auto* slot = field(fieldName);
    return slot ? dynamic_cast<const T*>(slot->get()) : nullptr;
  }

  /// A new node of the same type holding deep copies of every field value (what a USE yields).
  /// The copy's own name is empty.
  virtual std::unique_ptr<Node> clone() const = 0;

  /// Releases every field value and leaves the slots empty.
  void clearFields();

  /// The field records, in the fixed order of the node type.
  virtual std::span<Field> fields() = 0;
  virtual std::span<const Field> fields() const = 0;

  /// The VRML type name, e.g. "Transform".
  virtual std::string_view typeName() const = 0;

  /// The DEF name, empty when the node has none.
  const char* name() const { return nameBuffer.data(); }
  /// Stores a name, cut to kNameSize - 1 characters.
  void setName(std::string_view newName);

 protected:
  // Only the characters up to the NUL are ever read, and nodes are made by the thousand, so the
  // rest of the buffer is left as it is.
  Node() { nameBuffer[0] = '\0'; }  // NOLINT(cppcoreguidelines-pro-type-member-init)

  template <class T>
  const T* valueAt(std::size_t index) const {
    return dynamic_cast<const T*>(fields()[index].value.get());
  }

 private:
  std::array<char, kNameSize> nameBuffer;
};

/// A default value of the given field type, made from the numbers that the grammar keeps.
template <FieldType Type>
std::unique_ptr<FieldValue> makeDefault(const std::array<float, 4>& n) {
  if constexpr (Type == FieldType::SFBool) {
    return std::make_unique<SFBool>(n[0] != 0.0f);
  } else if constexpr (Type == FieldType::SFInt32) {
    return std::make_unique<SFInt32>(static_cast<std::int32_t>(n[0]));
  } else if constexpr (Type == FieldType::SFFloat) {
    return std::make_unique<SFFloat>(n[0]);
  } else if constexpr (Type == FieldType::SFVec3f) {
    return std::make_unique<SFVec3f>(n[0], n[1], n[2]);
  } else if constexpr (Type == FieldType::SFColor) {
    return std::make_unique<SFColor>(n[0], n[1], n[2]);
  } else {
    static_assert(Type == FieldType::SFRotation, "no default for this field type");
    return std::make_unique<SFRotation>(n[0], n[1], n[2], n[3]);
  }
}

/// Holds the field records of one node type, named and filled with defaults as `Rule` says.
template <class Derived, const NodeRule& Rule>
class NodeOf : public Node {
 public:
  static constexpr const NodeRule& kRule = Rule;
  static constexpr std::size_t kFieldCount = Rule.keptCount;

  std::span<Field> fields() override { return records; }
  std::span<const Field> fields() const override { return records; }
  std::string_view typeName() const override { return Rule.typeName; }

  std::unique_ptr<Node> clone() const override {
    auto copy = std::make_unique<Derived>();
    for (std::size_t i = 0; i < kFieldCount; ++i) {
      Field& target = static_cast<NodeOf&>(*copy).records[i];
      target.value = records[i].value ? records[i].value->clone() : nullptr;
      target.name = records[i].name;
    }
    return copy;
  }

 protected:
  NodeOf() { initialise(std::make_index_sequence<kFieldCount>()); }

 private:
  friend Derived;

  // Unrolled at compile time: nodes are made by the thousand, and each default is a constant.
  template <std::size_t... I>
  void initialise(std::index_sequence<I...>) {
    (initialise<I>(), ...);
  }
  template <std::size_t I>
  void initialise() {
    constexpr const FieldRule& field = Rule.fields[I];
    records[I].name = field.name;
    if constexpr (field.initial.given) records[I].value = makeDefault<field.type>(field.initial.numbers);
  }

  std::array<Field, kFieldCount> records;
};

}  // namespace VRML
