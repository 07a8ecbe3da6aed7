#include "channels/ZrValue6D.h"

#include <Eigen/LU>
#include <Eigen/SVD>
#include <cmath>
#include <ostream>

#include "channels/ChannelErrorCodes.h"
#include "channels/ValueArchive.h"
#include "core/ZrErrorHandler.h"

namespace quillon {

const ZrClassRecord ZrValue6D::kClassRecord{ZrValue6D::kClassId, &ZrValue::kClassRecord};

namespace {
[[maybe_unused]] const bool registered = ZrClassRegistry::RegisterClass(&ZrValue6D::kClassRecord, ZrValue6D::kClassId);

constexpr double kFrameTolerance = 0.1;
}  // namespace

ZrValue6D::ZrValue6D() : frame(4, 4) {
  for (std::size_t i = 0; i < 4; ++i) frame(i, i) = 1.0;
}

std::unique_ptr<ZrValue> ZrValue6D::Clone() const { return std::make_unique<ZrValue6D>(*this); }

std::unique_ptr<ZrAnyObject> ZrValue6D::CreateObject() const { return std::make_unique<ZrValue6D>(); }

bool ZrValue6D::IsFrame(const FltMatrix& m) {
  if (m.Rows() != 4 || m.Columns() != 4) return false;
  // Rule of Sarrus.
  const double det = m(0, 0) * m(1, 1) * m(2, 2) + m(0, 1) * m(1, 2) * m(2, 0) + m(0, 2) * m(1, 0) * m(2, 1) -
                     m(0, 2) * m(1, 1) * m(2, 0) - m(0, 0) * m(1, 2) * m(2, 1) - m(0, 1) * m(1, 0) * m(2, 2);
  return std::fabs(1.0 - det) < kFrameTolerance;
}

void ZrValue6D::Normalize(FltMatrix& m) {
  if (m.Rows() != 4 || m.Columns() != 4) return;
  Eigen::Matrix3d r;
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) r(i, j) = m(static_cast<std::size_t>(i), static_cast<std::size_t>(j));
  // The nearest rotation in the Frobenius norm is U Vᵀ of R = U S Vᵀ, with the sign of the
  // last singular direction turned where that product would be a reflection.
  const Eigen::JacobiSVD<Eigen::Matrix3d> svd(r, Eigen::ComputeFullU | Eigen::ComputeFullV);
  Eigen::Matrix3d u = svd.matrixU();
  const Eigen::Matrix3d& v = svd.matrixV();
  if ((u * v.transpose()).determinant() < 0.0) u.col(2) = -u.col(2);
  const Eigen::Matrix3d rotation = u * v.transpose();
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) m(static_cast<std::size_t>(i), static_cast<std::size_t>(j)) = rotation(i, j);
  m(3, 0) = m(3, 1) = m(3, 2) = 0.0;
  m(3, 3) = 1.0;
}

ErrorCode ZrValue6D::ReadFrom(std::string_view text, std::uint32_t t) {
  ValueArchive archive(text);
  FltMatrix read;
  if (archive->ReadObject("value", read) != HALCYON_SUCCESS) return RaiseError(ZRCOREVALUE6D_READFROM);
  if (read.Rows() != 4 || read.Columns() != 4) return RaiseRootError(ZRCOREVALUE6D_READFROM_BADDIMENSION);
  if (!IsFrame(read)) return RaiseRootError(ZRCOREVALUE6D_READFROM_NOTFRAME);
  Normalize(read);
  frame = read;
  if (archive->ReadObject("quality", quality) != HALCYON_SUCCESS) return RaiseError(ZRCOREVALUE6D_READFROM);
  status = archive.Status();
  timestamp = t;
  return HALCYON_SUCCESS;
}

ErrorCode ZrValue6D::WriteOn(std::ostream& stream) const {
  ZrArchiveM archive;
  archive.SelectOutputStream(&stream);
  if (archive.WriteObject("value", frame) != HALCYON_SUCCESS || WriteCommon(archive, quality) != HALCYON_SUCCESS)
    return RaiseError(ZRCOREVALUE6D_WRITEON);
  return HALCYON_SUCCESS;
}

double ZrValue6D::GetScalarValue() const {
  return std::sqrt(Position(0) * Position(0) + Position(1) * Position(1) + Position(2) * Position(2));
}

void ZrValue6D::Assign(const ZrValue& other) {
  if (const auto* same = dynamic_cast<const ZrValue6D*>(&other)) *this = *same;
}

}  // namespace quillon
