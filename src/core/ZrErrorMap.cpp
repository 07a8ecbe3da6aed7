#include "core/ZrErrorMap.h"

#include <algorithm>
#include <span>
#include <vector>

#include "core/ErrorCatalogue.h"

namespace quillon {
namespace {

constexpr std::string_view kUndocumented = "Undocumented error code";

// Sorted by code; the first table that names a code wins.
const std::vector<ErrorDefinition>& registry() {
  static const std::vector<ErrorDefinition> entries = [] {
    std::vector<ErrorDefinition> all;
    for (std::span<const ErrorDefinition> table : ErrorCatalogue()) all.insert(all.end(), table.begin(), table.end());
    std::stable_sort(all.begin(), all.end(),
                     [](const ErrorDefinition& a, const ErrorDefinition& b) { return a.code < b.code; });
    all.erase(std::unique(all.begin(), all.end(),
                          [](const ErrorDefinition& a, const ErrorDefinition& b) { return a.code == b.code; }),
              all.end());
    return all;
  }();
  return entries;
}

const ErrorDefinition* find(ErrorCode code) {
  const auto& entries = registry();
  auto it = std::lower_bound(entries.begin(), entries.end(), code,
                             [](const ErrorDefinition& e, ErrorCode c) { return e.code < c; });
  return it != entries.end() && it->code == code ? &*it : nullptr;
}

}  // namespace

std::string_view ZrErrorMap::GetMessage(ErrorCode code) {
  const ErrorDefinition* e = find(code);
  return e ? e->message : kUndocumented;
}

bool ZrErrorMap::IsCoreCode(ErrorCode code) {
  const ErrorDefinition* e = find(code);
  return e && e->core;
}

std::size_t ZrErrorMap::Size() { return registry().size(); }

}  // namespace quillon
