#include "channels/FltMatrixText.h"

#include <string>

#include "channels/ArchiveText.h"
#include "channels/ChannelErrorCodes.h"
#include "core/CoreErrorCodes.h"
#include "core/ZrErrorHandler.h"

namespace quillon {

ErrorCode ReadFltMatrixText(std::string_view text, FltMatrix& matrix) {
  text = archive_text::SkipBlanks(text);
  std::string valueText;
  if (!text.empty() && text.front() == '[') {
    const std::size_t close = text.find(']');
    if (close == std::string_view::npos) return RaiseRootError(ZRARCHIVEM_READVALUESTRING_ENDOFFILE);
    valueText.assign(text.substr(0, close + 1));
    // A line break only joins lines.
    for (char& c : valueText)
      if (c == '\n' || c == '\r') c = ' ';
    std::size_t quotes = 0;
    while (close + 1 + quotes < text.size() && text[close + 1 + quotes] == '\'') ++quotes;
    if (quotes % 2 == 1) valueText.push_back('\'');
  } else {
    valueText.assign(text.substr(0, text.find('\n')));
  }
  if (!archive_text::ParseMatrix(valueText, matrix)) return RaiseRootError(ZRARCHIVEM_GETVALUE_NOMATRIX);
  return HALCYON_SUCCESS;
}

}  // namespace quillon
