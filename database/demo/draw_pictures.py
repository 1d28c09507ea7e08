#!/usr/bin/env python3
"""Draws the pictures of the demo materials and prints demo/50_pictures.sql.

    demo/draw_pictures.py > demo/50_pictures.sql

One bitmap of 96 by 72 pixels in 16 colours for each group of materials, because the client takes pictures of
locations as bitmaps. Only needed when a drawing changes: the script it prints is kept beside it.
"""

import base64
import math
import struct

WIDTH, HEIGHT = 96, 72
PALETTE = {
    "paper": (244, 243, 238), "shade": (208, 205, 196), "ink": (52, 56, 60), "steel": (150, 160, 170),
    "bright": (205, 213, 220), "dark": (98, 108, 118), "wood": (205, 165, 110), "board": (226, 196, 150),
    "edge": (150, 112, 66), "blue": (60, 110, 175), "red": (190, 60, 50), "green": (80, 140, 90),
    "yellow": (230, 185, 60), "white": (255, 255, 255), "brass": (200, 165, 80), "floor": (184, 180, 170),
}
INDEX = {name: number for number, name in enumerate(PALETTE)}


class Picture:
    def __init__(self):
        self.rows = [[INDEX["paper"]] * WIDTH for _ in range(HEIGHT)]
        self.box(0, 60, WIDTH, HEIGHT, "floor")

    def dot(self, x, y, colour):
        if 0 <= x < WIDTH and 0 <= y < HEIGHT:
            self.rows[y][x] = INDEX[colour]

    def box(self, left, top, right, bottom, colour, outline=None):
        for y in range(top, bottom):
            for x in range(left, right):
                edge = outline and (x in (left, right - 1) or y in (top, bottom - 1))
                self.dot(x, y, outline if edge else colour)

    def disc(self, cx, cy, rx, ry, colour, outline=None):
        for y in range(math.floor(cy - ry), math.ceil(cy + ry) + 1):
            for x in range(math.floor(cx - rx), math.ceil(cx + rx) + 1):
                far = ((x - cx) / rx) ** 2 + ((y - cy) / ry) ** 2
                if far <= 1:
                    self.dot(x, y, outline if outline and far > 0.8 else colour)

    def polygon(self, points, colour):
        for y in range(HEIGHT):
            cuts = []
            for (x1, y1), (x2, y2) in zip(points, points[1:] + points[:1]):
                if (y1 <= y) != (y2 <= y):
                    cuts.append(x1 + (y - y1) * (x2 - x1) / (y2 - y1))
            cuts.sort()
            for start, end in zip(cuts[::2], cuts[1::2]):
                for x in range(round(start), round(end)):
                    self.dot(x, y, colour)

    def pallet(self):
        self.box(12, 56, 84, 60, "wood", "edge")
        for left in (14, 44, 74):
            self.box(left, 60, left + 8, 65, "edge")

    def base64(self):
        """A bottom-up BMP of 4 bits a pixel."""
        pixels = b"".join(
            bytes((row[x] << 4) | row[x + 1] for x in range(0, WIDTH, 2)) for row in reversed(self.rows))
        colours = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in PALETTE.values())
        offset = 14 + 40 + len(colours)
        head = struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset)
        info = struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 4, 0, len(pixels), 2835, 2835, 16, 16)
        return base64.b64encode(head + info + colours + pixels).decode("ascii")


def sheets():
    p = Picture()
    p.pallet()
    for level in range(9):
        top = 52 - level * 4
        p.polygon([(16, top + 3), (30, top - 6), (84, top - 6), (70, top + 3)], "bright")
        p.box(16, top + 2, 70, top + 4, "dark")
        p.polygon([(70, top + 4), (84, top - 6), (84, top - 4), (70, top + 5)], "ink")
    return p


def bars():
    p = Picture()
    for row, count in enumerate((6, 5, 4)):
        for bar in range(count):
            cx, cy = 22 + bar * 10 + row * 5, 55 - row * 9
            p.polygon([(cx, cy - 5), (cx + 18, cy - 19), (cx + 18, cy - 11), (cx, cy + 5)], "dark")
            p.disc(cx, cy, 5, 5, "steel", "ink")
    p.box(18, 60, 78, 63, "edge")
    return p


def tubes():
    p = Picture()
    for row in range(3):
        for tube in range(4):
            left, top = 14 + tube * 14, 47 - row * 14
            p.polygon([(left, top), (left + 14, top - 10), (left + 27, top - 10), (left + 13, top)], "bright")
            p.polygon([(left + 13, top), (left + 27, top - 10), (left + 27, top + 3), (left + 13, top + 13)], "dark")
            p.box(left, top, left + 13, top + 13, "steel", "ink")
            p.box(left + 3, top + 3, left + 10, top + 10, "ink")
    return p


def granulate():
    p = Picture()
    p.pallet()
    for row, lefts in enumerate(((14, 49), (31,), ())):
        for left in lefts:
            top = 38 - row * 18
            p.box(left, top + 2, left + 33, top + 18, "white", "ink")
            p.disc(left + 16, top + 3, 15, 3, "white", "shade")
            p.box(left + 6, top + 7, left + 27, top + 13, "blue")
    for grain in range(24):
        p.disc(6 + grain * 37 % 84, 67 + grain % 3, 1, 1, "white")
    return p


def pigment():
    p = Picture()
    for left, colour in ((10, "red"), (38, "white"), (66, "blue")):
        p.box(left, 26, left + 22, 60, "board", "edge")
        p.box(left + 3, 20, left + 19, 27, "board", "edge")
        p.box(left + 4, 36, left + 18, 52, colour, "ink")
    return p


def screws():
    p = Picture()
    p.box(8, 26, 50, 60, "board", "edge")
    p.box(8, 26, 50, 32, "wood", "edge")
    p.box(14, 40, 44, 52, "white", "ink")
    p.box(62, 18, 82, 28, "steel", "ink")
    p.box(67, 28, 77, 58, "bright", "ink")
    for y in range(32, 58, 3):
        p.box(67, y, 77, y + 1, "dark")
    return p


def paint():
    p = Picture()
    for left, colour in ((8, "dark"), (38, "white"), (68, "yellow")):
        p.box(left, 26, left + 22, 60, "steel", "ink")
        p.disc(left + 11, 26, 11, 4, "bright", "ink")
        p.box(left + 1, 36, left + 21, 52, colour)
    return p


def oil():
    p = Picture()
    for left in (12, 52):
        p.box(left, 14, left + 32, 62, "blue")
        p.disc(left + 15.5, 14, 16, 5, "steel", "ink")
        p.disc(left + 15.5, 61, 16, 4, "blue")
        for y in (27, 44):
            p.box(left, y, left + 32, y + 2, "ink")
        p.polygon([(left + 16, 31), (left + 21, 39), (left + 11, 39)], "yellow")
        p.disc(left + 16, 38, 5, 4, "yellow")
    return p


def boards():
    p = Picture()
    p.pallet()
    for level in range(7):
        top = 50 - level * 6
        p.polygon([(12, top + 1), (26, top - 8), (86, top - 8), (72, top + 1)], "board")
        p.box(12, top, 72, top + 5, "wood", "edge")
        p.polygon([(72, top + 5), (86, top - 4), (86, top - 9), (72, top)], "edge")
    return p


def packing():
    p = Picture()
    p.box(8, 30, 52, 60, "board", "edge")
    p.polygon([(8, 30), (20, 20), (64, 20), (52, 30)], "wood")
    p.polygon([(52, 30), (64, 20), (64, 50), (52, 60)], "edge")
    p.box(27, 30, 33, 60, "shade")
    p.box(70, 24, 90, 60, "bright", "dark")
    p.disc(80, 24, 10, 3, "white", "dark")
    p.disc(80, 24, 4, 1, "edge")
    return p


PICTURES = [(1, sheets), (2, bars), (3, tubes), (4, granulate), (5, pigment), (6, screws), (7, paint), (8, oil),
            (9, boards), (10, packing)]

HEAD = """\
-- Pictures of locations: one for each group of materials, given to about one location in four.
-- Bitmaps of 96 by 72 pixels in Base64, drawn by draw_pictures.py, which prints this file.

CREATE TABLE #Picture (GroupSur smallint, Picture nvarchar(max));
"""

TAIL = """\
UPDATE L
SET L.Picture_pic = P.Picture
FROM dbo.kolv_mag_Location_Item AS L
    INNER JOIN dbo.kolv_mag_Group_Item AS G ON G.ItemCode = L.ItemCode
    INNER JOIN #Picture AS P ON P.GroupSur = G.GroupSur
WHERE (L.Stand + L.Shelf * 2 + L.Location) % 4 = 1;

DROP TABLE #Picture;
GO
"""

if __name__ == "__main__":
    print(HEAD, end="")
    for group, draw in PICTURES:
        print(f"INSERT INTO #Picture (GroupSur, Picture) VALUES ({group}, N'{draw().base64()}');")
    print(TAIL, end="")
