// Loads any text into the XML reader, walks the whole tree with every navigation and reading
// call, then edits it as the input's last bytes say. An edit with well-behaved text must keep
// a well-formed document well-formed.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "visualisation/CMarkupSTL.h"

using quillon::CMarkupSTL;

namespace {

void Walk(CMarkupSTL& xml) {
  for (int budget = 20000; budget > 0; --budget) {
    if (xml.FindSibling()) {
      const std::string name = xml.GetTagName();
      (void)xml.GetText();
      (void)xml.GetAttribute(name);
      (void)xml.GetAttribute("a");
      xml.EnterElement();
    } else if (!xml.LeaveElement()) {
      break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CMarkupSTL xml;
  const bool loaded = xml.LoadText(text);
  if (loaded != xml.IsWellFormed() || loaded != xml.GetError().empty()) std::abort();
  Walk(xml);

  CMarkupSTL edited(text);
  static constexpr int kTypes[] = {CMarkupSTL::MNT_ELEMENT,
                                   CMarkupSTL::MNT_TEXT,
                                   CMarkupSTL::MNT_WHITESPACE,
                                   CMarkupSTL::MNT_CDATA_SECTION,
                                   CMarkupSTL::MNT_PROCESSING_INSTRUCTION,
                                   CMarkupSTL::MNT_COMMENT};
  static constexpr const char* kTexts[] = {"e", "t<&>'\"", " ", "d<", "p", "c"};
  const std::size_t edits = size < 16 ? size : 16;
  for (std::size_t i = 0; i < edits; ++i) {
    const std::uint8_t op = data[size - 1 - i];
    switch (op % 6) {
      case 0:
        edited.FindSibling();
        break;
      case 1:
        edited.EnterElement();
        break;
      case 2:
        edited.LeaveElement();
        break;
      case 3:
        (void)edited.GetText();
        break;
      default: {
        const std::size_t type = (op / 6) % 6;
        edited.InsertNode(kTypes[type], kTexts[type], (op & 0x80) != 0);
        (void)edited.GetText();
      }
    }
  }
  if (loaded && !CMarkupSTL(edited.GetDocumentText()).IsWellFormed()) std::abort();
  Walk(edited);
  return 0;
}
