#pragma once
// The soak's document and its messages: one channel group of 1,000 channels that move, turn,
// colour and switch 1,000 targets of one scene.

#include <cstdint>
#include <string>
#include <vector>

namespace quillon::stress {

/// Switches, each choosing between two transforms with a box; of each switch's five channels
/// two move or turn its transforms (3D, 6D), two colour their materials and one switches.
/// 200 switches make 1,000 channels.
class SoakDocument {
 public:
  explicit SoakDocument(int switches = 200);
  const std::string& xml() const { return text; }
  int channels() const { return 5 * switches; }
  /// The message at step n: every channel, with quality; now and then a value between the
  /// thresholds or beyond them, so that every colour and the freeze and hide paths are taken.
  const std::vector<unsigned char>& Message(std::uint64_t n);

 private:
  int switches;
  std::string text;
  std::vector<unsigned char> bytes;
};

/// A message of one group with a value of each kind in `kinds` ("1D 3D 6D"), all nominal.
std::vector<unsigned char> PlainMessage(const std::string& name, std::int32_t group, const std::string& kinds,
                                        std::uint64_t n);

/// The resident memory of this process in bytes, or 0 where it cannot be read.
std::size_t ResidentBytes();

}  // namespace quillon::stress
