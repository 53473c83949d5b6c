#!/usr/bin/env python3
"""Writes the three built-in 3-D object macros into API/ of the program folder.

    python3 tools/make_macros.py [resources-folder]

Each macro is SCASM source with a keyword header the program reads (description, parameter
descriptions, outline, defaults) and the parameter marks the macro statement fills in:
%1 %2 latitude and longitude, %3 area radius (km), %4 scale, %5 heading, %6..%9 and %15..%20
user parameters, %10 visibility range (m), %11 altitude above sea level (m), %12 detail level.
Model units are metres times the scale; x east, y up, z north.
"""

import math
import os
import sys

CRLF = "\r\n"


def fmt(v):
    if isinstance(v, str):
        return v
    r = round(v, 2)
    return str(int(r)) if r == int(r) else ("%.2f" % r).rstrip("0")


def header(desc, params, outline, defaults):
    """outline: points in project units (half metres, Y to the south) as the plan shows them."""
    lines = [
        ";" + "/" * 64,
        "; " + desc + " - a 3-D object macro of Fieldwright",
        ";" + "/" * 64,
        ";",
        ";macrodesc " + desc,
    ]
    if params:
        lines.append(";paramdescr " + ",".join(params))
    lines.append(";designshape " + ",".join("%d,%d" % p for p in outline))
    lines += [
        ";defaultscale 1",
        ";defaultrange 5000",
        ";defaultdensity normal",
    ]
    if defaults:
        lines.append(";defaultparams " + ",".join(defaults))
    return lines


def frame(radius, body):
    """The area, the detail-level and distance tests, and a reference point turned to the heading."""
    return [
        "",
        "Area( 5 %1 %2 %3 )",
        "  ; not drawn below the chosen detail level (346 is the image complexity)",
        "  IfVarRange( :ObjEnd 346 %12 4 )",
        "  PerspectiveCall( :ObjPersp )",
        "  ShadowCall( :ObjShadow )",
        "  Jump( :ObjEnd )",
        "",
        "  :ObjPersp",
        "  Perspective",
        "  :ObjShadow",
        "  RefPoint( abs :ObjReturn %4 %1 %2 E= %11 v1= %10 v2= " + str(radius) + " )",
        "  RotatedCall( :ObjModel 0 0 %5 )",
        "  :ObjReturn",
        "  Return",
        "",
        "  :ObjModel",
    ] + ["    " + l if l else "" for l in body] + [
        "  Return",
        "",
        "  :ObjEnd",
        "EndA",
        "",
    ]


def points(pts):
    out = ["Points( 0"]
    for i, (x, y, z) in enumerate(pts):
        out.append("  %s %s %s ;%d" % (fmt(x), fmt(y), fmt(z), i))
    out.append(")")
    return out


def newell(pts, idx):
    nx = ny = nz = 0.0
    for k in range(len(idx)):
        x1, y1, z1 = pts[idx[k]]
        x2, y2, z2 = pts[idx[(k + 1) % len(idx)]]
        nx += (y1 - y2) * (z1 + z2)
        ny += (z1 - z2) * (x1 + x2)
        nz += (x1 - x2) * (y1 + y2)
    return nx, ny, nz


def outward(pts, idx, centre):
    """The face turned clockwise as seen from outside (from centre's far side), the winding every
    face of these macros has: with x east, y up, z north that is a normal pointing outward."""
    n = newell(pts, idx)
    c = [sum(pts[i][k] for i in idx) / len(idx) - centre[k] for k in range(3)]
    return idx if sum(n[k] * c[k] for k in range(3)) >= 0 else list(reversed(idx))


def poly(kind, idx):
    return kind + "( a " + " ".join(str(i) for i in idx) + " )"


# ---------------------------------------------------------------------------------------------
# Buildings: an outline (metres, counter-clockwise seen from above) extruded to the height %8,
# walls textured with %9 at 50 m of wall to the texture's width and the full height to its
# height, a flat roof in the palette colour %15.

def building(outline_m, concave):
    n = len(outline_m)
    pts = [(x, 0, z) for x, z in outline_m] + [(x, "%8", z) for x, z in outline_m]
    body = points(pts) + ["", "LoadBitmap( 0 5 E0 0 0 0 %9 )"]
    for i in range(n):
        j = (i + 1) % n
        length = math.hypot(outline_m[j][0] - outline_m[i][0], outline_m[j][1] - outline_m[i][1])
        u1 = round(length * 256 / 50)
        # Seen from outside the wall runs foot left, foot right, top right, top left.
        body += ["TexPoly( a",
                 "  %d %d 0" % (j, u1),
                 "  %d 0 0" % i,
                 "  %d 0 255" % (i + n),
                 "  %d %d 255" % (j + n, u1),
                 ")"]
    body += ["", "SurfaceColor( %15 F0 )"]
    if concave:
        body.append("ConcavePoly")
    # Clockwise seen from above, as the walls are seen from outside.
    body.append(poly("Poly", [n + i for i in reversed(range(n))]))
    radius = math.ceil(max(math.hypot(x, z) for x, z in outline_m) + 1)
    return frame(radius, body)


def outline_units(outline_m):
    """The plan outline: project units are half metres with Y to the south; closed."""
    pts = [(round(x * 2), round(-z * 2)) for x, z in outline_m]
    return pts + [pts[0]]


# ---------------------------------------------------------------------------------------------
# The airliner: a six-sided fuselage over four stations, swept wings, stabilisers, a fin in the
# palette colour %6, and two engines. Length about 36.4 m, span 28.8 m.

def airliner():
    pts = []
    faces = []
    stations = [(-18.2, 0.35, 3.9), (-12.0, 1.9, 3.0), (14.0, 1.9, 3.0), (18.2, 0.3, 2.6)]
    for z, r, yc in stations:
        for k in range(6):
            a = math.radians(60 * k + 30)
            pts.append((r * math.cos(a), yc + r * math.sin(a), z))
    body = []
    for s in range(3):
        for k in range(6):
            a, b = s * 6 + k, s * 6 + (k + 1) % 6
            faces.append(("Poly", [a, a + 6, b + 6, b]))
    faces.append(("Poly", list(range(6))))               # tail cap
    faces.append(("Poly", list(range(18, 24))))          # nose cap
    faces = [(k, outward(pts, f, (0, 3.0, 0))) for k, f in faces]

    def add(quad):
        base = len(pts)
        pts.extend(quad)
        return list(range(base, base + len(quad)))

    wings = []
    for side in (1, -1):
        wings.append(add([(side * 1.9, 2.4, 2.0), (side * 14.4, 2.9, -4.5), (side * 14.4, 2.9, -6.0),
                          (side * 1.9, 2.4, -3.5)]))
        wings.append(add([(side * 1.2, 3.6, -12.5), (side * 6.5, 3.7, -16.5), (side * 6.5, 3.7, -17.6),
                          (side * 0.5, 3.7, -17.6)]))
    fin = add([(0, 4.5, -12.0), (0, 11.1, -16.8), (0, 11.1, -18.2), (0, 4.0, -18.2)])
    engines = []
    for side in (1, -1):
        x0, x1 = side * 4.1, side * 5.9
        ring = add([(x0, 0.6, 3.8), (x1, 0.6, 3.8), (x1, 2.3, 3.8), (x0, 2.3, 3.8),
                    (x0, 0.6, -0.6), (x1, 0.6, -0.6), (x1, 2.3, -0.6), (x0, 2.3, -0.6)])
        middle = ((x0 + x1) / 2, 1.45, 1.6)
        for q in ([0, 1, 5, 4], [1, 2, 6, 5], [2, 3, 7, 6], [3, 0, 4, 7], [3, 2, 1, 0], [4, 5, 6, 7]):
            engines.append(outward(pts, [ring[i] for i in q], middle))

    # Whole units: a face left with fewer than three places after rounding is dropped.
    pts = [tuple(round(v) for v in p) for p in pts]

    def solid(idx):
        return len({pts[i] for i in idx}) >= 3

    faces = [(k, f) for k, f in faces if solid(f)]
    body += points(pts)
    body += ["", "RGBSColor( EF 240 240 240 )"] + [poly(k, f) for k, f in faces]
    body += ["", "RGBSColor( EF 160 165 175 )"]
    for w in wings:  # thin surfaces, seen from both sides
        body += [poly("Poly", w), poly("Poly", list(reversed(w)))]
    body += ["", "RGBSColor( EF 70 70 75 )"] + [poly("Poly", e) for e in engines]
    body += ["", "SurfaceColor( %6 F0 )", poly("Poly", fin), poly("Poly", list(reversed(fin)))]
    outline_m = [(0, 18.2), (1.9, 2.0), (14.4, -4.5), (14.4, -6.0), (6.5, -17.6), (0, -18.2),
                 (-6.5, -17.6), (-14.4, -6.0), (-14.4, -4.5), (-1.9, 2.0)]
    return frame(20, body), outline_units(outline_m)


def main():
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "resources")
    api = os.path.join(out, "API")
    os.makedirs(api, exist_ok=True)

    def write(name, lines):
        with open(os.path.join(api, name), "wb") as f:
            f.write((CRLF.join(lines)).encode("cp1252"))

    # The square of a new object's outline, 50 m across, with its marks (its first twelve points:
    # the thirteenth only retraces the south side).
    square_outline = [(-50, 50), (50, 50), (50, -50), (-50, -50), (-50, 50), (0, 50), (-50, 0), (-50, -50),
                      (50, 50), (50, 0), (0, -50), (50, -50)]
    square_m = [(-25, -25), (25, -25), (25, 25), (-25, 25)]
    building_params = ["(not used)", "(not used)", "Height (m)", "Wall texture", "Roof color (palette)"]
    building_defaults = ["40", "40", "20", "fwt_build01.bmp", "1"]
    write("fwt_building1.api",
          header("Simple building (4 walls)", building_params, square_outline, building_defaults)
          + building(square_m, False))

    wing_m = [(-25, -25), (25, -25), (25, 5), (10, 5), (10, 25), (-10, 25), (-10, 5), (-25, 5)]
    write("fwt_building2.api",
          header("Simple building (8 walls)", building_params, outline_units(wing_m), building_defaults)
          + building(wing_m, True))

    model, outline = airliner()
    write("fwt_b737.api", header("Boeing 737-400", ["Tail color (palette)"], outline, ["7"]) + model)


if __name__ == "__main__":
    main()
