"""The .qcs file: writing, reading back, and a cut-short end."""

import pytest

import quillon


def test_records_come_back_as_written(tmp_path):
    path = tmp_path / "s.qcs"
    records = [(0, b"\x01\x00"), (1500, b""), (2**40, bytes(range(256)))]
    quillon.write_qcs(path, records)
    data = path.read_bytes()
    assert data[:4] == b"QCS1"
    assert len(data) == 4 + 3 * 12 + 2 + 0 + 256
    assert [(r.time_us, r.message) for r in quillon.read_qcs(path)] == records


def test_a_cut_short_record_is_reported_and_never_read_past(tmp_path):
    path = tmp_path / "s.qcs"
    quillon.write_qcs(path, [(0, b"abc"), (10, b"defgh")])
    data = path.read_bytes()
    for cut in range(len(data) - 1, 4 + 12 + 3, -1):
        with pytest.warns(quillon.StreamWarning):
            records = quillon.parse_qcs(data[:cut])
        assert [r.message for r in records] == [b"abc"]
        with pytest.raises(quillon.StreamError):
            quillon.parse_qcs(data[:cut], strict=True)


def test_other_files_are_refused(tmp_path):
    with pytest.raises(quillon.StreamError):
        quillon.parse_qcs(b"QCS2")


def test_the_bundled_example_reads_whole(examples):
    records = quillon.read_qcs(examples / "robot_arm.qcs", strict=True)
    assert records and all(quillon.parse_topic(r.message) == "Arm[1]" for r in records)
    assert [r.time_us for r in records] == sorted(r.time_us for r in records)
