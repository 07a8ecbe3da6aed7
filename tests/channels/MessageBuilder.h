#pragma once
// Builds channel-group messages for the tests, field by field.

#include <bit>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quillon::test {

class MessageBuilder {
 public:
  MessageBuilder& U8(std::uint8_t v) {
    bytes.push_back(v);
    return *this;
  }
  MessageBuilder& U16(std::uint16_t v) { return Le(v, 2); }
  MessageBuilder& U32(std::uint32_t v) { return Le(v, 4); }
  MessageBuilder& F64(double v) { return Le(std::bit_cast<std::uint64_t>(v), 8); }
  MessageBuilder& Header(std::uint16_t flags, std::string_view name, std::int32_t group, std::uint16_t count) {
    U16(flags).U16(static_cast<std::uint16_t>(name.size()));
    bytes.insert(bytes.end(), name.begin(), name.end());
    return U32(static_cast<std::uint32_t>(group)).U16(count);
  }

  std::vector<unsigned char> bytes;

 private:
  MessageBuilder& Le(std::uint64_t v, int n) {
    for (int i = 0; i < n; ++i) bytes.push_back(static_cast<unsigned char>(v >> (8 * i)));
    return *this;
  }
};

/// The 169-byte message of three channels (1D, 3D, 6D) of "Arm1", group 2, that every
/// decoder test starts from.
inline std::vector<unsigned char> WorkedExample() {
  MessageBuilder m;
  m.Header(0x000D, "Arm1", 2, 3);
  m.U8(1).F64(1.5).U32(0).U32(1000);
  m.U8(2).F64(10).F64(20).F64(30).U32(0).U32(1000);
  m.U8(3).F64(1).F64(2).F64(3);
  for (double r : {1, 0, 0, 0, 1, 0, 0, 0, 1}) m.F64(r);
  m.U32(0).U32(1000);
  return m.bytes;
}

}  // namespace quillon::test
