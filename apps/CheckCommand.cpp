// quillon check: validates a visualisation document and builds it headlessly.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "Commands.h"
#include "quillon/quillon.h"

namespace quillon::app {
namespace {

struct CheckOptions {
  std::string document;
  std::string annotated;
};

// One error entry on one line: the message's line feeds and tabs become single blanks.
std::string OneLine(std::string_view message) {
  std::string line;
  for (char c : message) {
    if (c == '\n' || c == '\t' || c == '\r') c = ' ';
    if (c == ' ' && !line.empty() && line.back() == ' ') continue;
    line += c;
  }
  return line;
}

// The error text alternates codes and messages, all separated by 0xA7.
void PrintErrorList(std::string_view text) {
  constexpr char kSeparator = '\xA7';
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
    std::cout << code << ": " << OneLine(message) << '\n';
  }
}

// Without --annotated the annotated document goes next to the document.
std::string AnnotatedPath(const CheckOptions& options) {
  if (!options.annotated.empty()) return options.annotated;
  const std::string& doc = options.document;
  constexpr std::string_view kXml = ".xml";
  const std::string stem = doc.ends_with(kXml) ? doc.substr(0, doc.size() - kXml.size()) : doc;
  return stem + ".annotated.xml";
}

int RunCheck(const CheckOptions& options) {
  std::error_code ec;
  std::ifstream in;
  if (std::filesystem::is_regular_file(options.document, ec)) in.open(options.document, std::ios::binary);
  if (!in.is_open()) {
    std::cerr << "quillon: cannot read " << options.document << '\n';
    return 2;
  }
  std::ostringstream text;
  text << in.rdbuf();
  std::string xml = text.str();

  QuillonCtrl* ctrl = quillon_create();
  if (!ctrl) {
    std::cerr << "quillon: cannot create the viewer\n";
    return 2;
  }
  char* document = xml.data();
  char* annotated = nullptr;
  char* groups = nullptr;
  QuillonBytes result = quillon_InitializeViewer_v1(ctrl, &document, &annotated, &groups);
  char* errors = quillon_error_text(ctrl);
  const std::string errorText = errors ? errors : "";
  const std::string annotatedText = annotated ? annotated : "";
  const std::string groupText = groups ? groups : "";
  quillon_free(result.data);
  quillon_free(annotated);
  quillon_free(groups);
  quillon_free(errors);
  quillon_destroy(ctrl);

  // The viewer answers a failed document with an empty result by design; the error list
  // of a fresh viewer is empty unless loading the document recorded a fault.
  if (errorText.empty()) {
    std::cout << options.document << ": good\n"
              << "Needed channel groups: " << groupText << '\n';
    return 0;
  }
  std::cout << options.document << ": bad\n";
  PrintErrorList(errorText);
  if (!annotatedText.empty()) {
    const std::string path = AnnotatedPath(options);
    std::ofstream out(path, std::ios::binary);
    if (!(out << annotatedText) || !out.flush()) {
      std::cerr << "quillon: cannot write " << path << '\n';
      return 2;
    }
    std::cout << "Annotated document: " << path << '\n';
  }
  return 1;
}

}  // namespace

void addCheckCommand(CLI::App& app, Action& run) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* cmd = app.add_subcommand("check", "Validate a visualisation document and build it headlessly");
  cmd->add_option("document", options->document, "The visualisation document (DOC.xml)")->required();
  cmd->add_option("--annotated", options->annotated,
                  "Where to write the annotated document on a located fault (default: DOC.annotated.xml)");
  cmd->callback([&run, options] { run = [options] { return RunCheck(*options); }; });
}

}  // namespace quillon::app
