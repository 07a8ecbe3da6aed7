"""Prints the share of a PNG image's pixels that differ from its corner pixel (the background),
so that the command-line test can tell an empty picture from a framed scene."""

import struct
import sys
import zlib


def rows(path):
    data = open(path, "rb").read()
    offset, idat, width, height, channels = 8, b"", 0, 0, 4
    while offset < len(data):
        length, kind = struct.unpack_from(">I4s", data, offset)
        body = data[offset + 8:offset + 8 + length]
        if kind == b"IHDR":
            width, height, _, colour = struct.unpack(">IIBB", body[:10])
            channels = 4 if colour == 6 else 3
        elif kind == b"IDAT":
            idat += body
        offset += 12 + length
    raw, stride, previous = zlib.decompress(idat), width * channels, bytearray(width * channels)
    for y in range(height):
        kind, line = raw[y * (stride + 1)], bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            a = line[i - channels] if i >= channels else 0
            b, c = previous[i], previous[i - channels] if i >= channels else 0
            if kind == 1:
                line[i] = (line[i] + a) & 255
            elif kind == 2:
                line[i] = (line[i] + b) & 255
            elif kind == 3:
                line[i] = (line[i] + (a + b) // 2) & 255
            elif kind == 4:
                p = a + b - c
                pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
                line[i] = (line[i] + (a if pa <= pb and pa <= pc else b if pb <= pc else c)) & 255
        yield [tuple(line[x * channels:x * channels + 3]) for x in range(width)]
        previous = line


pixels = [p for row in rows(sys.argv[1]) for p in row]
background = pixels[0]
print(f"{sum(1 for p in pixels if max(abs(a - b) for a, b in zip(p, background)) > 8) / len(pixels):.3f}")
