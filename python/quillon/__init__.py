"""Quillon from Python: an embeddable 3D viewer for live measurement data.

Pure Python over libquillon.so (ctypes): load a visualisation document, stream channel-group
messages, and read back what the view shows.

>>> import quillon
>>> v = quillon.Viewer(width=200, height=150)
>>> groups = v.load(xml_text)               # [('Probe', 2), ...]
>>> v.view_all()
>>> m = quillon.Message('Probe', 2, quality=True)
>>> m.add_3d(0.0, 0.0, 0.0, quality=0.0)
>>> errors = v.send(bytes(m))               # [] when it decoded cleanly
>>> rgba = v.render()                       # height x width x 4
>>> v.save_png('out.png'); v.close()
"""

from .errors import (DocumentError, LibraryNotFoundError, QuillonError, StreamError, StreamWarning, ViewerError,
                     parse_error_text)
from .message import KIND_1D, KIND_3D, KIND_6D, KIND_TIME, QUALITY, STATUS, TIMESTAMP, VALUES, Message, parse_topic
from .png import encode_png, write_png
from .publisher import Publisher
from .stream import QcsWriter, Record, parse_qcs, read_qcs, write_qcs
from .viewer import MODES, Camera, Viewer, set_trace

__all__ = [
    "Camera", "DocumentError", "LibraryNotFoundError", "Message", "MODES", "Publisher", "QcsWriter", "QuillonError",
    "Record", "StreamError", "StreamWarning", "Viewer", "ViewerError", "encode_png", "parse_error_text", "parse_qcs",
    "parse_topic", "read_qcs", "set_trace", "write_png", "write_qcs", "KIND_1D", "KIND_3D", "KIND_6D", "KIND_TIME",
    "QUALITY", "STATUS", "TIMESTAMP", "VALUES",
]
__version__ = "0.1.0"
