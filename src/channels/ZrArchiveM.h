#pragma once
// The matrix archive: a text of assignment statements "name = value;" over standard streams.

#include <cstddef>
#include <iosfwd>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "channels/FltMatrix.h"
#include "channels/ZrArchive.h"

namespace quillon {

/// Reads and writes named numbers, strings, arrays and matrices. Every lookup searches the
/// whole input from its start, so statements may stand in any order; a name matches only as a
/// whole token. Every operation returns 0 or a code that it has also recorded in the error list.
///
/// The element types are signed and unsigned char, short, int and long, float, double and
/// std::string; ReadObject and WriteObject also take a FltMatrix.
class ZrArchiveM final : public ZrArchive {
 public:
  /// The kind of a statement's value text.
  enum Kind : int { kScalar = 0, kString = 1, kMatrix = 2 };
  static constexpr int kDefaultPrecision = 6;
  static constexpr int kMaxPrecision = 60;

  explicit ZrArchiveM(std::string fileName = {}, bool readOnly = true);
  ~ZrArchiveM() override;

  /// The streams are not owned; null deselects.
  void SelectInputStream(std::istream* stream) { input = stream; }
  void SelectOutputStream(std::ostream* stream) { output = stream; }

  /// Read-only mode: reads the file and selects it as input. Otherwise selects an empty
  /// buffer as output, which Close writes to the file.
  ErrorCode Open() override;
  ErrorCode Close() override;

  /// Decimals of floating-point numbers written from now on (0 to kMaxPrecision).
  void SetPrecision(int decimals);

  /// Finds the statement `name` and returns its value text and kind (Kind).
  ErrorCode GetValueString(std::string_view name, std::string& valueText, int& kind);

  /// Converts a scalar value text (or an element of an array) as the C library does: every
  /// integer type as "%d" into an int that is then assigned, float as "%f", double as strtod.
  /// A text that does not convert gives ZRARCHIVEM_GETVALUE_SYNTAXERROR.
  template <class T>
  ErrorCode GetValue(std::string_view text, T& value);
  /// Converts a value text of the matrix kind.
  ErrorCode GetValue(std::string_view text, FltMatrix& matrix);

  /// A scalar statement converts as GetValue does, except that a floating number goes
  /// through strtod and reads as 0 when it does not convert.
  template <class T>
  ErrorCode ReadObject(std::string_view name, T& value);
  /// Reads a bracketed list of exactly `size` elements.
  template <class T>
  ErrorCode ReadArray(std::string_view name, T* values, std::size_t size);
  /// Reads a matrix of `size` elements in `columns` columns into `values`, row by row.
  template <class T>
  ErrorCode ReadMatrix(std::string_view name, T* values, std::size_t size, std::size_t columns);

  /// Walks the statements of the input from its start, in text order. A statement that is no
  /// matrix gives ZRARCHIVEM_READNEXTFLTMATRIX_TYPEMISMATCH with its name; the walk can go on.
  ErrorCode ReadFirstFltMatrix(std::string& name, FltMatrix& matrix);
  ErrorCode ReadNextFltMatrix(std::string& name, FltMatrix& matrix);

  /// With `named` clear only the value is written, as an element of an array.
  template <class T>
  ErrorCode WriteObject(std::string_view name, const T& value, bool named = true);
  ErrorCode WriteObject(std::string_view name, const std::vector<std::string>& strings);
  /// Written as a column: "[", one element a line, "]'".
  template <class T>
  ErrorCode WriteArray(std::string_view name, const T* values, std::size_t size);
  /// `values` row by row; `size` must be a multiple of `columns`.
  template <class T>
  ErrorCode WriteMatrix(std::string_view name, const T* values, std::size_t size, std::size_t columns);

 private:
  ErrorCode ReadValueString(std::string_view rest, std::string& valueText, int& kind);
  /// Adds the name to the written ones; false when it was there already.
  bool MarkWritten(std::string_view name);
  template <class T>
  std::string Format(const T& value) const;
  /// Converts the elements of a bracketed text, in order, into values (sized to fit).
  template <class T>
  ErrorCode ReadElements(std::string_view text, T* values);
  void WriteMatrixText(const FltMatrix& matrix);

  std::istream* input = nullptr;
  std::ostream* output = nullptr;
  std::vector<std::string> written;
  std::stringstream fileText;  // the file's content between Open and Close
  int precision = kDefaultPrecision;
};

}  // namespace quillon
