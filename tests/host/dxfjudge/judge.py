"""Draws each drawing of drawings.py with ezdxf's drawing front end and a backend
that records what it would draw, and with qvhost's display list (qvdisplaydump),
and compares the two entity by entity: lines within a tolerance both ways, filled
areas cell by cell, texts by their characters, box and direction.

Exit 0 when all agree, 1 on a difference, 77 when python3-ezdxf is missing."""
import argparse
import json
import math
import os
import subprocess
import sys
from collections import Counter, defaultdict

try:
    import ezdxf
    from ezdxf import recover
    from ezdxf.addons.drawing import Frontend, RenderContext
    from ezdxf.addons.drawing.backend import Backend
    from ezdxf.tools.fonts import FontMeasurements
except ImportError as error:  # pragma: no cover
    print("skipped: python3-ezdxf is missing (%s)" % error)
    sys.exit(77)

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import drawings  # noqa: E402

# Characters advance their cap height (width factor 1), as in qvhost.
LOWER_CASE = 0.666
DESCENT = 0.333


class Recorder(Backend):
    """Keeps, per top-level entity handle, segments, filled rings and texts."""

    def __init__(self):
        super().__init__()
        self.found = defaultdict(lambda: {"segments": [], "fills": [], "texts": []})

    def _bucket(self):
        top = self.entity_stack[0][0] if self.entity_stack else None
        handle = top.dxf.handle if top is not None and top.dxf.handle else "?"
        return self.found[handle.upper()]

    def set_background(self, color):
        pass

    def draw_point(self, pos, properties):
        self._bucket()["segments"].append(((pos.x, pos.y), (pos.x, pos.y)))

    def draw_line(self, start, end, properties):
        self._bucket()["segments"].append(((start.x, start.y), (end.x, end.y)))

    def draw_filled_polygon(self, points, properties):
        ring = [(p.x, p.y) for p in points]
        if len(ring) >= 3:
            self._bucket()["fills"].append([ring])

    def draw_filled_paths(self, paths, holes, properties):
        rings = []
        for path in list(paths) + list(holes):
            ring = [(p.x, p.y) for p in path.flattening(distance=0.01)]
            if len(ring) >= 3:
                rings.append(ring)
        if rings:
            self._bucket()["fills"].append(rings)

    def draw_text(self, text, transform, properties, cap_height):
        origin = transform.transform((0, 0, 0))
        x = transform.transform_direction((cap_height, 0, 0))
        y = transform.transform_direction((0, cap_height, 0))
        self._bucket()["texts"].append(
            {"text": text, "at": (origin.x, origin.y), "x": (x.x, x.y), "y": (y.x, y.y), "advance": len(text)})

    def get_font_measurements(self, cap_height, font=None):
        return FontMeasurements(baseline=0, cap_height=cap_height, x_height=cap_height * LOWER_CASE,
                                descender_height=cap_height * DESCENT)

    def get_text_line_width(self, text, cap_height, font=None):
        return cap_height * len(text)

    def clear(self):
        pass


def judge_drawing(path):
    try:
        doc = ezdxf.readfile(path)
    except Exception:
        doc, _ = recover.readfile(path)
    recorder = Recorder()
    Frontend(RenderContext(doc), recorder).draw_layout(doc.modelspace(), finalize=True)
    return recorder.found


def ours(dump_exe, path, out):
    result = subprocess.run([dump_exe, path, out], capture_output=True, text=True, timeout=120)
    if result.returncode != 0:
        return None, result.stderr.strip()
    with open(out, encoding="utf-8") as f:
        data = json.load(f)
    found = defaultdict(lambda: {"segments": [], "fills": [], "texts": []})
    for entity in data["entities"]:
        bucket = found[entity["handle"]]
        for run in entity["paths"]:
            if len(run) == 1:
                bucket["segments"].append((tuple(run[0]), tuple(run[0])))
            for a, b in zip(run, run[1:]):
                bucket["segments"].append((tuple(a), tuple(b)))
        for rings in entity["fills"]:
            bucket["fills"].append([[tuple(p) for p in ring] for ring in rings])
        for text in entity["texts"]:
            bucket["texts"].append(text)
    return found, data


# Comparison -----------------------------------------------------------------

def seg_distance(p, a, b):
    ax, ay = a
    bx, by = b
    dx, dy = bx - ax, by - ay
    length2 = dx * dx + dy * dy
    t = 0.0 if length2 == 0 else max(0.0, min(1.0, ((p[0] - ax) * dx + (p[1] - ay) * dy) / length2))
    return math.hypot(p[0] - ax - t * dx, p[1] - ay - t * dy)


def samples(segments, step):
    for a, b in segments:
        length = math.hypot(b[0] - a[0], b[1] - a[1])
        n = max(1, min(200, int(length / step)))
        for k in range(n + 1):
            t = k / n
            yield (a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t)


class Grid:
    """Segments bucketed by cell for near look-ups."""

    def __init__(self, segments, cell):
        self.cell = cell
        self.cells = defaultdict(list)
        for a, b in segments:
            x0, x1 = sorted((a[0], b[0]))
            y0, y1 = sorted((a[1], b[1]))
            for i in range(int(math.floor(x0 / cell)), int(math.floor(x1 / cell)) + 1):
                for j in range(int(math.floor(y0 / cell)), int(math.floor(y1 / cell)) + 1):
                    self.cells[(i, j)].append((a, b))
                    if len(self.cells) > 400000:
                        return

    def near(self, p, tol):
        i, j = int(math.floor(p[0] / self.cell)), int(math.floor(p[1] / self.cell))
        for di in (-1, 0, 1):
            for dj in (-1, 0, 1):
                for a, b in self.cells.get((i + di, j + dj), ()):
                    if seg_distance(p, a, b) <= tol:
                        return True
        return False


def uncovered(mine, other, tol):
    """Share of sample points of `mine` farther than tol from every segment of `other`."""
    if not mine:
        return 0.0
    if not other:
        return 1.0
    grid = Grid(other, max(tol * 4, 1e-9))
    points = list(samples(mine, tol))
    missing = sum(1 for p in points if not grid.near(p, tol))
    return missing / max(1, len(points))


def inside(p, rings):
    crossings = 0
    for ring in rings:
        for k in range(len(ring)):
            a, b = ring[k], ring[(k + 1) % len(ring)]
            if (a[1] > p[1]) != (b[1] > p[1]):
                x = a[0] + (p[1] - a[1]) * (b[0] - a[0]) / (b[1] - a[1])
                if x > p[0]:
                    crossings += 1
    return crossings % 2 == 1


def fill_difference(ours_fills, theirs_fills, box):
    if not ours_fills and not theirs_fills:
        return 0.0
    (x0, y0), (x1, y1) = box
    n = 60
    differ = 0
    any_inside = 0
    for i in range(n):
        for j in range(n):
            p = (x0 + (x1 - x0) * (i + 0.5) / n, y0 + (y1 - y0) * (j + 0.5) / n)
            a = any(inside(p, rings) for rings in ours_fills)
            b = any(inside(p, rings) for rings in theirs_fills)
            any_inside += a or b
            differ += a != b
    return differ / max(1, any_inside)


def text_box(texts):
    xs, ys = [], []
    for t in texts:
        ax, ay = t["at"]
        xx, xy = t["x"]
        yx, yy = t["y"]
        adv = t["advance"]
        for u, v in ((0, 0), (adv, 0), (adv, 1), (0, 1)):
            xs.append(ax + xx * u + yx * v)
            ys.append(ay + xy * u + yy * v)
    return (min(xs), min(ys)), (max(xs), max(ys))


def chars(texts):
    return Counter("".join("".join(t["text"].split()) for t in texts))


def bounds(bucket):
    xs, ys = [], []
    for a, b in bucket["segments"]:
        xs += [a[0], b[0]]
        ys += [a[1], b[1]]
    for rings in bucket["fills"]:
        for ring in rings:
            xs += [p[0] for p in ring]
            ys += [p[1] for p in ring]
    if bucket["texts"]:
        (a, b), (c, d) = text_box(bucket["texts"])
        xs += [a, c]
        ys += [b, d]
    return ((min(xs), min(ys)), (max(xs), max(ys))) if xs else None


def compare(theirs, mine):
    """Differences between the two drawings of one file, as text lines."""
    problems = []
    handles = sorted(set(theirs) | set(mine))
    for handle in handles:
        t = theirs.get(handle, {"segments": [], "fills": [], "texts": []})
        m = mine.get(handle, {"segments": [], "fills": [], "texts": []})
        bt, bm = bounds(t), bounds(m)
        if bt is None and bm is None:
            continue
        if bt is None or bm is None:
            problems.append("%s: drawn by %s only" % (handle, "ezdxf" if bm is None else "qvhost"))
            continue
        box = ((min(bt[0][0], bm[0][0]), min(bt[0][1], bm[0][1])), (max(bt[1][0], bm[1][0]), max(bt[1][1], bm[1][1])))
        size = math.hypot(box[1][0] - box[0][0], box[1][1] - box[0][1]) or 1.0
        tol = size * 0.006
        a = uncovered(t["segments"], m["segments"], tol)
        b = uncovered(m["segments"], t["segments"], tol)
        if a > 0.02 or b > 0.02:
            problems.append("%s: lines differ (%.0f%% of ezdxf's not drawn, %.0f%% of qvhost's extra)" % (handle, a * 100, b * 100))
        f = fill_difference(m["fills"], t["fills"], box)
        if f > 0.04:
            problems.append("%s: filled areas differ in %.0f%% of their cells" % (handle, f * 100))
        if t["texts"] or m["texts"]:
            if chars(t["texts"]) != chars(m["texts"]):
                problems.append("%s: texts differ: ezdxf %r, qvhost %r" % (
                    handle, [x["text"] for x in t["texts"]], [x["text"] for x in m["texts"]]))
            elif t["texts"] and m["texts"]:
                height = max(math.hypot(*x["y"]) for x in t["texts"])
                (p, q), (r, s) = text_box(t["texts"]), text_box(m["texts"])
                off = max(abs(p[0] - r[0]), abs(p[1] - r[1]), abs(q[0] - s[0]), abs(q[1] - s[1]))
                if off > height * 0.4 + tol:
                    problems.append("%s: text box off by %.1f heights" % (handle, off / height))
                tx, mx = t["texts"][0]["x"], m["texts"][0]["x"]
                turn = math.degrees(math.atan2(tx[0] * mx[1] - tx[1] * mx[0], tx[0] * mx[0] + tx[1] * mx[1]))
                mirror_t = t["texts"][0]["x"][0] * t["texts"][0]["y"][1] - t["texts"][0]["x"][1] * t["texts"][0]["y"][0]
                mirror_m = m["texts"][0]["x"][0] * m["texts"][0]["y"][1] - m["texts"][0]["x"][1] * m["texts"][0]["y"][0]
                if abs(turn) > 2 or (mirror_t > 0) != (mirror_m > 0):
                    problems.append("%s: text turned %.0f degrees%s" % (handle, turn, ", mirrored" if (mirror_t > 0) != (mirror_m > 0) else ""))
    return problems


def stray_group_drawing(path):
    """A drawing with a stray group between two sections, as some programs write."""
    drawings.make("point", path)
    with open(path, encoding="utf-8", errors="replace") as f:
        text = f.read()
    marker = "  0\nENDSEC\n"
    at = text.index(marker) + len(marker)
    with open(path, "w", encoding="utf-8") as f:
        f.write(text[:at] + "  9\n$STRAY\n 70\n     1\n" + text[at:])
    return path


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--dump", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--only", nargs="*")
    parser.add_argument("--formats", default="asc,bin", help="asc, bin or both (asc,bin)")
    args = parser.parse_args()
    os.makedirs(args.work, exist_ok=True)
    failed = 0
    runs = []
    for fmt in args.formats.split(","):
        for kind in args.only or list(drawings.KINDS) + ["stray_group"]:
            if not (kind == "stray_group" and fmt == "bin"):
                runs.append((kind, fmt))
    for kind, fmt in runs:
        name = kind + ("-bin" if fmt == "bin" else "")
        path = os.path.join(args.work, name + ".dxf")
        if kind == "stray_group":
            stray_group_drawing(path)
        else:
            drawings.make(kind, path, binary=fmt == "bin")
        mine, data = ours(args.dump, path, os.path.join(args.work, name + ".json"))
        if mine is None:
            print("%-28s FAIL qvhost cannot read it: %s" % (name, data))
            failed += 1
            continue
        problems = compare(judge_drawing(path), mine)
        if data.get("summary"):
            problems.append("qvhost says %s" % data["summary"])
        if kind == "stray_group" and not data.get("readNotes"):
            problems.append("the stray group was passed over without a note")
        print("%-28s %s" % (name, "ok" if not problems else "FAIL"))
        for problem in problems[:6]:
            print("    " + problem)
        failed += bool(problems)
    print("%d of %d drawings differ" % (failed, len(runs)))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
