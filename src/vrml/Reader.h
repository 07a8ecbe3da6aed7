#pragma once
// The forgiving VRML97 reader behind Group::parse: one reader per node type over a NUL-terminated text.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "vrml/BraceMatcher.h"
#include "vrml/Nodes.h"

namespace VRML {

/// Reads one scene text. The position is a pointer into the text that every reader advances;
/// null means the text is exhausted or a read failed, and makes every later reader return at once.
class Reader {
 public:
  explicit Reader(const char* text);
  ~Reader();
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  /// Reads the header and every top-level statement into `children`.
  void readScene(MFNode& children);

  using NodeReader = std::unique_ptr<Node> (Reader::*)(std::string_view defName);
  /// The reader for a type name; the skipping reader for an unknown name, null for an empty one.
  static NodeReader lookup(std::string_view typeName);

  template <class T>
  std::unique_ptr<Node> readNode(std::string_view defName);
  std::unique_ptr<Node> skipNode(std::string_view defName);

 private:
  struct Definition {
    const Node* node;
    int height;         // levels of the subtree, the node itself included
    std::size_t bytes;  // model bytes that a copy adds, roughly
  };

  void fail();
  void skipSeparators();
  std::string_view readToken();
  bool readFloat(float& value);
  bool readInt(std::int32_t& value);
  const char* afterBody(const char* end) const;

  std::unique_ptr<Node> readBody(std::unique_ptr<Node> node, const NodeRule& rule);
  bool readField(Node& node, const NodeRule& rule, std::uint32_t& seen);
  std::unique_ptr<FieldValue> readValue(const FieldRule& rule);
  std::unique_ptr<FieldValue> readBool(const FieldRule& rule);
  std::unique_ptr<FieldValue> readSingleFloat(const FieldRule& rule);
  std::unique_ptr<Node> readNodeItem();
  std::unique_ptr<Node> useDefinition(std::string_view name);
  std::unique_ptr<FieldValue> readNodeList();
  std::unique_ptr<FieldValue> readIntList();
  template <class Value>
  std::unique_ptr<FieldValue> readTripleList();
  const char* openList(const char*& close);

  const char* text;
  const char* textEnd;
  const char* pos;
  bool failed = false;
  // The last run of separators skipped whole, [from, to], and where skipping it ends (null at
  // the text's end). The closers of a deep chain are one such run, which every enclosing level
  // would otherwise scan again from inside.
  const char* skippedFrom = nullptr;
  const char* skippedTo = nullptr;
  const char* skippedEnd = nullptr;
  int depth = 0;
  int deepest = 0;
  std::size_t modelBytes = 0;
  std::size_t copiedBytes = 0;
  std::size_t copyLimit;
  BraceMatcher braces;
  BraceMatcher brackets;
  std::vector<Definition> definitions;
  std::unordered_map<std::string_view, std::size_t> firstDefinition;
  // Discarded values that hold defined nodes stay alive until the end, so that a USE still finds them.
  std::vector<std::unique_ptr<FieldValue>> discarded;
};

}  // namespace VRML
