// quillon check: validates a visualisation document and builds it headlessly.
#include <fstream>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "Commands.h"
#include "Diagnostics.h"

namespace quillon::app {
namespace {

struct CheckOptions {
  std::string document;
  std::string annotated;
};

// Without --annotated the annotated document goes next to the document.
std::string AnnotatedPath(const CheckOptions& options) {
  if (!options.annotated.empty()) return options.annotated;
  const std::string& doc = options.document;
  constexpr std::string_view kXml = ".xml";
  const std::string stem = doc.ends_with(kXml) ? doc.substr(0, doc.size() - kXml.size()) : doc;
  return stem + ".annotated.xml";
}

int RunCheck(const CheckOptions& options) {
  std::string xml;
  if (!ReadFile(options.document, xml)) {
    std::cerr << "quillon: cannot read " << options.document << '\n';
    return 2;
  }
  const LoadOutcome outcome = CheckDocument(xml);
  if (outcome.loaded()) {
    std::cout << options.document << ": good\n"
              << "Needed channel groups: " << outcome.groups << '\n';
    return 0;
  }
  std::cout << options.document << ": bad\n";
  PrintErrorList(std::cout, outcome.errors);
  if (!outcome.annotated.empty()) {
    const std::string path = AnnotatedPath(options);
    std::ofstream out(path, std::ios::binary);
    if (!(out << outcome.annotated) || !out.flush()) {
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
