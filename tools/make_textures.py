#!/usr/bin/env python3
"""Draws the textures, the palette and the preview pictures of the program folder.

    python3 tools/make_textures.py [resources-folder]

Writes Resource/fs5.pal, the textures the default shapes, forests, signs and building macros
name into Texture/, and the dialog previews into Resource/. Only the standard library is used
and every random choice comes from a fixed seed, so a run gives the same bytes every time.
"""

import math
import os
import random
import struct
import sys

SIDE = 256

# ---------------------------------------------------------------------------------------------
# The 256-colour palette: 0 black, 1..14 the colours of the colour picker, 15 white, 16..31 the
# light colours (short visible range), 32..63 a grey ramp, then twelve hue ramps of 16 shades.

BASIC = [
    (0, 0, 0), (64, 64, 64), (128, 128, 128), (192, 192, 192), (255, 255, 255),
    (200, 0, 0), (0, 160, 0), (0, 0, 200), (255, 128, 0), (255, 230, 0),
    (120, 70, 20), (210, 180, 130), (170, 70, 30), (0, 90, 40), (0, 170, 200),
]
LIGHTS = [
    (0, 255, 64), (255, 200, 40), (255, 255, 255), (255, 40, 30), (60, 90, 255),
    (255, 150, 0), (255, 255, 120), (120, 255, 120), (140, 200, 255), (255, 120, 200),
    (200, 255, 255), (255, 230, 180), (0, 200, 0), (255, 90, 0), (180, 180, 255),
    (255, 255, 200),
]
HUES = [
    (200, 40, 30), (230, 120, 30), (235, 210, 40), (130, 140, 40), (60, 150, 50),
    (30, 90, 40), (40, 150, 140), (110, 170, 220), (40, 70, 180), (120, 60, 150),
    (120, 80, 40), (200, 175, 130),
]


def fs5_palette():
    pal = [(0, 0, 0)] * 256
    for i, c in enumerate(BASIC[:15]):
        pal[i] = c
    pal[15] = (255, 255, 255)
    for i, c in enumerate(LIGHTS):
        pal[16 + i] = c
    for i in range(32):
        v = round(i * 255 / 31)
        pal[32 + i] = (v, v, v)
    for h, (r, g, b) in enumerate(HUES):
        for s in range(16):
            f = 0.25 + s * 1.25 / 15  # dark to light
            if f <= 1.0:
                c = (r * f, g * f, b * f)
            else:
                t = f - 1.0
                c = (r + (255 - r) * t, g + (255 - g) * t, b + (255 - b) * t)
            pal[64 + h * 16 + s] = tuple(max(0, min(255, round(x))) for x in c)
    return pal


# ---------------------------------------------------------------------------------------------
# Files

def write_bmp8(path, w, h, rows, palette, extended=False):
    """rows: h lists of w indices, top row first; palette: 256 (r, g, b, a).
    An extended bitmap carries its alpha in the palette's reserved bytes and, behind the pixels
    and one skipped byte, a half-size block (here the alpha, at half resolution)."""
    pixels = bytearray()
    for row in reversed(rows):  # bottom-up
        pixels += bytes(row)
    extra = b""
    if extended:
        block = bytearray()
        hw, hh = round(w / 2), round(h / 2)
        for y in range(hh):
            src = rows[min(h - 1, 2 * (hh - 1 - y))]
            for x in range(hw):
                block.append(palette[src[min(w - 1, 2 * x)]][3])
        if not any(block):
            block[0] = 1
        extra = b"\0" + bytes(block)
    pal = bytearray()
    for r, g, b, a in palette:
        pal += bytes((b, g, r, a if extended else 0))
    off = 14 + 40 + 1024
    size = off + len(pixels) + len(extra)
    head = b"BM" + struct.pack("<IHHI", size, 0, 0, off)
    info = struct.pack("<IiiHHIIiiII", 40, w, h, 1, 8, 0, w * h, 2835, 2835, 256, 0)
    with open(path, "wb") as f:
        f.write(head + info + pal + pixels + extra)


def write_bmp24(path, w, h, rgb):
    """rgb: h rows of w (r, g, b), top row first; rows padded to four bytes."""
    stride = (3 * w + 3) & ~3
    data = bytearray()
    for row in reversed(rgb):
        line = bytearray()
        for r, g, b in row:
            line += bytes((b, g, r))
        data += line + b"\0" * (stride - len(line))
    off = 54
    head = b"BM" + struct.pack("<IHHI", off + len(data), 0, 0, off)
    info = struct.pack("<IiiHHIIiiII", 40, w, h, 1, 24, 0, len(data), 2835, 2835, 0, 0)
    with open(path, "wb") as f:
        f.write(head + info + data)


# ---------------------------------------------------------------------------------------------
# An RGBA picture of floats 0..255, and colour reduction to 256 entries by median cut.

class Picture:
    def __init__(self, w, h, fill=(0, 0, 0, 0)):
        self.w, self.h = w, h
        self.px = [[list(fill) for _ in range(w)] for _ in range(h)]

    def blend(self, x, y, c, cover=1.0):
        """Paints colour c (r, g, b[, a]) over the pixel with the given coverage, wrapping around."""
        p = self.px[y % self.h][x % self.w]
        a = (c[3] / 255.0 if len(c) > 3 else 1.0) * cover
        if a <= 0:
            return
        for i in range(3):
            p[i] = p[i] * (1 - a) + c[i] * a
        p[3] = p[3] + (255 - p[3]) * a

    def set(self, x, y, c):
        self.px[y % self.h][x % self.w] = [c[0], c[1], c[2], c[3] if len(c) > 3 else 255]


def clamp(v):
    return max(0, min(255, int(round(v))))


def median_cut(colours, count):
    """colours: dict colour -> pixels; returns the boxes as lists of colours."""
    boxes = [list(colours)]
    while len(boxes) < count:
        best, axis, spread = None, 0, -1
        for i, box in enumerate(boxes):
            if len(box) < 2:
                continue
            for a in range(4):
                lo = min(c[a] for c in box)
                hi = max(c[a] for c in box)
                weight = (hi - lo) * (2 if a == 3 else 1)  # keep transparency edges clean
                if weight > spread:
                    best, axis, spread = i, a, weight
        if best is None or spread <= 0:
            break
        box = sorted(boxes[best], key=lambda c: c[axis])
        total = sum(colours[c] for c in box)
        run, cut = 0, 1
        for k, c in enumerate(box):
            run += colours[c]
            if run * 2 >= total:
                cut = max(1, min(len(box) - 1, k + 1))
                break
        boxes[best:best + 1] = [box[:cut], box[cut:]]
    return boxes


def quantize(pic, alpha=False):
    """Returns (rows of indices, palette of 256 (r, g, b, a))."""
    grid = []
    colours = {}
    for row in pic.px:
        line = []
        for r, g, b, a in row:
            a = 255 if not alpha else (0 if a < 64 else 255 if a > 192 else clamp(a))
            if a == 0:
                c = (0, 0, 0, 0)
            else:
                c = (clamp(r) & ~1, clamp(g) & ~1, clamp(b) & ~1, a)
            colours[c] = colours.get(c, 0) + 1
            line.append(c)
        grid.append(line)
    boxes = median_cut(colours, 256)
    palette = []
    lookup = {}
    for i, box in enumerate(boxes):
        n = sum(colours[c] for c in box)
        avg = tuple(clamp(sum(c[k] * colours[c] for c in box) / n) for k in range(4))
        if not alpha:
            avg = avg[:3] + (255,)
        palette.append(avg)
        for c in box:
            lookup[c] = i
    while len(palette) < 256:
        palette.append((0, 0, 0, 0 if alpha else 255))
    return [[lookup[c] for c in line] for line in grid], palette


# ---------------------------------------------------------------------------------------------
# Drawing helpers

def noise_grid(seed, cells):
    rnd = random.Random(seed)
    return [[rnd.random() for _ in range(cells)] for _ in range(cells)]


def value_noise(grid, x, y, period):
    """Smooth tiling noise in 0..1 with the grid's cell count over period pixels."""
    n = len(grid)
    fx, fy = x * n / period, y * n / period
    x0, y0 = int(math.floor(fx)), int(math.floor(fy))
    tx, ty = fx - x0, fy - y0
    tx, ty = tx * tx * (3 - 2 * tx), ty * ty * (3 - 2 * ty)
    a = grid[y0 % n][x0 % n]
    b = grid[y0 % n][(x0 + 1) % n]
    c = grid[(y0 + 1) % n][x0 % n]
    d = grid[(y0 + 1) % n][(x0 + 1) % n]
    return (a * (1 - tx) + b * tx) * (1 - ty) + (c * (1 - tx) + d * tx) * ty


def inside_polygon(px, py, poly):
    inside = False
    j = len(poly) - 1
    for i in range(len(poly)):
        xi, yi = poly[i]
        xj, yj = poly[j]
        if (yi > py) != (yj > py) and px < (xj - xi) * (py - yi) / (yj - yi) + xi:
            inside = not inside
        j = i
    return inside


def fill_polygon(pic, poly, colour, samples=3):
    """Antialiased fill by supersampling, for pictures that don't wrap."""
    xs = [p[0] for p in poly]
    ys = [p[1] for p in poly]
    for y in range(max(0, int(min(ys))), min(pic.h, int(math.ceil(max(ys))) + 1)):
        for x in range(max(0, int(min(xs))), min(pic.w, int(math.ceil(max(xs))) + 1)):
            hits = 0
            for sy in range(samples):
                for sx in range(samples):
                    if inside_polygon(x + (sx + 0.5) / samples, y + (sy + 0.5) / samples, poly):
                        hits += 1
            if hits:
                pic.blend(x, y, colour, hits / (samples * samples))


# ---------------------------------------------------------------------------------------------
# Ground textures

def concrete(pal):
    """Raw 8-bit: light concrete slabs of 64 texels with joints, in the palette's grey ramp."""
    grid = noise_grid(11, 16)
    fine = random.Random(12)
    rows = []
    for y in range(SIDE):
        row = []
        for x in range(SIDE):
            v = 0.72 + 0.10 * (value_noise(grid, x, y, SIDE) - 0.5) + 0.06 * (fine.random() - 0.5)
            if x % 64 in (0, 63) or y % 64 in (0, 63):
                v -= 0.22
            level = max(0, min(31, round(v * 31)))
            row.append(32 + level)
        rows.append(row)
    return bytes(i for row in rows for i in row)


def taxiway():
    """Asphalt along the V axis with a yellow centre line and darker shoulders."""
    pic = Picture(SIDE, SIDE)
    grid = noise_grid(21, 32)
    fine = random.Random(22)
    for y in range(SIDE):
        for x in range(SIDE):
            v = 70 + 18 * (value_noise(grid, x, y, SIDE) - 0.5) + 14 * (fine.random() - 0.5)
            if x < 12 or x >= 244:
                v -= 15
            pic.set(x, y, (v, v, v + 3))
        for x in range(122, 134):
            edge = 0.6 if x in (122, 133) else 1.0
            pic.blend(x, y, (225, 185, 30), edge * (0.85 + 0.15 * fine.random()))
        for x in (14, 15, 240, 241):  # edge lines
            pic.blend(x, y, (220, 190, 60), 0.8)
    return pic


# ---------------------------------------------------------------------------------------------
# Trees. A tree texture holds eight strips of 30 rows (trees in rows 3..26 of each strip), so
# that both four bands (strips of 60) and eight bands can use it; the rows between the pairs of
# strips hold foliage for the four-band wall. The bottom 13 rows hold the end caps: the same
# profile lying on its side, column x showing wall row x - 1, thinning toward row 255.

def tree_colour(rnd, base):
    k = 0.75 + 0.5 * rnd.random()
    return tuple(clamp(c * k) for c in base)


def draw_crown(pic, cx, top, bottom, width, colour, conifer, rnd):
    height = bottom - top
    for y in range(int(top), int(bottom) + 1):
        f = (y - top) / max(1, height)  # 0 at the tip
        if conifer:
            half = width / 2 * min(1.0, 0.15 + f * 1.05)
        else:
            half = width / 2 * math.sqrt(max(0.0, 1 - (2 * f - 1) ** 2)) if f < 0.85 else width * 0.3
        for x in range(int(cx - half - 1), int(cx + half + 2)):
            d = abs(x + 0.5 - cx)
            cover = max(0.0, min(1.0, half - d + 0.5))
            if cover <= 0:
                continue
            light = 1.1 - 0.45 * ((x - cx + half) / max(1.0, 2 * half)) - 0.15 * f
            speck = 0.85 + 0.3 * rnd.random()
            pic.blend(x, y, tuple(clamp(c * light * speck) for c in colour) + (255,), cover)


def tree_strip(pic, rnd, top, ground, base_colours, conifer_share, trunk):
    x = rnd.uniform(0, 8)
    while x < SIDE + 4:
        width = rnd.uniform(7, 14)
        tip = top + rnd.uniform(0, 6)
        conifer = rnd.random() < conifer_share
        cx = x + width / 2
        for y in range(ground - 2, ground + 1):  # trunk below the crown
            for tx in (int(cx) - 1, int(cx)):
                pic.set(tx, y, trunk + (255,))
        draw_crown(pic, cx, tip, ground - 2, width, tree_colour(rnd, rnd.choice(base_colours)), conifer, rnd)
        x += width * rnd.uniform(0.55, 0.8)


def tree_texture(seed, base_colours, conifer_share, trunk, back):
    rnd = random.Random(seed)
    pic = Picture(SIDE, SIDE)
    for pair in range(4):
        gap0 = 60 * pair + 27
        for y in range(gap0 - 6, gap0 + 6):  # foliage joining the two strips of a four-band strip
            for x in range(SIDE):
                pic.set(x, y, tuple(clamp(c * (0.8 + 0.3 * rnd.random())) for c in back) + (255,))
    for strip in range(8):
        tree_strip(pic, rnd, 30 * strip + 3, 30 * strip + 26, base_colours, conifer_share, trunk)
    # End caps.
    for row in range(243, 256):
        t = (row - 243) / 12.0
        for x in range(1, SIDE):
            r = x - 1
            within = r % 30
            if r >= 240 or not (3 <= within <= 26 or (r % 60) in range(21, 33)):
                continue
            f = (26 - within) / 23.0 if 3 <= within <= 26 else 0.5
            if f < 1.0 - 0.55 * t - 0.1 * rnd.random():
                c = tree_colour(rnd, base_colours[0])
                pic.set(x, row, tuple(clamp(v * (0.85 - 0.2 * t)) for v in c) + (255,))
    return pic


def canopy(seed, base, cover, size, opaque):
    """A forest roof seen from above: crowns lit from the upper left, tiling both ways."""
    rnd = random.Random(seed)
    fill = tuple(clamp(c * 0.45) for c in base) + (255,) if opaque else (0, 0, 0, 0)
    pic = Picture(SIDE, SIDE, fill)
    crowns = int(cover * SIDE * SIDE / (math.pi * (size / 2) ** 2))
    for _ in range(crowns):
        cx, cy = rnd.uniform(0, SIDE), rnd.uniform(0, SIDE)
        rad = size / 2 * rnd.uniform(0.7, 1.2)
        col = tree_colour(rnd, base)
        for y in range(int(cy - rad - 1), int(cy + rad + 2)):
            for x in range(int(cx - rad - 1), int(cx + rad + 2)):
                dx, dy = x + 0.5 - cx, y + 0.5 - cy
                d = math.hypot(dx, dy)
                c = max(0.0, min(1.0, rad - d + 0.5))
                if c <= 0:
                    continue
                light = 1.0 - 0.35 * (dx + dy) / (2 * rad) - 0.25 * (d / rad) ** 2
                speck = 0.85 + 0.3 * rnd.random()
                pic.blend(x, y, tuple(clamp(v * light * speck) for v in col) + (255,), c)
    return pic


# ---------------------------------------------------------------------------------------------
# The building facade: four storeys of windows over a base course, tiling sideways.

def facade():
    pic = Picture(SIDE, SIDE)
    fine = random.Random(31)
    for y in range(SIDE):
        for x in range(SIDE):
            v = 0.92 + 0.08 * fine.random()
            pic.set(x, y, (200 * v, 188 * v, 160 * v))
    for y in range(0, 8):  # parapet
        for x in range(SIDE):
            pic.set(x, y, (120, 115, 105))
    for y in range(240, 256):  # base course
        for x in range(SIDE):
            pic.set(x, y, (140, 130, 115))
    for storey in range(4):
        y0 = 20 + storey * 56
        for col in range(8):
            x0 = 6 + col * 32
            for y in range(y0, y0 + 32):
                for x in range(x0, x0 + 20):
                    frame = x in (x0, x0 + 19) or y in (y0, y0 + 31) or x == x0 + 10
                    if frame:
                        pic.set(x, y, (235, 235, 235))
                    else:
                        sky = 0.6 + 0.4 * (1 - (y - y0) / 32.0)
                        pic.set(x, y, (60 * sky, 90 * sky, 120 * sky))
            for x in range(x0 - 2, x0 + 22):  # sill
                pic.set(x, y0 + 32, (230, 225, 210))
                pic.set(x, y0 + 33, (150, 140, 125))
    return pic


# ---------------------------------------------------------------------------------------------
# The sign sheet. Cells are placed in a 256 by 256 drawing per quadrant at half size, so a
# 32 by 32 cell is 16 by 16 texels of which the signs use the first 15 each way.

FONT = {
    "A": ["01110", "10001", "10001", "11111", "10001", "10001", "10001"],
    "B": ["11110", "10001", "10001", "11110", "10001", "10001", "11110"],
    "C": ["01110", "10001", "10000", "10000", "10000", "10001", "01110"],
    "D": ["11110", "10001", "10001", "10001", "10001", "10001", "11110"],
    "E": ["11111", "10000", "10000", "11110", "10000", "10000", "11111"],
    "F": ["11111", "10000", "10000", "11110", "10000", "10000", "10000"],
    "G": ["01110", "10001", "10000", "10111", "10001", "10001", "01111"],
    "H": ["10001", "10001", "10001", "11111", "10001", "10001", "10001"],
    "I": ["01110", "00100", "00100", "00100", "00100", "00100", "01110"],
    "J": ["00111", "00010", "00010", "00010", "00010", "10010", "01100"],
    "K": ["10001", "10010", "10100", "11000", "10100", "10010", "10001"],
    "L": ["10000", "10000", "10000", "10000", "10000", "10000", "11111"],
    "M": ["10001", "11011", "10101", "10101", "10001", "10001", "10001"],
    "N": ["10001", "10001", "11001", "10101", "10011", "10001", "10001"],
    "O": ["01110", "10001", "10001", "10001", "10001", "10001", "01110"],
    "P": ["11110", "10001", "10001", "11110", "10000", "10000", "10000"],
    "Q": ["01110", "10001", "10001", "10001", "10101", "10010", "01101"],
    "R": ["11110", "10001", "10001", "11110", "10100", "10010", "10001"],
    "S": ["01111", "10000", "10000", "01110", "00001", "00001", "11110"],
    "T": ["11111", "00100", "00100", "00100", "00100", "00100", "00100"],
    "U": ["10001", "10001", "10001", "10001", "10001", "10001", "01110"],
    "V": ["10001", "10001", "10001", "10001", "10001", "01010", "00100"],
    "W": ["10001", "10001", "10001", "10101", "10101", "10101", "01010"],
    "X": ["10001", "10001", "01010", "00100", "01010", "10001", "10001"],
    "Y": ["10001", "10001", "01010", "00100", "00100", "00100", "00100"],
    "Z": ["11111", "00001", "00010", "00100", "01000", "10000", "11111"],
    "0": ["01110", "10001", "10011", "10101", "11001", "10001", "01110"],
    "1": ["00100", "01100", "00100", "00100", "00100", "00100", "01110"],
    "2": ["01110", "10001", "00001", "00010", "00100", "01000", "11111"],
    "3": ["11111", "00010", "00100", "00010", "00001", "10001", "01110"],
    "4": ["00010", "00110", "01010", "10010", "11111", "00010", "00010"],
    "5": ["11111", "10000", "11110", "00001", "00001", "10001", "01110"],
    "6": ["00110", "01000", "10000", "11110", "10001", "10001", "01110"],
    "7": ["11111", "00001", "00010", "00100", "01000", "01000", "01000"],
    "8": ["01110", "10001", "10001", "01110", "10001", "10001", "01110"],
    "9": ["01110", "10001", "10001", "01111", "00001", "00010", "01100"],
}

# An arrow pointing up in a unit square; the others are turned from it.
ARROW_UP = [(0.5, 0.08), (0.9, 0.5), (0.63, 0.5), (0.63, 0.92), (0.37, 0.92), (0.37, 0.5), (0.1, 0.5)]
ARROW_TURN = {"ArrowUp": 0, "ArrowRight": 90, "ArrowLeft": -90, "ArrowRightUp": 45, "ArrowLeftUp": -45}

SIGN_YELLOW = (250, 210, 0)
SIGN_RED = (215, 25, 15)
SIGN_BLACK = (15, 15, 15)
SIGN_WHITE = (250, 250, 250)


def text_hit(text, u, v):
    """Whether the point (u, v) of the unit box holding the text, kept to the font's proportions, is ink."""
    cols = 6 * len(text) - 1
    x = u * cols
    y = v * 7
    k = int(x // 6)
    gx, gy = int(x - 6 * k), int(y)
    if k >= len(text) or gx >= 5 or gy >= 7 or gy < 0:
        return False
    return FONT[text[k]][gy][gx] == "1"


def arrow_hit(name, u, v):
    a = math.radians(ARROW_TURN[name])
    # Turn the point back into the up arrow's frame about the centre.
    du, dv = u - 0.5, v - 0.5
    ru = du * math.cos(a) + dv * math.sin(a)
    rv = -du * math.sin(a) + dv * math.cos(a)
    if abs(ARROW_TURN[name]) == 45:
        ru, rv = ru * 1.2, rv * 1.2  # the diagonals would poke out of the cell
    return inside_polygon(ru + 0.5, rv + 0.5, ARROW_UP)


def sign_cell(pic, x0, y0, w, h, item, back, ink, border=None, samples=4):
    """Fills texels x0..x0+w-1, y0..y0+h-1 with one cell; the content sits in the first w-1, h-1."""
    uw, uh = w - 1, h - 1
    if item in ARROW_TURN:
        box = (0.5, 0.5, uw - 1.0, uh - 1.0)
        hit = lambda u, v: arrow_hit(item, u, v)
    else:
        cols = 6 * len(item) - 1
        scale = min((uw - 3.0) / cols, (uh - 3.0) / 7)
        bw, bh = cols * scale, 7 * scale
        box = ((uw - bw) / 2, (uh - bh) / 2, bw, bh)
        hit = lambda u, v: text_hit(item, u, v)
    for y in range(h):
        for x in range(w):
            ink_hits = 0
            for sy in range(samples):
                for sx in range(samples):
                    px, py = x + (sx + 0.5) / samples, y + (sy + 0.5) / samples
                    u, v = (px - box[0]) / box[2], (py - box[1]) / box[3]
                    if 0 <= u < 1 and 0 <= v < 1 and hit(u, v):
                        ink_hits += 1
            cover = ink_hits / (samples * samples)
            c = back
            if border and (x == 0 or y == 0 or x == uw - 1 or y == uh - 1):
                c = border
            pic.set(x0 + x, y0 + y, c)
            pic.blend(x0 + x, y0 + y, ink, cover)


def sign_sheet():
    pic = Picture(SIDE, SIDE, (90, 90, 90, 255))
    letters = [chr(ord("A") + i) for i in range(26)]
    numbers = [str(n) for n in range(1, 18)]
    arrows = ["ArrowLeft", "ArrowRight", "ArrowUp", "ArrowLeftUp", "ArrowRightUp"]

    def place(quadrant, cx, cy, cw, ch, item, back, ink, border=None):
        u = cx // 2 + (128 if quadrant == 2 else 0)
        v = cy // 2 + (128 if quadrant == 3 else 0)
        sign_cell(pic, u, v, cw // 2, ch // 2, item, back, ink, border)

    # Direction: black on yellow, quadrant 1, eight columns of 32 by 32.
    for k, item in enumerate(letters + numbers + arrows):
        place(1, (k % 8) * 32, (k // 8) * 32, 32, 32, item, SIGN_YELLOW, SIGN_BLACK)
    # Arrows of a runway instruction: white on red, row 6 of quadrant 1.
    for k, item in enumerate(arrows):
        place(1, 96 + 32 * k, 192, 32, 32, item, SIGN_RED, SIGN_WHITE)
    # Runway numbers 33 to 36 at row 7 of quadrant 1, 1 to 32 in quadrant 2; 64 by 32.
    for k in range(4):
        place(1, k * 64, 224, 64, 32, str(33 + k), SIGN_RED, SIGN_WHITE)
    for k in range(32):
        place(2, (k % 4) * 64, (k // 4) * 32, 64, 32, str(k + 1), SIGN_RED, SIGN_WHITE)
    # Location: yellow on black with a yellow frame, quadrant 3.
    for k, item in enumerate(letters + numbers):
        place(3, (k % 8) * 32, (k // 8) * 32, 32, 32, item, SIGN_BLACK, SIGN_YELLOW, SIGN_YELLOW)
    return pic


# ---------------------------------------------------------------------------------------------
# Previews (24-bit pictures the dialogs show as they are)

PREVIEW = 128


def sky_and_ground(pic, horizon):
    for y in range(pic.h):
        for x in range(pic.w):
            if y < horizon:
                t = y / horizon
                pic.set(x, y, (150 + 60 * t, 190 + 40 * t, 235))
            else:
                t = (y - horizon) / max(1, pic.h - horizon)
                pic.set(x, y, (110 - 30 * t, 150 - 30 * t, 80 - 20 * t))


def to_rgb(pic):
    return [[(clamp(p[0]), clamp(p[1]), clamp(p[2])) for p in row] for row in pic.px]


def iso(x, y, z, scale, ox, oy):
    """Isometric view: x east, y north, z up, seen from the south-west."""
    sx = (x - y) * 0.866 * scale + ox
    sy = -(x + y) * 0.5 * scale - z * scale + oy
    return sx, sy


def building_preview(outline, height, scale, oy):
    """An extruded outline (counter-clockwise, metres) in isometric view."""
    pic = Picture(PREVIEW, PREVIEW)
    sky_and_ground(pic, 58)
    ox = PREVIEW / 2
    faces = []
    n = len(outline)
    for i in range(n):
        (x1, y1), (x2, y2) = outline[i], outline[(i + 1) % n]
        nx, ny = y2 - y1, -(x2 - x1)  # outward normal of a counter-clockwise outline
        if nx + ny >= 0:
            continue  # faces away from the eye
        depth = (x1 + x2 + y1 + y2) / 4
        light = 0.65 + 0.35 * (-nx) / (abs(nx) + abs(ny) + 1e-9)
        faces.append((depth, (x1, y1), (x2, y2), light))
    for depth, a, b, light in sorted(faces, reverse=True):
        poly = [iso(a[0], a[1], 0, scale, ox, oy), iso(b[0], b[1], 0, scale, ox, oy),
                iso(b[0], b[1], height, scale, ox, oy), iso(a[0], a[1], height, scale, ox, oy)]
        fill_polygon(pic, poly, tuple(clamp(c * light) for c in (215, 200, 170)))
        length = math.hypot(b[0] - a[0], b[1] - a[1])
        # Window rows as thin dark bands along the wall.
        for storey in range(1, 4):
            z = height * storey / 4.0 - height * 0.12
            for w in range(int(length // 6)):
                t0 = (w * 6 + 1.5) / length
                t1 = (w * 6 + 4.5) / length
                pa = (a[0] + (b[0] - a[0]) * t0, a[1] + (b[1] - a[1]) * t0)
                pb = (a[0] + (b[0] - a[0]) * t1, a[1] + (b[1] - a[1]) * t1)
                win = [iso(pa[0], pa[1], z, scale, ox, oy), iso(pb[0], pb[1], z, scale, ox, oy),
                       iso(pb[0], pb[1], z + height * 0.1, scale, ox, oy),
                       iso(pa[0], pa[1], z + height * 0.1, scale, ox, oy)]
                fill_polygon(pic, win, tuple(clamp(c * light) for c in (60, 85, 110)), 2)
    roof = [iso(x, y, height, scale, ox, oy) for x, y in outline]
    fill_polygon(pic, roof, (95, 95, 100))
    return pic


def aircraft_preview():
    """The airliner from above, nose up, on apron concrete."""
    pic = Picture(PREVIEW, PREVIEW, (185, 185, 180, 255))
    s = PREVIEW / 40.0  # metres to pixels
    c = PREVIEW / 2

    def P(points):
        return [(c + x * s, c - y * s) for x, y in points]

    grey, white, blue, dark = (150, 155, 165), (245, 245, 245), (30, 60, 150), (70, 70, 75)
    fill_polygon(pic, P([(0, 2), (14.4, -4.5), (14.4, -6), (1.8, -3.5), (-1.8, -3.5), (-14.4, -6),
                         (-14.4, -4.5)]), grey)  # wings
    fill_polygon(pic, P([(0, -12.5), (6.5, -16.5), (6.5, -17.6), (-6.5, -17.6), (-6.5, -16.5)]), grey)
    for side in (-1, 1):  # engines under the wings
        fill_polygon(pic, P([(side * 4.1, 3.8), (side * 5.9, 3.8), (side * 5.9, -0.6), (side * 4.1, -0.6)]), dark)
    body = [(0, 18.2), (1.3, 16.8), (1.9, 14), (1.9, -12), (1.1, -17), (0.4, -18.2), (-0.4, -18.2),
            (-1.1, -17), (-1.9, -12), (-1.9, 14), (-1.3, 16.8)]
    fill_polygon(pic, P(body), white)
    fill_polygon(pic, P([(0.4, -12.5), (0.4, -18.2), (-0.4, -18.2), (-0.4, -12.5)]), blue)  # fin seen from above
    fill_polygon(pic, P([(0.9, 16.6), (0.9, 15.7), (-0.9, 15.7), (-0.9, 16.6)]), dark)  # cockpit windows
    return pic


def forest_preview(side_pic, top_pic):
    """A forest edge: canopy behind, the band 0 of the side texture in front."""
    pic = Picture(PREVIEW, PREVIEW)
    sky_and_ground(pic, 70)
    for y in range(36, 70):  # canopy roof seen at a low angle
        for x in range(PREVIEW):
            p = top_pic.px[(y * 5) % SIDE][(x * 2) % SIDE]
            if p[3] > 0:
                pic.blend(x, y, (p[0] * 0.8, p[1] * 0.8, p[2] * 0.8, 255))
    for y in range(40, 112):  # band 0: rows 3..26, three picture rows a texel
        row = 3 + (y - 40) // 3
        for x in range(PREVIEW):
            p = side_pic.px[row][(x // 2) % SIDE]
            if p[3] > 128:
                pic.set(x, y, (p[0], p[1], p[2]))
    return pic


# ---------------------------------------------------------------------------------------------

DARK_TREES = [(40, 80, 40), (30, 70, 45), (50, 90, 35)]
MIXED_TREES = [(70, 120, 40), (100, 140, 50), (60, 105, 45), (130, 130, 45)]


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "resources")
    tex = os.path.join(out, "Texture")
    res = os.path.join(out, "Resource")
    os.makedirs(tex, exist_ok=True)
    os.makedirs(res, exist_ok=True)

    pal = fs5_palette()
    with open(os.path.join(res, "fs5.pal"), "wb") as f:
        f.write(bytes(v for c in pal for v in c))
    with open(os.path.join(tex, "Concrete.r8"), "wb") as f:
        f.write(concrete(pal))

    def save8(name, pic, alpha=False):
        rows, palette = quantize(pic, alpha)
        write_bmp8(os.path.join(tex, name), pic.w, pic.h, rows, palette, extended=alpha)

    save8("taxi.bmp", taxiway())
    save8("Tree.bmp", tree_texture(41, MIXED_TREES + DARK_TREES, 0.4, (80, 55, 30), (45, 80, 40)), True)
    dark_side = tree_texture(51, DARK_TREES, 0.85, (60, 45, 30), (30, 60, 35))
    mixed_side = tree_texture(61, MIXED_TREES, 0.1, (90, 65, 35), (60, 100, 40))
    save8("fwt_forest1.bmp", dark_side, True)
    save8("fwt_forestc1.bmp", mixed_side, True)
    tops = {}
    for name, seed, base, cover, size, opaque in [
            ("fwt_foresttop_dark1.bmp", 71, (40, 80, 45), 1.2, 20, True),
            ("fwt_foresttop_dark2.bmp", 72, (45, 90, 45), 0.55, 16, False),
            ("fwt_foresttop_dark3.bmp", 73, (55, 100, 50), 0.25, 11, False),
            ("fwt_foresttopc_11.bmp", 81, (80, 125, 45), 1.2, 24, True),
            ("fwt_foresttopc_12.bmp", 82, (100, 140, 50), 0.55, 20, False),
            ("fwt_foresttopc_13.bmp", 83, (125, 150, 55), 0.25, 14, False)]:
        tops[name] = canopy(seed, base, cover, size, opaque)
        save8(name, tops[name], not opaque)
    save8("fwt_build01.bmp", facade())
    save8("fwt_sign1.bmp", sign_sheet())

    write_bmp24(os.path.join(res, "prev_fwt_forest1.bmp"), PREVIEW, PREVIEW,
                to_rgb(forest_preview(dark_side, tops["fwt_foresttop_dark1.bmp"])))
    write_bmp24(os.path.join(res, "prev_fwt_forestc1.bmp"), PREVIEW, PREVIEW,
                to_rgb(forest_preview(mixed_side, tops["fwt_foresttopc_11.bmp"])))
    square = [(-25, -25), (25, -25), (25, 25), (-25, 25)]
    write_bmp24(os.path.join(res, "fwt_building1.bmp"), PREVIEW, PREVIEW,
                to_rgb(building_preview(square, 20, 1.25, 92)))
    wing = [(-25, -25), (25, -25), (25, 5), (10, 5), (10, 25), (-10, 25), (-10, 5), (-25, 5)]
    write_bmp24(os.path.join(res, "fwt_building2.bmp"), PREVIEW, PREVIEW,
                to_rgb(building_preview(wing, 20, 1.25, 92)))
    write_bmp24(os.path.join(res, "fwt_b737.bmp"), PREVIEW, PREVIEW, to_rgb(aircraft_preview()))


if __name__ == "__main__":
    main()
