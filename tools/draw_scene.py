#!/usr/bin/env python3
"""Draws the meshes and hair of a scene file as an SVG picture, to see what a conversion gave.

  draw_scene.py SCENE.obx PICTURE.svg [--width 900] [--turn DEGREES] [--lift DEGREES] [--edges]

Parallel projection, painted from back to front, light over the left shoulder. Moving things stand at their first key. Meant
for some ten thousand triangles.
"""
import argparse
import math
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'support'))
import obx

COLOURS = ((0.62, 0.74, 0.90), (0.93, 0.72, 0.52), (0.66, 0.84, 0.63), (0.88, 0.63, 0.70), (0.80, 0.76, 0.55))
LIGHT = (-0.20, 0.51, 0.84)


def placed(point, world):
    return tuple(sum(point[k] * world[4 * k + c] for k in range(3)) + world[12 + c] for c in range(3))


class View:
    """World to picture: x to the right, y up, z towards the eye."""

    def __init__(self, turn, lift):
        self.turn = math.cos(math.radians(turn)), math.sin(math.radians(turn))
        self.lift = math.cos(math.radians(lift)), math.sin(math.radians(lift))

    def seen(self, point):
        x, y, z = point
        across, along = x * self.turn[0] + z * self.turn[1], z * self.turn[0] - x * self.turn[1]
        return across, y * self.lift[0] - along * self.lift[1], along * self.lift[0] + y * self.lift[1]


def triangles(placement, view):
    geometry = placement.geometry
    numbers, corners = geometry.get('vertices'), geometry.get('triangles')
    points = [view.seen(placed(numbers[k:k + 3], placement.world)) for k in range(0, len(numbers), 3)]
    for k in range(0, len(corners), 3):
        yield [points[i] for i in corners[k:k + 3]]


def shaded(corners, colour):
    (ax, ay, az), (bx, by, bz), (cx, cy, cz) = corners
    u, v = (bx - ax, by - ay, bz - az), (cx - ax, cy - ay, cz - az)
    normal = (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])
    length = math.sqrt(sum(n * n for n in normal)) or 1
    facing = 1 if normal[2] >= 0 else -1
    light = 0.45 + 0.55 * max(0, facing * sum(n * l for n, l in zip(normal, LIGHT)) / length)
    return '#%02x%02x%02x' % tuple(int(255 * min(1, c * light * (1 if facing > 0 else 0.8))) for c in colour)


def path_of(points, closed):
    return 'M' + 'L'.join('%.3f %.3f' % (p[0], -p[1]) for p in points) + ('Z' if closed else '')


def strands(placement, view):
    geometry = placement.geometry
    numbers, colours, first = geometry.get('p'), geometry.get('pcol'), 0
    for count in geometry.get('nvertices'):
        points = [view.seen(placed(numbers[3 * i:3 * i + 3], placement.world)) for i in range(first, first + count)]
        colour = tuple(colours[3 * first:3 * first + 3]) if colours is not None else (0.4, 0.3, 0.2)
        yield points, '#%02x%02x%02x' % tuple(int(255 * max(0, min(1, c))) for c in colour)
        first += count


def draw(scene, view, edges):
    """(depth, svg text) of all that is seen, and the points for the frame."""
    pieces, points, known = [], [], {}
    for placement in obx.placements(scene):
        kind = placement.geometry.name
        if kind == 'triangles':
            colour = COLOURS[known.setdefault(placement.object.name, len(known)) % len(COLOURS)]
            for corners in triangles(placement, view):
                fill = shaded(corners, colour)
                pieces.append((sum(c[2] for c in corners), '<path d="%s" fill="%s" stroke="%s"/>'
                               % (path_of(corners, True), fill, '#445' if edges else fill)))
                points += corners
        elif kind == 'orv_curves':
            for line, colour in strands(placement, view):
                pieces.append((3 * max((p[2] for p in line), default=0),
                               '<path d="%s" fill="none" stroke="%s" class="hair"/>' % (path_of(line, False), colour)))
                points += line
    return pieces, points


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('scene')
    parser.add_argument('picture')
    parser.add_argument('--width', type=int, default=900)
    parser.add_argument('--turn', type=float, default=25)
    parser.add_argument('--lift', type=float, default=25)
    parser.add_argument('--edges', action='store_true', help='draw the edges of triangles')
    options = parser.parse_args()
    pieces, points = draw(obx.read(options.scene), View(options.turn, options.lift), options.edges)
    if not points:
        sys.exit('nothing to draw in %s' % options.scene)
    left, right = min(p[0] for p in points), max(p[0] for p in points)
    low, high = min(p[1] for p in points), max(p[1] for p in points)
    margin = 0.03 * max(right - left, high - low)
    box = left - margin, -high - margin, right - left + 2 * margin, high - low + 2 * margin
    with open(options.picture, 'w', encoding='utf-8', newline='\n') as file:
        file.write('<svg xmlns="http://www.w3.org/2000/svg" width="%d" viewBox="%.3f %.3f %.3f %.3f">\n' % (options.width, *box))
        pixel = box[2] / options.width
        file.write('<style>path { stroke-width: %.4f; stroke-linejoin: round } .hair { stroke-width: %.4f }</style>\n<g>\n'
                   % (0.6 * pixel, 2.5 * pixel))
        for _, text in sorted(pieces, key=lambda piece: piece[0]):
            file.write(text + '\n')
        file.write('</g>\n</svg>\n')


if __name__ == '__main__':
    main()
