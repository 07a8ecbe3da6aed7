#pragma once
// Helpers for the reader tests: parse a text and look at the top-level entries.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "vrml/Nodes.h"

namespace VRML::test {

inline const std::string kHeader = "#VRML V2.0 utf8\n";

struct Parsed {
  std::unique_ptr<Group> root = std::make_unique<Group>();
  int result = -1;

  std::size_t size() const { return root->children()->size(); }
  const Node* at(std::size_t i) const { return root->children()->nodes.at(i).get(); }
  template <class T>
  const T* as(std::size_t i) const {
    return i < size() ? dynamic_cast<const T*>(at(i)) : nullptr;
  }
};

/// Parses `text` from an exactly sized heap buffer, so that a read past its end is caught.
inline Parsed parseText(const std::string& text) {
  Parsed parsed;
  auto buffer = std::make_unique<char[]>(text.size() + 1);
  text.copy(buffer.get(), text.size());
  buffer[text.size()] = '\0';
  parsed.result = parsed.root->parse(buffer.get());
  return parsed;
}

inline Parsed parseScene(const std::string& body) { return parseText(kHeader + body); }

}  // namespace VRML::test
