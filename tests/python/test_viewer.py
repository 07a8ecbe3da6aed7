"""The viewer through the package, judged by the pixels it renders. Needs EGL (Mesa's software
rasteriser will do)."""

import struct
import zlib

import numpy
import pytest

import quillon
from conftest import BOX

# The same box with only the position route: its colour then shows the quality.
PROBE_ONLY = BOX.replace('  <ExternRoute from="Probe[2][1][1D]" to="Skin.diffuseColor"/>\n', "")
BACKGROUND = (77, 77, 128)
FRONT = quillon.Camera(position=(0.0, 0.0, 1.0), orientation=(0.0, 1.0, 0.0, 0.0), near=0.01, far=10.0, focal=1.0)


def is_background(rgb):
    return all(abs(a - b) <= 2 for a, b in zip(rgb, BACKGROUND))


def centre(frame):
    return tuple(int(c) for c in frame[frame.shape[0] // 2, frame.shape[1] // 2, :3])


def box_columns(frame):
    """The columns where something other than the background shows."""
    diff = numpy.abs(frame[:, :, :3].astype(int) - numpy.array(BACKGROUND)).sum(axis=2)
    return numpy.nonzero(diff.max(axis=0) > 30)[0]


def position(x, quality):
    m = quillon.Message("Probe", 2, quality=quality is not None)
    m.add_3d(x, 0.0, 0.0, **({} if quality is None else {"quality": quality}))
    return bytes(m)


def test_load_view_all_render_and_save_png(viewer, tmp_path):
    assert viewer.load(BOX) == [("Probe", 2), ("Probe", 2)]
    viewer.view_all()
    frame = viewer.render()
    assert frame.shape == (150, 200, 4) and frame.dtype == numpy.uint8
    r, g, b = centre(frame)
    assert b > r + 40 and b > g + 40, (r, g, b)  # the box's own blue
    assert is_background(tuple(int(c) for c in frame[2, 2, :3]))
    assert (frame[:, :, 3] == 255).all()

    path = tmp_path / "out.png"
    viewer.save_png(path)
    data = path.read_bytes()
    assert data[:8] == b"\x89PNG\r\n\x1a\n"
    chunks, offset = {}, 8
    while offset < len(data):
        length, kind = struct.unpack_from(">I4s", data, offset)
        body = data[offset + 8:offset + 8 + length]
        assert struct.unpack_from(">I", data, offset + 8 + length)[0] == zlib.crc32(kind + body)
        chunks[kind] = body
        offset += 12 + length
    assert struct.unpack(">IIBB", chunks[b"IHDR"][:10]) == (200, 150, 8, 6)
    rows = zlib.decompress(chunks[b"IDAT"])
    assert b"".join(rows[y * 801 + 1:(y + 1) * 801] for y in range(150)) == viewer.render_bytes()


# Without a quality (None) a value is not meaningful, unless the thresholds are infinite.
@pytest.mark.parametrize("quality, thresholds, colour", [
    (0.0, {}, "green"),
    (50.0, {}, "orange"),
    (50.0, {"nominal": 60.0}, "green"),
    (50.0, {"meaningful": 40.0}, "red"),
    (None, {}, "red"),
    (None, {"nominal": float("inf"), "meaningful": float("inf")}, "green"),
])
def test_quality_shows_by_colour(viewer, quality, thresholds, colour):
    viewer.set_thresholds(**thresholds)
    viewer.load(PROBE_ONLY)
    viewer.camera = FRONT
    assert viewer.send(position(0.0, quality)) == []
    r, g, b = centre(viewer.render())
    seen = "green" if g > r + 40 else "orange" if r > b + 60 and g > b + 30 else "red" if r > g + 40 else "?"
    assert seen == colour, (r, g, b)


def test_positions_arrive_in_metres(viewer):
    viewer.load(PROBE_ONLY)
    viewer.camera = FRONT
    viewer.send(position(0.0, 0.0))
    at_origin = box_columns(viewer.render())
    viewer.send(position(0.15, 0.0))
    moved = box_columns(viewer.render())
    assert at_origin.size and moved.size
    assert moved.min() > at_origin.max()  # 15 cm to the right, a quarter of the view at 1 m


def test_colour_maps_drive_materials(viewer):
    viewer.load(BOX)
    viewer.camera = FRONT
    m = quillon.Message("Probe", 2, quality=True)
    m.add_3d(0.0, 0.0, 0.0, quality=0.0)
    m.add_1d(0.99, quality=0.0)  # the last of the nine built-in colours, dark red
    assert viewer.send(bytes(m)) == []
    r, g, b = centre(viewer.render())
    assert r > 60 and g < 30 and b < 30, (r, g, b)


def test_a_record_of_the_wrong_kind_is_reported(viewer):
    viewer.load(BOX)
    m = quillon.Message("Probe", 2)
    m.add_3d(0.0, 0.0, 0.0)
    m.add_3d(0.0, 0.0, 0.0)  # channel 1 takes 1D values
    errors = viewer.send(m)
    assert [code for code, _ in errors] == [1290100, 1290302]
    assert "not compatible" in errors[0][1]


def test_refused_documents_raise_with_codes_and_annotation(viewer):
    viewer.load(BOX)
    with pytest.raises(quillon.DocumentError) as refused:
        viewer.load(BOX.replace("Probe[2][1][1D]", "Probe [2][1][1D]"))
    error = refused.value
    assert error.codes[0] == 1290803 and all(isinstance(c, int) for c in error.codes)
    assert "<!--begin_offending_input-->" in error.annotated and "Würfel" in error.annotated
    assert not error.loaded
    with pytest.raises(quillon.DocumentError) as malformed:
        viewer.load("<Visualisation>")
    assert malformed.value.annotated == ""


def test_a_channel_named_twice_loads_but_says_so(viewer):
    twice = BOX.replace("Probe[2][1][1D]", "Probe[2][0][1D]")
    with pytest.raises(quillon.DocumentError) as refused:
        viewer.load(twice)
    assert refused.value.loaded and refused.value.code == 1290102
    assert refused.value.groups == [("Probe", 2), ("Probe", 2)]


def test_camera_round_trip(viewer):
    viewer.load(BOX)
    viewer.camera = quillon.Camera((0.5, 0.25, 2.0), (0.0, 1.0, 0.0, 0.5), 0.05, 20.0, 2.0, 1.0)
    c = viewer.camera
    assert (*c.position, *c.orientation, c.near, c.far, c.focal) == pytest.approx(
        (0.5, 0.25, 2.0, 0.0, 1.0, 0.0, 0.5, 0.05, 20.0, 2.0), abs=1e-3)


def test_hide_and_unhide(viewer):
    viewer.load(BOX)
    viewer.camera = FRONT
    assert viewer.hide("Probe")
    assert is_background(centre(viewer.render()))
    assert viewer.unhide("Probe")
    assert not is_background(centre(viewer.render()))
    assert not viewer.hide("Nobody")


def test_trace_lines_reach_python():
    lines = []
    quillon.set_trace(lines.append)
    try:
        with quillon.Viewer(width=64, height=48) as v:
            v.load(BOX)
    finally:
        quillon.set_trace(None)
    assert any(line.startswith("Loading of VRML scene took") for line in lines)
    assert not any(line.endswith("\n") for line in lines)


def test_a_closed_viewer_says_so():
    v = quillon.Viewer(width=64, height=48)
    v.close()
    v.close()
    with pytest.raises(quillon.ViewerError):
        v.render()
