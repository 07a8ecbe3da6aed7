/* A C host of the installed package: an offscreen viewer, one document, one message that moves
   a box 10 cm to the right with a nominal quality, and the pixels that show it. */
#include <quillon/quillon.h>
#include <quillon/quillon_message.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { W = 160, H = 120 };

static const char* kDocument =
    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
    "<Visualisation><Version>1.0</Version>\n"
    "<Scene format=\"VRML97\"><![CDATA[#VRML V2.0 utf8\n"
    "DEF Probe Transform { children [ Shape { appearance Appearance { material Material { diffuseColor 1 0 0 } }\n"
    "  geometry Box { size 0.1 0.1 0.1 } } ] }\n"
    "]]></Scene>\n"
    "<ExternRoute from=\"Probe1[2][0][3D]\" to=\"Probe\"/>\n"
    "</Visualisation>\n";

static const unsigned char* pixel(const unsigned char* rgba, int x, int y) { return rgba + ((size_t)y * W + x) * 4; }

int main(void) {
  QuillonCtrl* ctrl = quillon_create();
  char* annotated = NULL;
  char* groups = NULL;
  unsigned char* rgba = malloc((size_t)W * H * 4);
  unsigned char buffer[64];
  QuillonMessage m;
  QuillonBytes result;
  const unsigned char* p;
  int failures = 0;

  if (!ctrl || !rgba || quillon_create_window(ctrl, 0, W, H) != 0) {
    fprintf(stderr, "c_host: no offscreen viewer\n");
    return 1;
  }
  if (quillon_load_document(ctrl, kDocument, &annotated, &groups) != 0 || strcmp(groups, "[Probe1, 2]") != 0) {
    fprintf(stderr, "c_host: the document did not load: %s\n", groups ? groups : "");
    return 1;
  }
  quillon_free(annotated);
  quillon_free(groups);

  {
    /* Half a metre in front of the origin, looking down -z. Every pointer is replaced. */
    char* texts[6] = {"0 0 0.5", "0 1 0 0", "0.01", "10", "0.5", "1"};
    char* mine[6];
    int i;
    memcpy(mine, texts, sizeof texts);
    if (quillon_SetCameraPosition_v1(ctrl, &texts[0], &texts[1], &texts[2], &texts[3], &texts[4], &texts[5]) != 1)
      ++failures;
    for (i = 0; i < 6; ++i)
      if (texts[i] != mine[i]) quillon_free(texts[i]);
  }

  quillon_message_begin(&m, buffer, sizeof buffer, "Probe1", 2, QUILLON_MESSAGE_VALUES | QUILLON_MESSAGE_QUALITY);
  quillon_message_add_3d(&m, 0.1, 0.0, 0.0, 0, 0, 0.0);
  result = quillon_SendChannels_v1(ctrl, buffer, (long)quillon_message_size(&m));
  if (result.size != 0) ++failures;
  quillon_free(result.data);

  if (quillon_render_rgba(ctrl, rgba, (size_t)W * H * 4) != 0) ++failures;
  p = pixel(rgba, 109, H / 2); /* 10 cm right of the centre at half a metre */
  if (!(p[1] > p[0] + 60 && p[1] > p[2] + 60)) {
    fprintf(stderr, "c_host: the moved box is not green: %d %d %d\n", p[0], p[1], p[2]);
    ++failures;
  }
  p = pixel(rgba, W / 2 - 20, H / 2);
  if (!(p[0] < 90 && p[1] < 90 && p[2] > 110)) {
    fprintf(stderr, "c_host: the box did not leave the centre: %d %d %d\n", p[0], p[1], p[2]);
    ++failures;
  }

  quillon_destroy_window(ctrl);
  quillon_destroy(ctrl);
  free(rgba);
  if (failures == 0) printf("c_host: passed\n");
  return failures == 0 ? 0 : 1;
}
