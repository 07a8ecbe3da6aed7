#include "core/ZrErrorHandler.h"

#include "core/CoreErrorCodes.h"
#include "core/ZrErrorMap.h"

namespace quillon {
namespace {
constexpr std::string_view kMaxReachedText = "Maximum Number of Error Messages exceeded. (ERRORTREE_MAX_REACHED)";
}

ZrErrorHandler& ZrErrorHandler::Instance() {
  static ZrErrorHandler handler;
  return handler;
}

void ZrErrorHandler::SetRootError(ErrorCode code, std::string_view text) {
  last_ = 0;
  codes_[0] = code;
  texts_[0] = text;
}

void ZrErrorHandler::SetError(ErrorCode code, std::string_view text) {
  if (last_ + 1 >= kCapacity - 1) {  // the 100th entry is always the maximum-reached one
    last_ = kCapacity - 1;
    codes_[kCapacity - 1] = ERRORTREE_MAX_REACHED;
    texts_[kCapacity - 1] = kMaxReachedText;
    return;
  }
  ++last_;
  codes_[static_cast<std::size_t>(last_)] = code;
  texts_[static_cast<std::size_t>(last_)] = text;
}

std::string ZrErrorHandler::GetErrorText() const {
  std::string out;
  for (int i = 0; i <= last_; ++i) {
    if (i > 0) out += kSeparator;
    out += std::to_string(codes_[static_cast<std::size_t>(i)]);
    out += kSeparator;
    out += texts_[static_cast<std::size_t>(i)];
  }
  return out;
}

ErrorCode RaiseRootError(ErrorCode code) {
  ZrErrorHandler::Instance().SetRootError(code, ZrErrorMap::GetMessage(code));
  return code;
}

ErrorCode RaiseError(ErrorCode code) {
  ZrErrorHandler::Instance().SetError(code, ZrErrorMap::GetMessage(code));
  return code;
}

}  // namespace quillon
