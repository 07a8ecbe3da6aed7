// Drives the archive's readers and the values' ReadFrom with arbitrary text.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>

#include "channels/ChannelErrorCodes.h"
#include "channels/FltMatrixText.h"
#include "channels/ZrArchiveM.h"
#include "channels/ZrValue1D.h"
#include "channels/ZrValue3D.h"
#include "channels/ZrValue6D.h"
#include "channels/ZrValueTime.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillon;
  const std::string_view text(reinterpret_cast<const char*>(data), size);

  FltMatrix matrix;
  ReadFltMatrixText(text, matrix);

  std::istringstream in{std::string(text)};
  ZrArchiveM archive;
  archive.SelectInputStream(&in);
  double d = 0;
  long l = 0;
  unsigned char uc = 0;
  std::string s;
  double array[4];
  int ints[6];
  archive.ReadObject("value", d);
  archive.ReadObject("status", l);
  archive.ReadObject("c", uc);
  archive.ReadObject("s", s);
  archive.ReadObject("m", matrix);
  archive.ReadArray("a", array, 4);
  archive.ReadMatrix("m", ints, 6, 3);
  std::string name;
  archive.ReadFirstFltMatrix(name, matrix);
  // Every step consumes at least one line, so the walk ends; the bound only says so.
  for (std::size_t i = 0; i <= size && archive.ReadNextFltMatrix(name, matrix) != ZRARCHIVEM_READNEXTFLTMATRIX_EOF;
       ++i) {
  }

  ZrValue1D v1;
  ZrValue3D v3;
  ZrValue6D v6;
  ZrValueTime vt;
  v1.ReadFrom(text, 1);
  v3.ReadFrom(text, 1);
  v6.ReadFrom(text, 1);
  vt.ReadFrom(text, 1);
  return 0;
}
