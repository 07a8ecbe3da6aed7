#!/usr/bin/env python3
"""Writes robot_arm.qcs, a recorded stream for robot_arm.xml.

Channel group "Arm" 1: 0 base position on the rail (3D), 1 shoulder and 2 elbow frames (6D),
3 gripper choice (1D: 0 open, 1 closed), 4 motor temperature (1D, 0..1 on the colour map),
5 rail load (1D, cascades to every material of the rail). Each record carries its quality
(flag 0x0010): 0 is nominal; the elbow reports 1000, not meaningful, for frames 50 to 69.

Usage: robot_arm_stream.py [OUT.qcs] [FRAMES]
"""
import math
import struct
import sys

FLAGS = 0x0001 | 0x0010  # values, each followed by its quality


def frame(position, angle):
    """A 6D payload: position, then the rotation about z column by column."""
    c, s = math.cos(angle), math.sin(angle)
    return list(position) + [c, s, 0.0, -s, c, 0.0, 0.0, 0.0, 1.0]


def message(step, frames):
    t = step / frames
    elbow_bad = 50 <= step < 70
    records = [
        (2, [0.25 * math.sin(2 * math.pi * t), 0.0, 0.0], 0.0),
        (3, frame((0.0, 0.02, 0.0), 0.6 * math.sin(2 * math.pi * t)), 0.0),
        (3, frame((0.0, 0.2, 0.0), -0.9 * math.sin(4 * math.pi * t)), 1000.0 if elbow_bad else 0.0),
        (1, [0.0 if (step // 40) % 2 == 0 else 1.0], 0.0),
        (1, [t], 0.0),
        (1, [0.5 + 0.5 * math.sin(6 * math.pi * t)], 0.0),
    ]
    name = b"Arm"
    out = struct.pack("<HH", FLAGS, len(name)) + name + struct.pack("<iH", 1, len(records))
    for kind, payload, quality in records:
        out += struct.pack("<B", kind) + struct.pack("<%dd" % len(payload), *payload) + struct.pack("<d", quality)
    return out


def main():
    path = sys.argv[1] if len(sys.argv) > 1 else "robot_arm.qcs"
    frames = int(sys.argv[2]) if len(sys.argv) > 2 else 120
    with open(path, "wb") as f:
        f.write(b"QCS1")
        for step in range(frames):
            m = message(step, frames)
            f.write(struct.pack("<QI", step * 50000, len(m)) + m)


if __name__ == "__main__":
    main()
