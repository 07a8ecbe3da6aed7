// quillon demo: the bundled example.
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "Commands.h"
#include "quillon/quillon.h"

namespace quillon::app {
namespace {

int runDemo() {
  const std::string path = std::string(QUILLON_EXAMPLES_DIR) + "/basic.xml";
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::cerr << "quillon: cannot read " << path << '\n';
    return 2;
  }
  std::ostringstream text;
  text << in.rdbuf();
  std::string xml = text.str();

  QuillonCtrl* ctrl = quillon_create();
  char* document = xml.data();
  char* annotated = nullptr;
  char* groups = nullptr;
  QuillonBytes result = quillon_InitializeViewer_v1(ctrl, &document, &annotated, &groups);
  std::cout << "Loaded " << path << '\n' << "Needed channel groups: " << (groups ? groups : "") << '\n';
  quillon_free(result.data);
  quillon_free(annotated);
  quillon_free(groups);
  const int window = quillon_create_window(ctrl, 0, 800, 600);
  std::cout << (window == 0 ? "Offscreen window ready\n" : "No render area in this build yet\n");
  quillon_destroy(ctrl);
  return 0;
}

}  // namespace

void addDemoCommand(CLI::App& app, Action& run) {
  CLI::App* cmd = app.add_subcommand("demo", "Run the bundled example");
  cmd->callback([&run] { run = runDemo; });
}

}  // namespace quillon::app
