"""Channel-group messages, the bytes that ``Viewer.send`` and ``quillon_SendChannels_v1`` take."""

from __future__ import annotations

import struct
from collections.abc import Sequence

#: The records carry values; without this flag the viewer ignores the message.
VALUES = 0x0001
#: Every record carries a status (unsigned 32-bit).
STATUS = 0x0004
#: Every record carries a time stamp (unsigned 32-bit).
TIMESTAMP = 0x0008
#: Quillon's extension: every record carries its quality, a double, straight after its payload.
QUALITY = 0x0010

#: Record types.
KIND_1D, KIND_3D, KIND_6D, KIND_TIME = 1, 2, 3, 4

_MAX_RECORDS = 0xFFFF
_PAYLOAD_SIZES = {KIND_1D: 8, KIND_3D: 24, KIND_6D: 96, KIND_TIME: 8}


def record_size(flags: int, kind: int) -> int:
    """The bytes of one record of that kind under those flags."""
    return (1 + (_PAYLOAD_SIZES[kind] if flags & VALUES else 0) + (8 if flags & QUALITY else 0)
            + (4 if flags & STATUS else 0) + (4 if flags & TIMESTAMP else 0))


class Message:
    """One channel-group message: a control path name, a group number and one record per
    channel, in channel order (the first record is channel 0).

    The flags hold for every record. By default the records carry values, a status and a time
    stamp (flags 0x000D); ``quality=True`` adds the quality extension (0x001D). Lengths are in
    metres, like everything at the viewer's interface.

    >>> m = Message('Probe', 2, quality=True)
    >>> m.add_3d(0.0, 0.0, 0.0, quality=0.0)
    >>> viewer.send(bytes(m))
    """

    def __init__(self, name: str, group: int, *, quality: bool = False, status: bool = True,
                 timestamp: bool = True, flags: int | None = None):
        encoded = name.encode("ascii") if isinstance(name, str) else bytes(name)
        if len(encoded) > 0xFFFF:
            raise ValueError("a control path name holds at most 65535 bytes")
        if not -2**31 <= group < 2**31:
            raise ValueError(f"the group number {group} does not fit 32 bits")
        if flags is None:
            flags = VALUES | (STATUS if status else 0) | (TIMESTAMP if timestamp else 0) | (QUALITY if quality else 0)
        if not 0 <= flags <= 0xFFFF:
            raise ValueError(f"flags 0x{flags:x} do not fit 16 bits")
        self.name = encoded.decode("ascii", errors="replace")
        self.group = group
        self.flags = flags
        self._name = encoded
        self._records: list[bytes] = []

    @property
    def topic(self) -> str:
        """The ZeroMQ topic of this message's channel group: ``name[group]``."""
        return f"{self.name}[{self.group}]"

    @property
    def count(self) -> int:
        """The records added so far."""
        return len(self._records)

    @property
    def size(self) -> int:
        """The bytes of the whole message."""
        return 10 + len(self._name) + sum(len(r) for r in self._records)

    def add_1d(self, value: float, *, status: int = 0, timestamp: int = 0, quality: float | None = None) -> None:
        """Adds a 1D value (a temperature, a switch choice)."""
        self._add(KIND_1D, (value,), status, timestamp, quality)

    def add_3d(self, x: float, y: float, z: float, *, status: int = 0, timestamp: int = 0,
               quality: float | None = None) -> None:
        """Adds a 3D value: a position in metres."""
        self._add(KIND_3D, (x, y, z), status, timestamp, quality)

    def add_6d(self, position: Sequence[float], rotation: Sequence[Sequence[float]], *, status: int = 0,
               timestamp: int = 0, quality: float | None = None) -> None:
        """Adds a 6D value: a position in metres and a 3 x 3 rotation matrix, ``rotation[row][column]``
        (a nested sequence or a numpy array). The message carries the matrix column by column."""
        if len(position) != 3:
            raise ValueError("a 6D position has three coordinates")
        rows = [list(row) for row in rotation]
        if len(rows) != 3 or any(len(row) != 3 for row in rows):
            raise ValueError("a 6D rotation is a 3 x 3 matrix, rotation[row][column]")
        columns = [rows[r][c] for c in range(3) for r in range(3)]
        self._add(KIND_6D, tuple(position) + tuple(columns), status, timestamp, quality)

    def add_time(self, time: float, *, status: int = 0, timestamp: int = 0, quality: float | None = None) -> None:
        """Adds the group's time value."""
        self._add(KIND_TIME, (time,), status, timestamp, quality)

    def _add(self, kind: int, values: tuple, status: int, timestamp: int, quality: float | None) -> None:
        if len(self._records) >= _MAX_RECORDS:
            raise OverflowError("a message holds at most 65535 records")
        if self.flags & QUALITY:
            if quality is None:
                raise ValueError("this message carries a quality for every record: give quality=")
        elif quality is not None:
            raise ValueError("this message carries no quality; make it with Message(..., quality=True)")
        parts = [struct.pack("<B", kind)]
        if self.flags & VALUES:
            parts.append(struct.pack(f"<{len(values)}d", *(float(v) for v in values)))
        if self.flags & QUALITY:
            parts.append(struct.pack("<d", float(quality)))
        if self.flags & STATUS:
            parts.append(struct.pack("<I", status & 0xFFFFFFFF))
        if self.flags & TIMESTAMP:
            parts.append(struct.pack("<I", timestamp & 0xFFFFFFFF))
        self._records.append(b"".join(parts))

    def __bytes__(self) -> bytes:
        header = struct.pack("<HH", self.flags, len(self._name)) + self._name
        header += struct.pack("<iH", self.group, len(self._records))
        return header + b"".join(self._records)

    def __repr__(self) -> str:
        return f"Message({self.name!r}, {self.group}, flags=0x{self.flags:04x}, records={self.count})"


def parse_topic(message: bytes) -> str:
    """The ``name[group]`` topic of an encoded message, read from its header."""
    if len(message) < 4:
        raise ValueError("a channel-group message is at least 10 bytes long")
    (length,) = struct.unpack_from("<H", message, 2)
    if len(message) < 10 + length:
        raise ValueError("the message is shorter than its header claims")
    name = message[4:4 + length].decode("ascii", errors="replace")
    (group,) = struct.unpack_from("<i", message, 4 + length)
    return f"{name}[{group}]"
