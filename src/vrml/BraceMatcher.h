#pragma once
// Finds the closing brace (or bracket) that matches an opening one, counting nested pairs.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace VRML {

/// Matches one kind of pair ('{' '}' or '[' ']') over a whole NUL-terminated text. The text is
/// scanned once, lazily and only as far as asked, so the nested bodies of a deep scene do not
/// each rescan the rest of the text. Characters are counted raw; comments and strings are not
/// special here.
class BraceMatcher {
 public:
  BraceMatcher(const char* text, const char* textEnd, char open, char close);

  /// The matching closer of the opener at `openPos`, or the text's terminating NUL when there is
  /// none.
  const char* match(const char* openPos);

 private:
  struct Pair {
    std::size_t open;
    std::size_t close;  // kUnmatched until the scan meets it
  };
  static constexpr std::size_t kUnmatched = SIZE_MAX;

  void scanPast(std::size_t offset);
  bool scanNext();

  const char* text;
  const char* textEnd;
  const char* frontier;
  char openChar;
  char stopSet[3];
  std::vector<Pair> pairs;        // in order of their openers
  std::vector<std::size_t> open;  // indices into pairs still waiting for their closer
  std::size_t cursor = 0;         // index of the last answer
};

}  // namespace VRML
