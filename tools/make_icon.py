#!/usr/bin/env python3
"""Draws the program's icon: a plan tile with a grid, a ground shape with its handles and a runway.

One list of filled polygons on a 64 x 64 plan gives both the SVG and the PNG sizes, so they agree.
    python3 tools/make_icon.py [OUT_FOLDER]     (default: packaging/icons)
writes fieldwright.svg and fieldwright-SIZE.png; the same script always writes the same bytes.
"""
import math
import os
import struct
import sys
import zlib

SIZES = (16, 32, 48, 64, 128, 256)


def rounded_rect(x0, y0, x1, y1, r, steps=8):
    pts = []
    for cx, cy, a0 in ((x1 - r, y0 + r, -90), (x1 - r, y1 - r, 0), (x0 + r, y1 - r, 90), (x0 + r, y0 + r, 180)):
        for i in range(steps + 1):
            a = math.radians(a0 + 90 * i / steps)
            pts.append((cx + r * math.cos(a), cy + r * math.sin(a)))
    return pts


def band(p, q, width):
    """A straight strip of the given width from p to q."""
    dx, dy = q[0] - p[0], q[1] - p[1]
    n = math.hypot(dx, dy)
    ox, oy = -dy / n * width / 2, dx / n * width / 2
    return [(p[0] + ox, p[1] + oy), (q[0] + ox, q[1] + oy), (q[0] - ox, q[1] - oy), (p[0] - ox, p[1] - oy)]


def square(c, half):
    return [(c[0] - half, c[1] - half), (c[0] + half, c[1] - half), (c[0] + half, c[1] + half), (c[0] - half, c[1] + half)]


def lerp(p, q, t):
    return (p[0] + (q[0] - p[0]) * t, p[1] + (q[1] - p[1]) * t)


def shapes():
    """(colour RGBA, polygon) in paint order."""
    out = [((0x24, 0x33, 0x47, 255), rounded_rect(3, 3, 61, 61, 9))]
    for k in range(1, 7):
        v = 3 + k * 58 / 7
        out.append(((0x3a, 0x4e, 0x66, 255), [(v - 0.5, 5), (v + 0.5, 5), (v + 0.5, 59), (v - 0.5, 59)]))
        out.append(((0x3a, 0x4e, 0x66, 255), [(5, v - 0.5), (59, v - 0.5), (59, v + 0.5), (5, v + 0.5)]))
    ground = [(13, 19), (47, 11), (53, 45), (19, 53)]
    out.append(((0x5c, 0x8f, 0x3c, 255), ground))
    a, b = (16, 45), (50, 19)
    out.append(((0x6e, 0x73, 0x7a, 255), band(a, b, 10)))
    out.append(((0xd9, 0xdc, 0xe0, 255), band(lerp(a, b, 0.03), lerp(a, b, 0.97), 7.5)))
    out.append(((0x55, 0x5a, 0x61, 255), band(lerp(a, b, 0.04), lerp(a, b, 0.96), 6)))
    for t in (0.16, 0.34, 0.52, 0.70):
        out.append(((0xf4, 0xf4, 0xf4, 255), band(lerp(a, b, t), lerp(a, b, t + 0.1), 1.2)))
    for c in ground:
        out.append(((0x1b, 0x1b, 0x1b, 255), square(c, 3.2)))
        out.append(((0xf2, 0xb1, 0x2c, 255), square(c, 2.2)))
    return out


def svg(items):
    lines = ['<?xml version="1.0" encoding="UTF-8"?>',
             '<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64" viewBox="0 0 64 64">']
    for (r, g, b, _), poly in items:
        pts = " ".join("%.3f,%.3f" % p for p in poly)
        lines.append('  <polygon fill="#%02x%02x%02x" points="%s"/>' % (r, g, b, pts))
    lines.append("</svg>")
    return "\n".join(lines) + "\n"


def coverage(poly, size, sub=4):
    """Fraction of every pixel inside the polygon, from sub scan lines a pixel row."""
    scale = size / 64.0
    pts = [(x * scale, y * scale) for x, y in poly]
    cov = [0.0] * (size * size)
    edges = list(zip(pts, pts[1:] + pts[:1]))
    for row in range(size):
        for k in range(sub):
            y = row + (k + 0.5) / sub
            xs = []
            for (x0, y0), (x1, y1) in edges:
                if (y0 <= y < y1) or (y1 <= y < y0):
                    xs.append(x0 + (y - y0) * (x1 - x0) / (y1 - y0))
            xs.sort()
            for xa, xb in zip(xs[0::2], xs[1::2]):
                xa, xb = max(xa, 0.0), min(xb, float(size))
                if xb <= xa:
                    continue
                for px in range(int(xa), min(int(math.ceil(xb)), size)):
                    part = min(xb, px + 1) - max(xa, px)
                    if part > 0:
                        cov[row * size + px] += part / sub
    return cov


def raster(items, size):
    img = [[0.0, 0.0, 0.0, 0.0] for _ in range(size * size)]
    for (r, g, b, a), poly in items:
        cov = coverage(poly, size)
        for i, c in enumerate(cov):
            if c <= 0:
                continue
            sa = min(c, 1.0) * a / 255.0
            p = img[i]
            da = p[3]
            oa = sa + da * (1 - sa)
            for ch, v in enumerate((r, g, b)):
                p[ch] = (v * sa + p[ch] * da * (1 - sa)) / oa if oa > 0 else 0
            p[3] = oa
    return img


def png(img, size):
    raw = bytearray()
    for y in range(size):
        raw.append(0)
        for x in range(size):
            r, g, b, a = img[y * size + x]
            raw += bytes((int(round(r)), int(round(g)), int(round(b)), int(round(a * 255))))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(bytes(raw), 9)) + chunk(b"IEND", b""))


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "packaging", "icons")
    os.makedirs(out, exist_ok=True)
    items = shapes()
    with open(os.path.join(out, "fieldwright.svg"), "w", newline="\n") as f:
        f.write(svg(items))
    for size in SIZES:
        with open(os.path.join(out, "fieldwright-%d.png" % size), "wb") as f:
            f.write(png(raster(items, size), size))


if __name__ == "__main__":
    main()
