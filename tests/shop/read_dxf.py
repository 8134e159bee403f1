#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads a drawing exchange file by ezdxf and tells what it finds, a line each: for dxf_test.cpp."""
import math
import sys

import ezdxf
from ezdxf.math import BSpline, bulge_to_arc


def tell(*words):
    print(*words)


def arc_points(start, end, bulge):
    """Points of an arc from its centre, radius and angles as the library finds them from the bulge."""
    if bulge == 0.0:
        return [end]
    center, first, last, radius = bulge_to_arc(start, end, bulge)
    sweep = (last - first) % (2.0 * math.pi)
    parts = math.ceil(sweep / 5e-4)
    angles = [first + sweep * i / parts for i in range(parts + 1)]
    if bulge < 0.0:
        angles.reverse()
    return [(center.x + radius * math.cos(a), center.y + radius * math.sin(a)) for a in angles][1:]


def polygon_area(points):
    return 0.5 * sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(points, points[1:] + points[:1]))


document = ezdxf.readfile(sys.argv[1])
auditor = document.audit()
tell("errors", len(auditor.errors))
for error in auditor.errors:
    tell("# error", error.message)
tell("fixes", len(auditor.fixes))
for fix in auditor.fixes:
    tell("# fix", fix.message)
tell("version", document.dxfversion)
tell("units", document.header["$INSUNITS"])
# The library puts "Defpoints" into every drawing that it reads.
tell("layers", *[layer.dxf.name for layer in document.layers if layer.dxf.name != "Defpoints"])
order = []
for entity in document.modelspace():
    kind, layer = entity.dxftype(), entity.dxf.layer
    if layer not in order:
        order.append(layer)
    if kind == "LWPOLYLINE":
        vertices = [(x, y, b) for x, y, b in entity.get_points("xyb")]
        area = 0.0
        worst = 0.0
        outline = []
        for (x, y, b), (u, v, _) in zip(vertices, vertices[1:] + vertices[:1]):
            points = arc_points((x, y), (u, v), b)
            worst = max(worst, math.dist(points[-1], (u, v)))
            outline += points
            if b != 0.0:  # the circle's segment over the chord, exactly
                angle = 4.0 * math.atan(b)
                radius = math.dist((x, y), (u, v)) / (2.0 * math.sin(angle / 2.0))
                area += 0.5 * radius * radius * (angle - math.sin(angle))
        area += polygon_area([(x, y) for x, y, _ in vertices])
        tell("polyline", layer, int(entity.closed), len(vertices), repr(area), repr(polygon_area(outline)), repr(worst))
    elif kind == "SPLINE":
        spline = BSpline([p for p in entity.control_points], order=entity.dxf.degree + 1, knots=list(entity.knots))
        points = [(p.x, p.y) for p in spline.approximate(20000)]
        tell("spline", layer, entity.dxf.degree, entity.control_point_count(), repr(polygon_area(points)),
             repr(math.dist(points[0], points[-1])))
    elif kind == "CIRCLE":
        tell("circle", layer, repr(entity.dxf.radius))
    elif kind == "TEXT":
        tell("text", layer, entity.dxf.text)
    else:
        tell("other", layer, kind)
tell("order", *order)
