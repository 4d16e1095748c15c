#!/usr/bin/env python3
"""Draws Quillon's application icon, a quill over a written page, and writes it as a Windows .ico.

The drawing is made of signed-distance shapes in unit coordinates (0..1, y down) and rendered anew
for every size, so each image is sharp rather than scaled: 16, 32 and 48 px as 32-bit DIBs with alpha
(and a matching AND mask), 256 px as PNG, as Windows Vista and later expect. Nothing is hand-edited;
the output depends only on this file.

usage: make_icon.py OUT.ico [--preview OUT.png]
"""
import argparse
import math
import struct
import sys
import zlib
from pathlib import Path

SIZES = (16, 32, 48, 256)

PAGE = [(0.10, 0.07), (0.52, 0.07), (0.68, 0.23), (0.68, 0.93), (0.10, 0.93)]
FOLD = [(0.52, 0.07), (0.52, 0.23), (0.68, 0.23)]


# --- geometry --------------------------------------------------------------------------------------

def seg_dist(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    l2 = dx * dx + dy * dy
    h = 0.0 if l2 == 0 else max(0.0, min(1.0, ((px - ax) * dx + (py - ay) * dy) / l2))
    ex, ey = px - ax - dx * h, py - ay - dy * h
    return math.sqrt(ex * ex + ey * ey)


def poly_sdf(px, py, pts):
    """Signed distance to a closed polygon: negative inside (even-odd rule)."""
    d = float("inf")
    inside = False
    n = len(pts)
    for i in range(n):
        ax, ay = pts[i - 1]
        bx, by = pts[i]
        d = min(d, seg_dist(px, py, ax, ay, bx, by))
        if (ay > py) != (by > py) and px < ax + (bx - ax) * (py - ay) / (by - ay):
            inside = not inside
    return -d if inside else d


def polyline_dist(px, py, pts):
    return min(seg_dist(px, py, *pts[i - 1], *pts[i]) for i in range(1, len(pts)))


def bbox(pts, pad):
    xs = [p[0] for p in pts]
    ys = [p[1] for p in pts]
    return min(xs) - pad, min(ys) - pad, max(xs) + pad, max(ys) + pad


# --- the quill -------------------------------------------------------------------------------------

NIB = (0.30, 0.88)
CTRL = (0.46, 0.36)
TIP = (0.95, 0.05)
VANE_START = 0.24


def spine(t):
    u = 1 - t
    x = u * u * NIB[0] + 2 * u * t * CTRL[0] + t * t * TIP[0]
    y = u * u * NIB[1] + 2 * u * t * CTRL[1] + t * t * TIP[1]
    tx = 2 * u * (CTRL[0] - NIB[0]) + 2 * t * (TIP[0] - CTRL[0])
    ty = 2 * u * (CTRL[1] - NIB[1]) + 2 * t * (TIP[1] - CTRL[1])
    n = math.hypot(tx, ty)
    return x, y, tx / n, ty / n


def vane_width(t, side):
    s = (t - VANE_START) / (1 - VANE_START)
    if s <= 0 or s >= 1:
        return 0.0
    # fuller on the outer side and towards the tip, like a real flight feather
    base = math.sin(math.pi * s ** 0.75) ** 0.9
    return base * (0.15 if side > 0 else 0.09)


def vane_outline(steps=48):
    left, right = [], []
    for i in range(steps + 1):
        t = VANE_START + (1 - VANE_START) * i / steps
        x, y, tx, ty = spine(t)
        nx, ny = ty, -tx  # points up and to the left of the direction of travel
        left.append((x + nx * vane_width(t, 1), y + ny * vane_width(t, 1)))
        right.append((x - nx * vane_width(t, -1), y - ny * vane_width(t, -1)))
    return left + right[::-1]


def spine_points(t0, t1, steps=24):
    return [spine(t0 + (t1 - t0) * i / steps)[:2] for i in range(steps + 1)]


def nearest_t(px, py, samples):
    best, bt = float("inf"), 0.0
    for t, x, y in samples:
        d = (px - x) ** 2 + (py - y) ** 2
        if d < best:
            best, bt = d, t
    return bt


# --- rendering -------------------------------------------------------------------------------------

def cover(d, px):
    """Coverage of a pixel whose centre is at signed distance d from an edge (one-pixel ramp)."""
    return max(0.0, min(1.0, 0.5 - d / px))


class Canvas:
    def __init__(self, size):
        self.size = size
        self.px = 1.0 / size
        self.rgba = [[0.0, 0.0, 0.0, 0.0] for _ in range(size * size)]  # premultiplied

    def paint(self, box, fn):
        """fn(x, y) -> (alpha, (r, g, b)) or None; composited over what is there."""
        n = self.size
        x0, y0, x1, y1 = box
        for j in range(max(0, int(y0 * n) - 1), min(n, int(y1 * n) + 2)):
            y = (j + 0.5) / n
            for i in range(max(0, int(x0 * n) - 1), min(n, int(x1 * n) + 2)):
                res = fn((i + 0.5) / n, y)
                if res is None:
                    continue
                a, (r, g, b) = res
                if a <= 0:
                    continue
                p = self.rgba[j * n + i]
                k = 1 - a
                p[0] = r / 255 * a + p[0] * k
                p[1] = g / 255 * a + p[1] * k
                p[2] = b / 255 * a + p[2] * k
                p[3] = a + p[3] * k

    def pixels(self):
        """Straight-alpha RGBA bytes, rows top to bottom."""
        out = bytearray()
        for r, g, b, a in self.rgba:
            if a <= 0:
                out += b"\0\0\0\0"
            else:
                out += bytes(min(255, round(c / a * 255)) for c in (r, g, b)) + bytes([min(255, round(a * 255))])
        return bytes(out)


def mix(c1, c2, f):
    return tuple(round(a + (b - a) * f) for a, b in zip(c1, c2))


def draw(size):
    """Straight-alpha RGBA pixels of the icon at one size."""
    cv = Canvas(size)
    small = size <= 16
    line_w = max(cv.px, 0.012)
    draw_page(cv, small, line_w)
    draw_quill(cv, small, line_w)
    return cv.pixels()


def draw_page(cv, small, line_w):
    px = cv.px
    # soft shadow, then the page with its folded corner
    shadow = [(x + 0.025, y + 0.03) for x, y in PAGE]
    cv.paint(bbox(shadow, 0.06), lambda x, y: (0.28 * cover(poly_sdf(x, y, shadow), max(px, 0.05)), (0, 0, 0)))

    def page(x, y):
        d = poly_sdf(x, y, PAGE)
        if d > px:
            return None
        edge = cover(abs(d) - line_w / 2, px)
        fill = cover(d, px)
        shade = mix((255, 255, 255), (232, 238, 246), (y - 0.07) / 0.86)
        return fill, mix(shade, (96, 110, 128), edge)

    cv.paint(bbox(PAGE, px), page)

    def fold(x, y):
        d = poly_sdf(x, y, FOLD)
        return cover(d - line_w / 2, px), mix((206, 214, 226), (96, 110, 128), cover(abs(d) - line_w / 2, px))

    cv.paint(bbox(FOLD, px), fold)

    # lines of writing; fewer and bolder when there are few pixels to spend
    rows = (0.36, 0.56, 0.76) if small else (0.33, 0.43, 0.53, 0.63, 0.73)
    ends = (0.58, 0.50, 0.56, 0.44, 0.52)
    text_w = max(1.1 * px, 0.032)
    for y_row, x_end in zip(rows, ends):
        a, b = (0.18, y_row), (x_end if not small else 0.56, y_row)
        if a[1] > 0.80:  # leave room for the nib's stroke of ink
            b = (0.24, y_row)
        cv.paint(bbox([a, b], text_w),
                 lambda x, y, a=a, b=b: (cover(seg_dist(x, y, *a, *b) - text_w / 2, px), (126, 146, 176)))

    # the ink that the nib is still drawing (too fine to show at 16 px)
    ink = [] if small else [(0.17 + 0.12 * i / 20, 0.86 + 0.02 * math.sin(i / 20 * 2.6 * math.pi)) for i in range(21)]
    ink_w = max(1.1 * px, 0.026)
    if ink:
        cv.paint(bbox(ink, ink_w),
                 lambda x, y: (cover(polyline_dist(x, y, ink) - ink_w / 2, px), (22, 52, 128)))



def draw_quill(cv, small, line_w):
    """Vane with barbs, then the shaft, then the nib."""
    px = cv.px
    vane = vane_outline()
    samples = [(t, *spine(t)[:2]) for t in [VANE_START + (1 - VANE_START) * i / 96 for i in range(97)]]
    dark, light, edge_col = (24, 78, 160), (92, 176, 232), (16, 44, 100)
    barbs = not small

    def vane_px(x, y):
        d = poly_sdf(x, y, vane)
        if d > px:
            return None
        t = nearest_t(x, y, samples)
        sx, sy, tx, ty = spine(t)
        side = (x - sx) * ty - (y - sy) * tx  # > 0 on the outer side
        col = mix(dark, light, (t - VANE_START) / (1 - VANE_START))
        if side > 0:
            col = mix(col, (255, 255, 255), 0.12)
        if barbs:
            # barbs sweep back from the shaft towards the nib
            phase = t * 22 + abs(side) * 30
            stripe = 0.5 + 0.5 * math.cos(phase * 2 * math.pi)
            col = mix(col, edge_col, 0.35 * stripe ** 6)
        col = mix(col, edge_col, cover(abs(d) - line_w / 2, px))
        return cover(d, px), col

    cv.paint(bbox(vane, px), vane_px)

    shaft = spine_points(0.06, 0.96)
    shaft_samples = [(t, *spine(t)[:2]) for t in [0.06 + 0.90 * i / 64 for i in range(65)]]
    shaft_w = max(0.9 * px, 0.020)

    def shaft_px(x, y):
        # pale where it runs through the vane, dark where it is the bare quill
        col = (236, 240, 246) if nearest_t(x, y, shaft_samples) > VANE_START else (70, 72, 84)
        return cover(polyline_dist(x, y, shaft) - shaft_w / 2, px), col

    cv.paint(bbox(shaft, shaft_w), shaft_px)

    calamus = spine_points(0.06, VANE_START)
    cal_w = max(1.2 * px, 0.034)
    cv.paint(bbox(calamus, cal_w), lambda x, y: (
        cover(polyline_dist(x, y, calamus) - cal_w / 2, px), (64, 66, 80)))

    x0, y0, tx, ty = spine(0.0)
    x1, y1, _, _ = spine(0.09)
    nx, ny = ty, -tx
    half = max(px, 0.024)
    nib = [(x0, y0), (x1 + nx * half, y1 + ny * half), (x1 - nx * half, y1 - ny * half)]
    cv.paint(bbox(nib, px), lambda x, y: (cover(poly_sdf(x, y, nib), px), (18, 20, 30)))


# --- file formats ----------------------------------------------------------------------------------

def png(size, rgba):
    return png_rect(size, size, rgba)


def dib(size, rgba):
    """BITMAPINFOHEADER, bottom-up BGRA rows, then the 1-bit AND mask (set where fully transparent)."""
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    xor = bytearray()
    mask = bytearray()
    stride = ((size + 31) // 32) * 4
    for r in reversed(range(size)):
        row = rgba[r * size * 4:(r + 1) * size * 4]
        bits = bytearray(stride)
        for c in range(size):
            red, green, blue, alpha = row[c * 4:c * 4 + 4]
            xor += bytes((blue, green, red, alpha))
            if alpha == 0:
                bits[c // 8] |= 0x80 >> (c % 8)
        mask += bits
    return header + bytes(xor) + bytes(mask)


def ico(images):
    head = struct.pack("<HHH", 0, 1, len(images))
    offset = 6 + 16 * len(images)
    entries, blobs = b"", b""
    for size, data in images:
        dim = 0 if size >= 256 else size
        entries += struct.pack("<BBBBHHII", dim, dim, 0, 0, 1, 32, len(data), offset)
        blobs += data
        offset += len(data)
    return head + entries + blobs


def main(argv):
    ap = argparse.ArgumentParser(description="Draw Quillon's application icon as a Windows .ico.")
    ap.add_argument("out", metavar="OUT.ico", help="the icon file to write")
    ap.add_argument("--preview", metavar="OUT.png",
                    help="also write every size side by side, for a person to look at")
    args = ap.parse_args(argv[1:])
    rendered = {size: draw(size) for size in SIZES}
    images = [(s, png(s, rendered[s]) if s >= 256 else dib(s, rendered[s])) for s in SIZES]
    out = Path(args.out)
    out.parent.mkdir(parents=True, exist_ok=True)
    out.write_bytes(ico(images))
    if args.preview:
        Path(args.preview).write_bytes(preview(rendered))


def preview(rendered):
    """Every size side by side on a light and on a dark band, each pixel shown 2x: for a person to look at."""
    scale, gap = 2, 16
    width = sum(s * scale + gap for s in SIZES) + gap
    height = 2 * (256 * scale + 2 * gap)
    canvas = bytearray()
    for y in range(height):
        band = y // (height // 2)
        bg = (240, 240, 240) if band == 0 else (48, 52, 60)
        yy = y - band * (height // 2) - gap
        row = bytearray()
        x = 0
        while x < width:
            row += bytes(bg) + b"\xff"
            x += 1
        left = gap
        for s in SIZES:
            iy = yy // scale
            if 0 <= yy < s * scale:
                for xx in range(s * scale):
                    r, g, b, a = rendered[s][(iy * s + xx // scale) * 4:(iy * s + xx // scale) * 4 + 4]
                    f = a / 255
                    o = (left + xx) * 4
                    row[o:o + 3] = bytes(round(c * f + k * (1 - f)) for c, k in zip((r, g, b), bg))
            left += s * scale + gap
        canvas += row
    return png_rect(width, height, bytes(canvas))


def png_rect(width, height, rgba):
    raw = b"".join(b"\0" + rgba[r * width * 4:(r + 1) * width * 4] for r in range(height))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


if __name__ == "__main__":
    main(sys.argv)
