// Drives the VRML reader with arbitrary text, then walks and copies what it read.
#include <cstddef>
#include <cstdint>
#include <string>

#include "vrml/Nodes.h"

namespace {

struct Walker : VRML::NodeVisitor {
  std::size_t nodes = 0;
  void visitNode(const VRML::Node& node) override {
    ++nodes;
    for (const VRML::Field& record : node.fields()) {
      if (const auto* single = dynamic_cast<const VRML::SFNode*>(record.value.get()); single && single->node) {
        single->node->accept(*this);
      } else if (const auto* list = dynamic_cast<const VRML::MFNode*>(record.value.get())) {
        for (const auto& child : list->nodes)
          if (child) child->accept(*this);
      }
    }
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  VRML::Group root;
  root.parse(text);
  Walker walker;
  root.accept(walker);
  auto copy = root.clone();
  Walker again;
  copy->accept(again);
  if (again.nodes != walker.nodes) __builtin_trap();
  return 0;
}
