#pragma once
// What the program tells the user about a refused document and about a stream that the
// viewer does not take cleanly.

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "channels/ChannelgroupAddress.h"

struct QuillonCtrl;

namespace quillon::app {

/// Prints the viewer's error text, one entry a line as `code: message`.
void PrintErrorList(std::ostream& out, std::string_view errorText);

/// The outcome of handing a document to a control.
struct LoadOutcome {
  std::string errors;     // the viewer's error text; empty when the document loaded
  std::string annotated;  // the document with the fault marked, when the fault has a place
  std::string groups;     // the channel groups that the routes need
  bool loaded() const { return errors.empty(); }
};

/// Loads a document into a control. The viewer answers a refused document with an empty result
/// by design; its error list, empty before, is how a refusal shows.
LoadOutcome LoadDocument(QuillonCtrl* ctrl, const std::string& xml);

/// Loads a document into a control without a window, as `check` does, so that every command
/// refuses the same documents with the same list.
LoadOutcome CheckDocument(const std::string& xml);

/// Reads a whole regular file; false for anything else (a folder, a missing file).
bool ReadFile(const std::string& path, std::string& text);

/// Collects the errors that messages of a stream cause, so that a stream that does not fit its
/// document is seen without printing the same complaint for every message.
class SendErrorLog {
 public:
  /// `neededGroups` is the document's needed-groups text; messages for other groups are counted.
  explicit SendErrorLog(std::string_view neededGroups);
  /// Notes message `index` (counted from 0) and the viewer's answer to it; an empty text is a clean one.
  void note(std::size_t index, const std::vector<unsigned char>& message, std::string_view errorText);
  /// Prints the first few messages with each code, then how often each repeated.
  void report(std::ostream& out, std::string_view command) const;
  std::size_t failed() const { return failedMessages; }

 private:
  struct Seen {
    std::string message;
    std::size_t count = 0, first = 0, last = 0;
  };
  static constexpr std::size_t kShownPerCode = 3;
  std::vector<ChannelgroupAddress> needed;
  std::map<std::string, Seen> byCode;
  std::map<std::string, std::size_t> unneeded;  // by the group's "name[group]"
  std::size_t failedMessages = 0;
  std::string shown;
};

}  // namespace quillon::app
