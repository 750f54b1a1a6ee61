#!/usr/bin/env python3
"""Writes the 16 by 16 icons that filetypes.xml names, as 24-bit BMP files into Images/.

Each icon is a page with a folded corner in the colour of its type and a band of the type's
initial colour along the bottom; run it again after adding a type."""
import os
import struct

ICONS = {
    "text": (0x80, 0x80, 0x80), "html": (0xE0, 0x60, 0x20), "css": (0x20, 0x60, 0xE0),
    "jscript": (0xE0, 0xC0, 0x20), "php": (0x70, 0x70, 0xB0), "asp": (0x20, 0x90, 0x90),
    "jsp": (0xB0, 0x40, 0x40), "perl": (0x30, 0x50, 0x90), "vbscript": (0x40, 0x40, 0xC0),
    "actionscript": (0xC0, 0x20, 0x20), "xml": (0x20, 0xA0, 0x40), "cpp": (0x00, 0x50, 0xA0),
    "java": (0xA0, 0x60, 0x00), "csharp": (0x60, 0x20, 0x90), "python": (0x30, 0x70, 0xA0),
    "sql": (0x90, 0x90, 0x20), "none": (0xC0, 0xC0, 0xC0),
}
SIZE = 16


def pixel(x, y, colour):
    """The colour at (x, y), y counted from the top."""
    if x < 2 or x > 13 or y > 14 or (x > 9 and y < 4 and x - 9 > y):
        return (0xFF, 0x00, 0xFF)  # transparent key
    if x in (2, 13) or y in (0, 14) or (x > 9 and y < 4 and x - 9 == y):
        return (0x40, 0x40, 0x40)  # outline
    if y >= 10:
        return colour
    return (0xFF, 0xFF, 0xFF)


def write_bmp(path, colour):
    row_size = (SIZE * 3 + 3) & ~3
    pixels = bytearray()
    for y in range(SIZE - 1, -1, -1):  # bottom-up rows
        row = bytearray()
        for x in range(SIZE):
            r, g, b = pixel(x, y, colour)
            row += bytes((b, g, r))
        row += b"\0" * (row_size - len(row))
        pixels += row
    header = struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, 24, 0, len(pixels), 2835, 2835, 0, 0)
    with open(path, "wb") as file:
        file.write(header + info + pixels)


if __name__ == "__main__":
    folder = os.path.join(os.path.dirname(os.path.abspath(__file__)), "Images")
    os.makedirs(folder, exist_ok=True)
    for name, colour in ICONS.items():
        write_bmp(os.path.join(folder, name + ".bmp"), colour)
