#include "visualisation/CMarkupSTL.h"

#include <array>
#include <cstring>
#include <limits>
#include <utility>

namespace quillon {
namespace {

// Character classes of the tag tokenizer.
constexpr unsigned char kBlank = 1;  // separates tokens
constexpr unsigned char kDelim = 2;  // a token of its own, and the end of a name token
constexpr unsigned char kQuote = 4;  // begins a token that runs to the matching quote

constexpr std::array<unsigned char, 256> MakeClasses() {
  std::array<unsigned char, 256> c{};
  for (const char b : {' ', '\t', '\r', '\n'}) c[static_cast<unsigned char>(b)] = kBlank;
  for (const char d : {'<', '>', '=', '\\', '/', '?', '!'}) c[static_cast<unsigned char>(d)] = kDelim;
  c['"'] = kQuote;
  c['\''] = kQuote;
  return c;
}
constexpr std::array<unsigned char, 256> kClasses = MakeClasses();

unsigned char ClassOf(char c) { return kClasses[static_cast<unsigned char>(c)]; }

struct Token {
  std::size_t start = 0;
  std::size_t end = 0;  // one behind the token; behind the closing quote of a quoted token
  bool found = false;
  bool quoted = false;
  bool delim = false;

  bool Is(const std::string& doc, char c) const { return found && delim && doc[start] == c; }
  bool IsName() const { return found && !quoted && !delim; }
};

// The token at or behind `pos`. A quoted token without its closing quote runs to the end.
Token NextToken(const std::string& doc, std::size_t pos) {
  const std::size_t n = doc.size();
  while (pos < n && ClassOf(doc[pos]) == kBlank) ++pos;
  Token t;
  if (pos >= n) return t;
  t.found = true;
  t.start = pos;
  const unsigned char cls = ClassOf(doc[pos]);
  if (cls == kQuote) {
    t.quoted = true;
    const void* close = std::memchr(doc.data() + pos + 1, doc[pos], n - pos - 1);
    t.end = close ? static_cast<std::size_t>(static_cast<const char*>(close) - doc.data()) + 1 : n;
  } else if (cls == kDelim) {
    t.delim = true;
    t.end = pos + 1;
  } else {
    std::size_t e = pos + 1;
    while (e < n && ClassOf(doc[e]) == 0) ++e;
    t.end = e;
  }
  return t;
}

std::string_view TokenText(const std::string& doc, const Token& t) {
  return std::string_view(doc).substr(t.start, t.end - t.start);
}

// The offset one behind the end of the markup node that starts with "<?" or "<!" at `lt`;
// npos when it does not end.
std::size_t EndOfNonElementNode(const std::string& doc, std::size_t lt) {
  const std::size_t n = doc.size();
  auto behind = [&](std::string_view delimiter, std::size_t from) {
    const std::size_t at = doc.find(delimiter, from);
    return at == std::string::npos ? at : at + delimiter.size();
  };
  if (doc[lt + 1] == '?') return behind("?>", lt + 2);
  if (lt + 2 < n && doc[lt + 2] == '-') return behind("-->", lt + 3);
  if (lt + 2 < n && doc[lt + 2] == '[') return behind("]]>", lt + 3);
  // A document type declaration: the first ">" outside brackets and quotes.
  int depth = 0;
  std::size_t pos = lt + 2;
  while (pos < n) {
    const char c = doc[pos];
    if (c == '"' || c == '\'') {
      const std::size_t close = doc.find(c, pos + 1);
      if (close == std::string::npos) return close;
      pos = close + 1;
      continue;
    }
    if (c == '[') ++depth;
    if (c == ']' && depth > 0) --depth;
    if (c == '>' && depth == 0) return pos + 1;
    ++pos;
  }
  return std::string::npos;
}

std::string WithName(std::string_view before, std::string_view name, std::string_view after) {
  std::string text;
  text.reserve(before.size() + name.size() + after.size());
  text.append(before).append(name).append(after);
  return text;
}

}  // namespace

CMarkupSTL::CMarkupSTL() : elems_(1) {}

CMarkupSTL::CMarkupSTL(std::string text) : elems_(1) { LoadText(std::move(text)); }

bool CMarkupSTL::LoadText(std::string text) {
  doc_ = std::move(text);
  error_.clear();
  elems_.clear();
  elems_.reserve(doc_.size() / 64 + 8);
  elems_.emplace_back();
  ResetCursor();
  if (doc_.size() >= std::numeric_limits<std::uint32_t>::max()) return Fail("Element tag not found");
  return ParseDocument();
}

void CMarkupSTL::Clear() {
  std::string().swap(doc_);
  std::vector<ElemPos>(1).swap(elems_);
  error_.clear();
  ResetCursor();
}

bool CMarkupSTL::IsWellFormed() const { return !elems_.empty() && elems_[0].iFirstChild != 0; }

void CMarkupSTL::ResetCursor() {
  iPosParent_ = iPos_ = iPosChild_ = 0;
  nodeType_ = 0;
  nodeOffset_ = nodeLength_ = 0;
}

bool CMarkupSTL::Fail(std::string message) {
  error_ = std::move(message);
  elems_.assign(1, ElemPos{});
  ResetCursor();
  return false;
}

// The element parse keeps its open elements on an explicit stack, so that the depth of a
// document costs heap memory and never the caller's stack.
bool CMarkupSTL::ParseDocument() {
  struct Open {
    std::uint32_t index;
    std::uint32_t lastChild;
  };
  std::vector<Open> open{{0, 0}};
  const std::size_t n = doc_.size();
  std::size_t pos = 0;

  auto innerName = [&] { return TagName(open.back().index); };
  auto link = [&](std::uint32_t index) {
    Open& parent = open.back();
    elems_[index].iParent = parent.index;
    if (parent.lastChild == 0)
      elems_[parent.index].iFirstChild = index;
    else
      elems_[parent.lastChild].iNext = index;
    parent.lastChild = index;
  };

  for (;;) {
    const void* found = pos < n ? std::memchr(doc_.data() + pos, '<', n - pos) : nullptr;
    if (!found) {
      if (open.size() == 1) return Fail("Element tag not found");
      return Fail(WithName("End tag of ", innerName(), " element not found"));
    }
    const std::size_t lt = static_cast<std::size_t>(static_cast<const char*>(found) - doc_.data());
    const Token first = NextToken(doc_, lt + 1);
    if (!first.found) return Fail("Abrupt end within tag");
    if (first.quoted) return Fail("Tag starts with quote");

    if (doc_[lt + 1] == '?' || doc_[lt + 1] == '!') {
      pos = EndOfNonElementNode(doc_, lt);
      if (pos == std::string::npos) return Fail("Invalid node");
      continue;
    }

    if (first.Is(doc_, '/')) {
      if (open.size() == 1) return Fail("Element tag not found");
      const std::string_view name = innerName();
      const Token second = NextToken(doc_, first.end);
      if (!second.found) return Fail(WithName("End tag not completed for element ", name, ""));
      if (TokenText(doc_, second) != name) return Fail(WithName("End tag does not correspond to ", name, ""));
      const std::size_t gt = doc_.find('>', second.end);
      if (gt == std::string::npos) return Fail(WithName("End tag not completed for element ", name, ""));
      ElemPos& elem = elems_[open.back().index];
      elem.nEndTagStart = static_cast<std::uint32_t>(lt);
      elem.nEnd = static_cast<std::uint32_t>(gt);
      open.pop_back();
      if (open.size() == 1) return true;
      pos = gt + 1;
      continue;
    }

    if (!first.IsName()) {
      if (open.size() == 1) return Fail("Element tag not found");
      return Fail(WithName("Expecting end tag of element ", innerName(), ""));
    }

    // The start tag ends at the first ">" that is not inside a quoted value.
    std::size_t gt = std::string::npos;
    for (Token t = NextToken(doc_, first.end); t.found; t = NextToken(doc_, t.end)) {
      if (t.Is(doc_, '>')) {
        gt = t.start;
        break;
      }
    }
    if (gt == std::string::npos) return Fail("End of tag not found");

    const auto index = static_cast<std::uint32_t>(elems_.size());
    ElemPos elem;
    elem.nStart = static_cast<std::uint32_t>(lt);
    elem.nStartTagEnd = static_cast<std::uint32_t>(gt);
    elems_.push_back(elem);
    link(index);
    pos = gt + 1;
    if (doc_[gt - 1] == '/') {
      elems_[index].nEndTagStart = static_cast<std::uint32_t>(gt - 1);
      elems_[index].nEnd = static_cast<std::uint32_t>(gt);
      if (open.size() == 1) return true;
    } else {
      open.push_back({index, 0});
    }
  }
}

std::string_view CMarkupSTL::TagName(std::uint32_t index) const {
  if (index == 0 || index >= elems_.size()) return {};
  std::size_t pos = elems_[index].nStart + 1;
  const Token t = NextToken(doc_, pos);
  return t.IsName() ? TokenText(doc_, t) : std::string_view{};
}

bool CMarkupSTL::NameIs(std::uint32_t index, std::string_view name) const {
  // Cheap test first: the name must stand right behind the "<" and end there.
  const std::size_t at = elems_[index].nStart + 1;
  if (doc_.compare(at, name.size(), name) != 0) return TagName(index) == name;
  const std::size_t behind = at + name.size();
  return behind >= doc_.size() || ClassOf(doc_[behind]) != 0 || TagName(index) == name;
}

std::uint32_t CMarkupSTL::FirstSiblingToSearch() const {
  if (nodeType_ == MNT_ELEMENT && iPos_ != 0) return elems_[iPos_].iNext;
  std::uint32_t i = elems_[iPosParent_].iFirstChild;
  if (nodeType_ != 0) {
    // Behind a node that is not an element: the first element that starts behind it.
    while (i != 0 && elems_[i].nStart < nodeOffset_ + nodeLength_) i = elems_[i].iNext;
  }
  return i;
}

bool CMarkupSTL::FindSibling(std::string_view name) {
  for (std::uint32_t i = FirstSiblingToSearch(); i != 0; i = elems_[i].iNext) {
    if (!name.empty() && !NameIs(i, name)) continue;
    iPos_ = i;
    iPosChild_ = 0;
    nodeType_ = MNT_ELEMENT;
    nodeOffset_ = elems_[i].nStart;
    nodeLength_ = elems_[i].nEnd - elems_[i].nStart + 1;
    return true;
  }
  return false;
}

bool CMarkupSTL::EnterElement() {
  if (nodeType_ != MNT_ELEMENT || iPos_ == 0) return false;
  iPosParent_ = iPos_;
  iPos_ = iPosChild_ = 0;
  nodeType_ = 0;
  nodeOffset_ = nodeLength_ = 0;
  return true;
}

bool CMarkupSTL::LeaveElement() {
  if (iPosParent_ == 0) return false;
  iPosChild_ = iPos_;
  iPos_ = iPosParent_;
  iPosParent_ = elems_[iPos_].iParent;
  nodeType_ = MNT_ELEMENT;
  nodeOffset_ = elems_[iPos_].nStart;
  nodeLength_ = elems_[iPos_].nEnd - elems_[iPos_].nStart + 1;
  return true;
}

std::string CMarkupSTL::GetTagName() const {
  return nodeType_ == MNT_ELEMENT ? std::string(TagName(iPos_)) : std::string();
}

std::optional<CMarkupSTL::Span> CMarkupSTL::GetCdataSpan() const {
  if (nodeType_ != MNT_ELEMENT || iPos_ == 0) return std::nullopt;
  const ElemPos& e = elems_[iPos_];
  if (e.iFirstChild != 0 || e.nStartTagEnd == e.nEnd) return std::nullopt;
  const std::size_t start = e.nStartTagEnd + 1;
  const std::string_view content = std::string_view(doc_).substr(start, e.nEndTagStart - e.nStartTagEnd - 1);
  std::size_t lead = 0;
  while (lead < content.size() && ClassOf(content[lead]) == kBlank) ++lead;
  constexpr std::string_view kCdataOpen = "<![CDATA[";
  if (!content.substr(lead).starts_with(kCdataOpen)) return std::nullopt;
  const std::size_t from = lead + kCdataOpen.size();
  const std::size_t close = content.find("]]>", from);
  if (close == std::string_view::npos) return std::nullopt;
  return Span{start + from, close - from};
}

const char* CMarkupSTL::CutAfter(Span span) {
  doc_[span.offset + span.length] = '\0';
  return doc_.c_str() + span.offset;
}

std::string CMarkupSTL::GetText() const {
  const std::string_view doc(doc_);
  if (nodeType_ == MNT_ELEMENT && iPos_ != 0) {
    if (const auto cdata = GetCdataSpan()) return std::string(doc.substr(cdata->offset, cdata->length));
    const ElemPos& e = elems_[iPos_];
    if (e.iFirstChild != 0 || e.nStartTagEnd == e.nEnd) return {};
    return UnescapeText(doc.substr(e.nStartTagEnd + 1, e.nEndTagStart - e.nStartTagEnd - 1));
  }
  const std::string_view node = doc.substr(std::min(nodeOffset_, doc.size()), nodeLength_);
  auto inner = [&](std::size_t open, std::size_t close) {
    return node.size() >= open + close ? std::string(node.substr(open, node.size() - open - close)) : std::string();
  };
  switch (nodeType_) {
    case MNT_COMMENT:
      return inner(4, 3);
    case MNT_PROCESSING_INSTRUCTION:
      return inner(2, 2);
    case MNT_CDATA_SECTION:
      return inner(9, 3);
    case MNT_TEXT:
      return UnescapeText(node);
    case MNT_WHITESPACE:
    case MNT_DOCUMENT_TYPE:
      return std::string(node);
    default:
      return {};
  }
}

std::string CMarkupSTL::GetAttribute(std::string_view name) const {
  if (nodeType_ != MNT_ELEMENT || iPos_ == 0) return {};
  const ElemPos& e = elems_[iPos_];
  const Token tag = NextToken(doc_, e.nStart + 1);
  std::size_t pos = tag.end;
  for (;;) {
    const Token t = NextToken(doc_, pos);
    if (!t.found || t.start >= e.nStartTagEnd) return {};
    pos = t.end;
    if (!t.IsName()) continue;
    const Token equals = NextToken(doc_, t.end);
    if (!equals.Is(doc_, '=')) continue;
    const Token value = NextToken(doc_, equals.end);
    if (!value.found || value.start >= e.nStartTagEnd) return {};
    pos = value.end;
    if (TokenText(doc_, t) != name) continue;
    std::string_view raw = TokenText(doc_, value);
    if (value.quoted)
      raw = raw.substr(1, raw.size() >= 2 && raw.back() == raw.front() ? raw.size() - 2 : raw.size() - 1);
    return UnescapeText(raw);
  }
}

bool CMarkupSTL::InsertionOffset(bool before, std::size_t& offset) const {
  if (nodeType_ == MNT_ELEMENT && iPos_ != 0) {
    offset = before ? elems_[iPos_].nStart : std::size_t{elems_[iPos_].nEnd} + 1;
    return true;
  }
  if (nodeType_ != 0) {
    offset = before ? nodeOffset_ : nodeOffset_ + nodeLength_;
    return true;
  }
  // Nothing current: at the beginning or the end of the parent's content.
  if (iPosParent_ == 0) {
    offset = before ? 0 : doc_.size();
    return true;
  }
  const ElemPos& parent = elems_[iPosParent_];
  if (parent.nStartTagEnd == parent.nEnd) return false;  // an empty element has no content
  offset = before ? std::size_t{parent.nStartTagEnd} + 1 : parent.nEndTagStart;
  return true;
}

bool CMarkupSTL::InsertNode(int nodeType, std::string_view text, bool before) {
  std::string node;
  switch (nodeType) {
    case MNT_ELEMENT:
      if (text.empty()) return false;
      for (char c : text)
        if (ClassOf(c) != 0) return false;
      node = WithName("<", text, "/>");
      break;
    case MNT_TEXT:
    case MNT_WHITESPACE:
      node = EscapeText(text, false);
      break;
    case MNT_CDATA_SECTION:
      if (text.find("]]>") != std::string_view::npos) return false;
      node = WithName("<![CDATA[", text, "]]>");
      break;
    case MNT_PROCESSING_INSTRUCTION:
      node = WithName("<?", text, "?>");
      break;
    case MNT_COMMENT:
      node = WithName("<!--", text, "-->");
      break;
    case MNT_DOCUMENT_TYPE:
      node = std::string(text);
      break;
    default:
      return false;
  }
  std::size_t offset = 0;
  if (!InsertionOffset(before, offset)) return false;
  if (doc_.size() + node.size() >= std::numeric_limits<std::uint32_t>::max()) return false;

  doc_.insert(offset, node);
  const auto shift = static_cast<std::uint32_t>(node.size());
  auto moved = [&](std::uint32_t& p) {
    if (p >= offset) p += shift;
  };
  for (std::size_t i = 1; i < elems_.size(); ++i) {
    ElemPos& e = elems_[i];
    moved(e.nStart);
    moved(e.nStartTagEnd);
    moved(e.nEndTagStart);
    moved(e.nEnd);
  }

  nodeType_ = nodeType;
  nodeOffset_ = offset;
  nodeLength_ = node.size();
  iPos_ = 0;
  if (nodeType == MNT_ELEMENT) {
    const auto index = static_cast<std::uint32_t>(elems_.size());
    ElemPos e;
    e.nStart = static_cast<std::uint32_t>(offset);
    e.nStartTagEnd = e.nEnd = static_cast<std::uint32_t>(offset + node.size() - 1);
    e.nEndTagStart = e.nEnd - 1;
    elems_.push_back(e);
    LinkElement(index, iPosParent_);
    iPos_ = index;
  }
  return true;
}

// Links a new element into its parent's children, in document order.
void CMarkupSTL::LinkElement(std::uint32_t index, std::uint32_t parent) {
  elems_[index].iParent = parent;
  std::uint32_t previous = 0;
  for (std::uint32_t i = elems_[parent].iFirstChild; i != 0 && elems_[i].nStart < elems_[index].nStart;
       i = elems_[i].iNext)
    previous = i;
  std::uint32_t& slot = previous == 0 ? elems_[parent].iFirstChild : elems_[previous].iNext;
  elems_[index].iNext = slot;
  slot = index;
}

std::string CMarkupSTL::EscapeText(std::string_view text, bool attribute) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '<':
        out += "&lt;";
        break;
      case '&':
        out += "&amp;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '\'':
        out += attribute ? "&apos;" : "'";
        break;
      case '"':
        out += attribute ? "&quot;" : "\"";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string CMarkupSTL::UnescapeText(std::string_view text) {
  static constexpr std::pair<std::string_view, char> kEntities[] = {
      {"lt;", '<'}, {"amp;", '&'}, {"gt;", '>'}, {"apos;", '\''}, {"quot;", '"'}};
  std::string out;
  out.reserve(text.size());
  std::size_t pos = 0;
  while (pos < text.size()) {
    const std::size_t amp = text.find('&', pos);
    if (amp == std::string_view::npos) {
      out.append(text.substr(pos));
      break;
    }
    out.append(text.substr(pos, amp - pos));
    pos = amp + 1;
    const std::string_view rest = text.substr(pos);
    char replacement = '&';
    for (const auto& [entity, c] : kEntities) {
      if (rest.starts_with(entity)) {
        replacement = c;
        pos += entity.size();
        break;
      }
    }
    out += replacement;
  }
  return out;
}

}  // namespace quillon
