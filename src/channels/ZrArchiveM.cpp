#include "channels/ZrArchiveM.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <type_traits>
#include <utility>

#include "channels/ArchiveText.h"
#include "channels/ChannelErrorCodes.h"
#include "core/CoreErrorCodes.h"
#include "core/ZrErrorHandler.h"

namespace quillon {

using archive_text::SkipBlanks;

namespace {

// The name stands at the start of the line as a whole token.
bool MatchName(std::string_view line, std::string_view name) {
  if (name.empty() || line.substr(0, name.size()) != name) return false;
  if (line.size() == name.size()) return true;
  const char next = line[name.size()];
  return next == '=' || next == ' ' || next == '\t' || next == '\r' || next == '\n';
}

// The text after the first quote up to the next one (or the end).
std::string Unquote(std::string_view text) {
  const std::size_t open = text.find('\'');
  if (open == std::string_view::npos) return std::string(SkipBlanks(text));
  const std::size_t close = text.find('\'', open + 1);
  return std::string(
      text.substr(open + 1, close == std::string_view::npos ? std::string_view::npos : close - open - 1));
}

// What snprintf wrote into the buffer.
std::string Kept(const char* buffer, int n, std::size_t capacity) {
  if (n <= 0) return std::string();
  return std::string(buffer, std::min(static_cast<std::size_t>(n), capacity - 1));
}

}  // namespace

ZrArchiveM::ZrArchiveM(std::string name, bool readOnlyMode) : ZrArchive(std::move(name), readOnlyMode) {}

ZrArchiveM::~ZrArchiveM() = default;

ErrorCode ZrArchiveM::Open() {
  if (readOnly) {
    std::ifstream file(fileName, std::ios::binary);
    if (!file) return RaiseRootError(ZRARCHIVEM_OPEN);
    std::string content;
    std::array<char, 4096> chunk{};
    while (file.read(chunk.data(), chunk.size()) || file.gcount() > 0)
      content.append(chunk.data(), static_cast<std::size_t>(file.gcount()));
    fileText.str(content);
    fileText.clear();
    input = &fileText;
  } else {
    fileText.str(std::string());
    fileText.clear();
    written.clear();
    output = &fileText;
  }
  return HALCYON_SUCCESS;
}

ErrorCode ZrArchiveM::Close() {
  if (input == &fileText) input = nullptr;
  if (output != &fileText) return HALCYON_SUCCESS;
  output = nullptr;
  std::ofstream file(fileName, std::ios::binary | std::ios::trunc);
  file << fileText.str();
  file.close();
  if (!file) return RaiseRootError(ZRARCHIVEM_CLOSE);
  return HALCYON_SUCCESS;
}

void ZrArchiveM::SetPrecision(int decimals) { precision = std::clamp(decimals, 0, kMaxPrecision); }

// ---- Reading -------------------------------------------------------------------------------

ErrorCode ZrArchiveM::GetValueString(std::string_view name, std::string& valueText, int& kind) {
  if (!input) return RaiseRootError(ZRARCHIVEM_READOBJECT_NOINPUTSTREAM);
  input->clear();
  input->seekg(0);
  std::string line;
  while (std::getline(*input, line)) {
    std::string_view rest = SkipBlanks(line);
    if (!MatchName(rest, name)) continue;
    rest = SkipBlanks(rest.substr(name.size()));
    if (rest.empty() || rest.front() != '=') return RaiseRootError(ZRARCHIVEM_GETVALUESTRING_SYNTAXERROR);
    rest.remove_prefix(1);
    if (ReadValueString(rest, valueText, kind) != HALCYON_SUCCESS) return RaiseError(ZRARCHIVEM_GETVALUESTRING);
    return HALCYON_SUCCESS;
  }
  input->clear();
  return RaiseRootError(ZRARCHIVEM_GETVALUESTRING_OBJECTNOTFOUND);
}

ErrorCode ZrArchiveM::ReadValueString(std::string_view rest, std::string& valueText, int& kind) {
  rest = SkipBlanks(rest);
  if (rest.empty() || rest.front() != '[') {
    valueText.assign(rest);
    kind = rest.find('\'') == std::string_view::npos ? kScalar : kString;
    return HALCYON_SUCCESS;
  }
  valueText.clear();
  std::string more;
  std::string_view current = rest;
  for (;;) {
    const std::size_t close = current.find(']');
    if (close != std::string_view::npos) {
      valueText.append(current.substr(0, close + 1));
      std::size_t quotes = 0;
      while (close + 1 + quotes < current.size() && current[close + 1 + quotes] == '\'') ++quotes;
      // An odd number of quotes transposes; two transposes cancel.
      if (quotes % 2 == 1) valueText.push_back('\'');
      kind = kMatrix;
      return HALCYON_SUCCESS;
    }
    valueText.append(current);
    valueText.push_back(' ');  // the line break only joins lines
    if (!std::getline(*input, more)) return RaiseRootError(ZRARCHIVEM_READVALUESTRING_ENDOFFILE);
    current = more;
  }
}

template <class T>
ErrorCode ZrArchiveM::GetValue(std::string_view text, T& value) {
  if constexpr (std::is_same_v<T, std::string>) {
    value = Unquote(text);
  } else if constexpr (std::is_same_v<T, float>) {
    // "%f" rounds straight to the float; through a double first it could round twice.
    if (!archive_text::ToFloat(text, value)) return RaiseRootError(ZRARCHIVEM_GETVALUE_SYNTAXERROR);
  } else if constexpr (std::is_floating_point_v<T>) {
    double d = 0.0;
    if (!archive_text::ToDouble(text, d)) return RaiseRootError(ZRARCHIVEM_GETVALUE_SYNTAXERROR);
    value = static_cast<T>(d);
  } else {
    if (!archive_text::ToInteger(text, value)) return RaiseRootError(ZRARCHIVEM_GETVALUE_SYNTAXERROR);
  }
  return HALCYON_SUCCESS;
}

ErrorCode ZrArchiveM::GetValue(std::string_view text, FltMatrix& matrix) {
  if (!archive_text::ParseMatrix(text, matrix)) return RaiseRootError(ZRARCHIVEM_GETVALUE_NOMATRIX);
  return HALCYON_SUCCESS;
}

template <class T>
ErrorCode ZrArchiveM::ReadObject(std::string_view name, T& value) {
  std::string text;
  int kind = kScalar;
  if (GetValueString(name, text, kind) != HALCYON_SUCCESS) return RaiseError(ZRARCHIVEM_READOBJECT);
  if constexpr (std::is_same_v<T, FltMatrix>) {
    if (kind == kString) return RaiseRootError(ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
    if (kind == kScalar) {
      double d = 0.0;
      archive_text::ToDouble(text, d);
      value.Resize(1, 1, d);
    } else if (GetValue(text, value) != HALCYON_SUCCESS) {
      return RaiseError(ZRARCHIVEM_READOBJECT_SYNTAXERROR);
    }
  } else if constexpr (std::is_same_v<T, std::string>) {
    if (kind != kString) return RaiseRootError(ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
    value = Unquote(text);
  } else {
    if (kind != kScalar) return RaiseRootError(ZRARCHIVEM_READOBJECT_TYPEMISMATCH);
    if constexpr (std::is_floating_point_v<T>) {
      double d = 0.0;
      archive_text::ToDouble(text, d);  // what does not convert reads as 0
      value = static_cast<T>(d);
    } else if (GetValue(text, value) != HALCYON_SUCCESS) {
      return RaiseError(ZRARCHIVEM_READOBJECT_SYNTAXERROR);
    }
  }
  return HALCYON_SUCCESS;
}

template <class T>
ErrorCode ZrArchiveM::ReadElements(std::string_view text, T* values) {
  ErrorCode result = HALCYON_SUCCESS;
  std::size_t k = 0;
  archive_text::ForEachElement(text, [&](std::string_view piece) {
    if (result == HALCYON_SUCCESS && GetValue(piece, values[k++]) != HALCYON_SUCCESS)
      result = RaiseError(ZRARCHIVEM_READARRAY_SYNTAXERROR);
  });
  return result;
}

template <class T>
ErrorCode ZrArchiveM::ReadArray(std::string_view name, T* values, std::size_t size) {
  std::string text;
  int kind = kScalar;
  if (GetValueString(name, text, kind) != HALCYON_SUCCESS) return RaiseError(ZRARCHIVEM_READARRAY);
  if (kind != kMatrix) return RaiseRootError(ZRARCHIVEM_READARRAY_TYPEMISMATCH);
  if (archive_text::CountElements(text) != size || (size > 0 && !values))
    return RaiseRootError(ZRARCHIVEM_READARRAY_INVALIDSIZE);
  return ReadElements(text, values);
}

template <class T>
ErrorCode ZrArchiveM::ReadMatrix(std::string_view name, T* values, std::size_t size, std::size_t columns) {
  std::string text;
  int kind = kScalar;
  if (GetValueString(name, text, kind) != HALCYON_SUCCESS) return RaiseError(ZRARCHIVEM_READMATRIX);
  if (kind != kMatrix) return RaiseRootError(ZRARCHIVEM_READMATRIX_TYPEMISMATCH);
  const std::size_t elements = archive_text::CountElements(text);
  if (elements != size || (size > 0 && !values)) return RaiseRootError(ZRARCHIVEM_READMATRIX_INVALIDSIZE);
  if (elements > 0) {
    const std::size_t rows = archive_text::CountRows(text);
    if (rows == 0 || elements % rows != 0) return RaiseRootError(ZRARCHIVEM_READMATRIX_NOMATRIX);
    if (elements / rows != columns) return RaiseRootError(ZRARCHIVEM_READMATRIX_INVALIDNUMCOLUMNS);
  }
  return ReadElements(text, values);
}

ErrorCode ZrArchiveM::ReadFirstFltMatrix(std::string& name, FltMatrix& matrix) {
  if (!input) return RaiseRootError(ZRARCHIVEM_READFIRSTFLTMATRIX_NOINPUTSTREAM);
  input->clear();
  input->seekg(0);
  if (ReadNextFltMatrix(name, matrix) != HALCYON_SUCCESS) return RaiseError(ZRARCHIVEM_READFIRSTFLTMATRIX);
  return HALCYON_SUCCESS;
}

ErrorCode ZrArchiveM::ReadNextFltMatrix(std::string& name, FltMatrix& matrix) {
  if (!input) return RaiseRootError(ZRARCHIVEM_READFIRSTFLTMATRIX_NOINPUTSTREAM);
  std::string line;
  while (std::getline(*input, line)) {
    const std::string_view rest = SkipBlanks(line);
    const std::size_t end = rest.find_first_of(" \t\r=");
    if (end == 0 || end == std::string_view::npos) continue;
    std::string_view value = SkipBlanks(rest.substr(end));
    if (value.empty() || value.front() != '=') continue;  // not a statement
    name.assign(rest.substr(0, end));
    value.remove_prefix(1);
    std::string text;
    int kind = kScalar;
    if (ReadValueString(value, text, kind) != HALCYON_SUCCESS)
      return RaiseError(ZRARCHIVEM_READNEXTFLTMATRIX_SYNTAXERROR);
    if (kind != kMatrix) return RaiseRootError(ZRARCHIVEM_READNEXTFLTMATRIX_TYPEMISMATCH);
    if (GetValue(text, matrix) != HALCYON_SUCCESS) return RaiseError(ZRARCHIVEM_READNEXTFLTMATRIX_SYNTAXERROR);
    return HALCYON_SUCCESS;
  }
  return RaiseRootError(ZRARCHIVEM_READNEXTFLTMATRIX_EOF);
}

// ---- Writing -------------------------------------------------------------------------------

bool ZrArchiveM::MarkWritten(std::string_view name) {
  if (std::find(written.begin(), written.end(), name) != written.end()) return false;
  written.emplace_back(name);
  return true;
}

template <class T>
std::string ZrArchiveM::Format(const T& value) const {
  if constexpr (std::is_same_v<T, std::string>) {
    return "'" + value + "'";
  } else if constexpr (std::is_floating_point_v<T>) {
    return archive_text::FormatFixed(static_cast<double>(value), precision);
  } else {
    char buffer[32];
    if constexpr (std::is_same_v<T, long>)
      return Kept(buffer, std::snprintf(buffer, sizeof buffer, "%10ld", value), sizeof buffer);
    else if constexpr (std::is_same_v<T, unsigned long>)
      return Kept(buffer, std::snprintf(buffer, sizeof buffer, "%10lu", value), sizeof buffer);
    else if constexpr (std::is_signed_v<T>)
      return Kept(buffer, std::snprintf(buffer, sizeof buffer, "%d", static_cast<int>(value)), sizeof buffer);
    else
      return Kept(buffer, std::snprintf(buffer, sizeof buffer, "%u", static_cast<unsigned>(value)), sizeof buffer);
  }
}

void ZrArchiveM::WriteMatrixText(const FltMatrix& matrix) {
  *output << "[ ";
  for (std::size_t r = 0; r < matrix.Rows(); ++r) {
    if (r > 0) *output << ";\n";
    for (std::size_t c = 0; c < matrix.Columns(); ++c) *output << (c > 0 ? " " : "") << Format(matrix(r, c));
  }
  *output << " ]";
}

template <class T>
ErrorCode ZrArchiveM::WriteObject(std::string_view name, const T& value, bool named) {
  if (!output) return RaiseRootError(ZRARCHIVEM_WRITEOBJECT_NOOUTPUTSTREAM);
  if (named) {
    if (!MarkWritten(name)) return RaiseRootError(ZRARCHIVEM_WRITEOBJECT_ALREADYWRITTEN);
    *output << name << " = ";
  }
  if constexpr (std::is_same_v<T, FltMatrix>)
    WriteMatrixText(value);
  else
    *output << Format(value);
  if (named) *output << ";\n";
  return HALCYON_SUCCESS;
}

ErrorCode ZrArchiveM::WriteObject(std::string_view name, const std::vector<std::string>& strings) {
  if (!output) return RaiseRootError(ZRARCHIVEM_WRITEOBJECT_NOOUTPUTSTREAM);
  if (strings.empty()) return RaiseRootError(ZRARCHIVEM_WRITEOBJECT_STRINGARRAY_EMPTY);
  if (!MarkWritten(name)) return RaiseRootError(ZRARCHIVEM_WRITEOBJECT_ALREADYWRITTEN);
  *output << name << " = [ \n";
  for (const std::string& s : strings) *output << Format(s) << "\n";
  *output << "]';\n";
  return HALCYON_SUCCESS;
}

template <class T>
ErrorCode ZrArchiveM::WriteArray(std::string_view name, const T* values, std::size_t size) {
  if (!output) {
    RaiseRootError(ZRARCHIVEM_WRITEOBJECT_NOOUTPUTSTREAM);
    return RaiseError(ZRARCHIVEM_WRITEARRAY);
  }
  if (size > 0 && !values) return RaiseRootError(ZRARCHIVEM_WRITEARRAY);
  if (!MarkWritten(name)) return RaiseRootError(ZRARCHIVEM_WRITEARRAY_ALREADYWRITTEN);
  *output << name << " = [ \n";
  for (std::size_t i = 0; i < size; ++i) {
    WriteObject(name, values[i], false);
    *output << "\n";
  }
  *output << "]';\n";
  return HALCYON_SUCCESS;
}

template <class T>
ErrorCode ZrArchiveM::WriteMatrix(std::string_view name, const T* values, std::size_t size, std::size_t columns) {
  if (!output) return RaiseRootError(ZRARCHIVEM_WRITEOBJECT_NOOUTPUTSTREAM);
  if (columns == 0 || size % columns != 0 || (size > 0 && !values))
    return RaiseRootError(ZRARCHIVEM_WRITEMATRIX_INVALID_SIZE);
  if (!MarkWritten(name)) return RaiseRootError(ZRARCHIVEM_WRITEMATRIX_ALREADYWRITTEN);
  *output << name << " = [ ";
  for (std::size_t i = 0; i < size; ++i) {
    if (i > 0) *output << (i % columns == 0 ? ";\n" : " ");
    *output << Format(values[i]);
  }
  *output << " ];\n";
  return HALCYON_SUCCESS;
}

// One instance of every operation for every element type.
#define QUILLON_ARCHIVE_ELEMENT(T)                                                              \
  template ErrorCode ZrArchiveM::GetValue<T>(std::string_view, T&);                             \
  template ErrorCode ZrArchiveM::ReadObject<T>(std::string_view, T&);                           \
  template ErrorCode ZrArchiveM::ReadArray<T>(std::string_view, T*, std::size_t);               \
  template ErrorCode ZrArchiveM::ReadMatrix<T>(std::string_view, T*, std::size_t, std::size_t); \
  template ErrorCode ZrArchiveM::WriteObject<T>(std::string_view, const T&, bool);              \
  template ErrorCode ZrArchiveM::WriteArray<T>(std::string_view, const T*, std::size_t);        \
  template ErrorCode ZrArchiveM::WriteMatrix<T>(std::string_view, const T*, std::size_t, std::size_t);

QUILLON_ARCHIVE_ELEMENT(signed char)
QUILLON_ARCHIVE_ELEMENT(unsigned char)
QUILLON_ARCHIVE_ELEMENT(short)
QUILLON_ARCHIVE_ELEMENT(unsigned short)
QUILLON_ARCHIVE_ELEMENT(int)
QUILLON_ARCHIVE_ELEMENT(unsigned int)
QUILLON_ARCHIVE_ELEMENT(long)
QUILLON_ARCHIVE_ELEMENT(unsigned long)
QUILLON_ARCHIVE_ELEMENT(float)
QUILLON_ARCHIVE_ELEMENT(double)
QUILLON_ARCHIVE_ELEMENT(std::string)
#undef QUILLON_ARCHIVE_ELEMENT

template ErrorCode ZrArchiveM::ReadObject<FltMatrix>(std::string_view, FltMatrix&);
template ErrorCode ZrArchiveM::WriteObject<FltMatrix>(std::string_view, const FltMatrix&, bool);

}  // namespace quillon
