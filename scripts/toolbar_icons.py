#!/usr/bin/env python3
"""Draws the toolbar's pictures, 16 x 16 pixels each, in the order of the command table's buttons.

Run by hand when a picture changes: scripts/toolbar_icons.py src/shell/resources/toolbar.bmp
"""
import struct
import sys

SIZE = 16
COLOURS = {  # red, green, blue; the first is the transparent one
    "none": (255, 0, 255), "black": (0, 0, 0), "white": (255, 255, 255), "grey": (128, 128, 128),
    "light": (200, 200, 200), "blue": (40, 80, 190), "sky": (130, 175, 245), "navy": (20, 35, 110),
    "green": (30, 130, 50), "lime": (120, 205, 110), "red": (200, 40, 40), "rose": (240, 140, 130),
    "gold": (235, 180, 50), "cream": (255, 230, 150), "brown": (140, 95, 25), "cyan": (30, 150, 160),
}
NAMES = list(COLOURS)


class Icon:
    def __init__(self):
        self.rows = [["none"] * SIZE for _ in range(SIZE)]

    def dot(self, x, y, colour="black"):
        if 0 <= x < SIZE and 0 <= y < SIZE:
            self.rows[y][x] = colour

    def line(self, x0, y0, x1, y1, colour="black", gap=0):
        steps = max(abs(x1 - x0), abs(y1 - y0), 1)
        for i in range(steps + 1):
            if not gap or i % (gap + 1) != gap:
                self.dot(round(x0 + (x1 - x0) * i / steps), round(y0 + (y1 - y0) * i / steps), colour)

    def box(self, x0, y0, x1, y1, edge="black", fill=None, gap=0):
        if fill:
            for y in range(y0, y1 + 1):
                self.line(x0, y, x1, y, fill)
        for a, b, c, d in ((x0, y0, x1, y0), (x0, y1, x1, y1), (x0, y0, x0, y1), (x1, y0, x1, y1)):
            self.line(a, b, c, d, edge, gap)

    def polygon(self, points, fill, edge="black"):
        for y in range(SIZE):
            xs = []
            for (x0, y0), (x1, y1) in zip(points, points[1:] + points[:1]):
                if (y0 <= y < y1) or (y1 <= y < y0):
                    xs.append(x0 + (y - y0) * (x1 - x0) / (y1 - y0))
            xs.sort()
            for left, right in zip(xs[::2], xs[1::2]):
                self.line(round(left), y, round(right), y, fill)
        for (x0, y0), (x1, y1) in zip(points, points[1:] + points[:1]):
            self.line(x0, y0, x1, y1, edge)

    def disc(self, cx, cy, radius, fill, edge="black", top_only=False):
        for y in range(SIZE):
            for x in range(SIZE):
                distance = ((x - cx) ** 2 + (y - cy) ** 2) ** 0.5
                if distance <= radius and not (top_only and y > cy):
                    inside = distance <= radius - 1 and not (top_only and y == int(cy))
                    self.dot(x, y, fill if inside else edge)

    def text(self, picture, x, y, colour="black"):
        for dy, row in enumerate(picture.split("/")):
            for dx, mark in enumerate(row):
                if mark == "#":
                    self.dot(x + dx, y + dy, colour)


PLUS = "..#../..#../#####/..#../..#.."
LETTERS = {"X": "#...#/#...#/.#.#./..#../.#.#./#...#/#...#",
           "Y": "#...#/#...#/.#.#./..#../..#../..#../..#..",
           "Z": "#####/....#/...#./..#../.#.../#..../#####"}


def cube(i, front="blue", top="sky", side="navy"):
    i.polygon([(1, 6), (5, 2), (14, 2), (10, 6)], top)
    i.polygon([(10, 6), (14, 2), (14, 10), (10, 14)], side)
    i.box(1, 6, 10, 14, fill=front)


def wedge(i, front="blue", slope="sky"):
    i.polygon([(1, 13), (5, 9), (14, 2), (11, 6)], slope)
    i.polygon([(1, 13), (11, 6), (11, 13)], front)
    i.polygon([(11, 6), (14, 2), (14, 9), (11, 13)], "navy")


def column(i, body="blue", top="sky"):
    i.box(4, 3, 11, 13, fill=body)
    i.line(5, 14, 10, 14)
    i.polygon([(4, 3), (6, 1), (9, 1), (11, 3), (9, 5), (6, 5)], top)
    i.line(9, 6, 9, 13, "navy")
    i.line(10, 5, 10, 13, "navy")


def pyramid(i):
    i.polygon([(7, 1), (1, 12), (9, 14)], "sky")
    i.polygon([(7, 1), (9, 14), (14, 11)], "navy")


def sphere(i):
    i.disc(7.5, 7.5, 6.8, "blue")
    i.disc(5.5, 5.5, 2, "sky", "sky")


def hemisphere(i):
    i.disc(7.5, 11, 7.2, "blue", top_only=True)
    i.disc(5, 7.5, 1.5, "sky", "sky")


def group(i):
    i.box(3, 4, 8, 9, fill="sky")
    i.box(7, 7, 12, 12, fill="gold")
    i.box(0, 1, 15, 14, "grey", gap=1)


def ungroup(i):
    i.box(1, 1, 6, 6, fill="sky")
    i.box(9, 9, 14, 14, fill="gold")
    i.line(8, 7, 12, 3, "red")
    i.line(9, 3, 12, 3, "red")
    i.line(12, 3, 12, 6, "red")
    i.line(7, 8, 3, 12, "red")
    i.line(3, 9, 3, 12, "red")
    i.line(3, 12, 6, 12, "red")


def camera(i, x=1, y=5):
    i.box(x, y, x + 8, y + 7, fill="grey")
    i.polygon([(x + 8, y + 3), (x + 12, y), (x + 12, y + 7), (x + 8, y + 4)], "light")
    i.disc(x + 2, y - 1, 1.5, "black")
    i.disc(x + 6, y - 1, 1.5, "black")


def camera_place(i):
    camera(i, 2, 7)
    i.line(8, 0, 8, 4, "red")
    i.line(5, 3, 8, 6, "red")
    i.line(11, 3, 8, 6, "red")


def camera_detail(i):
    camera(i, 0, 4)
    i.disc(11, 10, 3.4, "cream", "brown")
    i.line(13, 13, 15, 15, "brown")


def subtract(i):
    i.box(1, 4, 11, 14, fill="blue")
    i.disc(11, 5, 4.2, "white", "red")


def face_edit(i):
    cube(i, "gold", "light", "grey")
    i.line(3, 12, 8, 8, "brown")
    i.line(3, 9, 5, 8, "brown")


def primitive(i):
    cube(i, "lime", "cream", "green")
    for x in (3, 6, 9):
        i.dot(x, 12)
        i.dot(x, 11)


def recolour(i):
    for x, colour in zip(range(1, 15, 3), ("red", "gold", "lime", "sky", "blue")):
        i.box(x, 2, x + 2, 13, colour, fill=colour)
    i.box(0, 1, 15, 14)


def update(i):
    i.disc(7.5, 7.5, 6.5, "none", "green")
    i.disc(7.5, 7.5, 5.6, "none", "green")
    i.box(8, 8, 15, 15, "none", fill="none")
    i.polygon([(10, 7), (15, 7), (13, 11)], "green", "green")


def folder(i, y=3):
    i.polygon([(1, y + 10), (1, y + 1), (2, y), (6, y), (7, y + 2), (12, y + 2), (12, y + 10)], "gold")
    i.polygon([(1, y + 10), (4, y + 5), (15, y + 5), (12, y + 10)], "cream")


def floppy(i):
    i.box(1, 1, 14, 14, fill="blue")
    i.box(4, 1, 11, 6, fill="light")
    i.box(9, 2, 10, 5, "navy", fill="navy")
    i.box(3, 9, 12, 14, fill="white")
    i.line(5, 11, 10, 11, "grey")


def bricks(i):
    i.box(0, 5, 11, 15, "brown", fill="rose")
    for y in (8, 12):
        i.line(0, y, 11, y, "brown")
    for x, y in ((5, 5), (2, 9), (8, 9), (5, 13)):
        i.line(x, y, x, min(y + 3, 15), "brown")
    i.box(8, 1, 15, 4, fill="sky")
    i.line(11, 5, 11, 8)


def inside(i):
    i.box(1, 1, 14, 14, "navy", gap=2)
    i.box(4, 4, 11, 11, fill="lime")


def limit(letter, colour):
    def draw(i):
        i.text(LETTERS[letter], 5, 1, colour)
        i.line(2, 12, 13, 12)
        i.line(2, 12, 4, 10)
        i.line(2, 12, 4, 14)
        i.line(13, 12, 11, 10)
        i.line(13, 12, 11, 14)
    return draw


def insert_group(i):
    folder(i, 4)
    i.text(PLUS, 10, 0, "green")


def map_mode(i):
    i.box(1, 1, 14, 14, fill="white")
    i.box(2, 2, 7, 7, "sky", fill="sky")
    i.box(8, 8, 13, 13, "gold", fill="gold")
    for k in (7, 8):
        i.line(1, k, 14, k, "grey")
        i.line(k, 1, k, 14, "grey")


def flip(i):
    i.polygon([(6, 2), (6, 13), (0, 13)], "sky")
    i.polygon([(9, 2), (9, 13), (15, 13)], "white")
    i.line(7, 0, 7, 15, "red", gap=1)


def duplicates(i):
    for k, colour in ((0, "light"), (3, "sky"), (6, "blue")):
        i.box(1 + k, 1 + k, 8 + k, 8 + k, fill=colour)


def check(i):
    for k in range(3):
        i.line(2, 8 + k, 5, 11 + k, "green")
        i.line(5, 11 + k, 13, 3 + k, "green")


def hide(i):
    i.polygon([(1, 8), (5, 4), (10, 4), (14, 8), (10, 12), (5, 12)], "white")
    i.disc(7.5, 8, 2.6, "sky")
    i.line(2, 14, 13, 2, "red")
    i.line(3, 14, 14, 2, "red")


def touch_up(i):
    i.polygon([(3, 3), (12, 5), (11, 12), (2, 11)], "sky")
    for x, y in ((3, 3), (12, 5), (11, 12), (2, 11)):
        i.box(x - 1, y - 1, x + 1, y + 1, "red", fill="rose")


def new_window(i):
    i.box(1, 3, 12, 14, fill="white")
    i.box(1, 3, 12, 6, fill="blue")
    i.text(PLUS, 11, 0, "green")


def texture_lock(i):
    i.box(0, 7, 10, 15, "brown", fill="rose")
    i.line(0, 11, 10, 11, "brown")
    for x, y in ((6, 7), (3, 11), (8, 11)):
        i.line(x, y, x, y + 4, "brown")
    i.box(9, 1, 14, 6, "grey")
    i.box(8, 5, 15, 10, "black", fill="gold")
    i.box(11, 7, 12, 8, "black", fill="black")


def rotation_step(i):
    i.line(2, 13, 14, 13)
    i.line(2, 13, 10, 3)
    for x, y in ((12, 10), (12, 11), (12, 9), (11, 8), (11, 7), (10, 6), (9, 5)):
        i.dot(x, y, "red")
        i.dot(x + 1, y, "red")
    i.polygon([(12, 13), (9, 10), (15, 10)], "red", "red")


DRAWINGS = [cube, wedge, column, pyramid, sphere, hemisphere,
            lambda i: cube(i, "gold", "cream", "brown"), lambda i: wedge(i, "gold", "cream"),
            group, ungroup, camera_place, camera_detail, subtract, face_edit,
            lambda i: column(i, "gold", "cream"), primitive, recolour, update, folder, floppy,
            bricks, inside, limit("X", "red"), limit("Y", "green"), limit("Z", "blue"),
            insert_group, map_mode, flip, duplicates, check, hide, touch_up, new_window,
            texture_lock, rotation_step]


def bitmap(icons):
    width = SIZE * len(icons)
    pixels = b""
    for y in reversed(range(SIZE)):
        indices = [NAMES.index(colour) for icon in icons for colour in icon.rows[y]]
        row = bytes(a << 4 | b for a, b in zip(indices[::2], indices[1::2]))
        pixels += row + b"\0" * (-len(row) % 4)
    palette = b"".join(struct.pack("<4B", b, g, r, 0) for r, g, b in COLOURS.values())
    offset = 14 + 40 + len(palette)
    info = struct.pack("<IiiHHIIiiII", 40, width, SIZE, 1, 4, 0, len(pixels), 2835, 2835, 16, 0)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + info + palette + pixels


def main():
    icons = []
    for draw in DRAWINGS:
        icons.append(Icon())
        draw(icons[-1])
    with open(sys.argv[1], "wb") as file:
        file.write(bitmap(icons))


if __name__ == "__main__":
    main()
