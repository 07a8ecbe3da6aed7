#include "channels/ZrValue3D.h"

#include <cmath>
#include <ostream>

#include "channels/ChannelErrorCodes.h"
#include "channels/ValueArchive.h"
#include "core/ZrErrorHandler.h"

namespace quillon {

const ZrClassRecord ZrValue3D::kClassRecord{ZrValue3D::kClassId, &ZrValue::kClassRecord};

namespace {
[[maybe_unused]] const bool registered = ZrClassRegistry::RegisterClass(&ZrValue3D::kClassRecord, ZrValue3D::kClassId);
}

ZrValue3D::ZrValue3D() : value(4, 1, std::numeric_limits<double>::quiet_NaN()) { value[3] = 1.0; }

std::unique_ptr<ZrValue> ZrValue3D::Clone() const { return std::make_unique<ZrValue3D>(*this); }

std::unique_ptr<ZrAnyObject> ZrValue3D::CreateObject() const { return std::make_unique<ZrValue3D>(); }

ErrorCode ZrValue3D::ReadFrom(std::string_view text, std::uint32_t t) {
  ValueArchive archive(text);
  FltMatrix read;
  if (archive->ReadObject("value", read) != HALCYON_SUCCESS) return RaiseError(ZRCOREVALUE3D_READFROM);
  if ((read.Rows() != 3 && read.Rows() != 4) || read.Columns() != 1)
    return RaiseRootError(ZRCOREVALUE3D_READFROM_BADDIMENSION);
  // A homogeneous point is stored as the Cartesian one it stands for.
  const double w = read.Rows() == 4 ? read[3] : 1.0;
  const double scale = (w != 0.0 && std::isfinite(w)) ? 1.0 / w : 1.0;
  SetPosition(read[0] * scale, read[1] * scale, read[2] * scale);
  value[3] = 1.0;
  if (archive->ReadObject("quality", quality) != HALCYON_SUCCESS) return RaiseError(ZRCOREVALUE3D_READFROM);
  status = archive.Status();
  timestamp = t;
  return HALCYON_SUCCESS;
}

ErrorCode ZrValue3D::WriteOn(std::ostream& stream) const {
  ZrArchiveM archive;
  archive.SelectOutputStream(&stream);
  if (archive.WriteObject("value", value) != HALCYON_SUCCESS || WriteCommon(archive, quality) != HALCYON_SUCCESS)
    return RaiseError(ZRCOREVALUE3D_WRITEON);
  return HALCYON_SUCCESS;
}

double ZrValue3D::GetScalarValue() const { return std::sqrt(X() * X() + Y() * Y() + Z() * Z()); }

void ZrValue3D::Assign(const ZrValue& other) {
  if (const auto* same = dynamic_cast<const ZrValue3D*>(&other)) *this = *same;
}

}  // namespace quillon
