/* Quillon: an embeddable 3D viewer for live measurement data.
 *
 * The host's interface, as plain C. Every function takes the control first, accepts a null
 * control (and returns its neutral result), and never throws or aborts on bad input. Every
 * call of one control must come from one thread.
 *
 * Strings: char** arguments are in/out 8-bit strings ending in NUL. A null pointer, or a
 * pointer to a null string, is read as the empty string (SetCameraPosition_v1: as the
 * default text). Where a function writes a string back and the pointer is not null, it
 * stores a newly allocated string into *p without freeing what was there; free it with
 * quillon_free. A QuillonBytes result belongs to the caller; free its data with
 * quillon_free. The empty text is {NULL, 0}.
 */
#ifndef QUILLON_QUILLON_H
#define QUILLON_QUILLON_H

#include <stddef.h>

#if defined(QUILLON_BUILDING_LIBRARY)
#define QUILLON_API __attribute__((visibility("default")))
#else
#define QUILLON_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef struct QuillonCtrl QuillonCtrl;
typedef struct QuillonBytes {
  unsigned char* data;
  size_t size;
} QuillonBytes;

/* The largest channel-group message that SendChannels_v1 accepts, in bytes. */
#define QUILLON_MAX_MESSAGE_BYTES (64L * 1024L * 1024L)

/* The control's life. */
QUILLON_API QuillonCtrl* quillon_create(void);
QUILLON_API void quillon_destroy(QuillonCtrl* ctrl);
/* parent 0 makes an offscreen render area of the given size; a non-zero parent is an X11 window
   that the viewer window is embedded into (see README). Returns 0 on success. */
QUILLON_API int quillon_create_window(QuillonCtrl* ctrl, unsigned long parent, int width, int height);
QUILLON_API void quillon_resize(QuillonCtrl* ctrl, int width, int height);
QUILLON_API void quillon_destroy_window(QuillonCtrl* ctrl);
QUILLON_API void quillon_free(void* p);

/* Draws the scene and copies width x height x 4 bytes of RGBA, top row first; 0 on success. */
QUILLON_API int quillon_render_rgba(QuillonCtrl* ctrl, unsigned char* pixels, size_t size);
/* The whole error list as a new string: entries "code" 0xA7 "message", joined by 0xA7. */
QUILLON_API char* quillon_error_text(QuillonCtrl* ctrl);

/* The dispatch interface, in the order of its dispatch identifiers 1 to 22. */
QUILLON_API int quillon_SupportsVersion(QuillonCtrl* ctrl, long versionNumber);
QUILLON_API void quillon_SetBackgroundColour_v1(QuillonCtrl* ctrl, float rTop, float gTop, float bTop, float rBottom,
                                                float gBottom, float bBottom);
QUILLON_API QuillonBytes quillon_SendChannels_v1(QuillonCtrl* ctrl, const unsigned char* encodedChannels, long count);
QUILLON_API QuillonBytes quillon_InitializeViewer_v1(QuillonCtrl* ctrl, char** xmlDescription,
                                                     char** xmlDescriptionAnnotated, char** neededChannelGroups);
QUILLON_API void quillon_SetForegroundColour_v1(QuillonCtrl* ctrl, double r, double g, double b);
QUILLON_API void quillon_RemoveForegroundColour_v1(QuillonCtrl* ctrl);
QUILLON_API void quillon_EnableContextMenu_v1(QuillonCtrl* ctrl);
QUILLON_API void quillon_DisableContextMenu_v1(QuillonCtrl* ctrl);
QUILLON_API void quillon_EnableNavigationControls_v1(QuillonCtrl* ctrl);
QUILLON_API void quillon_DisableNavigationControls_v1(QuillonCtrl* ctrl);
QUILLON_API int quillon_GetCameraPosition_v1(QuillonCtrl* ctrl, char** position, char** orientation,
                                             char** nearDistance, char** farDistance, char** focalDistance,
                                             char** zoomfactor);
QUILLON_API int quillon_SetCameraPosition_v1(QuillonCtrl* ctrl, char** position, char** orientation,
                                             char** nearDistance, char** farDistance, char** focalDistance,
                                             char** zoomfactor);
QUILLON_API long quillon_GetMinimalWindowWidth_v1(QuillonCtrl* ctrl);
QUILLON_API long quillon_GetMinimalWindowHeight_v1(QuillonCtrl* ctrl);
QUILLON_API int quillon_HideNode_v1(QuillonCtrl* ctrl, char** nodeName);
QUILLON_API int quillon_UnhideNode_v1(QuillonCtrl* ctrl, char** nodeName);
QUILLON_API void quillon_EnableMouseNavigation_v2(QuillonCtrl* ctrl);
QUILLON_API void quillon_DisableMouseNavigation_v2(QuillonCtrl* ctrl);
QUILLON_API void quillon_ViewAll_v2(QuillonCtrl* ctrl);
QUILLON_API void quillon_SetMeaningfulThreshold(QuillonCtrl* ctrl, float threshold);
QUILLON_API void quillon_SetNominalThreshold(QuillonCtrl* ctrl, float threshold);
QUILLON_API void quillon_SetViewportManipulationMode(QuillonCtrl* ctrl, unsigned char mode);

#ifdef __cplusplus
}
#endif

#endif /* QUILLON_QUILLON_H */
