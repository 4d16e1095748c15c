#!/usr/bin/env python3
"""Draws Quillon's nine toolbar images: 40x40 pixels, 32 bits a pixel (blue, green, red, alpha).

Each image is made of filled shapes sampled 4x4 times a pixel, so edges are smooth. Six images are drawn
on a transparent background and carry real alpha; three (save, paste, about) are opaque, drawn on the
default button face with every alpha byte 0, so that the program's two image paths both run. The
outermost two pixels stay empty: the program paints them with the button face.
"""
import argparse
import math
import struct
import sys
from pathlib import Path

SIZE = 40
SAMPLES = 4
# the opaque images' background: the default button face of Windows 10 and 11 and of Wine
FACE = (240, 240, 240)

OUTLINE = (52, 64, 86)
PAPER = (255, 255, 255)
PAPER_SHADE = (214, 222, 234)
TEXT_LINE = (120, 140, 170)
BLUE = (38, 112, 204)
BLUE_DARK = (22, 70, 140)
YELLOW = (246, 200, 84)
YELLOW_DARK = (204, 150, 40)
GREEN = (46, 160, 80)
RED = (206, 58, 58)
STEEL = (178, 188, 202)
BROWN = (176, 120, 62)
BROWN_DARK = (112, 72, 32)


# --- shapes: predicates over a point (x, y) in pixel units, with a bounding box ---------------------------
class Shape:
    def __init__(self, test, box):
        self.test, self.box = test, box

    def __or__(self, other):
        box = (min(self.box[0], other.box[0]), min(self.box[1], other.box[1]),
               max(self.box[2], other.box[2]), max(self.box[3], other.box[3]))
        return Shape(lambda x, y: self.test(x, y) or other.test(x, y), box)

    def __sub__(self, other):
        return Shape(lambda x, y: self.test(x, y) and not other.test(x, y), self.box)

    def __and__(self, other):
        return Shape(lambda x, y: self.test(x, y) and other.test(x, y), self.box)

    def inset(self, d):
        """The shape shrunk by about `d` pixels: points whose neighbours at distance d, in eight
        directions, are all inside."""
        steps = [(d * math.cos(a * math.pi / 4), d * math.sin(a * math.pi / 4)) for a in range(8)]
        return Shape(lambda x, y: self.test(x, y) and all(self.test(x + dx, y + dy) for dx, dy in steps), self.box)


def rect(x0, y0, x1, y1):
    return Shape(lambda x, y: x0 <= x < x1 and y0 <= y < y1, (x0, y0, x1, y1))


def rounded(x0, y0, x1, y1, r):
    def test(x, y):
        if not (x0 <= x < x1 and y0 <= y < y1):
            return False
        cx = min(max(x, x0 + r), x1 - r)
        cy = min(max(y, y0 + r), y1 - r)
        return (x - cx) ** 2 + (y - cy) ** 2 <= r * r
    return Shape(test, (x0, y0, x1, y1))


def circle(cx, cy, r):
    return Shape(lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= r * r, (cx - r, cy - r, cx + r, cy + r))


def polygon(points):
    def test(x, y):
        inside = False
        for (ax, ay), (bx, by) in zip(points, points[1:] + points[:1]):
            if (ay > y) != (by > y) and x < ax + (y - ay) * (bx - ax) / (by - ay):
                inside = not inside
        return inside
    xs, ys = [p[0] for p in points], [p[1] for p in points]
    return Shape(test, (min(xs), min(ys), max(xs), max(ys)))


def line(ax, ay, bx, by, width):
    """A segment with round ends."""
    half = width / 2
    dx, dy = bx - ax, by - ay
    length2 = dx * dx + dy * dy

    def test(x, y):
        t = max(0.0, min(1.0, ((x - ax) * dx + (y - ay) * dy) / length2))
        px, py = ax + t * dx - x, ay + t * dy - y
        return px * px + py * py <= half * half
    return Shape(test, (min(ax, bx) - half, min(ay, by) - half, max(ax, bx) + half, max(ay, by) + half))


# --- the canvas -------------------------------------------------------------------------------------
class Canvas:
    def __init__(self):
        # straight (not premultiplied) colour and alpha, 0..1, row by row from the top
        self.rgba = [[(0.0, 0.0, 0.0, 0.0)] * SIZE for _ in range(SIZE)]

    def fill(self, shape, colour):
        x0, y0, x1, y1 = shape.box
        n = SAMPLES * SAMPLES
        for py in range(max(0, int(y0) - 1), min(SIZE, int(math.ceil(y1)) + 1)):
            for px in range(max(0, int(x0) - 1), min(SIZE, int(math.ceil(x1)) + 1)):
                hits = sum(1 for i in range(SAMPLES) for j in range(SAMPLES)
                           if shape.test(px + (i + 0.5) / SAMPLES, py + (j + 0.5) / SAMPLES))
                if hits:
                    self.over(px, py, colour, hits / n)

    def outlined(self, shape, colour, edge, width=1.25):
        self.fill(shape, edge)
        self.fill(shape.inset(width), colour)

    def over(self, px, py, colour, a):
        r, g, b, da = self.rgba[py][px]
        out = a + da * (1 - a)
        mix = [(c / 255 * a + d * da * (1 - a)) / out for c, d in zip(colour, (r, g, b))]
        self.rgba[py][px] = (mix[0], mix[1], mix[2], out)

    def bgra(self, opaque):
        """Bottom-up rows of BGRA bytes. Opaque: composed over FACE with every alpha byte 0."""
        rows = []
        for row in reversed(self.rgba):
            out = bytearray()
            for r, g, b, a in row:
                if opaque:
                    r, g, b = (c * a + f / 255 * (1 - a) for c, f in zip((r, g, b), FACE))
                    alpha = 0
                else:
                    alpha = round(a * 255)
                    if alpha == 0:
                        r = g = b = 0.0
                out += bytes((round(b * 255), round(g * 255), round(r * 255), alpha))
            rows.append(bytes(out))
        return b"".join(rows)


def text_lines(c, x0, x1, y0, count, step=4, colour=TEXT_LINE):
    for i in range(count):
        c.fill(rect(x0, y0 + i * step, x1 - (4 if i == count - 1 else 0), y0 + i * step + 1.5), colour)


# --- the nine images ----------------------------------------------------------------------------------
def draw_new(c):
    page = polygon([(8, 3.5), (24, 3.5), (32, 11.5), (32, 36.5), (8, 36.5)])
    c.outlined(page, PAPER, OUTLINE)
    c.outlined(polygon([(23.5, 3.5), (23.5, 12), (32, 12)]), PAPER_SHADE, OUTLINE)
    text_lines(c, 12, 24, 16, 3)
    c.outlined(circle(28.5, 29.5, 7.5), GREEN, (24, 110, 50))
    c.fill(rect(24.5, 28.3, 32.5, 30.7) | rect(27.3, 25.5, 29.7, 33.5), PAPER)


def draw_open(c):
    back = polygon([(4, 8), (15, 8), (18.5, 11.5), (33, 11.5), (33, 33), (4, 33)])
    c.outlined(back, YELLOW_DARK, (150, 104, 22))
    c.outlined(rect(8, 14, 31, 30), PAPER, OUTLINE)
    front = polygon([(9, 18), (37.5, 18), (32, 34.5), (3, 34.5)])
    c.outlined(front, YELLOW, (150, 104, 22))


def draw_save(c):
    body = polygon([(4, 4), (31, 4), (36, 9), (36, 36), (4, 36)])
    c.outlined(body, BLUE, BLUE_DARK, 1.5)
    c.outlined(rect(9, 4, 29, 17), PAPER, BLUE_DARK)
    text_lines(c, 12, 26, 8, 2, colour=TEXT_LINE)
    c.outlined(rect(11, 23, 29, 36), STEEL, BLUE_DARK)
    c.fill(rect(22, 26, 25.5, 33), (70, 80, 100))


def draw_undo(c):
    ring = circle(21.5, 23.5, 11.5) - circle(21.5, 23.5, 6)
    arrow = (ring & rect(21.5, 0, 40, 40)) | rect(13, 12, 21.6, 17.5) | rect(9, 29.5, 21.6, 35)
    head = polygon([(3.5, 14.75), (15, 5.5), (15, 24)])
    c.outlined(arrow | head, BLUE, BLUE_DARK)


def draw_cut(c):
    c.outlined(line(13.5, 4, 25.5, 25, 4.5), STEEL, OUTLINE)
    c.outlined(line(26.5, 4, 14.5, 25, 4.5), STEEL, OUTLINE)
    c.fill(circle(20, 15.5, 1.6), OUTLINE)
    for cx in (12.5, 27.5):
        c.outlined(circle(cx, 29.5, 7) - circle(cx, 29.5, 3.6), RED, (140, 30, 30))


def draw_copy(c):
    for x, y in ((5, 3.5), (15, 12.5)):
        c.outlined(rect(x, y, x + 19, y + 24), PAPER, OUTLINE)
        text_lines(c, x + 4, x + 15, y + 6, 4)


def draw_paste(c):
    c.outlined(rounded(5, 6, 29, 37, 2.5), BROWN, BROWN_DARK, 1.5)
    c.outlined(rounded(11.5, 2.5, 22.5, 10, 2), STEEL, OUTLINE)
    c.outlined(rect(16, 14, 35.5, 37), PAPER, OUTLINE)
    text_lines(c, 19.5, 32, 19, 4)


def draw_print(c):
    c.outlined(rect(11, 3.5, 29, 15), PAPER, OUTLINE)
    c.outlined(rounded(4, 13, 36, 29, 3), STEEL, OUTLINE)
    c.fill(rect(9, 22, 31, 24.5), (70, 80, 100))
    c.fill(circle(31, 17.5, 1.7), GREEN)
    c.outlined(rect(11, 22.5, 29, 36.5), PAPER, OUTLINE)
    text_lines(c, 14, 26, 26.5, 3, step=3.5)


def draw_about(c):
    c.outlined(circle(20, 20, 16.5), BLUE, BLUE_DARK, 1.5)
    c.fill(circle(20, 11.5, 2.6), PAPER)
    c.fill(rounded(17.6, 16, 22.4, 30, 1.2) | rect(15.5, 27.5, 24.5, 30), PAPER)


# command id, name, drawing, carries alpha
IMAGES = [
    (57600, "new", draw_new, True),
    (57601, "open", draw_open, True),
    (57603, "save", draw_save, False),
    (57643, "undo", draw_undo, True),
    (57635, "cut", draw_cut, True),
    (57634, "copy", draw_copy, True),
    (57637, "paste", draw_paste, False),
    (57607, "print", draw_print, True),
    (57664, "about", draw_about, False),
]


def bmp(pixels):
    """A BMP file: the file header, a BITMAPINFOHEADER (32 bits, BI_RGB, bottom-up) and the pixels."""
    header = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, 32, 0, len(pixels), 3780, 3780, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 14 + len(header) + len(pixels), 0, 0, 14 + len(header)) + header + pixels


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("outdir", help="folder for toolbar-<name>.bmp and toolbar.rc (the resource lines)")
    args = parser.parse_args()
    out = Path(args.outdir)
    out.mkdir(parents=True, exist_ok=True)
    rc = ["// Generated by tools/make_toolbar_images.py: the toolbar images, each under its command's id."]
    for ident, name, draw, alpha in IMAGES:
        canvas = Canvas()
        draw(canvas)
        (out / f"toolbar-{name}.bmp").write_bytes(bmp(canvas.bgra(opaque=not alpha)))
        rc.append(f'{ident} BITMAP "toolbar-{name}.bmp"')
    (out / "toolbar.rc").write_text("\n".join(rc) + "\n", encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
