"""The viewer: one control of libquillon.so with its window."""

from __future__ import annotations

import ctypes
import os
import re
from collections.abc import Callable
from dataclasses import dataclass

from . import _library
from .errors import DocumentError, ViewerError, parse_error_text
from .message import Message
from .png import write_png

try:
    import numpy
except ImportError:  # numpy is optional: frames are then plain bytes
    numpy = None

#: Manipulation modes of SetViewportManipulationMode: what a plain left drag does.
MODES = {"zoom": 0, "pan": 1, "rotate": 2}
#: The codes that a load reports when the scene did load and only a route was left without
#: effect: its channel already has a receiver (1D, 3D, 6D, Time).
_ROUTE_CODES = {1290102, 1290103, 1290104, 1290105}
_GROUP = re.compile(rb"\[([^,\]]*), ([^\]]*)\]")
_ENCODING = re.compile(rb"""^\s*<\?xml[^>]*?encoding\s*=\s*["']([A-Za-z0-9._-]+)["']""")


@dataclass(frozen=True)
class Camera:
    """The camera as the host sees it: metres and radians.

    position: x, y, z. orientation: the rotation axis x, y, z and the angle about it. near, far
    and focal: distances along the view direction. zoom: the zoom factor (1 is the normal field
    of view; 2 widens it).
    """

    position: tuple[float, float, float] = (0.0, 0.0, 0.0)
    orientation: tuple[float, float, float, float] = (0.0, 1.0, 0.0, 0.0)
    near: float = 0.1
    far: float = 10.0
    focal: float = 5.0
    zoom: float = 1.0

    def texts(self) -> list[str]:
        """The six texts of SetCameraPosition_v1."""
        return [" ".join(repr(float(v)) for v in self.position), " ".join(repr(float(v)) for v in self.orientation),
                repr(float(self.near)), repr(float(self.far)), repr(float(self.focal)), repr(float(self.zoom))]

    @classmethod
    def from_texts(cls, texts: list[str]) -> Camera:
        """Reads the six texts of GetCameraPosition_v1."""
        numbers = [[float(x) for x in t.split()] for t in texts]
        return cls(tuple(numbers[0]), tuple(numbers[1]), numbers[2][0], numbers[3][0], numbers[4][0], numbers[5][0])


def document_encoding(xml: bytes) -> str:
    """The encoding that the XML declaration names, or UTF-8."""
    match = _ENCODING.match(xml)
    return match.group(1).decode("ascii") if match else "utf-8"


def parse_groups(text: bytes) -> list[tuple[str, int]]:
    """The needed channel groups, ``[name, group]`` entries one after the other, as pairs. The
    group is read as the viewer reads it: a leading sign and digits."""
    groups = []
    for name, group in _GROUP.findall(text):
        number = re.match(rb"\s*([+-]?\d*)", group).group(1)
        groups.append((name.decode("latin-1"), int(number) if number.strip(b"+-") else 0))
    return groups


class Viewer:
    """A Quillon viewer with an offscreen render area of width x height pixels (parent 0), or
    embedded into the X11 window ``parent``; a context manager.

    The scene is the process's: every viewer of one process shows the document loaded last.

    >>> with Viewer(width=200, height=150) as v:
    ...     groups = v.load(xml_text)
    ...     v.view_all()
    ...     v.send(bytes(message))
    ...     v.save_png('out.png')
    """

    def __init__(self, width: int = 800, height: int = 600, *, parent: int = 0):
        self._lib = _library.library()
        self._ctrl = self._lib.quillon_create()
        if not self._ctrl:
            raise ViewerError("the viewer could not be created")
        if self._lib.quillon_create_window(self._ctrl, parent, width, height) != 0:
            self._lib.quillon_destroy(self._ctrl)
            self._ctrl = None
            where = "an offscreen render area (EGL)" if parent == 0 else f"the X11 window 0x{parent:x}"
            raise ViewerError(f"no {width} x {height} window could be made in {where}")
        self.width, self.height = width, height
        self._nominal, self._meaningful = 0.0, 100.0

    # -- life -------------------------------------------------------------------------------

    def close(self) -> None:
        """Lets the window and the control go; the viewer is unusable afterwards."""
        if self._ctrl:
            self._lib.quillon_destroy_window(self._ctrl)
            self._lib.quillon_destroy(self._ctrl)
            self._ctrl = None

    def __enter__(self) -> Viewer:
        return self

    def __exit__(self, *exc) -> None:
        self.close()

    def __del__(self):
        try:
            self.close()
        except Exception:
            pass

    @property
    def _handle(self):
        if not self._ctrl:
            raise ViewerError("the viewer is closed")
        return self._ctrl

    def resize(self, width: int, height: int) -> None:
        self._lib.quillon_resize(self._handle, width, height)
        self.width, self.height = width, height

    def process_events(self) -> None:
        """For a viewer embedded into an X11 window: handles its pending window events."""
        self._lib.quillon_process_events(self._handle)

    # -- documents and channels -------------------------------------------------------------

    def load(self, xml: str | bytes) -> list[tuple[str, int]]:
        """Loads a visualisation document and returns the channel groups that its routes need,
        as (name, group) pairs, once per route. Raises DocumentError when it does not load cleanly;
        a refused document leaves the previous scene as it was."""
        if isinstance(xml, str):
            encoding = document_encoding(xml.encode("ascii", errors="ignore"))
            data = xml.encode(encoding, errors="xmlcharrefreplace")
        else:
            data = bytes(xml)
            encoding = document_encoding(data)
        annotated, needed = ctypes.c_void_p(), ctypes.c_void_p()
        code = self._lib.quillon_load_document(self._handle, data, ctypes.byref(annotated), ctypes.byref(needed))
        annotated_text = _library.take_string(annotated.value) or b""
        groups = parse_groups(_library.take_string(needed.value) or b"")
        if code == 0:
            return groups
        raise DocumentError(code, self.errors(), annotated_text.decode(encoding, errors="replace"),
                            code in _ROUTE_CODES, groups)

    def send(self, message: bytes | Message) -> list[tuple[int, str]]:
        """Hands one channel-group message to the viewer: [] when it decoded cleanly, else the
        error list as (code, message) pairs, the root cause first."""
        data = bytes(message)
        result = self._lib.quillon_SendChannels_v1(self._handle, data, len(data))
        return parse_error_text(_library.take_bytes(result))

    def errors(self) -> list[tuple[int, str]]:
        """The process-wide error list as it stands: only the next error replaces it."""
        return parse_error_text(_library.take_string(self._lib.quillon_error_text(self._handle)) or b"")

    # -- the view ---------------------------------------------------------------------------

    def view_all(self) -> None:
        """Moves the camera back along its view direction until the whole scene is in view."""
        self._lib.quillon_ViewAll_v2(self._handle)

    @property
    def camera(self) -> Camera:
        texts = [ctypes.c_void_p() for _ in range(6)]
        ok = self._lib.quillon_GetCameraPosition_v1(self._handle, *(ctypes.byref(t) for t in texts))
        values = [(_library.take_string(t.value) or b"").decode("ascii") for t in texts]
        if not ok:
            raise ViewerError("the camera could not be read")
        return Camera.from_texts(values)

    @camera.setter
    def camera(self, camera: Camera) -> None:
        buffers = [ctypes.create_string_buffer(t.encode("ascii")) for t in camera.texts()]
        pointers = [ctypes.c_void_p(ctypes.addressof(b)) for b in buffers]
        ok = self._lib.quillon_SetCameraPosition_v1(self._handle, *(ctypes.byref(p) for p in pointers))
        # The library writes back new strings; ours stay ours.
        for pointer, buffer in zip(pointers, buffers):
            if pointer.value and pointer.value != ctypes.addressof(buffer):
                self._lib.quillon_free(pointer.value)
        if not ok:
            raise ViewerError(f"the camera texts were refused: {camera.texts()}")

    def set_manipulation_mode(self, mode: str | int) -> None:
        """What a plain left drag does: 'zoom' (0), 'pan' (1) or 'rotate' (2)."""
        value = MODES[mode] if isinstance(mode, str) else int(mode)
        self._lib.quillon_SetViewportManipulationMode(self._handle, value & 0xFF)

    def set_background(self, top: tuple[float, float, float], bottom: tuple[float, float, float] | None = None) -> None:
        """The background colour (components 0 to 1); with two colours, their mean."""
        bottom = top if bottom is None else bottom
        self._lib.quillon_SetBackgroundColour_v1(self._handle, *top, *bottom)

    def set_foreground(self, colour: tuple[float, float, float] | None) -> None:
        """Draws every material in one colour; None gives each its own back."""
        if colour is None:
            self._lib.quillon_RemoveForegroundColour_v1(self._handle)
        else:
            self._lib.quillon_SetForegroundColour_v1(self._handle, *colour)

    def hide(self, node: str) -> bool:
        """Hides the first node of that DEF name; False when there is none."""
        return self._node_call(self._lib.quillon_HideNode_v1, node)

    def unhide(self, node: str) -> bool:
        """Shows the node again (a Switch its first choice); False when there is none."""
        return self._node_call(self._lib.quillon_UnhideNode_v1, node)

    def _node_call(self, function: Callable, node: str) -> bool:
        buffer = ctypes.create_string_buffer(node.encode("latin-1"))
        pointer = ctypes.c_void_p(ctypes.addressof(buffer))
        return function(self._handle, ctypes.byref(pointer)) != 0

    # -- quality ----------------------------------------------------------------------------

    @property
    def nominal_threshold(self) -> float:
        """Qualities at or below it are nominal (green); 0 until set. Holds for later documents too."""
        return self._nominal

    @nominal_threshold.setter
    def nominal_threshold(self, value: float) -> None:
        self._lib.quillon_SetNominalThreshold(self._handle, value)
        self._nominal = float(value)

    @property
    def meaningful_threshold(self) -> float:
        """Qualities above it are not meaningful (red); 100 until set. Holds for later documents too."""
        return self._meaningful

    @meaningful_threshold.setter
    def meaningful_threshold(self, value: float) -> None:
        self._lib.quillon_SetMeaningfulThreshold(self._handle, value)
        self._meaningful = float(value)

    def set_thresholds(self, nominal: float | None = None, meaningful: float | None = None) -> None:
        if nominal is not None:
            self.nominal_threshold = nominal
        if meaningful is not None:
            self.meaningful_threshold = meaningful

    # -- pictures ---------------------------------------------------------------------------

    def render_bytes(self) -> bytes:
        """Draws the scene: height x width x 4 bytes of RGBA, top row first."""
        size = self.width * self.height * 4
        buffer = (ctypes.c_ubyte * size)()
        if self._lib.quillon_render_rgba(self._handle, buffer, size) != 0:
            raise ViewerError("the frame could not be drawn or read")
        return bytes(buffer)

    def render(self):
        """Draws the scene: a numpy array of height x width x 4 (RGBA, uint8, top row first), or
        the same bytes where numpy is missing."""
        if numpy is None:
            return self.render_bytes()
        frame = numpy.empty((self.height, self.width, 4), dtype=numpy.uint8)
        if self._lib.quillon_render_rgba(self._handle, frame.ctypes.data, frame.nbytes) != 0:
            raise ViewerError("the frame could not be drawn or read")
        return frame

    def save_png(self, path: str | os.PathLike) -> None:
        """Draws the scene and writes it as an RGBA PNG image."""
        write_png(path, self.render_bytes(), self.width, self.height)


_trace_function = None  # kept alive while the library may call it


def set_trace(callback: Callable[[str], None] | None) -> None:
    """Hands every trace line of the library (timings, mode changes) to ``callback``, for the
    whole process; None sends them to standard error again (when QUILLON_TRACE is set)."""
    global _trace_function
    lib = _library.library()
    if callback is None:
        lib.quillon_set_trace_callback(_library.TraceFunction(), None)
        _trace_function = None
        return

    def forward(line: bytes, _user) -> None:
        try:
            callback(line.decode("latin-1"))
        except Exception:  # an exception must not cross into the library
            pass

    function = _library.TraceFunction(forward)
    lib.quillon_set_trace_callback(function, None)
    _trace_function = function
