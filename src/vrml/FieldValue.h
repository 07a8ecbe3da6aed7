#pragma once
// Field values of the VRML97 node model: one class for each field type that the model stores.

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "vrml/Vocabulary.h"

namespace VRML {

class Node;

/// Base of every field value. The node that holds a value owns it.
class FieldValue {
 public:
  virtual ~FieldValue() = default;
  /// The VRML type name, e.g. "SFVec3f".
  virtual std::string_view typeName() const = 0;
  /// A deep copy; node payloads are cloned too.
  virtual std::unique_ptr<FieldValue> clone() const = 0;
  /// Releases the payload and resets the set flag.
  virtual void clear() = 0;

  /// True once a value was stored, by a node's default or by the reader.
  bool set = false;

 protected:
  FieldValue() = default;
  FieldValue(const FieldValue&) = default;
  FieldValue& operator=(const FieldValue&) = default;
};

struct Vec3f {
  float x = 0.0f;
  float y = 0.0f;
  float z = 0.0f;
  friend bool operator==(const Vec3f&, const Vec3f&) = default;
};

struct Color3f {
  float red = 0.0f;
  float green = 0.0f;
  float blue = 0.0f;
  friend bool operator==(const Color3f&, const Color3f&) = default;
};

class SFBool final : public FieldValue {
 public:
  SFBool() = default;
  explicit SFBool(bool v) : value(v) { set = true; }
  std::string_view typeName() const override { return fieldTypeName(FieldType::SFBool); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<SFBool>(*this); }
  void clear() override { value = false, set = false; }
  bool value = false;
};

class SFInt32 final : public FieldValue {
 public:
  SFInt32() = default;
  explicit SFInt32(std::int32_t v) : value(v) { set = true; }
  std::string_view typeName() const override { return fieldTypeName(FieldType::SFInt32); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<SFInt32>(*this); }
  void clear() override { value = 0, set = false; }
  std::int32_t value = 0;
};

class SFFloat final : public FieldValue {
 public:
  SFFloat() = default;
  explicit SFFloat(float v) : value(v) { set = true; }
  std::string_view typeName() const override { return fieldTypeName(FieldType::SFFloat); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<SFFloat>(*this); }
  void clear() override { value = 0.0f, set = false; }
  float value = 0.0f;
};

class SFVec3f final : public FieldValue {
 public:
  SFVec3f() = default;
  SFVec3f(float x, float y, float z) : value{x, y, z} { set = true; }
  std::string_view typeName() const override { return fieldTypeName(FieldType::SFVec3f); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<SFVec3f>(*this); }
  void clear() override { value = {}, set = false; }
  Vec3f value;
};

class SFColor final : public FieldValue {
 public:
  SFColor() = default;
  SFColor(float red, float green, float blue) : value{red, green, blue} { set = true; }
  std::string_view typeName() const override { return fieldTypeName(FieldType::SFColor); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<SFColor>(*this); }
  void clear() override { value = {}, set = false; }
  Color3f value;
};

/// Axis and angle in radians. A fresh value holds axis (1, 0, 0), angle 0, and is unset.
class SFRotation final : public FieldValue {
 public:
  SFRotation() = default;
  SFRotation(float ax, float ay, float az, float a) : x(ax), y(ay), z(az), angle(a) { set = true; }
  std::string_view typeName() const override { return fieldTypeName(FieldType::SFRotation); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<SFRotation>(*this); }
  void clear() override { x = 1.0f, y = 0.0f, z = 0.0f, angle = 0.0f, set = false; }
  float x = 1.0f;
  float y = 0.0f;
  float z = 0.0f;
  float angle = 0.0f;
};

/// One owned node, possibly none.
class SFNode final : public FieldValue {
 public:
  SFNode();
  explicit SFNode(std::unique_ptr<Node> n);
  ~SFNode() override;
  std::string_view typeName() const override { return fieldTypeName(FieldType::SFNode); }
  std::unique_ptr<FieldValue> clone() const override;
  void clear() override;
  std::unique_ptr<Node> node;
};

class MFInt32 final : public FieldValue {
 public:
  std::string_view typeName() const override { return fieldTypeName(FieldType::MFInt32); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<MFInt32>(*this); }
  void clear() override { std::vector<std::int32_t>().swap(values), set = false; }
  std::vector<std::int32_t> values;
};

class MFVec3f final : public FieldValue {
 public:
  std::string_view typeName() const override { return fieldTypeName(FieldType::MFVec3f); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<MFVec3f>(*this); }
  void clear() override { std::vector<Vec3f>().swap(values), set = false; }
  std::vector<Vec3f> values;
};

class MFColor final : public FieldValue {
 public:
  std::string_view typeName() const override { return fieldTypeName(FieldType::MFColor); }
  std::unique_ptr<FieldValue> clone() const override { return std::make_unique<MFColor>(*this); }
  void clear() override { std::vector<Color3f>().swap(values), set = false; }
  std::vector<Color3f> values;
};

/// An ordered list of owned nodes. An entry may be empty (a skipped node, NULL or an unmatched USE);
/// consumers pass over empty entries.
class MFNode final : public FieldValue {
 public:
  MFNode();
  ~MFNode() override;
  std::string_view typeName() const override { return fieldTypeName(FieldType::MFNode); }
  std::unique_ptr<FieldValue> clone() const override;
  void clear() override;
  std::size_t size() const { return nodes.size(); }
  std::vector<std::unique_ptr<Node>> nodes;
};

}  // namespace VRML
