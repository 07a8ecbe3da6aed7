"""Finding libquillon.so and declaring its C functions for ctypes."""

from __future__ import annotations

import ctypes
import os
from pathlib import Path

from .errors import LibraryNotFoundError

#: Environment variable naming the library file, for a package that does not sit in an install prefix.
LIBRARY_VARIABLE = "QUILLON_LIBRARY"
_NAMES = ("libquillon.so.0", "libquillon.so")


class QuillonBytes(ctypes.Structure):
    """A byte array that the library hands out; the caller frees its data."""

    _fields_ = [("data", ctypes.c_void_p), ("size", ctypes.c_size_t)]


TraceFunction = ctypes.CFUNCTYPE(None, ctypes.c_char_p, ctypes.c_void_p)

_c = ctypes.c_void_p
_text = ctypes.POINTER(ctypes.c_void_p)  # char**: in/out strings that the library may replace
_SIGNATURES = {
    "quillon_create": ([], _c),
    "quillon_destroy": ([_c], None),
    "quillon_create_window": ([_c, ctypes.c_ulong, ctypes.c_int, ctypes.c_int], ctypes.c_int),
    "quillon_resize": ([_c, ctypes.c_int, ctypes.c_int], None),
    "quillon_destroy_window": ([_c], None),
    "quillon_free": ([_c], None),
    "quillon_render_rgba": ([_c, _c, ctypes.c_size_t], ctypes.c_int),
    "quillon_error_text": ([_c], _c),
    "quillon_SupportsVersion": ([_c, ctypes.c_long], ctypes.c_int),
    "quillon_SetBackgroundColour_v1": ([_c] + [ctypes.c_float] * 6, None),
    "quillon_SendChannels_v1": ([_c, ctypes.c_char_p, ctypes.c_long], QuillonBytes),
    "quillon_InitializeViewer_v1": ([_c, _text, _text, _text], QuillonBytes),
    "quillon_SetForegroundColour_v1": ([_c] + [ctypes.c_double] * 3, None),
    "quillon_RemoveForegroundColour_v1": ([_c], None),
    "quillon_EnableContextMenu_v1": ([_c], None),
    "quillon_DisableContextMenu_v1": ([_c], None),
    "quillon_EnableNavigationControls_v1": ([_c], None),
    "quillon_DisableNavigationControls_v1": ([_c], None),
    "quillon_GetCameraPosition_v1": ([_c] + [_text] * 6, ctypes.c_int),
    "quillon_SetCameraPosition_v1": ([_c] + [_text] * 6, ctypes.c_int),
    "quillon_GetMinimalWindowWidth_v1": ([_c], ctypes.c_long),
    "quillon_GetMinimalWindowHeight_v1": ([_c], ctypes.c_long),
    "quillon_HideNode_v1": ([_c, _text], ctypes.c_int),
    "quillon_UnhideNode_v1": ([_c, _text], ctypes.c_int),
    "quillon_EnableMouseNavigation_v2": ([_c], None),
    "quillon_DisableMouseNavigation_v2": ([_c], None),
    "quillon_ViewAll_v2": ([_c], None),
    "quillon_SetMeaningfulThreshold": ([_c, ctypes.c_float], None),
    "quillon_SetNominalThreshold": ([_c, ctypes.c_float], None),
    "quillon_SetViewportManipulationMode": ([_c, ctypes.c_ubyte], None),
    "quillon_load_document": ([_c, ctypes.c_char_p, _text, _text], ctypes.c_int),
    "quillon_set_trace_callback": ([TraceFunction, _c], None),
    "quillon_process_events": ([_c], None),
}

_library: ctypes.CDLL | None = None


def _candidates() -> list[str]:
    """Where to look, in order: the install prefix this package sits in (PREFIX/lib), the file
    that QUILLON_LIBRARY names, then the system's loader (LD_LIBRARY_PATH, the loader's cache)."""
    here = Path(__file__).resolve().parent  # PREFIX/lib/python3/dist-packages/quillon
    found = []
    if len(here.parents) > 2:
        prefix_lib = here.parents[2]
        found += [str(prefix_lib / name) for name in _NAMES if (prefix_lib / name).is_file()]
    named = os.environ.get(LIBRARY_VARIABLE)
    if named:
        found.append(named)
    found += list(_NAMES)
    return found


def library() -> ctypes.CDLL:
    """The loaded library with its functions declared; loaded on first use."""
    global _library
    if _library is not None:
        return _library
    tried = []
    for candidate in _candidates():
        try:
            loaded = ctypes.CDLL(candidate)
        except OSError as error:
            tried.append(f"{candidate}: {error}")
            continue
        for name, (arguments, result) in _SIGNATURES.items():
            function = getattr(loaded, name)
            function.argtypes = arguments
            function.restype = result
        _library = loaded
        return loaded
    raise LibraryNotFoundError(
        "libquillon.so was not found; install Quillon, or set "
        f"{LIBRARY_VARIABLE} to the library's path. Tried:\n  " + "\n  ".join(tried)
    )


def take_string(pointer: int | None) -> bytes | None:
    """Copies a NUL-terminated string that the library allocated, and frees it."""
    if not pointer:
        return None
    try:
        return ctypes.string_at(pointer)
    finally:
        library().quillon_free(pointer)


def take_bytes(result: QuillonBytes) -> bytes:
    """Copies a byte array that the library allocated, and frees it."""
    if not result.data:
        return b""
    try:
        return ctypes.string_at(result.data, result.size)
    finally:
        library().quillon_free(result.data)
