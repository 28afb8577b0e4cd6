#!/usr/bin/env python3
"""Draws the cursor over the handles that turn the selection: an arc with a head at either end, black
with a white rim, so that it is seen on every background.

Run by hand when the picture changes: scripts/turn_cursor.py src/shell/resources/turn.cur
"""
import math
import struct
import sys

SIZE = 32
CENTRE = 15.5
RADIUS = 8.5
HEAD = 6.0
FIRST, LAST = 60, 300  # degrees; the gap of the arc is to the right


def on_arc(x, y):
    dx, dy = x - CENTRE, y - CENTRE
    angle = math.degrees(math.atan2(dy, dx)) % 360
    return FIRST <= angle <= LAST and abs(math.hypot(dx, dy) - RADIUS) <= 1.1


def in_head(x, y, degrees, way):
    """Inside the triangle that stands on the end of the arc and points along it."""
    a = math.radians(degrees)
    dx, dy = x - CENTRE - RADIUS * math.cos(a), y - CENTRE - RADIUS * math.sin(a)
    along = way * (-dx * math.sin(a) + dy * math.cos(a))
    across = dx * math.cos(a) + dy * math.sin(a)
    return -0.5 <= along <= HEAD and abs(across) <= (HEAD - along) * 0.75


def drawn(x, y):
    return on_arc(x, y) or in_head(x, y, LAST, 1) or in_head(x, y, FIRST, -1)


def rim(x, y):
    return any(drawn(x + i, y + j) for i in (-1, 0, 1) for j in (-1, 0, 1))


def bits(test):
    rows = []
    for y in reversed(range(SIZE)):
        rows.append(sum(1 << (SIZE - 1 - x) for x in range(SIZE) if test(x, y)))
    return b"".join(struct.pack(">I", row) for row in rows)


def main():
    colours = bits(lambda x, y: rim(x, y) and not drawn(x, y))
    mask = bits(lambda x, y: not rim(x, y))
    header = struct.pack("<IiiHHIIiiII", 40, SIZE, 2 * SIZE, 1, 1, 0, len(colours + mask), 0, 0, 2, 0)
    image = header + struct.pack("<8B", 0, 0, 0, 0, 255, 255, 255, 0) + colours + mask
    directory = struct.pack("<HHH", 0, 2, 1)
    directory += struct.pack("<BBBBHHII", SIZE, SIZE, 2, 0, 15, 15, len(image), 22)
    with open(sys.argv[1], "wb") as file:
        file.write(directory + image)


if __name__ == "__main__":
    main()
