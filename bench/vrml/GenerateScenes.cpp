// Writes the reader's benchmark scenes: vrml_scene_generator DIR
#include <cstdio>
#include <fstream>
#include <string>

#include "SceneGenerator.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: vrml_scene_generator DIR\n");
    return 2;
  }
  const std::string dir = argv[1];
  const std::pair<const char*, std::string> scenes[] = {{"mesh.wrl", quillon::bench::meshScene()},
                                                        {"parts.wrl", quillon::bench::partsScene()},
                                                        {"chains.wrl", quillon::bench::chainsScene()}};
  for (const auto& [name, text] : scenes) {
    std::ofstream file(dir + "/" + name, std::ios::binary);
    file << text;
    if (!file) {
      std::fprintf(stderr, "cannot write %s/%s\n", dir.c_str(), name);
      return 1;
    }
  }
  return 0;
}
