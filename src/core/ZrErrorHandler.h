#pragma once
// The process-wide error list that every failing operation writes to.

#include <array>
#include <string>
#include <string_view>

#include "core/ErrorDefinition.h"

namespace quillon {

/// A bounded list of (code, message) entries, read from the innermost failure (entry 0, the
/// root error) to the outermost caller. The 100th and every later entry of one tree land in
/// the last slot as the fixed maximum-reached entry.
class ZrErrorHandler {
 public:
  static constexpr int kCapacity = 100;
  static constexpr char kSeparator = '\xA7';

  /// The one handler of the process.
  static ZrErrorHandler& Instance();

  /// Empties the list and records the entry as the root error.
  void SetRootError(ErrorCode code, std::string_view text);
  /// Appends the entry; the 100th and every later one overwrite the last slot with code 2.
  void SetError(ErrorCode code, std::string_view text);
  /// Every entry as "code" 0xA7 "message", joined by 0xA7; empty for an empty list.
  std::string GetErrorText() const;

  int Count() const { return last_ + 1; }
  ErrorCode CodeAt(int index) const { return codes_.at(static_cast<std::size_t>(index)); }
  const std::string& TextAt(int index) const { return texts_.at(static_cast<std::size_t>(index)); }
  void Clear() { last_ = -1; }

 private:
  std::array<ErrorCode, kCapacity> codes_{};
  std::array<std::string, kCapacity> texts_{};
  int last_ = -1;
};

/// The usual raising sequences: record the code with its registered message, return the code.
ErrorCode RaiseRootError(ErrorCode code);
ErrorCode RaiseError(ErrorCode code);

}  // namespace quillon
