"""Compares what stands in a scene file with a mesh that Maya evaluated: points, triangles, UVs, normals, groups, matrix."""
import math

from truth import placed, rows, turned

MATRIX = 1e-4   # decomposed and recomposed by the exporters
NORMAL = 2e-3
UV = 1.5e-4


class Welder:
    """Numbers points so that points within a distance of one another bear the same number."""

    def __init__(self, distance):
        self.distance, self.cell = distance, distance * 2
        self.known, self.cells, self.points = {}, {}, []

    def number(self, point, may_add=True):
        if point in self.known:
            return self.known[point]
        key = tuple(math.floor(c / self.cell) for c in point)
        best, found = self.distance, None
        for x in (-1, 0, 1):
            for y in (-1, 0, 1):
                for z in (-1, 0, 1):
                    for i in self.cells.get((key[0] + x, key[1] + y, key[2] + z), ()):
                        away = max(abs(a - b) for a, b in zip(self.points[i], point))
                        if away <= best:
                            best, found = away, i
        if found is None:
            if not may_add:
                return None
            found = len(self.points)
            self.points.append(point)
            self.cells.setdefault(key, []).append(found)
        self.known[point] = found
        return found


def corners_of(placement):
    """Triangles of an object of the scene file: three (point, normal, uv) in world space."""
    geometry, world = placement.geometry, placement.world
    points = [placed(p, world) for p in rows(geometry.get('vertices'), 3)]
    normals = [turned(n, world) for n in rows(geometry.get('normals') or (), 3)]
    uvs = rows(geometry.get('uv_tex') or (), 2)
    indices = geometry.get('triangles')
    return [[(points[i], normals[i] if normals else None, uvs[i] if uvs else None) for i in indices[k:k + 3]]
            for k in range(0, len(indices), 3)]


def rotated(numbers):
    """The same corners in the same turn, the smallest first; and where that one stood."""
    start = min(range(len(numbers)), key=lambda k: (numbers[k], numbers[(k + 1) % len(numbers)]))
    return tuple(numbers[start:] + numbers[:start]), start


def spread(a, b):
    return max(abs(x - y) for x, y in zip(a, b))


def is_uv_off(own, expected):
    return spread(own, expected) > UV + 1e-6 * max(map(abs, expected))


class Comparison:
    def __init__(self, truth, placements):
        self.truth = truth
        self.fails = []
        size = max([abs(c) for face in truth.faces for p, _, _ in face for c in p] or [1])
        stretch = max(1, *(math.hypot(*truth.world[4 * r:4 * r + 3]) for r in range(3)))
        # rounding of the truth, and six digits in the matrices of the scene file
        self.welder = Welder(truth.tolerance * stretch + 1e-5 * size)
        self.parts = [corners_of(p) for p in placements]
        self.compare_matrix(placements[0].world)
        own = self.own_triangles()
        if truth.triangulated:
            self.compare_triangles(own)
        else:
            self.compare_polygons(own)

    def fail(self, what, *values):
        self.fails.append(what % values)

    def compare_matrix(self, world):
        expected = self.truth.world
        for row in range(4):
            biggest = max(1, *(abs(c) for c in expected[4 * row:4 * row + 4]))
            off = spread(world[4 * row:4 * row + 4], expected[4 * row:4 * row + 4])
            if off > MATRIX * biggest:
                self.fail('row %d of the world matrix is off by %g', row, off)
                return

    def own_triangles(self):
        """(numbers, corners, part) of every triangle with three different points."""
        found = []
        for part, triangles in enumerate(self.parts):
            for corners in triangles:
                numbers = [self.welder.number(corner[0]) for corner in corners]
                if len(set(numbers)) == 3:
                    found.append((numbers, corners, part))
        return found

    def compare_points(self):
        """Numbers of the truth's faces; None for a face with a point that the scene file lacks."""
        numbered, lost = [], 0
        for face in self.truth.faces:
            numbers = [self.welder.number(corner[0], False) for corner in face]
            lost += numbers.count(None)
            numbered.append(None if None in numbers else numbers)
        if lost:
            self.fail('%d of %d corners are at no vertex of the scene file', lost, sum(map(len, self.truth.faces)))
        return numbered

    def compare_triangles(self, own):
        expected = {}
        for numbers, face, group in zip(self.compare_points(), self.truth.faces, self.truth.groups):
            if numbers is not None and len(set(numbers)) == 3:
                key, start = rotated(numbers)
                expected.setdefault(key, []).append((face[start:] + face[:start], group))
        count = sum(map(len, expected.values()))
        matched, uv_off, normal_off, pairs, worst = 0, 0, 0, set(), 0.0
        for numbers, corners, part in own:
            key, start = rotated(numbers)
            choices = expected.get(key)
            if not choices:
                continue
            corners = corners[start:] + corners[:start]
            best = min(choices, key=lambda c: sum(spread(a[2], b[2]) for a, b in zip(corners, c[0]) if a[2] and b[2]))
            choices.remove(best)
            matched += 1
            pairs.add((best[1], part))
            for a, b in zip(corners, best[0]):
                uv_off += b[2] is not None and (a[2] is None or is_uv_off(a[2], b[2]))
                if b[1] is not None:
                    away = spread(a[1], b[1]) if a[1] else 2.0
                    worst = max(worst, away)
                    normal_off += away > NORMAL
        if matched != count or matched != len(own):
            self.fail('%d triangles of the truth and %d of the scene file, %d the same', count, len(own), matched)
        self.tell_corners(uv_off, normal_off, worst, 3 * matched)
        self.compare_groups(pairs)

    def tell_corners(self, uv_off, normal_off, worst, corners):
        if uv_off:
            self.fail('%d of %d corners with other UVs', uv_off, corners)
        if normal_off:
            self.fail('%d of %d corners with other normals, the worst by %.4f', normal_off, corners, worst)

    def compare_groups(self, pairs):
        groups, parts = {g for g, _ in pairs}, {p for _, p in pairs}
        if not (len(groups) == len(parts) == len(pairs)):
            self.fail('material groups %s lie in parts %s as %s', sorted(groups), sorted(parts), sorted(pairs))

    def compare_polygons(self, own):
        """Any cut of the polygons will do: each needs its number of triangles, turning the way it turns."""
        numbered = self.compare_points()
        at_corner = {}
        for number, face in enumerate(numbered):
            for corner in face or ():
                at_corner.setdefault(corner, set()).add(number)
        filled, uv_off, astray, pairs = [0] * len(numbered), 0, 0, set()
        for numbers, corners, part in own:
            faces = set.intersection(*(at_corner.get(n, set()) for n in numbers))
            place = next((f for f in sorted(faces) if turns_alike(numbered[f], numbers)
                          and filled[f] < len(numbered[f]) - 2), None)
            if place is None:
                astray += 1
                continue
            filled[place] += 1
            pairs.add((self.truth.groups[place], part))
            face = self.truth.faces[place]
            for number, corner in zip(numbers, corners):
                choices = [face[k][2] for k, n in enumerate(numbered[place]) if n == number]
                uv_off += choices[0] is not None and all(is_uv_off(corner[2], uv) for uv in choices)
        wanting = sum(1 for f, n in enumerate(numbered) if n is None or filled[f] != len(n) - (2 + len(n) - len(set(n))))
        if wanting or astray:
            self.fail('%d of %d polygons not filled, %d triangles astray', wanting, len(numbered), astray)
        self.tell_corners(uv_off, 0, 0, 3 * len(own))
        self.compare_groups(pairs)


def turns_alike(polygon, corners):
    places = [polygon.index(c) for c in corners]
    return sum(1 for a, b in zip(places, places[1:] + places[:1]) if b < a) == 1
