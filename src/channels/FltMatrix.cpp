#include "channels/FltMatrix.h"

#include <utility>

namespace quillon {

FltMatrix::FltMatrix(std::size_t rows, std::size_t columns, double fill)
    : rows_(rows), columns_(columns), elements_(rows * columns, fill) {}

void FltMatrix::Resize(std::size_t rows, std::size_t columns, double fill) {
  rows_ = rows;
  columns_ = columns;
  elements_.assign(rows * columns, fill);
}

void FltMatrix::Transpose() {
  if (rows_ > 1 && columns_ > 1) {
    // Small matrices only pass through here; a copy keeps the permutation obvious.
    std::vector<double> transposed(elements_.size());
    for (std::size_t c = 0; c < columns_; ++c)
      for (std::size_t r = 0; r < rows_; ++r) transposed[r * columns_ + c] = elements_[c * rows_ + r];
    elements_.swap(transposed);
  }
  // A row or a column keeps its storage order; only the shape turns.
  std::swap(rows_, columns_);
}

}  // namespace quillon
