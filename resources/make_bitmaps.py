#!/usr/bin/env python3
"""Writes the amount field's button bitmaps (24-bit BMP) from the pixel drawings below.

Run it from anywhere after changing a drawing; the BMP files beside it are what varion.rc
compiles in. Magenta is the transparent colour the field draws them with."""
import os
import struct

TRANSPARENT = (255, 0, 255)

CALCULATOR = [
    "#########",
    "#.......#",
    "#.ooooo.#",
    "#.......#",
    "#.x.x.x.#",
    "#.......#",
    "#.x.x.x.#",
    "#.......#",
    "#.x.x.x.#",
    "#.......#",
    "#########",
]

COPY = [
    "######    ",
    "#wwww#    ",
    "#w########",
    "#w#wwwwww#",
    "#w#w####w#",
    "###wwwwww#",
    "  #w####w#",
    "  #wwwwww#",
    "  #w###ww#",
    "  #wwwwww#",
    "  ########",
]

NORMAL = {"#": (64, 64, 64), ".": (232, 232, 232), "o": (150, 200, 150), "x": (0, 0, 0),
          "w": (255, 255, 255), " ": TRANSPARENT}
DISABLED = {"#": (160, 160, 160), ".": (232, 232, 232), "o": (208, 208, 208), "x": (160, 160, 160),
            "w": (255, 255, 255), " ": TRANSPARENT}


def write_bmp(path, drawing, colours):
    height, width = len(drawing), len(drawing[0])
    row_bytes = (width * 3 + 3) & ~3
    pixels = bytearray()
    for row in reversed(drawing):  # bottom-up
        line = bytearray()
        for ch in row:
            r, g, b = colours[ch]
            line += bytes((b, g, r))
        line += b"\0" * (row_bytes - len(line))
        pixels += line
    header = struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 2835, 2835, 0, 0)
    with open(path, "wb") as f:
        f.write(header + info + pixels)


here = os.path.dirname(os.path.abspath(__file__))
write_bmp(os.path.join(here, "calc_btn.bmp"), CALCULATOR, NORMAL)
write_bmp(os.path.join(here, "calc_btn_disabled.bmp"), CALCULATOR, DISABLED)
write_bmp(os.path.join(here, "btn_copy.bmp"), COPY, NORMAL)
