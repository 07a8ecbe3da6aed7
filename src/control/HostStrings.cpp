#include "control/HostStrings.h"

#include <cstdlib>
#include <cstring>

namespace quillon {

std::string ReadHostString(char** p) { return p && *p ? std::string(*p) : std::string(); }

char* CopyToHost(std::string_view text) {
  auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
  if (!copy) return nullptr;
  std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return copy;
}

void WriteHostString(char** p, std::string_view text) {
  if (p) *p = CopyToHost(text);
}

QuillonBytes ToHostBytes(std::string_view text) {
  if (text.empty()) return {nullptr, 0};
  auto* data = static_cast<unsigned char*>(std::malloc(text.size()));
  if (!data) return {nullptr, 0};
  std::memcpy(data, text.data(), text.size());
  return {data, text.size()};
}

}  // namespace quillon
