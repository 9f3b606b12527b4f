"""A strict reader of scene files: every byte is accounted for, or `SyntaxFault` tells where it stopped.

    scene = obx.read(path)                 # or obx.parse(bytes, indented=False)
    for fault in obx.faults(scene): ...    # references, index ranges, finite numbers, order of blocks
    for use in obx.placements(scene): ...  # every object of the tree with its world matrix

A scene is a `Block` of kind "scene" whose `items` are `Block`s and `Item`s in file order. Names are texts (bytes beyond
UTF-8 as surrogates). Binary arrays become `array.array`s without a look at a single number, so files of 100 MB are read
in seconds. With `indented` the blanks that the debug layout puts in front of lines are ignored.

    python3 obx.py FILE...                 # reads and checks files; prints what is wrong
"""
import array
import functools
import math
import re
import sys

HEADER = (b'//---orvane:dal:7---\n//---import:dal:1---\n//---id:1---\n// This is a Vistrel scene file\n\n')
BANNER = 'Vistrel SceneApi oo 7.3.37  (built Fri Feb  2 07:20:39 2018)'
IDENTITY = (1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0, 1.0)

NAME = rb'(?:"([^"\n\r\x80-\xff]*)"|xX((?:[0-9a-f][0-9a-f])+))'
NUMBER = rb'-?(?:[0-9]+(?:\.[0-9]+)?(?:e[-+][0-9]+)?|nan|inf)'
WORD = re.compile(rb'\n?(#?[a-z]+(?: map| material| object)?)')
LINES = {
    'print': re.compile(rb'#print "([^\n]*)"\n'),
    'error': re.compile(rb'#error "([^\n]*)"\n'),
    'version': re.compile(rb'version ([0-9]+)\n\n'),
    'progress': re.compile(rb'progress ' + NAME + rb' (-?[0-9]+\.[0-9]{3})\n\n'),
    'flags': re.compile(rb'flags ([0-9]+)\n'),
    'id': re.compile(rb'id ([0-9]+)\n'),
    'attribute': re.compile(rb'attribute ' + NAME + rb' ' + NAME + rb'\n'),
    'transform': re.compile(rb'transform (' + NUMBER + rb'(?: ' + NUMBER + rb'){15})\n'),
    'material': re.compile(rb'material ' + NAME + rb'\n'),
}
OPENERS = {
    'load': re.compile(rb'load ' + NAME + rb' \{\n'),
    'camera': re.compile(rb'\ncamera ' + NAME + rb' \{\n'),
    '#define material': re.compile(rb'\n#define material ' + NAME + rb' \{\n'),
    '#define object': re.compile(rb'#define object ' + NAME + rb' \{\n'),
    'group': re.compile(rb'\ngroup ' + NAME + rb' \{\n'),
    'object': re.compile(rb'object ' + NAME + rb' \{\n'),
    'geometry': re.compile(rb'geometry ' + NAME + rb' \{\n'),
    'animation': re.compile(rb'animation ' + NAME + rb' ' + NAME + rb' \{\n'),
    'material': re.compile(rb'material ' + NAME + rb' \{\n'),
}
# block: what may stand in it (parameters apart)
CHILDREN = {
    'scene': {'print', 'error', 'version', 'progress', 'load', 'camera', '#define material', '#define object', 'group'},
    'load': set(),
    'camera': {'transform', 'animation'},
    'material': {'surface', 'flags'},
    'group': {'flags', 'attribute', 'transform', 'animation', 'object', 'error', 'group'},
    'object': {'id', 'geometry', 'material'},
    'geometry': set(),
    'animation': {'error'},
    'shader': set(),
}
QUOTED_PARAMETERS = {'load', 'geometry', 'animation', 'shader'}
KEYWORD_PARAMETERS = {'camera'}
PARAMETER = re.compile(NAME + rb' (! )?')
KEYWORD = re.compile(rb'(reflection map|[a-z_][a-z_0-9]*) ')
NAME_VALUE = re.compile(NAME)
NUMBERS = re.compile(NUMBER + rb'(?: ' + NUMBER + rb')*')
LIST_TEXT = re.compile(rb'[-+0-9.e,\n ]*')
LETTERS = {0x63: 'f', 0x66: 'f', 0x69: 'i', 0x72: 'd'}  # c f i r


class SyntaxFault(Exception):
    """The file does not follow the syntax; `offset` is the byte where it stops doing so."""

    def __init__(self, offset, text):
        super().__init__('byte %d: %s' % (offset, text))
        self.offset = offset


class Item:
    """A statement: `kind` is its word or "parameter"; `value` a text, bool, number, tuple, array or shader block."""
    __slots__ = ('kind', 'name', 'value', 'offset')

    def __init__(self, kind, name, value, offset):
        self.kind, self.name, self.value, self.offset = kind, name, value, offset

    def __repr__(self):
        return '<%s %r %r>' % (self.kind, self.name, self.value)


class Block:
    """A braced block. `kind` as in CHILDREN; `type` of animations; `defines` for the #define forms."""
    __slots__ = ('kind', 'name', 'type', 'defines', 'items', 'offset', 'closing')

    def __init__(self, kind, name, offset, defines=False, type=None, closing=b'}\n'):
        self.kind, self.name, self.offset = kind, name, offset
        self.defines, self.type, self.closing, self.items = defines, type, closing, []

    def __repr__(self):
        return '<%s %r, %d items>' % (self.kind, self.name, len(self.items))

    def all(self, kind):
        return [item for item in self.items if item.kind == kind]

    def first(self, kind):
        return next((item for item in self.items if item.kind == kind), None)

    def parameters(self):
        """Names of the parameters in file order, repeated ones repeated."""
        return [item.name for item in self.items if item.kind == 'parameter']

    def get(self, name, default=None):
        """Value of the first parameter of that name."""
        return next((i.value for i in self.items if i.kind == 'parameter' and i.name == name), default)

    def connected(self, name):
        """The shader block that is connected to the parameter, or none."""
        return next((i.value for i in self.items if i.kind == 'connection' and i.name == name), None)

    def groups(self):
        return self.all('group')

    def group(self, *names):
        """The sub-group at the end of a chain of names."""
        found = self
        for name in names:
            found = next(g for g in found.groups() if g.name == name)
        return found

    @property
    def flags(self):
        item = self.first('flags')
        return None if item is None else item.value

    @property
    def transform(self):
        item = self.first('transform')
        return None if item is None else item.value

    @property
    def attributes(self):
        return {item.name: item.value for item in self.all('attribute')}


def text(raw):
    return raw.decode('utf-8', 'surrogateescape')


@functools.lru_cache(100000)
def number_of(token):
    """An int where no point and no exponent stand ("%d" and "%g" of whole numbers are alike); None for another spelling."""
    number, written = float(token), token.decode()
    if math.isfinite(number) and written not in ('%g' % number, '%.16f' % number):
        if not (written.lstrip('-').isdigit() and '%d' % int(written) == written):
            return None
    return int(written) if written.lstrip('-').isdigit() else number


class Reader:
    def __init__(self, data, indented):
        self.data = data
        self.at = 0
        self.indented = indented
        self.stack = [Block('scene', '', 0)]

    def fail(self, expected):
        found = bytes(self.data[self.at:self.at + 48])
        raise SyntaxFault(self.at, 'expected %s, found %r' % (expected, found))

    def name(self, match, group):
        """The name that a NAME of the pattern holds; the hexadecimal form is for unsafe names only."""
        plain, hexadecimal = match.group(group), match.group(group + 1)
        if plain is not None:
            return text(plain)
        raw = bytes.fromhex(hexadecimal.decode())
        if not any(byte in (10, 13, 34) or byte >= 0x80 for byte in raw):
            raise SyntaxFault(match.start(group + 1), 'a safe name in hexadecimal form: %r' % raw)
        return text(raw)

    def take(self, literal):
        if not self.data.startswith(literal, self.at):
            self.fail(repr(literal))
        self.at += len(literal)

    def read(self):
        self.take(HEADER)
        end = len(self.data)
        while self.at < end:
            block = self.stack[-1]
            if self.data[self.at] == 0x7d and len(self.stack) > 1:
                self.take(block.closing)
                self.stack.pop()
            elif block.kind in QUOTED_PARAMETERS and self.data[self.at] in b'"x':
                self.quoted_parameter(block)
            else:
                self.statement(block)
        if len(self.stack) > 1:
            raise SyntaxFault(end, 'the file ends inside the %s opened at byte %d'
                              % (self.stack[-1].kind, self.stack[-1].offset))
        return self.stack[0]

    def open(self, parent, block):
        parent.items.append(block)
        self.stack.append(block)

    def statement(self, block):
        word = WORD.match(self.data, self.at)
        kind = word.group(1).decode() if word else ''
        bare = kind.lstrip('#')
        if kind == 'surface' and 'surface' in CHILDREN[block.kind]:
            return self.surface(block)
        if kind in OPENERS and kind in CHILDREN[block.kind]:
            match = OPENERS[kind].match(self.data, self.at)
            if match:
                offset, self.at = self.at, match.end()
                kind_of_block = kind.rsplit(' ', 1)[-1]
                type_of_block = self.name(match, 3) if kind == 'animation' else None
                return self.open(block, Block(kind_of_block, self.name(match, 1), offset, '#define' in kind, type_of_block))
        if bare in LINES and bare in CHILDREN[block.kind]:
            match = LINES[bare].match(self.data, self.at)
            if match:
                return self.line(block, bare, match)
        if block.kind in KEYWORD_PARAMETERS and bare not in CHILDREN[block.kind]:
            return self.keyword_parameter(block)
        return self.fail('a statement of a %s' % block.kind)

    def line(self, block, kind, match):
        name, value = None, None
        if kind in ('print', 'error'):
            value = text(match.group(1))
        elif kind in ('version', 'flags', 'id'):
            value = self.whole(match.group(1), match.start(1))
        elif kind == 'transform':
            value = tuple(self.general(token, match.start(1)) for token in match.group(1).split(b' '))
        elif kind == 'progress':
            name, value = self.name(match, 1), float(match.group(3))
        elif kind == 'attribute':
            name, value = self.name(match, 1), self.name(match, 3)
        else:
            name = self.name(match, 1)
        block.items.append(Item(kind, name, value, self.at))
        self.at = match.end()

    def whole(self, token, offset):
        if b'%d' % int(token) != token or int(token) > 0xffffffff:
            raise SyntaxFault(offset, 'no unsigned 32-bit number: %r' % token)
        return int(token)

    @staticmethod
    def general(token, offset):
        """The number of a token as %g, %d or %16.16f write it."""
        number = number_of(token)
        if number is None:
            raise SyntaxFault(offset, 'no number as the formats write it: %s' % token.decode())
        return number

    def surface(self, block):
        offset = self.at
        self.take(b'surface ')
        self.shader(block, Item('surface', None, None, offset), b'}\n')

    def shader(self, block, item, closing):
        match = NAME_VALUE.match(self.data, self.at)
        if not match:
            self.fail('the type of a shader')
        shader = Block('shader', self.name(match, 1), self.at, closing=closing)
        self.at = match.end()
        self.take(b' {\n')
        item.value = shader
        block.items.append(item)
        self.stack.append(shader)

    def quoted_parameter(self, block):
        match = PARAMETER.match(self.data, self.at)
        if not match:
            self.fail('a parameter')
        item = Item('connection' if match.group(3) else 'parameter', self.name(match, 1), None, self.at)
        self.at = match.end()
        if item.kind == 'connection':
            return self.shader(block, item, b'},\n')
        return self.value(block, item, b',\n')

    def keyword_parameter(self, block):
        match = KEYWORD.match(self.data, self.at)
        if not match:
            self.fail('a parameter or a statement of a %s' % block.kind)
        item = Item('parameter', match.group(1).decode(), None, self.at)
        self.at = match.end()
        return self.value(block, item, b'\n')

    def value(self, block, item, ending):
        data, at = self.data, self.at
        if data.startswith(b'[ ', at):
            item.value = self.list()
        elif data.startswith((b'"', b'x'), at):
            match = NAME_VALUE.match(data, at)
            if match and data.startswith(b' {\n', match.end()):
                return self.shader(block, item, b'}' + ending)
            if not match:
                self.fail('a text')
            item.value, self.at = self.name(match, 1), match.end()
        elif data.startswith((b'on', b'off'), at):
            item.value = data.startswith(b'on', at)
            self.at += 2 if item.value else 3
        else:
            match = NUMBERS.match(data, at)
            if not match:
                self.fail('a value')
            numbers = tuple(self.general(token, at) for token in match.group().split(b' '))
            item.value, self.at = numbers if len(numbers) > 1 else numbers[0], match.end()
        self.take(ending)
        block.items.append(item)
        return None

    def list(self):
        self.take(b'[ ')
        if self.data.startswith(b'\x01\x02\x03', self.at):
            values = self.binary_list()
        else:
            values = self.text_list()
        self.take(b'] ')
        return values

    def binary_list(self):
        header = self.data[self.at:self.at + 8]
        if len(header) < 8 or header[3] not in LETTERS:
            self.fail('the eight bytes in front of a binary array')
        values = array.array(LETTERS[header[3]])
        size = int.from_bytes(header[4:8], 'little') * values.itemsize
        if size > len(self.data) - self.at - 8:
            raise SyntaxFault(self.at, '%d bytes of array announced, %d left' % (size, len(self.data) - self.at - 8))
        values.frombytes(memoryview(self.data)[self.at + 8:self.at + 8 + size])
        if sys.byteorder == 'big':
            values.byteswap()
        self.at += 8 + size
        return values

    def text_list(self):
        """Elements "a b c" with commas between them, one blank at the end, nine on the first line, then eight."""
        match = LIST_TEXT.match(self.data, self.at)
        written = match.group()
        elements = []
        if written:
            if not written.rstrip(b'\n').endswith(b' '):
                self.fail('a blank after the last element')
            elements = [token.strip(b'\n') for token in written.strip(b'\n ').split(b',')]
        values = []
        for token in elements:
            values.extend(self.general(number, self.at) for number in token.strip(b' ').split(b' '))
        plain = [b' '.join(token.strip(b' ').split(b' ')) for token in elements]
        again = b''.join(token + (b' ' if index + 1 == len(plain) else b',') + (b'\n' if index and index % 8 == 0 else b'')
                         for index, token in enumerate(plain))
        # a matrix has a blank after each of its values
        if again != written.replace(b' ,', b',').replace(b'  ', b' ') and not self.indented:
            self.fail('a list with its line breaks')
        self.at = match.end()
        whole = all(isinstance(value, int) for value in values)
        return array.array('q', values) if whole else array.array('d', values)


def flattened(data):
    """The debug layout without the blanks that it puts in front of what it writes."""
    lines = [line.strip(b' ') for line in data.split(b'\n')]
    flat = b'\n'.join(lines)
    flat = re.sub(rb'(surface|reflection map|!) +(?=")', rb'\1 ', flat)
    flat = re.sub(rb'\}[ ]+,', b'},', flat)
    return flat


def parse(data, indented=False):
    return Reader(flattened(data) if indented else data, indented).read()


def read(path, indented=False):
    with open(path, 'rb') as file:
        return parse(file.read(), indented)


# --- what a readable scene must hold besides

def faults(scene, must_be_finite=True):
    """Texts that tell what is wrong with a readable scene."""
    found = []
    state = {'materials': {}, 'ids': {}}
    items = scene.items
    if [item.kind for item in items[:2]] != ['print', 'version'] or items[0].value != BANNER or items[1].value != 9:
        found.append('the file does not begin with the banner and version 9')
    order = {'load': 0, 'camera': 1, '#define material': 2, '#define object': 3, 'group': 4}
    reached = 0
    for item in items[2:]:
        kind = '#define ' + item.kind if isinstance(item, Block) and item.defines else item.kind
        if kind in order:
            if order[kind] < reached:
                found.append('byte %d: a %s after later blocks' % (item.offset, kind))
            reached = max(reached, order[kind])
        check_top(item, state, found)
    if len(scene.all('load')) > 1 or len(scene.groups()) > 1:
        found.append('more than one load block or more than one root group')
    if must_be_finite:
        check_finite(scene, found)
    return found


def check_finite(scene, found):
    waiting = [scene]
    while waiting:
        for item in waiting.pop().items:
            if isinstance(item, Block):
                waiting.append(item)
            elif isinstance(item.value, Block):
                waiting.append(item.value)
            elif not is_finite(item.value):
                found.append('byte %d: numbers of %s are not finite' % (item.offset, item.name or item.kind))


def is_finite(value):
    if isinstance(value, (tuple, array.array)):
        return math.isfinite(sum(value))
    return not isinstance(value, float) or math.isfinite(value)


def check_top(item, state, found):
    if item.kind == 'material' and item.defines:
        if item.name in state['materials']:
            found.append('byte %d: material %r is defined twice' % (item.offset, item.name))
        state['materials'][item.name] = item
        check_material(item, found)
    elif item.kind == 'object':
        identity = item.first('id')
        if identity is None or identity.value in state['ids'] or identity.value == 0:
            found.append('byte %d: definition of %r without an id of its own' % (item.offset, item.name))
        else:
            state['ids'][identity.value] = item
        if [child.kind for child in item.items] != ['id', 'geometry']:
            found.append('byte %d: definition of %r holds %r' % (item.offset, item.name, [c.kind for c in item.items]))
        for geometry in item.all('geometry'):
            check_geometry(geometry, found)
    elif item.kind == 'group':
        check_groups(item, state, found)


GROUP_ORDER = {'flags': 0, 'attribute': 1, 'transform': 2, 'animation': 2, 'object': 3, 'error': 3, 'group': 4}


def check_groups(root, state, found):
    waiting = [root]
    while waiting:
        group = waiting.pop()
        kinds = [item.kind for item in group.items]
        ranks = [GROUP_ORDER[kind] for kind in kinds]
        if ranks != sorted(ranks) or ranks.count(0) > 1 or ranks.count(2) > 1:
            found.append('byte %d: statements of group %r out of order: %r' % (group.offset, group.name, kinds[:12]))
        names = [item.name for item in group.all('attribute')]
        if names != sorted(set(names)):
            found.append('byte %d: attributes of group %r not sorted' % (group.offset, group.name))
        for item in group.all('object'):
            check_use(item, state, found)
        waiting.extend(group.groups())


def check_use(item, state, found):
    geometry, materials = item.all('geometry'), item.all('material')
    if len(geometry) != 1 or len(materials) > 1:
        found.append('byte %d: object %r without one geometry and at most one material' % (item.offset, item.name))
        return
    if geometry[0].name == 'instance':
        if geometry[0].get('id') not in state['ids']:
            found.append('byte %d: object %r refers to id %r, which is not defined before'
                         % (item.offset, item.name, geometry[0].get('id')))
        elif state['ids'][geometry[0].get('id')].name != item.name:
            found.append('byte %d: object %r refers to the definition of another name' % (item.offset, item.name))
    else:
        check_geometry(geometry[0], found)
    for material in materials:
        if isinstance(material, Block):
            check_material(material, found)
        elif material.name not in state['materials']:
            found.append('byte %d: material %r is not defined before its use' % (item.offset, material.name))


def check_material(material, found):
    surfaces = material.all('surface')
    if len(surfaces) != 1:
        found.append('byte %d: material %r has %d surfaces' % (material.offset, material.name, len(surfaces)))
    for surface in surfaces:
        for colour in (surface.value.get('diffuse'), surface.value.get('specular')):
            if colour is not None and not (len(colour) == 3 and not any(c < 0 or c > 1 for c in colour)):
                found.append('byte %d: material %r has the colour %r' % (material.offset, material.name, colour))


def check_geometry(geometry, found):
    def tell(what):
        found.append('byte %d: %s' % (geometry.offset, what))

    if geometry.name == 'nurbs':
        check_surface(geometry, tell)
    elif geometry.name == 'orv_curves':
        check_curves(geometry, tell)
    elif geometry.name == 'triangles':
        check_triangles(geometry, tell)


def check_surface(geometry, tell):
    """Knots, orders and points of a surface fit one another, and so do the arrays of its trims."""
    orders = [geometry.get(name) for name in ('uorder', 'vorder')]
    counts = [len(geometry.get(name)) - order for name, order in zip(('uknot', 'vknot'), orders)]
    points = geometry.get('Pw')
    if not len(points) and orders == [1, 1]:
        return  # a shape without geometry
    if len(points) != 4 * counts[0] * counts[1] or min(counts) < 0:
        tell('%d numbers of points for %d by %d' % (len(points), counts[0], counts[1]))
    for name in ('uknot', 'vknot'):
        knots = geometry.get(name)
        if any(a > b for a, b in zip(knots, knots[1:])):
            tell('%s is not ascending' % name)
    if 'trim_nedges' not in geometry.parameters():
        return
    loops, inside = geometry.get('trim_nedges'), geometry.get('trim_inside')
    edge_orders, knot_counts = geometry.get('edge_order'), geometry.get('edge_nknots')
    edges = sum(loops)
    if len(inside) != len(loops) or any(flag not in (0, 1) for flag in inside):
        tell('trim_inside %r does not fit %d loops' % (list(inside[:8]), len(loops)))
    lengths = [len(geometry.get(name)) for name in ('edge_order', 'edge_nknots', 'edge_min', 'edge_max')]
    if lengths != [edges] * 4:
        tell('%d edges of loops, but %r orders, knot counts, minima and maxima' % (edges, lengths))
    if len(geometry.get('edge_knot')) != sum(knot_counts):
        tell('%d edge knots, counted %d' % (len(geometry.get('edge_knot')), sum(knot_counts)))
    points = sum(knots - order for knots, order in zip(knot_counts, edge_orders))
    if len(geometry.get('edge_uvw')) != 3 * points:
        tell('%d numbers of edge points for %d' % (len(geometry.get('edge_uvw')), points))


def check_curves(geometry, tell):
    points = len(geometry.get('p')) // 3
    if len(geometry.get('p')) % 3 or sum(geometry.get('nvertices')) != points:
        tell('%d points, counted %d' % (points, sum(geometry.get('nvertices'))))
    for name, width in (('pr', 1), ('pcol', 3)):
        values = geometry.get(name)
        if values is not None and len(values) != width * points:
            tell('%d numbers of %s for %d points' % (len(values), name, points))


def check_triangles(geometry, tell):
    empty = array.array('f')
    vertices, normals = geometry.get('vertices', empty), geometry.get('normals', empty)
    triangles, uvs = geometry.get('triangles', empty), geometry.get('uv_tex', empty)
    count = len(vertices) // 3
    if 'vertices' not in geometry.parameters() or 'triangles' not in geometry.parameters():
        tell('vertices or triangles are missing')
    if len(vertices) % 3 or len(triangles) % 3:
        tell('%d floats of vertices, %d indices of triangles' % (len(vertices), len(triangles)))
    check_indices(triangles, count, 'triangles', tell)
    check_pairs(geometry, 'triangles_norm', normals, 3, count, len(triangles), tell)
    check_pairs(geometry, 'triangles_uv', uvs, 2, count, len(triangles), tell)


def check_indices(indices, count, name, tell):
    if len(indices) and not (0 <= min(indices) and max(indices) < count):
        tell('%s hold %d to %d, but there are %d entries' % (name, min(indices), max(indices), count))


def check_pairs(geometry, name, values, width, vertices, corners, tell):
    indices = geometry.get(name)
    if indices is not None:
        if len(indices) != corners:
            tell('%d %s for %d corners' % (len(indices), name, corners))
        check_indices(indices, len(values) // width, name, tell)
    elif len(values) and len(values) != vertices * width:
        tell('%d values of width %d for %d vertices' % (len(values), width, vertices))


# --- where things stand

def multiplied(a, b):
    """Product of two matrices of 16 values in row order."""
    return tuple(sum(a[4 * row + k] * b[4 * k + column] for k in range(4)) for row in range(4) for column in range(4))


class Placement:
    """An object of the tree: path of group names (root left out), world matrix, geometry block and material name."""
    __slots__ = ('path', 'world', 'object', 'geometry', 'material')

    def __init__(self, path, world, use, geometry, material):
        self.path, self.world, self.object, self.geometry, self.material = path, world, use, geometry, material


def worlds(scene):
    """(path, group, world matrix) of every group below the root, parents first; row vectors, so local times parent."""
    found = []
    waiting = [((), group, IDENTITY) for group in reversed(scene.groups())]
    while waiting:
        path, group, above = waiting.pop()
        local = group.transform
        world = above if local is None else multiplied(local, above)
        found.append((path, group, world))
        waiting.extend((path + (child.name,), child, world) for child in reversed(group.groups()))
    return found


def placements(scene):
    """Every object of the tree, in file order, with the definition that it refers to."""
    defined = {block.first('id').value: block.first('geometry') for block in scene.all('object')}
    found = []
    for path, group, world in worlds(scene):
        for use in group.all('object'):
            geometry = use.first('geometry')
            if geometry.name == 'instance':
                geometry = defined[geometry.get('id')]
            material = use.first('material')
            found.append(Placement(path, world, use, geometry, material.name if material else None))
    return found


def main():
    wrong = 0
    for path in sys.argv[1:]:
        try:
            told = faults(read(path))
        except SyntaxFault as fault:
            told = [str(fault)]
        for line in told[:20]:
            print('%s: %s' % (path, line))
        wrong += bool(told)
    return 1 if wrong else 0


if __name__ == '__main__':
    sys.exit(main())
