#include "vrml/FieldValue.h"

#include "vrml/Node.h"

namespace VRML {

SFNode::SFNode() = default;
SFNode::SFNode(std::unique_ptr<Node> n) : node(std::move(n)) { set = true; }
SFNode::~SFNode() = default;

std::unique_ptr<FieldValue> SFNode::clone() const {
  auto copy = std::make_unique<SFNode>();
  if (node) copy->node = node->clone();
  copy->set = set;
  return copy;
}

void SFNode::clear() {
  node.reset();
  set = false;
}

MFNode::MFNode() = default;
MFNode::~MFNode() = default;

std::unique_ptr<FieldValue> MFNode::clone() const {
  auto copy = std::make_unique<MFNode>();
  copy->nodes.reserve(nodes.size());
  for (const auto& node : nodes) copy->nodes.push_back(node ? node->clone() : nullptr);
  copy->set = set;
  return copy;
}

void MFNode::clear() {
  std::vector<std::unique_ptr<Node>>().swap(nodes);
  set = false;
}

}  // namespace VRML
