"""Messages byte for byte: the worked example, every record kind, the quality extension."""

import struct

import pytest

import quillon

WORKED_EXAMPLE = bytes.fromhex(
    "0d00 0400 41726d31 02000000 0300"
    "01 000000000000f83f 00000000 e8030000"
    "02 0000000000002440 0000000000003440 0000000000003e40 00000000 e8030000"
    "03 000000000000f03f 0000000000000040 0000000000000840"
    "000000000000f03f 0000000000000000 0000000000000000"
    "0000000000000000 000000000000f03f 0000000000000000"
    "0000000000000000 0000000000000000 000000000000f03f"
    "00000000 e8030000")


def test_the_worked_example():
    m = quillon.Message("Arm1", 2)
    m.add_1d(1.5, timestamp=1000)
    m.add_3d(10.0, 20.0, 30.0, timestamp=1000)
    m.add_6d((1, 2, 3), [[1, 0, 0], [0, 1, 0], [0, 0, 1]], timestamp=1000)
    assert len(WORKED_EXAMPLE) == 169
    assert bytes(m) == WORKED_EXAMPLE
    assert m.size == 169 and m.count == 3 and m.topic == "Arm1[2]"


def test_rotation_travels_column_by_column():
    m = quillon.Message("g", -1, status=False, timestamp=False)
    m.add_6d((0, 0, 0), [[1, 2, 3], [4, 5, 6], [7, 8, 9]])
    data = bytes(m)
    assert struct.unpack_from("<i", data, 5)[0] == -1
    assert struct.unpack_from("<12d", data, 12) == (0, 0, 0, 1, 4, 7, 2, 5, 8, 3, 6, 9)


@pytest.mark.parametrize("flags", range(0, 32))
def test_every_flag_combination_gives_the_promised_layout(flags):
    m = quillon.Message("g", 0, flags=flags)
    quality = {"quality": 0.5} if flags & quillon.QUALITY else {}
    m.add_1d(1.0, status=7, timestamp=9, **quality)
    m.add_time(2.0, status=7, timestamp=9, **quality)
    record = (1 + (8 if flags & quillon.VALUES else 0) + (8 if flags & quillon.QUALITY else 0)
              + (4 if flags & quillon.STATUS else 0) + (4 if flags & quillon.TIMESTAMP else 0))
    assert len(bytes(m)) == 11 + 2 * record
    assert bytes(m)[11 + record] == quillon.KIND_TIME


def test_quality_sits_between_payload_and_status():
    m = quillon.Message("g", 0, quality=True)
    m.add_1d(1.5, status=3, timestamp=4, quality=0.25)
    assert bytes(m)[11:] == b"\x01" + struct.pack("<ddII", 1.5, 0.25, 3, 4)
    assert m.flags == 0x001D


def test_quality_must_match_the_flags():
    with pytest.raises(ValueError, match="give quality"):
        quillon.Message("g", 0, quality=True).add_1d(1.0)
    with pytest.raises(ValueError, match="carries no quality"):
        quillon.Message("g", 0).add_1d(1.0, quality=0.0)
    with pytest.raises(ValueError):
        quillon.Message("g", 0).add_6d((0, 0), [[1, 0, 0], [0, 1, 0], [0, 0, 1]])
    with pytest.raises(ValueError):
        quillon.Message("g", 2**31)


def test_topic_is_read_from_the_bytes():
    assert quillon.parse_topic(WORKED_EXAMPLE) == "Arm1[2]"
    assert quillon.parse_topic(bytes(quillon.Message("Probe_1", -12))) == "Probe_1[-12]"
    with pytest.raises(ValueError):
        quillon.parse_topic(WORKED_EXAMPLE[:6])
