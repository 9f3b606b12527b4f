"""Meshes as Maya evaluated them: exports of Maya scenes in JSON, glTF, FBX and PLY, in world space and centimetres.

A truth mesh is a list of faces; a face is a list of corners (point, normal or None, uv or None) with the number of its
material group. Where `triangulated`, the faces are Maya's own triangles.
"""
import array
import base64
import json
import os
import re
import struct
import urllib.parse

import fbx

IDENTITY = (1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)


class TruthMesh:
    """`tolerance` is what rounding took from the points, in the space of the node."""

    def __init__(self, node, world, triangulated=True, tolerance=1.5e-4):
        self.node, self.world, self.triangulated, self.tolerance = node, world, triangulated, tolerance
        self.faces, self.groups = [], []

    def moved(self, world):
        """The same mesh at another place."""
        back = inverse(self.world)
        mesh = TruthMesh(self.node, world, self.triangulated, self.tolerance)
        for corners, group in zip(self.faces, self.groups):
            mesh.add([(placed(placed(p, back), world), n and turned(turned(n, back), world), uv) for p, n, uv in corners], group)
        return mesh

    def add(self, corners, group):
        self.faces.append(corners)
        self.groups.append(group)


def rows(values, width):
    return [tuple(values[i:i + width]) for i in range(0, len(values) - width + 1, width)]


def placed(point, m):
    return tuple(point[0] * m[k] + point[1] * m[4 + k] + point[2] * m[8 + k] + m[12 + k] for k in range(3))


def turned(normal, m):
    """A normal through the inverse transpose of the matrix, of length 1."""
    a = [m[0:3], m[4:7], m[8:11]]
    cofactors = [[a[(i + 1) % 3][(j + 1) % 3] * a[(i + 2) % 3][(j + 2) % 3]
                  - a[(i + 1) % 3][(j + 2) % 3] * a[(i + 2) % 3][(j + 1) % 3] for j in range(3)] for i in range(3)]
    sign = -1 if sum(a[0][k] * cofactors[0][k] for k in range(3)) < 0 else 1
    n = [sign * sum(normal[i] * cofactors[i][k] for i in range(3)) for k in range(3)]
    length = sum(c * c for c in n) ** 0.5
    return tuple(c / length for c in n) if length else tuple(n)


def inverse(m):
    """The inverse of an affine matrix."""
    a = [m[0:3], m[4:7], m[8:11]]
    cofactors = [[a[(i + 1) % 3][(j + 1) % 3] * a[(i + 2) % 3][(j + 2) % 3]
                  - a[(i + 1) % 3][(j + 2) % 3] * a[(i + 2) % 3][(j + 1) % 3] for j in range(3)] for i in range(3)]
    size = sum(a[0][k] * cofactors[0][k] for k in range(3))
    found = [cofactors[c][r] / size if c < 3 else 0 for r in range(3) for c in range(4)]
    return tuple(found) + tuple(-sum(m[12 + r] * cofactors[c][r] / size for r in range(3)) for c in range(3)) + (1,)


def read_json(path):
    """Meshes of a file of schema "truth.v1"; none for its skins."""
    with open(path, encoding='utf-8') as file:
        document = json.load(file)
    if document.get('schema') != 'truth.v1':
        raise ValueError('%s is of no known schema' % path)
    found = []
    for entry in document.get('meshes', ()):
        mesh = TruthMesh(entry['node'], tuple(entry['world']))
        for number, group in enumerate(entry['groups']):
            points, indices = rows(group['positions'], 3), group['triangles']
            normals, uvs = rows(group.get('normals') or (), 3), rows(group.get('uvs') or (), 2)
            for k in range(0, len(indices), 3):
                mesh.add([(placed(points[i], mesh.world), turned(normals[i], mesh.world) if normals else None,
                           uvs[i] if uvs else None) for i in indices[k:k + 3]], number)
        found.append(mesh)
    return found + polygons_of(document)


def polygons_of(document):
    """Polygon lists: one entry for each material of a node."""
    found = {}
    for entry in document.get('polys', ()):
        mesh = found.setdefault(entry['node'], TruthMesh(entry['node'], tuple(entry['world']), False))
        points, uvs = rows(entry['points'], 3), rows(entry.get('uvs') or (), 2)
        numbers = entry.get('uvs_indices') or range(len(entry['indices']))
        at, group = 0, len(set(mesh.groups))
        for count in entry['counts']:
            mesh.add([(placed(points[entry['indices'][c]], mesh.world), None, uvs[numbers[c]] if uvs else None)
                      for c in range(at, at + count)], group)
            at += count
    return list(found.values())


def quaternion_matrix(q):
    x, y, z, w = q
    return (1 - 2 * (y * y + z * z), 2 * (x * y + z * w), 2 * (x * z - y * w), 0,
            2 * (x * y - z * w), 1 - 2 * (x * x + z * z), 2 * (y * z + x * w), 0,
            2 * (x * z + y * w), 2 * (y * z - x * w), 1 - 2 * (x * x + y * y), 0, 0, 0, 0, 1)


def product(a, b):
    return tuple(sum(a[4 * r + k] * b[4 * k + c] for k in range(4)) for r in range(4) for c in range(4))


class Gltf:
    """As much of glTF 2.0 as the exports use; v of the file counts downwards."""
    WIDTHS = {'SCALAR': 1, 'VEC2': 2, 'VEC3': 3, 'VEC4': 4}
    LETTERS = {5121: 'B', 5123: 'H', 5125: 'I', 5126: 'f'}

    def __init__(self, path):
        self.folder = os.path.dirname(path)
        with open(path, encoding='utf-8') as file:
            self.document = json.load(file)
        self.buffers = [self.buffer(entry) for entry in self.document.get('buffers', ())]

    def buffer(self, entry):
        if entry['uri'].startswith('data:'):
            return base64.b64decode(entry['uri'].split(',', 1)[1])
        with open(os.path.join(self.folder, urllib.parse.unquote(entry['uri'])), 'rb') as file:
            return file.read()

    def values(self, number):
        accessor = self.document['accessors'][number]
        view = self.document['bufferViews'][accessor['bufferView']]
        width, letter = self.WIDTHS[accessor['type']], self.LETTERS[accessor['componentType']]
        at = view.get('byteOffset', 0) + accessor.get('byteOffset', 0)
        size = struct.calcsize('<%d%s' % (width, letter))
        stride = view.get('byteStride', size)
        data = self.buffers[view['buffer']]
        return [struct.unpack_from('<%d%s' % (width, letter), data, at + k * stride) for k in range(accessor['count'])]

    def meshes(self):
        found = []
        waiting = [(n, IDENTITY) for n in self.document['scenes'][self.document.get('scene', 0)]['nodes']]
        while waiting:
            number, above = waiting.pop()
            node = self.document['nodes'][number]
            world = product(self.local(node), above)
            waiting.extend((child, world) for child in node.get('children', ()))
            if 'mesh' in node and 'skin' not in node:
                found.append(self.mesh(node, world))
        return found

    @staticmethod
    def local(node):
        if 'matrix' in node:
            return tuple(node['matrix'])
        sx, sy, sz = node.get('scale', (1, 1, 1))
        scale = (sx, 0, 0, 0, 0, sy, 0, 0, 0, 0, sz, 0, 0, 0, 0, 1)
        turned_by = quaternion_matrix(node.get('rotation', (0, 0, 0, 1)))
        moved = IDENTITY[:12] + tuple(node.get('translation', (0, 0, 0))) + (1,)
        return product(product(scale, turned_by), moved)

    def mesh(self, node, world):
        mesh = TruthMesh(node['name'], world)
        for number, part in enumerate(self.document['meshes'][node['mesh']]['primitives']):
            names = part['attributes']
            points = self.values(names['POSITION'])
            normals = self.values(names['NORMAL']) if 'NORMAL' in names else None
            uvs = self.values(names['TEXCOORD_0']) if 'TEXCOORD_0' in names else None
            indices = [value[0] for value in self.values(part['indices'])]
            for k in range(0, len(indices), 3):
                mesh.add([(placed(points[i], world), turned(normals[i], world) if normals else None,
                           (uvs[i][0], 1 - uvs[i][1]) if uvs else None) for i in indices[k:k + 3]], number)
        return mesh


def read_ply(path, node, world):
    """Triangles of a binary PLY with x y z u v nx ny nz, in the space of its node."""
    with open(path, 'rb') as file:
        data = file.read()
    end = re.search(rb'end_header\r?\n', data).end()
    head, body = data[:end], data[end:]
    count = int(re.search(rb'element vertex (\d+)', head).group(1))
    faces = int(re.search(rb'element face (\d+)', head).group(1))
    names = re.findall(rb'property float (\w+)', head)
    values = array.array('f')
    values.frombytes(body[:count * len(names) * 4])
    corners = rows(values, len(names))
    place = [names.index(n) for n in (b'x', b'y', b'z')]
    across = [names.index(n) for n in (b'nx', b'ny', b'nz')] if b'nx' in names else None
    flat = [names.index(n) for n in (b'u', b'v')] if b'u' in names else None
    if len(body) != count * len(names) * 4 + faces * 13:
        raise ValueError('%s holds %d bytes of vertices and triangles' % (path, len(body)))
    mesh = TruthMesh(node, world, tolerance=1e-5)
    at = count * len(names) * 4
    made = [(placed([c[k] for k in place], world), turned([c[k] for k in across], world) if across else None,
             tuple(c[k] for k in flat) if flat else None) for c in corners]
    for _ in range(faces):
        size, = struct.unpack_from('<B', body, at)
        mesh.add([made[i] for i in struct.unpack_from('<%di' % size, body, at + 1)], 0)
        at += 1 + 4 * size
    return mesh


PLACED = re.compile(r'# Maya Transform : (\S+)\s+Transform\s+\[([^\]]*)\]')
LIT = re.compile(r'Transform\s+\[([^\]]*)\]\s+# Maya Geometry : (\S+)\|[^|\s]+\s')  # shapes that give light


def read_matrices(path):
    """{DAG path of a transform: world matrix} of a text scene of the PBRT exporter; moving ones are left out."""
    with open(path, encoding='utf-8') as file:
        text = file.read()
    written = [match.groups() for match in PLACED.finditer(text)]
    written += [match.groups()[::-1] for match in LIT.finditer(text)]
    return {node: tuple(float(number) for number in numbers.split()) for node, numbers in written}


def read_fbx(path):
    """Polygons of an FBX file, which are compared without normals."""
    found = []
    for node, world, polygons, groups in fbx.meshes(path):
        mesh = TruthMesh(node, world, False)
        for polygon, group in zip(polygons, groups):
            mesh.add([(placed(point, world), None, uv) for point, _, uv in polygon], group)
        found.append(mesh)
    return found


def read_exported_places(path):
    """{name of a node: world matrix} of an exporter that writes one placement for each instance."""
    with open(path, encoding='utf-8') as file:
        return {item['name']: tuple(item['transform']) for item in json.load(file)['items']}


def read(path):
    """Meshes of a truth by its name's ending; None for a kind that is not read here."""
    if path.endswith('.fbx'):
        return read_fbx(path)
    if path.endswith('.truth.json'):
        return read_json(path)
    if path.endswith('.gltf'):
        return Gltf(path).meshes()
    return None
