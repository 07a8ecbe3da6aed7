#include "core/ZrErrorMap.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "core/CoreErrorCodes.h"

namespace quillon {
namespace {

constexpr std::string_view kUndocumented = "Undocumented error code";

// Sorted by code. Lookups hand out copies of the entries' views, which point into the constant
// tables, so a registration that moves the entries leaves them valid.
class Registry {
 public:
  Registry() { Add(kCoreErrors); }

  void Add(std::span<const ErrorDefinition> table) {
    std::lock_guard lock(mutex);
    if (std::find(tables.begin(), tables.end(), table.data()) != tables.end()) return;
    tables.push_back(table.data());
    for (const ErrorDefinition& e : table) {
      auto it = LowerBound(e.code);
      if (it == entries.end() || it->code != e.code) entries.insert(it, e);
    }
  }

  bool Find(ErrorCode code, ErrorDefinition& out) const {
    std::lock_guard lock(mutex);
    auto it = LowerBound(code);
    if (it == entries.end() || it->code != code) return false;
    out = *it;
    return true;
  }

  std::size_t Size() const {
    std::lock_guard lock(mutex);
    return entries.size();
  }

 private:
  std::vector<ErrorDefinition>::const_iterator LowerBound(ErrorCode code) const {
    return std::lower_bound(entries.begin(), entries.end(), code,
                            [](const ErrorDefinition& e, ErrorCode c) { return e.code < c; });
  }

  mutable std::mutex mutex;
  std::vector<ErrorDefinition> entries;
  std::vector<const ErrorDefinition*> tables;
};

Registry& registry() {
  static Registry instance;
  return instance;
}

}  // namespace

void ZrErrorMap::Register(std::span<const ErrorDefinition> table) { registry().Add(table); }

std::string_view ZrErrorMap::GetMessage(ErrorCode code) {
  ErrorDefinition e{};
  return registry().Find(code, e) ? e.message : kUndocumented;
}

bool ZrErrorMap::IsCoreCode(ErrorCode code) {
  ErrorDefinition e{};
  return registry().Find(code, e) && e.core;
}

std::size_t ZrErrorMap::Size() { return registry().Size(); }

}  // namespace quillon
