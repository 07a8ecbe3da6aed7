/* A host written in C: creates a control, asks the constant questions, frees what it got. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "quillon/quillon.h"

static int failures = 0;
#define CHECK(cond)                                              \
  do {                                                           \
    if (!(cond)) {                                               \
      fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #cond); \
      ++failures;                                                \
    }                                                            \
  } while (0)

int main(void) {
  QuillonCtrl* ctrl = quillon_create();
  CHECK(ctrl != NULL);

  for (long v = 0; v <= 4; ++v) CHECK(quillon_SupportsVersion(ctrl, v) == (v >= 1 && v <= 3));
  CHECK(quillon_GetMinimalWindowWidth_v1(ctrl) == 463);
  CHECK(quillon_GetMinimalWindowHeight_v1(ctrl) == 480);
  quillon_SetMeaningfulThreshold(ctrl, 50.0f);
  quillon_SetNominalThreshold(ctrl, 5.0f);
  for (int mode = 0; mode < 256; ++mode) quillon_SetViewportManipulationMode(ctrl, (unsigned char)mode);

  /* A refused byte count reports itself in the result text. */
  QuillonBytes r = quillon_SendChannels_v1(ctrl, NULL, 1L << 30);
  CHECK(r.size > 8 && memcmp(r.data, "1290304", 7) == 0);
  quillon_free(r.data);
  char* errors = quillon_error_text(ctrl);
  CHECK(errors != NULL && strstr(errors, "1290302") != NULL);
  quillon_free(errors);

  char* camera[6] = {NULL, NULL, NULL, NULL, NULL, NULL};
  CHECK(quillon_GetCameraPosition_v1(ctrl, &camera[0], &camera[1], &camera[2], &camera[3], &camera[4], &camera[5]) ==
        1);
  CHECK(camera[0] != NULL && camera[5] != NULL);
  for (int i = 0; i < 6; ++i) quillon_free(camera[i]);

  quillon_destroy(ctrl);
  return failures == 0 ? 0 : 1;
}
