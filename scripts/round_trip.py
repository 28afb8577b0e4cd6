#!/usr/bin/env python3
"""scripts/round_trip.py CLI MAP... [--wad-path DIR]: reads and writes each map five times with
ferrowand-cli, in both formats and in each after the other, and holds each result against the file it
was read from with an exact reader of its own: counts, keys, textures, faces whose plane moved, the
greatest move of a corner, bytes. Arithmetic is in whole fractions throughout."""
import re
import subprocess
import sys
import tempfile
from fractions import Fraction as F
from math import gcd, sqrt
from pathlib import Path

POINT = r"\(\s*(\S+)\s+(\S+)\s+(\S+)\s*\)\s*"
TOKEN = re.compile(r'//[^\n]*|"([^"]*)"\s*"([^"]*)"|([{}])|' + POINT * 3 + r"(\S+)((?:\s+\S+){5})")
EDITOR_KEYS = ("xmp", "wad", "worldtype", "sounds", "message")


def parse(path):
    """The file as a list of (keys, brushes) in order; a brush is a list of (points, texture, numbers).
    Blocks of the editor's own classes are folded into the world."""
    world, entities, stack = ({}, []), [], []
    for m in TOKEN.finditer(path.read_text("latin-1")):
        if m[3] == "{":
            stack.append(({}, [], []))
        elif m[3] == "}":
            keys, faces, children = stack.pop()
            name = keys.get("classname", "brush").lower()
            if faces:
                (stack[-1][2] if stack else world[1]).append(faces)
            elif name in ("layer", "brush") and stack:
                stack[-1][2].extend(children)
            elif name == "worldspawn":
                world[0].update(keys)
                world[1].extend(children)
            else:
                entities.append((keys, children))
        elif m[1] is not None:
            stack[-1][0][m[1]] = m[2]
        elif m[4]:
            points = [tuple(int(float(c)) for c in m.group(*range(i, i + 3))) for i in (4, 7, 10)]
            stack[-1][1].append((points, m[13].lower(), [float(x) for x in m[14].split()]))
    return [world] + entities


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def dot(a, b):
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]


def sub(a, b):
    return tuple(x - y for x, y in zip(a, b))


def plane(points):
    n = cross(sub(points[0], points[1]), sub(points[2], points[1]))
    return n, dot(n, points[1])


def polygon(planes, which):
    """The exact polygon of one face inside all the other planes."""
    n, d = planes[which]
    axis = max(range(3), key=lambda i: abs(n[i]))
    if n[axis] == 0:
        return []
    u, v = [i for i in range(3) if i != axis]
    size = 20000
    poly = []
    for a, b in ((-size, -size), (-size, size), (size, size), (size, -size)):
        p = [F(0)] * 3
        p[u], p[v] = F(a), F(b)
        p[axis] = F(d - n[u] * a - n[v] * b, n[axis])
        poly.append(tuple(p))
    for i, (m, e) in enumerate(planes):
        if i == which or not poly:
            continue
        if cross(m, n) == (0, 0, 0) and m != (0, 0, 0):
            if dot(m, poly[0]) > e:
                poly = []
            continue
        side = [dot(m, p) - e for p in poly]
        out = []
        for j, p in enumerate(poly):
            q, a, b = poly[(j + 1) % len(poly)], side[j], side[(j + 1) % len(poly)]
            if a <= 0:
                out.append(p)
            if (a < 0 < b) or (b < 0 < a):
                f = a / (a - b)
                out.append(tuple(x + f * (y - x) for x, y in zip(p, q)))
        poly = out
    return poly


def whole_plane(points):
    """The same for any three points of a plane: its normal and distance in lowest terms."""
    n, d = plane(points)
    g = gcd(*n) or 1
    return tuple(c // g for c in n), F(d, g)


def corner_move(old, new):
    """How far the farthest corner of one polygon is from the nearest of the other, both ways."""
    if len(old) < 3 or len(new) < 3:
        return 0.0
    away = lambda p, poly: min(float(dot(d, d)) for d in (sub(p, q) for q in poly))
    return sqrt(max(max(away(p, new) for p in old), max(away(p, old) for p in new)))


def compare(before, after):
    """How far `after` is from `before`. A face is known by its plane and texture; one whose plane has
    changed by its texture and the nearest corners."""
    result = dict(moved=0, furthest=0.0, lost=0, empty=0, wrong=0)
    for (_, brushes), (_, brushes2) in zip(before, after):
        for old, new in zip(brushes, brushes2):
            planes, planes2 = [[whole_plane(f[0]) for f in b] for b in (old, new)]
            looks = lambda f: (f[1], *(round(x, 4) for x in f[2]))
            faces2 = [(p, looks(f)) for p, f in zip(planes2, new)]
            if sorted((p, looks(f)) for p, f in zip(planes, old)) == sorted(faces2):
                continue
            polygons2 = [polygon(planes2, i) for i in range(len(new))]
            rest = set(range(len(new)))
            for i, face in enumerate(old):
                poly = polygon(planes, i)
                same = [j for j in rest if planes2[j] == planes[i]]
                near = [j for j in rest if dot(planes2[j][0], planes[i][0]) > 0 and
                        len(polygons2[j]) > 2 and faces2[j][1] == looks(face)]
                if len(poly) < 3 and not same:
                    result["empty"] += 1
                    continue
                found = same or sorted(near, key=lambda j: corner_move(poly, polygons2[j]))
                if not found:
                    result["lost"] += 1
                    continue
                rest.remove(found[0])
                result["moved"] += not same
                result["wrong"] += faces2[found[0]][1] != looks(face)
                result["furthest"] = max(result["furthest"],
                                         corner_move(poly, polygons2[found[0]]))
    return result


def counts(entities):
    return (len(entities), sum(len(b) for _, b in entities),
            sum(len(f) for _, b in entities for f in b))


def keys_of(entities):
    return [{k: v for k, v in keys.items() if not k.lower().startswith(EDITOR_KEYS)}
            for keys, _ in entities]


def main(cli, *arguments):
    options = []
    maps = list(arguments)
    if "--wad-path" in maps:
        at = maps.index("--wad-path")
        options, maps = maps[at:], maps[:at]
    with tempfile.TemporaryDirectory() as folder:
        for name in maps:
            source = parse(Path(name))
            print(f"{Path(name).name}: entities, brushes, faces {counts(source)}")
            for ways in (["map"], ["xmp"], ["map", "xmp"]):
                last, lastfile, texts = source, name, {}
                for turn in range(1, 6):
                    form = ways[turn % len(ways)]
                    target = Path(folder) / f"{turn}.{form}"
                    subprocess.run([cli, "convert", lastfile, str(target), *options], check=False,
                                   stderr=subprocess.DEVNULL)
                    now, text = parse(target), target.read_bytes()
                    same = counts(now) == counts(source), keys_of(now) == keys_of(source)
                    known = "first" if form not in texts else (
                        "same" if text == texts[form] else "OTHER")
                    texts[form] = text
                    print(f"  {'/'.join(ways)} {turn}: bytes {known},"
                          f" counts {'same' if same[0] else counts(now)},"
                          f" keys {'same' if same[1] else 'DIFFER'},",
                          ", ".join(f"{k} {v:.3g}" for k, v in compare(last, now).items()))
                    last, lastfile = now, str(target)


if __name__ == "__main__":
    main(*sys.argv[1:])
