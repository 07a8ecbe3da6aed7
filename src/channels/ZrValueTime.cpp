#include "channels/ZrValueTime.h"

#include <ostream>

#include "channels/ValueArchive.h"
#include "core/ZrErrorHandler.h"

namespace quillon {

const ZrClassRecord ZrValueTime::kClassRecord{ZrValueTime::kClassId, &ZrValue::kClassRecord};

namespace {
[[maybe_unused]] const bool registered =
    ZrClassRegistry::RegisterClass(&ZrValueTime::kClassRecord, ZrValueTime::kClassId);
}

std::unique_ptr<ZrValue> ZrValueTime::Clone() const { return std::make_unique<ZrValueTime>(*this); }

std::unique_ptr<ZrAnyObject> ZrValueTime::CreateObject() const { return std::make_unique<ZrValueTime>(); }

// A time value has no error codes of its own; an archive failure passes on the archive's.
ErrorCode ZrValueTime::ReadFrom(std::string_view text, std::uint32_t t) {
  ValueArchive archive(text);
  if (ErrorCode r = archive->ReadObject("value", time); r != HALCYON_SUCCESS) return r;
  // The statement must be there, as for every value, but a time has no quality to keep.
  double quality = 0.0;
  if (ErrorCode r = archive->ReadObject("quality", quality); r != HALCYON_SUCCESS) return r;
  status = archive.Status();
  timestamp = t;
  return HALCYON_SUCCESS;
}

ErrorCode ZrValueTime::WriteOn(std::ostream& stream) const {
  ZrArchiveM archive;
  archive.SelectOutputStream(&stream);
  if (ErrorCode r = archive.WriteObject("value", time); r != HALCYON_SUCCESS) return r;
  return WriteCommon(archive, GetQuality());
}

void ZrValueTime::Assign(const ZrValue& other) { time = other.GetScalarValue(); }

}  // namespace quillon
