#include "Diagnostics.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <ostream>

#include "quillon/quillon.h"

namespace quillon::app {
namespace {

constexpr char kSeparator = '\xA7';

// One error entry on one line: the message's line feeds and tabs become single blanks.
std::string OneLine(std::string_view message) {
  std::string line;
  for (char c : message) {
    if (c == '\n' || c == '\t' || c == '\r') c = ' ';
    if (c == ' ' && !line.empty() && line.back() == ' ') continue;
    line += c;
  }
  while (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

// Calls `entry(code, message)` for each entry of an error text: codes and messages alternate,
// all separated by 0xA7.
template <class F>
void ForEachEntry(std::string_view text, F entry) {
  while (!text.empty()) {
    const std::size_t codeEnd = text.find(kSeparator);
    const std::string_view code = text.substr(0, codeEnd);
    std::string_view message;
    if (codeEnd != std::string_view::npos) {
      text.remove_prefix(codeEnd + 1);
      const std::size_t messageEnd = text.find(kSeparator);
      message = text.substr(0, messageEnd);
      text.remove_prefix(messageEnd == std::string_view::npos ? text.size() : messageEnd + 1);
    } else {
      text = {};
    }
    entry(code, message);
  }
}

std::string Take(char* text) {
  std::string result = text ? text : "";
  quillon_free(text);
  return result;
}

}  // namespace

void PrintErrorList(std::ostream& out, std::string_view errorText) {
  ForEachEntry(errorText, [&](std::string_view code, std::string_view message) {
    out << code << ": " << OneLine(message) << '\n';
  });
}

LoadOutcome LoadDocument(QuillonCtrl* ctrl, const std::string& xml) {
  std::string text = xml;
  char* document = text.data();
  char* annotated = nullptr;
  char* groups = nullptr;
  QuillonBytes result = quillon_InitializeViewer_v1(ctrl, &document, &annotated, &groups);
  quillon_free(result.data);
  LoadOutcome outcome;
  outcome.annotated = Take(annotated);
  outcome.groups = Take(groups);
  outcome.errors = Take(quillon_error_text(ctrl));
  return outcome;
}

LoadOutcome CheckDocument(const std::string& xml) {
  QuillonCtrl* ctrl = quillon_create();
  if (!ctrl) return {"0\xA7the viewer could not be created", {}, {}};
  LoadOutcome outcome = LoadDocument(ctrl, xml);
  quillon_destroy(ctrl);
  return outcome;
}

bool ReadFile(const std::string& path, std::string& text) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return false;
  // Read straight into a string of the file's size: a big scene is not held twice.
  const auto size = std::filesystem::file_size(path, ec);
  if (ec) return false;
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  text.assign(static_cast<std::size_t>(size), '\0');
  in.read(text.data(), static_cast<std::streamsize>(size));
  text.resize(static_cast<std::size_t>(in.gcount()));
  return !in.bad();
}

SendErrorLog::SendErrorLog(std::string_view neededGroups) : needed(ParseNeededGroups(neededGroups)) {}

void SendErrorLog::note(std::size_t index, const std::vector<unsigned char>& sent, std::string_view errorText) {
  const auto address = ReadChannelgroupAddress(sent.data(), sent.size());
  if (!address)
    ++unneeded["(a header cut short)"];
  else if (std::find(needed.begin(), needed.end(), *address) == needed.end())
    ++unneeded[AddressText(*address)];
  if (errorText.empty()) return;
  ++failedMessages;
  // The last entry of a failed send is always the conversion's own; the first is the cause.
  bool first = true;
  ForEachEntry(errorText, [&](std::string_view code, std::string_view message) {
    if (!first) return;
    first = false;
    Seen& seen = byCode[std::string(code)];
    if (seen.count == 0) {
      seen.message = OneLine(message);
      seen.first = index;
    }
    seen.last = index;
    if (++seen.count <= kShownPerCode)
      shown += "  message " + std::to_string(index) + ": " + std::string(code) + ": " + seen.message + '\n';
  });
}

void SendErrorLog::report(std::ostream& out, std::string_view command) const {
  if (!unneeded.empty()) {
    out << command << ": the stream has messages for channel groups that the document does not need:";
    for (const auto& [group, count] : unneeded) out << ' ' << group << " (" << count << ')';
    out << '\n';
  }
  if (failedMessages == 0) return;
  out << command << ": " << failedMessages << (failedMessages == 1 ? " message" : " messages")
      << " of the stream were not taken cleanly:\n"
      << shown;
  for (const auto& [code, seen] : byCode)
    if (seen.count > kShownPerCode)
      out << "  code " << code << " in " << seen.count << " messages in all (messages " << seen.first << " to "
          << seen.last << ")\n";
}

}  // namespace quillon::app
