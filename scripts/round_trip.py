#!/usr/bin/env python3
"""scripts/round_trip.py CLI MAP... [--wad-path DIR]: reads and writes each map five times with
ferrowand-cli, in both formats, and holds the results against the first file with an exact reader of
its own: counts, keys, textures, planes. Arithmetic is in whole fractions throughout."""
import re
import subprocess
import sys
import tempfile
from fractions import Fraction as F
from math import sqrt
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


def area(poly):
    total = (0, 0, 0)
    for a, b in zip(poly[1:], poly[2:]):
        total = tuple(t + c for t, c in zip(total, cross(sub(a, poly[0]), sub(b, poly[0]))))
    return sqrt(float(dot(total, total))) / 2


def compare(before, after):
    """How far `after` is from `before`; faces are matched by texture and the nearest plane."""
    result = dict(whole=0, rounded=0, moved=0, furthest=0.0, lost=0, lostarea=0.0, wrong=0, empty=0)
    for (keys, brushes), (keys2, brushes2) in zip(before, after):
        for old, new in zip(brushes, brushes2):
            planes = [plane(f[0]) for f in old]
            rest = list(new)
            for i, face in enumerate(old):
                poly = polygon(planes, i)
                size = area(poly) if len(poly) > 2 else 0
                n, d = planes[i]
                length = sqrt(dot(n, n)) or 1
                away = lambda g: max(abs(dot(n, p) - d) for p in g[0]) / length + (
                    9999 if dot(plane(g[0])[0], n) <= 0 else 0)
                found = min(rest, key=away) if rest else None
                if found is None or away(found) > 2:
                    key = "lost" if size > 0 else "empty"
                    result[key] += 1
                    result["lostarea"] = max(result["lostarea"], size)
                    continue
                rest.remove(found)
                if found[1] != face[1] or [round(x, 4) for x in found[2]] != [
                        round(x, 4) for x in face[2]]:
                    result["wrong"] += 1
                if all(c.denominator == 1 for p in poly for c in p):
                    result["whole"] += 1
                    result["wrong"] += away(found) != 0
                else:
                    result["rounded"] += 1
                    result["moved"] += away(found) != 0
                    m, e = plane(found[0])
                    far = max((abs(float(dot(m, p) - e)) for p in poly), default=0) / (
                        sqrt(dot(m, m)) or 1)
                    result["furthest"] = max(result["furthest"], far)
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
            for form in ("map", "xmp"):
                last, lastfile = source, name
                for turn in range(1, 6):
                    target = Path(folder) / f"{turn}.{form}"
                    subprocess.run([cli, "convert", lastfile, str(target), *options], check=False,
                                   stderr=subprocess.DEVNULL)
                    now = parse(target)
                    same = counts(now) == counts(source), keys_of(now) == keys_of(source)
                    print(f"  {form} {turn}: counts {'same' if same[0] else counts(now)},"
                          f" keys {'same' if same[1] else 'DIFFER'},",
                          ", ".join(f"{k} {v:.3g}" for k, v in compare(last, now).items()))
                    last, lastfile = now, str(target)


if __name__ == "__main__":
    main(*sys.argv[1:])
