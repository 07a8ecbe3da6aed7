"""Shared documents for the quillon package's tests."""

import pytest

# A box of 10 cm at the origin whose position (3D, channel 0) and colour (1D, channel 1)
# follow channel group Probe[2]; it freezes on bad values.
BOX = """<?xml version="1.0" encoding="ISO-8859-1"?>
<Visualisation>
  <Label>Würfel</Label>
  <Version>1.0</Version>
  <Settings><RenderInvalids>freeze</RenderInvalids></Settings>
  <Scene format="VRML97"><![CDATA[#VRML V2.0 utf8
DEF Probe Transform { children [ Shape {
  appearance Appearance { material DEF Skin Material { diffuseColor 0.2 0.2 0.9 } }
  geometry Box { size 0.1 0.1 0.1 } } ] }
]]></Scene>
  <ExternRoute from="Probe[2][0][3D]" to="Probe"/>
  <ExternRoute from="Probe[2][1][1D]" to="Skin.diffuseColor"/>
</Visualisation>
"""


@pytest.fixture
def viewer():
    import quillon
    with quillon.Viewer(width=200, height=150) as v:
        yield v


@pytest.fixture
def examples():
    from pathlib import Path
    return Path(__file__).resolve().parents[2] / "examples"
