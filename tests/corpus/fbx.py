"""Reads meshes and their places from binary FBX files of versions 7.x, as exporters of Maya write them: world space, centimetres.

    for node, world, polygons, groups in fbx.meshes(path): ...    # polygons: lists of (point, normal or None, uv or None)

`groups` has the number of each polygon's material.

Points and normals are in the space of the node.
"""
import math
import struct
import zlib

MAGIC = b'Kaydara FBX Binary  \0'
IDENTITY = (1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)
SCALARS = {'Y': '<h', 'C': '<?', 'I': '<i', 'F': '<f', 'D': '<d', 'L': '<q'}
ARRAYS = {'f': 'f', 'd': 'd', 'l': 'q', 'i': 'i', 'b': 'b'}


class Record:
    def __init__(self, name, properties, children):
        self.name, self.properties, self.children = name, properties, children

    def all(self, name):
        return [child for child in self.children if child.name == name]

    def value(self, *path):
        """The first property of the record at a path of names; none where there is no such record."""
        record = self
        for name in path:
            record = next(iter(record.all(name)), None)
            if record is None:
                return None
        return record.properties[0]


class Parser:
    def __init__(self, data):
        self.data = data
        if not data.startswith(MAGIC):
            raise ValueError('no binary FBX file')
        wide = struct.unpack_from('<I', data, 23)[0] >= 7500
        self.head = '<QQQB' if wide else '<IIIB'

    def record(self, at):
        """(record or none at the end of a list, offset behind it)."""
        end, count, _, length = struct.unpack_from(self.head, self.data, at)
        at += struct.calcsize(self.head)
        if end == 0:
            return None, at
        name = self.data[at:at + length].decode('latin-1')
        at += length
        properties = []
        for _ in range(count):
            value, at = self.property(at)
            properties.append(value)
        children = []
        while at < end:
            child, at = self.record(at)
            if child is None:
                break
            children.append(child)
        return Record(name, properties, children), end

    def property(self, at):
        kind = chr(self.data[at])
        at += 1
        if kind in SCALARS:
            return struct.unpack_from(SCALARS[kind], self.data, at)[0], at + struct.calcsize(SCALARS[kind])
        if kind in 'SR':
            size, = struct.unpack_from('<I', self.data, at)
            return self.data[at + 4:at + 4 + size], at + 4 + size
        count, encoding, size = struct.unpack_from('<III', self.data, at)
        raw = self.data[at + 12:at + 12 + size]
        return list(struct.unpack('<%d%s' % (count, ARRAYS[kind]), zlib.decompress(raw) if encoding else raw)), at + 12 + size


def parse(path):
    with open(path, 'rb') as file:
        parser = Parser(file.read())
    at, found = 27, []
    while True:
        record, at = parser.record(at)
        if record is None:
            return Record('', [], found)
        found.append(record)


def settings(model):
    return {entry.properties[0].decode('latin-1'): entry.properties[4:] for place in model.all('Properties70')
            for entry in place.all('P')}


def product(a, b):
    return tuple(sum(a[4 * r + k] * b[4 * k + c] for k in range(4)) for r in range(4) for c in range(4))


def moved(v, sign=1):
    return IDENTITY[:12] + tuple(sign * c for c in v) + (1,)


def turned(v):
    world = IDENTITY
    for axis, degrees in enumerate(v):
        c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
        i, j = (axis + 1) % 3, (axis + 2) % 3
        m = list(IDENTITY)
        m[5 * i] = m[5 * j] = c
        m[4 * i + j], m[4 * j + i] = s, -s
        world = product(world, tuple(m))
    return world


def local(model):
    """Rows of vectors on the left; rotations in the order x, y, z."""
    found = settings(model)

    def get(name, default=(0, 0, 0)):
        return found.get(name, default)
    scale = get('Lcl Scaling', (1, 1, 1))
    matrix = moved(get('ScalingPivot'), -1)
    for step in ((scale[0], 0, 0, 0, 0, scale[1], 0, 0, 0, 0, scale[2], 0, 0, 0, 0, 1), moved(get('ScalingPivot')),
                 moved(get('ScalingOffset')), moved(get('RotationPivot'), -1), turned(get('Lcl Rotation')),
                 turned(get('PreRotation')), moved(get('RotationPivot')), moved(get('RotationOffset')),
                 moved(get('Lcl Translation'))):
        matrix = product(matrix, step)
    return matrix


def polygons(geometry):
    """Lists of corners; normals and texture coordinates are given per corner or per vertex."""
    points = geometry.value('Vertices')
    corners, found, polygon = geometry.value('PolygonVertexIndex'), [], []
    layers = [layer(geometry, 'LayerElementNormal', 'Normals', 'NormalsIndex', 3),
              layer(geometry, 'LayerElementUV', 'UV', 'UVIndex', 2)]
    for corner, index in enumerate(corners):
        vertex = index if index >= 0 else -1 - index
        polygon.append((tuple(points[3 * vertex:3 * vertex + 3]),) + tuple(get(corner, vertex) for get in layers))
        if index < 0:
            found.append(polygon)
            polygon = []
    return found


def materials(geometry, count):
    place = next(iter(geometry.all('LayerElementMaterial')), None)
    numbers = place.value('Materials') if place else [0]
    return numbers if len(numbers) == count else numbers[:1] * count


def layer(geometry, element, values, indices, width):
    place = next(iter(geometry.all(element)), None)
    if place is None or not place.value(values):
        return lambda corner, vertex: None
    numbers, numbered = place.value(values), place.value(indices)
    by_corner = place.value('MappingInformationType') == b'ByPolygonVertex'

    def get(corner, vertex):
        at = corner if by_corner else vertex
        at = numbered[at] if numbered else at
        return tuple(numbers[width * at:width * at + width]) if at >= 0 else None
    return get


def meshes(path):
    root = parse(path)
    objects = {record.properties[0]: record for place in root.all('Objects') for record in place.children if record.properties}
    parents = {}
    for link in (entry for place in root.all('Connections') for entry in place.all('C')):
        if link.properties[0] == b'OO':
            parents.setdefault(link.properties[1], []).append(link.properties[2])
    scale = next((settings(place).get('UnitScaleFactor') for place in root.all('GlobalSettings')), None) or (1.0,)
    unit = tuple(scale[0] if k in (0, 5, 10) else n for k, n in enumerate(IDENTITY))  # centimetres of the file's unit
    found = []
    for number, geometry in objects.items():
        if geometry.name != 'Geometry' or geometry.value('PolygonVertexIndex') is None:
            continue
        for model in parents.get(number, ()):
            if model in objects and objects[model].name == 'Model':
                name = objects[model].properties[1].split(b'\0')[0].decode('utf-8', 'replace')
                faces = polygons(geometry)
                world = product(world_of(model, objects, parents), unit)
                found.append((name, world, faces, materials(geometry, len(faces))))
    return found


def world_of(number, objects, parents):
    matrix = IDENTITY
    for _ in range(1000):
        model = objects.get(number)
        if model is None or model.name != 'Model':
            return matrix
        matrix = product(matrix, local(model))
        number = next((p for p in parents.get(number, ()) if p in objects and objects[p].name == 'Model'), None)
    raise ValueError('a model is its own parent')
