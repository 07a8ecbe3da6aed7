"""Channel stream files (.qcs): recordings of channel-group messages for replay.

The file holds the 4 bytes ``QCS1``, then records back to back: an unsigned 64-bit
little-endian time in microseconds since the recording began, an unsigned 32-bit little-endian
byte count N, and N bytes of one message exactly as ``Viewer.send`` takes it.
"""

from __future__ import annotations

import os
import struct
import time
import warnings
from collections.abc import Iterable
from dataclasses import dataclass

from .errors import StreamError, StreamWarning

MAGIC = b"QCS1"
_RECORD_HEAD = struct.Struct("<QI")


@dataclass(frozen=True)
class Record:
    """One recorded message and when it came, in microseconds since the recording began."""

    time_us: int
    message: bytes


def parse_qcs(data: bytes, *, strict: bool = False) -> list[Record]:
    """The records of a stream held in memory. A cut-short last record is left out with a
    StreamWarning, or raises StreamError when ``strict``; nothing past the data is read."""
    if data[:4] != MAGIC:
        raise StreamError("not a channel stream: it does not begin with QCS1")
    records = []
    offset = 4
    while offset < len(data):
        if len(data) - offset < _RECORD_HEAD.size:
            break
        time_us, size = _RECORD_HEAD.unpack_from(data, offset)
        start = offset + _RECORD_HEAD.size
        if len(data) - start < size:
            break
        records.append(Record(time_us, bytes(data[start:start + size])))
        offset = start + size
    if offset < len(data):
        text = f"the stream ends in a cut-short record after {len(records)} whole ones"
        if strict:
            raise StreamError(text)
        warnings.warn(text, StreamWarning, stacklevel=3)
    return records


def read_qcs(path: str | os.PathLike, *, strict: bool = False) -> list[Record]:
    """The records of a .qcs file, in file order (see ``parse_qcs`` for a cut-short file)."""
    with open(path, "rb") as file:
        return parse_qcs(file.read(), strict=strict)


class QcsWriter:
    """Writes a .qcs file record by record; a context manager.

    ``write`` takes the record's time in microseconds, or measures it from the writer's start.
    """

    def __init__(self, path: str | os.PathLike):
        self._file = open(path, "wb")
        self._file.write(MAGIC)
        self._start = time.monotonic()

    def write(self, message: bytes, time_us: int | None = None) -> None:
        data = bytes(message)
        if time_us is None:
            time_us = int((time.monotonic() - self._start) * 1e6)
        if not 0 <= time_us < 2**64:
            raise ValueError("a record's time is an unsigned 64-bit number of microseconds")
        if len(data) >= 2**32:
            raise ValueError("a record holds less than 4 GiB")
        self._file.write(_RECORD_HEAD.pack(time_us, len(data)) + data)

    def close(self) -> None:
        self._file.close()

    def __enter__(self) -> QcsWriter:
        return self

    def __exit__(self, *exc) -> None:
        self.close()


def write_qcs(path: str | os.PathLike, records: Iterable[Record | tuple[int, bytes]]) -> None:
    """Writes a whole .qcs file from (time in microseconds, message) pairs."""
    with QcsWriter(path) as writer:
        for record in records:
            time_us, message = (record.time_us, record.message) if isinstance(record, Record) else record
            writer.write(message, time_us)
