// quillon: the command-line face of the viewer.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "quillon/quillon.h"

namespace {

bool readFile(const std::string& path, std::string& text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream out;
  out << in.rdbuf();
  text = out.str();
  return true;
}

int runDemo() {
  const std::string path = std::string(QUILLON_EXAMPLES_DIR) + "/basic.xml";
  std::string xml;
  if (!readFile(path, xml)) {
    std::cerr << "quillon: cannot read " << path << '\n';
    return 2;
  }
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

int main(int argc, char** argv) {
  CLI::App app{"quillon: an embeddable 3D viewer for live measurement data"};
  app.require_subcommand(1);
  CLI::App* demo = app.add_subcommand("demo", "Run the bundled example");
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    const int rc = app.exit(e);
    return rc == 0 ? 0 : 2;
  }
  if (demo->parsed()) return runDemo();
  return 2;
}
