// A C++ host of the installed package: the bundled basic example, framed by View All.
#include <quillon/quillon.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

const char* kDocument = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<Visualisation><Label>A red box</Label><Version>1.0</Version>
<Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
Shape { appearance Appearance { material Material { diffuseColor 1 0 0 } } geometry Box { size 0.2 0.2 0.2 } }
]]></Scene></Visualisation>
)";

}  // namespace

int main() {
  constexpr int kWidth = 200, kHeight = 150;
  QuillonCtrl* ctrl = quillon_create();
  if (!ctrl || quillon_create_window(ctrl, 0, kWidth, kHeight) != 0) {
    std::fprintf(stderr, "cxx_host: no offscreen viewer\n");
    return 1;
  }
  char* annotated = nullptr;
  char* groups = nullptr;
  const int code = quillon_load_document(ctrl, kDocument, &annotated, &groups);
  quillon_free(annotated);
  quillon_free(groups);
  // A faulty document is refused with its code; the scene stays.
  char* refusedAnnotated = nullptr;
  const int refused = quillon_load_document(ctrl, "<Visualisation>", &refusedAnnotated, nullptr);
  quillon_free(refusedAnnotated);

  // The default camera sits at the origin, inside the box: View All steps back from it.
  char* texts[6] = {};
  quillon_SetCameraPosition_v1(ctrl, &texts[0], &texts[1], &texts[2], &texts[3], &texts[4], &texts[5]);
  for (char* t : texts) quillon_free(t);
  quillon_SetCameraPosition_v1(ctrl, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  quillon_ViewAll_v2(ctrl);
  std::vector<unsigned char> rgba(static_cast<std::size_t>(kWidth) * kHeight * 4);
  const int rendered = quillon_render_rgba(ctrl, rgba.data(), rgba.size());
  const unsigned char* centre = &rgba[(static_cast<std::size_t>(kHeight / 2) * kWidth + kWidth / 2) * 4];
  const unsigned char* corner = &rgba[0];
  quillon_destroy_window(ctrl);
  quillon_destroy(ctrl);

  const bool red = centre[0] > 120 && centre[1] < 60 && centre[2] < 60;
  const bool background = corner[0] < 90 && corner[2] > 110;
  if (code != 0 || refused != 1290800 || rendered != 0 || !red || !background) {
    std::fprintf(stderr, "cxx_host: load %d, refused %d, render %d, centre %d %d %d, corner %d %d %d\n", code, refused,
                 rendered, centre[0], centre[1], centre[2], corner[0], corner[1], corner[2]);
    return 1;
  }
  std::printf("cxx_host: passed\n");
  return 0;
}
