#include "channels/ZrArchive.h"

#include <utility>

namespace quillon {

ZrArchive::ZrArchive(std::string name, bool readOnlyMode)
    : fileName(name.empty() ? std::string(kDefaultFileName) : std::move(name)), readOnly(readOnlyMode) {}

ZrArchive::~ZrArchive() = default;

}  // namespace quillon
