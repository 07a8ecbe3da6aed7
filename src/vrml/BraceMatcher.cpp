#include "vrml/BraceMatcher.h"

#include <algorithm>
#include <cstring>

namespace VRML {

BraceMatcher::BraceMatcher(const char* t, const char* end, char o, char c)
    : text(t), textEnd(end), frontier(t), openChar(o), stopSet{o, c, '\0'} {}

bool BraceMatcher::scanNext() {
  if (frontier >= textEnd) return false;
  const char* hit = std::strpbrk(frontier, stopSet);
  if (!hit) {
    frontier = textEnd;
    return false;
  }
  const std::size_t offset = static_cast<std::size_t>(hit - text);
  if (*hit == openChar) {
    open.push_back(pairs.size());
    pairs.push_back({offset, kUnmatched});
  } else if (!open.empty()) {
    pairs[open.back()].close = offset;
    open.pop_back();
  }
  frontier = hit + 1;
  return true;
}

void BraceMatcher::scanPast(std::size_t offset) {
  while (static_cast<std::size_t>(frontier - text) <= offset && scanNext()) {
  }
}

const char* BraceMatcher::match(const char* openPos) {
  const std::size_t offset = static_cast<std::size_t>(openPos - text);
  scanPast(offset);
  // Readers ask mostly in text order, so look just ahead of the last answer before searching.
  std::size_t index = cursor;
  while (index < pairs.size() && index < cursor + 4 && pairs[index].open < offset) ++index;
  if (index >= pairs.size() || pairs[index].open != offset) {
    const auto it = std::lower_bound(pairs.begin(), pairs.end(), offset,
                                     [](const Pair& pair, std::size_t value) { return pair.open < value; });
    if (it == pairs.end() || it->open != offset) return textEnd;
    index = static_cast<std::size_t>(it - pairs.begin());
  }
  cursor = index;
  while (pairs[index].close == kUnmatched && scanNext()) {
  }
  return pairs[index].close == kUnmatched ? textEnd : text + pairs[index].close;
}

}  // namespace VRML
