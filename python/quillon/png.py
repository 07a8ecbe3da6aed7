"""A minimal PNG writer for RGBA frames, on the standard library's zlib."""

from __future__ import annotations

import os
import struct
import zlib


def _chunk(kind: bytes, data: bytes) -> bytes:
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)


def encode_png(rgba: bytes, width: int, height: int) -> bytes:
    """An 8-bit RGBA PNG of rows given top row first, 4 bytes a pixel."""
    stride = width * 4
    if len(rgba) != stride * height:
        raise ValueError(f"{len(rgba)} bytes are not {width} x {height} RGBA pixels")
    rows = b"".join(b"\x00" + rgba[y * stride:(y + 1) * stride] for y in range(height))
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", header) + _chunk(b"IDAT", zlib.compress(rows, 6))
            + _chunk(b"IEND", b""))


def write_png(path: str | os.PathLike, rgba: bytes, width: int, height: int) -> None:
    """Writes the PNG beside the target first, so a failure leaves no half-written file."""
    data = encode_png(rgba, width, height)
    partial = f"{os.fspath(path)}.partial"
    try:
        with open(partial, "wb") as file:
            file.write(data)
        os.replace(partial, path)
    except BaseException:
        if os.path.exists(partial):
            os.remove(partial)
        raise
