#include "vrml/Node.h"

#include <algorithm>
#include <cstring>

namespace VRML {

std::unique_ptr<FieldValue>* Node::field(std::string_view fieldName) {
  if (fieldName.empty()) return nullptr;
  for (Field& record : fields()) {
    if (record.name == fieldName) return &record.value;
  }
  return nullptr;
}

const std::unique_ptr<FieldValue>* Node::field(std::string_view fieldName) const {
  return const_cast<Node*>(this)->field(fieldName);
}

void Node::clearFields() {
  for (Field& record : fields()) record.value.reset();
}

void Node::setName(std::string_view newName) {
  const std::size_t length = std::min(newName.size(), kNameSize - 1);
  if (length) std::memcpy(nameBuffer.data(), newName.data(), length);
  nameBuffer[length] = '\0';
}

}  // namespace VRML
