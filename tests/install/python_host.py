"""A Python host of the installed package: finds the library by itself, renders, writes a PNG."""

import sys

import quillon

DOCUMENT = """<?xml version="1.0" encoding="ISO-8859-1"?>
<Visualisation><Version>1.0</Version>
<Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
DEF Probe Transform { children [ Shape { appearance Appearance { material Material { diffuseColor 1 0 0 } }
  geometry Box { size 0.1 0.1 0.1 } } ] }
]]></Scene>
<ExternRoute from="Probe[2][0][3D]" to="Probe"/>
</Visualisation>
"""

with quillon.Viewer(width=200, height=150) as v:
    assert v.load(DOCUMENT) == [("Probe", 2)]
    v.view_all()
    m = quillon.Message("Probe", 2, quality=True)
    m.add_3d(0.0, 0.0, 0.0, quality=0.0)
    assert v.send(bytes(m)) == []
    rgba = v.render()
    r, g, b = (int(c) for c in rgba[75, 100, :3])
    assert g > r + 60 and g > b + 60, (r, g, b)  # nominal: green
    v.save_png(sys.argv[1])
    try:
        v.load("<Visualisation>")
        raise AssertionError("a malformed document loaded")
    except quillon.DocumentError as error:
        assert error.codes[0] == 1290800
print("python_host: passed, library", quillon._library.library()._name)
