#include "channels/ZrValue1D.h"

#include <ostream>

#include "channels/ChannelErrorCodes.h"
#include "channels/ValueArchive.h"
#include "core/ZrErrorHandler.h"

namespace quillon {

const ZrClassRecord ZrValue1D::kClassRecord{ZrValue1D::kClassId, &ZrValue::kClassRecord};

namespace {
[[maybe_unused]] const bool registered = ZrClassRegistry::RegisterClass(&ZrValue1D::kClassRecord, ZrValue1D::kClassId);
}

std::unique_ptr<ZrValue> ZrValue1D::Clone() const { return std::make_unique<ZrValue1D>(*this); }

std::unique_ptr<ZrAnyObject> ZrValue1D::CreateObject() const { return std::make_unique<ZrValue1D>(); }

ErrorCode ZrValue1D::ReadFrom(std::string_view text, std::uint32_t t) {
  ValueArchive archive(text);
  if (archive->ReadObject("value", value) != HALCYON_SUCCESS) return RaiseError(ZRCOREVALUE1D_READFROM);
  if (archive->ReadObject("quality", quality) != HALCYON_SUCCESS) return RaiseError(ZRCOREVALUE1D_READFROM);
  status = archive.Status();
  timestamp = t;
  return HALCYON_SUCCESS;
}

ErrorCode ZrValue1D::WriteOn(std::ostream& stream) const {
  ZrArchiveM archive;
  archive.SelectOutputStream(&stream);
  if (archive.WriteObject("value", value) != HALCYON_SUCCESS || WriteCommon(archive, quality) != HALCYON_SUCCESS)
    return RaiseError(ZRCOREVALUE1D_WRITEON);
  return HALCYON_SUCCESS;
}

void ZrValue1D::Assign(const ZrValue& other) { value = other.GetScalarValue(); }

}  // namespace quillon
