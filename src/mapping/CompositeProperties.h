#pragma once
// Properties that fan one value out to several properties of the same kind.

#include <cstddef>
#include <utility>
#include <vector>

#include "mapping/IProperties.h"

namespace quillon {

/// Forwards each colour to its members in list order.
class CompositeColorProperty final : public IColorProperty {
 public:
  void SetColor(float r, float g, float b) override;
  void Append(Ref<IColorProperty> member) { members.push_back(std::move(member)); }
  std::size_t Count() const { return members.size(); }

 private:
  std::vector<Ref<IColorProperty>> members;
};

/// Forwards each number to its members in list order.
class CompositeFloatProperty final : public IFloatProperty {
 public:
  void SetValue(float value) override;
  void Append(Ref<IFloatProperty> member) { members.push_back(std::move(member)); }
  std::size_t Count() const { return members.size(); }

 private:
  std::vector<Ref<IFloatProperty>> members;
};

}  // namespace quillon
