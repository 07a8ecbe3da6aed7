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
/* Makes a control with no window; null when memory runs out. */
QUILLON_API QuillonCtrl* quillon_create(void);
/* Destroys the control; destroy its window first. */
QUILLON_API void quillon_destroy(QuillonCtrl* ctrl);
/* parent 0 makes an offscreen render area of the given size; a non-zero parent is an X11 window
   that the viewer window is embedded into (see README). Returns 0 on success. */
QUILLON_API int quillon_create_window(QuillonCtrl* ctrl, unsigned long parent, int width, int height);
/* Gives the window a new size in pixels (1 to 16384 each); other sizes are ignored. */
QUILLON_API void quillon_resize(QuillonCtrl* ctrl, int width, int height);
/* Lets go of the window; the scene stays loaded, and the next window gets a camera of its own. */
QUILLON_API void quillon_destroy_window(QuillonCtrl* ctrl);
/* Frees a string or byte array that the library handed out; null is ignored. */
QUILLON_API void quillon_free(void* p);

/* Draws the scene and copies width x height x 4 bytes of RGBA, top row first; 0 on success. */
QUILLON_API int quillon_render_rgba(QuillonCtrl* ctrl, unsigned char* pixels, size_t size);
/* The whole error list as a new string: entries "code" 0xA7 "message", joined by 0xA7. */
QUILLON_API char* quillon_error_text(QuillonCtrl* ctrl);

/* The dispatch interface, in the order of its dispatch identifiers 1 to 22. */
/* 1 for the interface versions 1, 2 and 3, else 0. */
QUILLON_API int quillon_SupportsVersion(QuillonCtrl* ctrl, long versionNumber);
/* Sets the background to the mean of the two colours (0 to 1); each new window starts grey-blue. */
QUILLON_API void quillon_SetBackgroundColour_v1(QuillonCtrl* ctrl, float rTop, float gTop, float bTop, float rBottom,
                                                float gBottom, float bBottom);
/* Decodes one channel-group message of count bytes; the empty text when it decoded cleanly, else the error list. */
QUILLON_API QuillonBytes quillon_SendChannels_v1(QuillonCtrl* ctrl, const unsigned char* encodedChannels, long count);
/* Loads a visualisation document; always the empty text (see quillon_load_document for the outcome). */
QUILLON_API QuillonBytes quillon_InitializeViewer_v1(QuillonCtrl* ctrl, char** xmlDescription,
                                                     char** xmlDescriptionAnnotated, char** neededChannelGroups);
/* Draws every material of the scene in one colour (components 0 to 1). */
QUILLON_API void quillon_SetForegroundColour_v1(QuillonCtrl* ctrl, double r, double g, double b);
/* Gives every material its own colour back. */
QUILLON_API void quillon_RemoveForegroundColour_v1(QuillonCtrl* ctrl);
/* Lets the right mouse button open the context menu (the default). */
QUILLON_API void quillon_EnableContextMenu_v1(QuillonCtrl* ctrl);
/* Keeps the context menu closed. */
QUILLON_API void quillon_DisableContextMenu_v1(QuillonCtrl* ctrl);
/* Shows the navigation buttons and thumbwheels around the render area. */
QUILLON_API void quillon_EnableNavigationControls_v1(QuillonCtrl* ctrl);
/* Hides the navigation buttons and thumbwheels; the render area fills the window. */
QUILLON_API void quillon_DisableNavigationControls_v1(QuillonCtrl* ctrl);
/* Writes the camera's six texts (metres, radians) into the six strings; 1 on success. */
QUILLON_API int quillon_GetCameraPosition_v1(QuillonCtrl* ctrl, char** position, char** orientation,
                                             char** nearDistance, char** farDistance, char** focalDistance,
                                             char** zoomfactor);
/* Reads the camera's six texts in order; 1 when all six were read. Writes all six back as used. */
QUILLON_API int quillon_SetCameraPosition_v1(QuillonCtrl* ctrl, char** position, char** orientation,
                                             char** nearDistance, char** farDistance, char** focalDistance,
                                             char** zoomfactor);
/* 463: the narrowest window the viewer needs, in pixels. */
QUILLON_API long quillon_GetMinimalWindowWidth_v1(QuillonCtrl* ctrl);
/* 480: the lowest window the viewer needs, in pixels. */
QUILLON_API long quillon_GetMinimalWindowHeight_v1(QuillonCtrl* ctrl);
/* Hides the first node of that DEF name; 1 when one was found. */
QUILLON_API int quillon_HideNode_v1(QuillonCtrl* ctrl, char** nodeName);
/* Shows the first node of that DEF name again (a Switch shows its first choice); 1 when one was found. */
QUILLON_API int quillon_UnhideNode_v1(QuillonCtrl* ctrl, char** nodeName);
/* Lets the mouse navigate (the default). */
QUILLON_API void quillon_EnableMouseNavigation_v2(QuillonCtrl* ctrl);
/* Ignores the mouse in the render area; buttons, thumbwheels and the menu still work. */
QUILLON_API void quillon_DisableMouseNavigation_v2(QuillonCtrl* ctrl);
/* Moves the camera back along its view direction until the whole scene is in view. */
QUILLON_API void quillon_ViewAll_v2(QuillonCtrl* ctrl);
/* Qualities above this are not meaningful (default 100); also for documents loaded later. */
QUILLON_API void quillon_SetMeaningfulThreshold(QuillonCtrl* ctrl, float threshold);
/* Qualities at or below this are nominal (default 0); also for documents loaded later. */
QUILLON_API void quillon_SetNominalThreshold(QuillonCtrl* ctrl, float threshold);
/* 0 zoom, 1 pan, 2 rotate: what a plain left drag does; other values are ignored. */
QUILLON_API void quillon_SetViewportManipulationMode(QuillonCtrl* ctrl, unsigned char mode);

/* Quillon's own additions. Like the functions above, none throws, and a null control gives the
   neutral result. */
/* Loads a document as quillon_InitializeViewer_v1 does, with the same two outputs. Returns 0 when
   it loaded, otherwise the code of its first error; a null control returns 1290303 and writes nothing. */
QUILLON_API int quillon_load_document(QuillonCtrl* ctrl, const char* xml, char** annotated, char** neededGroups);
/* Hands every trace line, without its line feed, to fn (for the whole process); a null fn restores the default. */
QUILLON_API void quillon_set_trace_callback(void (*fn)(const char* line, void* user), void* user);
/* Handles the pending window events of a viewer embedded into an X11 window; call it often from the host's loop. */
QUILLON_API void quillon_process_events(QuillonCtrl* ctrl);

#ifdef __cplusplus
}
#endif

#endif /* QUILLON_QUILLON_H */
