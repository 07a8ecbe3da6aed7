// Drives a whole document parse, without a scene graph behind it, from any text.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "channels/ZrValueDecodingCallbackInterface.h"
#include "visualisation/IMappingRegistrar.h"
#include "visualisation/ZrXMLParser.h"

namespace {

struct Registrar : quillon::IMappingRegistrar {
  quillon::ErrorCode RegisterInDecoder(const std::string&, std::int32_t, std::uint32_t,
                                       std::unique_ptr<quillon::ZrValueDecodingCallbackInterface>) override {
    return 0;
  }
  void ClearMappings() override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  static quillon::ZrXMLParser parser;
  Registrar registrar;
  std::string annotated, needed;
  parser.Parse(registrar, text, &annotated, &needed);
  return 0;
}
