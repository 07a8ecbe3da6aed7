#pragma once
// The small XML reader and editor that visualisation documents are read with.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// Keeps a document as one text and a flat array of element records indexing it. A cursor
/// (parent, current element, current node) moves over the array; reading returns pieces of
/// the text; inserting a node splices the text and shifts the records behind the splice.
/// Only the first top-level element is parsed. 8-bit text, no namespaces, no validation.
class CMarkupSTL {
 public:
  /// Node types, as bit values.
  enum NodeType : int {
    MNT_ELEMENT = 1,
    MNT_TEXT = 2,
    MNT_WHITESPACE = 4,
    MNT_CDATA_SECTION = 8,
    MNT_PROCESSING_INSTRUCTION = 16,
    MNT_COMMENT = 32,
    MNT_DOCUMENT_TYPE = 64,
  };

  CMarkupSTL();
  explicit CMarkupSTL(std::string text);

  /// Stores the text and parses its first element; true when a top element was parsed.
  bool LoadText(std::string text);
  bool IsWellFormed() const;
  /// Forgets the text and its elements, and gives back their memory.
  void Clear();
  /// The message of the last failed load; empty after a good one.
  const std::string& GetError() const { return error_; }

  /// Makes the next sibling element named `name` current (any element for an empty name).
  bool FindSibling(std::string_view name = {});
  bool EnterElement();
  bool LeaveElement();

  /// Text of the current element (or of the current non-element node), entities replaced.
  std::string GetText() const;
  /// Where the current element's text stands in the document when it is one CDATA section
  /// (blanks before it allowed), which GetText would return as it stands.
  struct Span {
    std::size_t offset;
    std::size_t length;
  };
  std::optional<Span> GetCdataSpan() const;
  /// Ends the document with a NUL right behind `span` (over the "]]>") and returns where the
  /// span begins: text for readers that stop at NUL, without a copy. The document is cut, so
  /// nothing more may be read from it before the next LoadText or Clear.
  const char* CutAfter(Span span);
  /// The named attribute of the current element, entities replaced; empty when absent.
  std::string GetAttribute(std::string_view name) const;
  /// Tag name of the current element; empty when there is none.
  std::string GetTagName() const;

  /// Inserts a node beside the current element or node; the new node becomes current.
  bool InsertNode(int nodeType, std::string_view text, bool before);
  const std::string& GetDocumentText() const { return doc_; }

  static std::string EscapeText(std::string_view text, bool attribute);
  static std::string UnescapeText(std::string_view text);

 private:
  struct ElemPos {
    std::uint32_t nStart = 0;        // "<" of the start tag
    std::uint32_t nStartTagEnd = 0;  // ">" of the start tag
    std::uint32_t nEndTagStart = 0;  // "<" of the end tag, or the "/" of an empty element
    std::uint32_t nEnd = 0;          // ">" that ends the element
    std::uint32_t nReserved = 0;
    std::uint32_t iParent = 0;
    std::uint32_t iFirstChild = 0;
    std::uint32_t iNext = 0;
  };

  bool ParseDocument();
  bool Fail(std::string message);
  void ResetCursor();
  std::string_view TagName(std::uint32_t index) const;
  bool NameIs(std::uint32_t index, std::string_view name) const;
  std::uint32_t FirstSiblingToSearch() const;
  bool InsertionOffset(bool before, std::size_t& offset) const;
  void LinkElement(std::uint32_t index, std::uint32_t parent);

  std::string doc_;
  std::vector<ElemPos> elems_;
  std::string error_;
  std::uint32_t iPosParent_ = 0;
  std::uint32_t iPos_ = 0;
  std::uint32_t iPosChild_ = 0;
  int nodeType_ = 0;
  std::size_t nodeOffset_ = 0;
  std::size_t nodeLength_ = 0;
};

}  // namespace quillon
