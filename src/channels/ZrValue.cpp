#include "channels/ZrValue.h"

#include "channels/ZrArchiveM.h"
#include "core/CoreErrorCodes.h"

namespace quillon {

const ZrClassRecord ZrValue::kClassRecord{ZrValue::kClassId, &ZrAnyObject::kClassRecord};

namespace {
[[maybe_unused]] const bool registered = ZrClassRegistry::RegisterClass(&ZrValue::kClassRecord, ZrValue::kClassId);
}

ZrValue::~ZrValue() = default;

ErrorCode ZrValue::WriteCommon(ZrArchiveM& archive, double quality) const {
  if (ErrorCode r = archive.WriteObject("quality", quality); r != HALCYON_SUCCESS) return r;
  if (ErrorCode r = archive.WriteObject("status", static_cast<int>(status)); r != HALCYON_SUCCESS) return r;
  return archive.WriteObject("timestamp", static_cast<long>(timestamp));
}

}  // namespace quillon
