#pragma once
// What the four value classes share when they read themselves from an archive text.

#include <sstream>
#include <string>
#include <string_view>

#include "channels/ZrArchiveM.h"
#include "core/CoreErrorCodes.h"

namespace quillon {

/// An archive over a copy of the text.
class ValueArchive {
 public:
  explicit ValueArchive(std::string_view text) : stream(std::string(text)) { archive.SelectInputStream(&stream); }
  ZrArchiveM& operator*() { return archive; }
  ZrArchiveM* operator->() { return &archive; }

  /// The "status" statement, or 0 when it is missing or does not convert.
  std::int32_t Status() {
    int status = 0;
    if (archive.ReadObject("status", status) != HALCYON_SUCCESS) status = 0;
    return status;
  }

 private:
  std::istringstream stream;
  ZrArchiveM archive;
};

}  // namespace quillon
