#pragma once
// A dense matrix of doubles stored column by column.

#include <cstddef>
#include <vector>

namespace quillon {

/// A rows × columns matrix of doubles; the element in row r and column c lies at position
/// c × rows + r of the storage. Element access is unchecked.
class FltMatrix {
 public:
  FltMatrix() = default;
  FltMatrix(std::size_t rows, std::size_t columns, double fill = 0.0);

  std::size_t Rows() const { return rows_; }
  std::size_t Columns() const { return columns_; }
  std::size_t Size() const { return elements_.size(); }
  bool Empty() const { return elements_.empty(); }

  /// Gives the matrix the new shape; every element becomes `fill`.
  void Resize(std::size_t rows, std::size_t columns, double fill = 0.0);

  double& operator()(std::size_t row, std::size_t column) { return elements_[column * rows_ + row]; }
  double operator()(std::size_t row, std::size_t column) const { return elements_[column * rows_ + row]; }
  /// Element by storage position.
  double& operator[](std::size_t index) { return elements_[index]; }
  double operator[](std::size_t index) const { return elements_[index]; }

  double* Data() { return elements_.data(); }
  const double* Data() const { return elements_.data(); }

  /// Swaps rows and columns in place.
  void Transpose();

  bool operator==(const FltMatrix& other) const = default;

 private:
  std::size_t rows_ = 0;
  std::size_t columns_ = 0;
  std::vector<double> elements_;
};

}  // namespace quillon
