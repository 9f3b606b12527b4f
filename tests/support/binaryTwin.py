"""Small scenes of the binary form, put together from pieces, and out of scenes of the text form.

    mb = MayaBinary(wide=True)                      # FOR8 as Maya 2019 writes it; else FOR4 as Maya 2011 does
    data = mb.scene(mb.node('XFRM', 'a', None, mb.doubles('t', 1, 2, 3)))
    data = twin(text)                               # the binary form of the same scene

`twin` knows what the scenes of this project hold and raises Unsupported for anything else.
"""
import math
import os
import re
import struct

TICKS = 141120000
FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', '..', 'host')
CACHED, LOCKED, KEYABLE, SIZED, IN_CHANNEL_BOX = 0x20, 0x01, 0x04, 0x08, 0x10


class Unsupported(Exception):
    pass


def pack(form, *numbers):
    return struct.pack('>' + form, *numbers)


def packed(letter, numbers):
    return struct.pack('>%d%s' % (len(numbers), letter), *numbers)


def counted(letter, numbers):
    return pack('I', len(numbers)) + packed(letter, numbers)


def zstr(text):
    return (text if isinstance(text, bytes) else text.encode()) + b'\0'


class MayaBinary:
    def __init__(self, wide=True):
        self.wide = wide

    # container
    def heading(self, tag, size):
        return tag.encode('latin1') + (b'\xa5\xa5\xa5\xa5' + pack('Q', size) if self.wide else pack('I', size))

    def leaf(self, tag, payload):
        return self.heading(tag, len(payload)) + payload + b'~' * (-len(payload) % (8 if self.wide else 4))

    def group(self, kind, *children, sort='FOR'):
        data = kind.encode('latin1') + b''.join(children)
        return self.heading(sort + ('8' if self.wide else '4'), len(data)) + data

    def scene(self, *groups, version='2018', linear='cm', time='film', more=b''):
        head = [self.leaf('VERS', version.encode()), self.leaf('LUNI', linear.encode()),
                self.leaf('TUNI', time.encode()), self.leaf('AUNI', b'deg')]
        if self.wide:
            head.append(self.leaf('TDUR', b'%d' % TICKS))
        return self.group('Maya', self.group('HEAD', *head, more), *groups, self.group('HEAD', self.leaf('OBJN', b'1')))

    # nodes
    def node(self, code, name, parent=None, *chunks, shared=False):
        flags = int(shared) | (0 if parent or not self.wide else 0x80)
        data = bytes([flags]) + zstr(name) + (zstr(parent) if parent else b'') + (bytes(16) if self.wide else b'')
        return self.group(code, self.leaf('CREA', data), *chunks)

    def selected(self, name, *chunks):
        return self.group('SLCT', self.leaf('SLCT', name.encode()), *chunks)

    # values
    def value(self, tag, plug, payload=b'', flags=CACHED, size=None):
        sized = b'' if size is None else pack('I', size)
        return self.leaf(tag, zstr(plug) + bytes([flags | (SIZED if sized else 0)]) + sized + payload)

    def doubles(self, plug, *numbers):
        return self.value('DBLE' if len(numbers) == 1 else 'DBL%d' % len(numbers), plug, packed('d', numbers))

    def string(self, plug, text):
        return self.value('STR ', plug, zstr(text))

    def ticks(self, ticks):
        return pack('q', ticks) if self.wide else pack('i', ticks * 6000 // TICKS)

    def mesh(self, plug, points, edges, faces, uv_sets, normals=()):
        """Edges are (start, end, smooth), faces lists of loops of edge references as in text, with the uv ids of each set by
        corner (or none); uv sets (name, numbers)."""
        corners, ids = [], [[] for _ in uv_sets]
        for loops, uvs in faces:
            for loop in loops:
                corners += [reference if reference >= 0 else 0x80000000 | (-1 - reference) for reference in loop]
                corners[-1] |= 0x40000000
            corners[-1] |= 0x20000000
            size = sum(map(len, loops))
            for number, list_of_set in enumerate(ids):
                list_of_set += uvs.get(number, [-1] * size)
        data = counted('f', points)
        data += counted('I', [n for start, end, smooth in edges for n in (start | (0 if smooth else 0x80000000), end)])
        data += counted('I', corners) + counted('f', normals) + (bytes(4) if normals else b'')
        data += pack('I', len(uv_sets)) + (bytes(4) if uv_sets else b'')
        for (name, numbers), list_of_set in zip(uv_sets, ids):
            data += zstr(name) + counted('f', numbers) + counted('i', list_of_set)
        return self.value('MESH', plug, data + bytes(4) + bytes(16 if self.wide else 12))

    # connections
    def connections(self, *chunks):
        return self.group('CONS', self.group('CONN', *chunks), sort='LIS')

    def connection(self, source, target, next_available=False):
        return self.leaf('CWFL', bytes([next_available]) + zstr(source) + zstr(target))

    def instance(self, path, parent):
        return self.group('PING', self.leaf('PRNT', b'\2' + zstr(path) + zstr(parent)))


def triangle_scene(wide=True):
    """A lit triangle of 1 cm, as binary."""
    mb = MayaBinary(wide)
    edges = [(0, 1, False), (1, 2, False), (2, 0, False)]
    return mb.scene(
        mb.node('XFRM', 'tri'),
        mb.node('DMSH', 'triShape', 'tri', mb.string('uvst[0].uvsn', 'map1'),
                mb.value('FLT2', 'uvst[0].uvsp[0:2]', packed('f', [0, 0, 1, 0, 0, 1])),
                mb.mesh('o', [0, 0, 0, 1, 0, 0, 0, 1, 0], edges, [([[0, 1, 2]], {0: [0, 1, 2]})], [('map1', [0, 0, 1, 0, 0, 1])])),
        mb.connections(mb.connection('triShape.iog', ':initialShadingGroup.dsm', True)))


# ---------------------------------------------------------------------------------------------------------------------
# Out of the text form

UNITS = {'linear': {'centimeter': 1, 'cm': 1, 'meter': 100, 'm': 100, 'inch': 2.54, 'in': 2.54, 'foot': 30.48, 'ft': 30.48},
         'time': {'film': 24, 'pal': 25, 'ntsc': 30, 'game': 15, 'sec': 1}}
SHORT = {'centimeter': 'cm', 'meter': 'm', 'inch': 'in', 'foot': 'ft'}
WORDS = {'yes': 1, 'on': 1, 'true': 1, 'no': 0, 'off': 0, 'false': 0}
NUMBER_TYPES = {'float2': ('FLT2', 'f', 2), 'float3': ('FLT3', 'f', 3), 'double2': ('DBL2', 'd', 2), 'double3': ('DBL3', 'd', 3),
                'short2': ('SRT2', 'h', 2), 'short3': ('SRT3', 'h', 3), 'long2': ('LNG2', 'i', 2), 'long3': ('LNG3', 'i', 3)}
ARRAY_TYPES = {'doubleArray': ('DBL#', 'd', 1), 'vectorArray': ('VEC#', 'd', 3), 'pointArray': ('PNT#', 'd', 4),
               'Int32Array': ('I32#', 'i', 1)}
COMPONENTS = {'vtx': 'CMDV', 'e': 'CMDE', 'f': 'CMDF', 'map': 'CMDM', 'cv': 'CCCV'}
TOKEN = re.compile(r'"((?:[^"\\]|\\.)*)"|([^\s";]+)|(;)', re.S)
ESCAPE = re.compile(r'\\(.)', re.S)
ESCAPED = {'n': '\n', 't': '\t', 'r': '\r'}
PLUG_INDEX = re.compile(r'\[(\d+)(?::(\d+))?\]')
TABLES = {}


def tables():
    """(codes of node types, {type: {short or long name: (kind, long name)}}, {type: {long name: kinds of its children}})."""
    if not TABLES:
        codes, blocks, names, block = {}, {}, {}, None
        with open(os.path.join(FOLDER, 'file', 'binary', 'tables', 'type_codes.txt')) as file:
            for line in file:
                if not line.startswith('#') and line.strip():
                    code, name = line.split()[:2]
                    letters = bytes.fromhex(code)
                    if re.fullmatch(rb'[ -~]{4}', letters):
                        codes.setdefault(name, letters.decode())
        with open(os.path.join(FOLDER, 'types', 'tables', 'attributes.txt')) as file:
            for line in file:
                words = line.split()
                if line.startswith('  '):
                    block.append(words)
                elif line.startswith('block'):
                    block = blocks.setdefault(words[1], [])
                elif line.startswith('type'):
                    names[words[1]] = [row for name in words[2:] for row in blocks[name]]
        TABLES.update(codes=codes, rows=names)
    return TABLES


def kinds_of(node_type, name):
    """The kinds of the leaves of an attribute; none for an attribute that the type does not have."""
    rows = tables()['rows'].get(node_type, [])
    for row in rows:
        if name in row[:2]:
            children = [(int(word.rpartition(':')[2]), child) for child in rows for word in child[3:]
                        if word.startswith('^' + row[0] + ':')]
            if children:
                return [kind for _, child in sorted(children) for kind in kinds_of(node_type, child[0])]
            return [row[2].rstrip('*')]
    return []


def statements(text):
    words = []
    text = re.sub(r'^//.*$', '', text, flags=re.M)
    for match in TOKEN.finditer(text):
        if match.group(3):
            if words:
                yield words
            words = []
        elif match.group(2):
            words.append(match.group(2))
        else:
            words.append(Quoted(ESCAPE.sub(lambda m: ESCAPED.get(m.group(1), m.group(1)), match.group(1))))


class Quoted(str):
    pass


def flags_of(words, with_value):
    """(flags, other words): flags of a statement before, between and behind its words; `with_value` have one."""
    flags, rest, i = {}, [], 0
    while i < len(words):
        word = words[i]
        if not isinstance(word, Quoted) and re.fullmatch(r'-[a-zA-Z]+', word):
            name = word[1:]
            flags.setdefault(name, []).append(words[i + 1] if name in with_value else True)
            i += name in with_value
        else:
            rest.append(word)
        i += 1
    return flags, rest


class Converter:
    def __init__(self, wide):
        self.mb = MayaBinary(wide)
        self.groups, self.links, self.more = [], [], b''   # groups: [kind, first chunk, chunks, type, name]
        self.linear, self.rate, self.units = 1, 24, {'linear': 'cm', 'time': 'film'}
        self.version = '2018'
        self.meshes = {}

    def convert(self, text):
        for words in statements(text):
            action = getattr(self, 'do_' + words[0], None)
            if action is None:
                raise Unsupported('statement ' + words[0])
            action(words[1:])
        for group in self.groups:
            if id(group) in self.meshes:
                group[2].append(self.mesh_of(self.meshes[id(group)]))
        body = [self.mb.group(kind, first, *chunks) for kind, first, chunks, _, _ in self.groups]
        return self.mb.scene(*body, self.mb.connections(*self.links), version=self.version,
                             linear=self.units['linear'], time=self.units['time'], more=self.more)

    # statements
    def do_requires(self, words):
        if words[0] == 'maya':
            self.version = words[1]  # some results depend on it
        else:
            self.more += self.mb.leaf('PLUG', zstr(words[-2]) + zstr(words[-1]))

    def do_currentUnit(self, words):
        flags, _ = flags_of(words, 'lat')
        unit, time = flags.get('l', ['cm'])[0], flags.get('t', ['film'])[0]
        self.linear, self.rate = UNITS['linear'][unit], UNITS['time'][time]
        self.units = {'linear': SHORT.get(unit, unit), 'time': time}

    def do_fileInfo(self, words):
        self.more += self.mb.leaf('FINF', zstr(words[0]) + zstr(words[1]))

    def do_createNode(self, words):
        flags, rest = flags_of(words, ('n', 'p'))
        code = tables()['codes'].get(rest[0])
        if code is None:
            raise Unsupported('node type ' + rest[0])
        name = flags.get('n', [''])[0]
        whole = self.mb.node(code, name, flags.get('p', [None])[0], shared='s' in flags)
        first = whole[len(self.mb.heading('FOR8', 0)) + 4:]
        self.groups.append([code, first, [], rest[0], name])

    def do_rename(self, words):
        pass  # ids are left as they are

    def do_select(self, words):
        name = words[-1]
        self.groups.append(['SLCT', self.mb.leaf('SLCT', name.encode()), [], 'time' if 'time1' in name else '', name])

    def do_connectAttr(self, words):
        flags, rest = flags_of(words, ('l',))
        self.links.append(self.mb.connection(rest[0], rest[1], 'na' in flags))

    def do_parent(self, words):
        flags, rest = flags_of(words, ())
        if 'add' not in flags:
            raise Unsupported('parent without -add')
        prnt = self.mb.leaf('PRNT', b'\2' + zstr(rest[0]) + zstr(rest[1]))
        self.groups.append(['PING', prnt, [], '', ''])

    def do_addAttr(self, words):
        flags, _ = flags_of(words, ('ln', 'sn', 'at', 'dt', 'dv', 'min', 'max', 'ci', 'k', 'h', 'smn', 'smx', 'p', 'nc', 'en', 's'))
        if set(flags) - {'ln', 'sn', 'at', 'dv', 'min', 'max', 'ci', 'k', 'p', 'nc', 'uac'}:
            raise Unsupported('addAttr')
        first = {name: values[0] for name, values in flags.items()}
        kind = {'double': 'aDBL', 'float': 'aFLT', 'long': 'aLI1', 'bool': 'aBOL', 'short': 'aSI1', 'float3': 'aFL3',
                'double3': 'aDB3', 'message': 'aMSG'}.get(first.get('at'))
        if kind is None:
            raise Unsupported('attribute of the kind %s' % first.get('at'))
        bits = 0x00f84000 | (0x02 if 'min' in first else 0) | (0x04 if 'max' in first else 0) | (0x08 if 'dv' in first else 0)
        bits |= (0x10 if 'nc' in first else 0) | (0x20 if 'p' in first else 0)
        data = kind.encode() + (pack('I', bits) if self.mb.wide else pack('H', bits & 0xffff))
        data += pack('I', int(first['nc'])) if 'nc' in first else b''
        data += pack('I', 1) + bytes(4) + zstr(first['ln']) + zstr(first.get('sn', first['ln']))
        data += (zstr(first['p']) if 'p' in first else b'') + b'\xcd\xcd\xcd\xcd'
        data += b''.join(pack('d', float(first[name])) for name in ('min', 'max') if name in first)
        data += b'DBLE' + pack('d', float(first['dv'])) if 'dv' in first else b''
        self.groups[-1][2].append(self.mb.leaf('ATTR', data))

    def do_setAttr(self, words):
        flags, rest = flags_of(words, ('k', 'l', 'cb', 's', 'type', 'ch', 'ca'))
        node, _, plug = rest[0].partition('.')
        group = self.groups[-1]
        if node:
            found = [g for g in self.groups if g[4] == node.rpartition('|')[2]]
            if len(found) != 1:
                raise Unsupported('values of ' + node)
            group = found[0]
        bits = CACHED
        for name, bit in (('k', KEYABLE), ('l', LOCKED), ('cb', IN_CHANNEL_BOX)):
            bits |= bit if WORDS.get(flags.get(name, ['off'])[0]) else 0
        size = int(flags['s'][0]) if 's' in flags else None
        last = re.sub(r'\[[^]]*\]', '', plug.rpartition('.')[2])
        if group[3] == 'mesh' and last in ('vt', 'ed', 'fc', 'n', 'uvsn', 'uvsp') and len(rest) > 1:
            self.collect(group, plug, last, rest[1:])
            if last in ('vt', 'ed', 'fc', 'n'):
                return
        if len(rest) == 1:
            group[2].append(self.mb.value('FLGS', plug, b'', bits, size))
            return
        tag, payload = self.payload(group[3], plug, last, flags.get('type', [None])[0], rest[1:])
        group[2].append(self.mb.value(tag, plug, payload, bits, size))

    # values
    def scaled(self, kind, number):
        if kind in ('DoubleLinear', 'FloatLinear'):
            return number * self.linear
        if kind in ('DoubleAngle', 'FloatAngle'):
            return number * (math.pi / 180)
        return number

    def numbers(self, words):
        return [float(WORDS.get(word, word)) for word in words]

    def payload(self, node_type, plug, last, written, words):
        if written == 'string':
            return 'STR ', zstr(words[0])
        if written == 'stringArray':
            return 'STR#', pack('I', int(words[0])) + b''.join(map(zstr, words[1:]))
        if written == 'componentList':
            return 'CMP#', self.components(words[1:])
        if written == 'matrix' and words[0] != 'xform':
            return 'MATR', packed('d', self.numbers(words))
        if written in ('nurbsCurve', 'nurbsSurface', 'nurbsTrimface'):
            return getattr(self, written)(words)
        if written in ARRAY_TYPES:
            tag, letter, _ = ARRAY_TYPES[written]
            values = self.numbers(words[1:])
            return tag, packed(letter, [int(v) for v in values] if letter == 'i' else values)
        if written is not None and written not in NUMBER_TYPES:
            raise Unsupported('values of the type ' + written)
        kinds = kinds_of(node_type, last)
        values = self.numbers(words)
        if written is None and len(kinds) > 1:
            return 'CMPD', self.compound(kinds, values)
        if kinds == ['Time']:
            return 'DBLE', b''.join(self.mb.ticks(round(v * TICKS / self.rate)) for v in values)
        tag, letter, width = NUMBER_TYPES.get(written, ('DBLE', 'd', 1))
        kinds = kinds if len(kinds) == width else ['Double'] * width
        values = [self.scaled(kinds[i % width], v) for i, v in enumerate(values)]
        return tag, packed(letter, [int(v) for v in values] if letter in 'hi' else values)

    def compound(self, kinds, values):
        data = b''
        for i, number in enumerate(values):
            kind = kinds[i % len(kinds)]
            data += self.mb.ticks(round(number * TICKS / self.rate)) if kind == 'Time' else pack('d', self.scaled(kind, number))
        return data

    def components(self, texts):
        data = b''
        for text in texts:
            kind, index = text.split('[')
            if kind not in COMPONENTS:
                raise Unsupported('component ' + text)
            first, _, last = index.rstrip(']').partition(':')
            data += COMPONENTS[kind].encode() + pack('Iii', 1, int(first), int(last or first))
        return pack('I', len(texts)) + data

    def nurbsCurve(self, words):
        return 'NRBC', self.curve(iter(words))

    def curve(self, values):
        degree, spans, form, rational, dimension = (next(values) for _ in range(5))
        rational, dimension = WORDS[rational], int(dimension)
        knots = [float(next(values)) for _ in range(int(next(values)))]
        data = pack('IIIBI', int(degree), int(spans), int(form), rational, dimension) + counted('d', knots)
        count = int(next(values))
        scales = [self.linear if dimension == 3 else 1] * dimension + [1] * rational
        return data + pack('I', count) + packed('d', [float(next(values)) * scale for _ in range(count) for scale in scales])

    def nurbsTrimface(self, words):
        """No file with one is known: the order of the text form, with a tag that nobody knows."""
        values = iter(words)
        data = pack('B', WORDS[next(values)])
        boundaries = int(next(values))
        data += pack('I', boundaries)
        for _ in range(boundaries):
            kind, edges = int(next(values)), int(next(values))
            data += pack('II', kind, edges) + packed('i', [int(next(values)) for _ in range(edges)])
            for _ in range(edges):
                data += pack('I', int(next(values))) + self.curve(values)
                data += pack('dIi', float(next(values)), int(next(values)), int(next(values)))
                curves = int(next(values))
                data += pack('I', curves) + b''.join(self.curve(values) for _ in range(curves))
                data += pack('Id', int(next(values)), float(next(values)))
        return 'TRIM', data

    def nurbsSurface(self, words):
        values = iter(words)
        degrees, forms = [int(next(values)) for _ in range(2)], [int(next(values)) for _ in range(2)]
        rational = WORDS[next(values)]
        knots = [[float(next(values)) for _ in range(int(next(values)))] for _ in range(2)]
        count = int(next(values))
        points = [float(next(values)) * scale for _ in range(count) for scale in [self.linear] * 3 + [1] * rational]
        spans = [len(list_of_knots) + 1 - 2 * degree for list_of_knots, degree in zip(knots, degrees)]
        data = pack('IIIIIIBI', *degrees, *spans, *forms, rational, 3)
        return 'NRBS', data + counted('d', knots[0]) + counted('d', knots[1]) + pack('I', count) + packed('d', points) + b'N'

    # meshes
    def collect(self, group, plug, last, words):
        lists = self.meshes.setdefault(id(group), {'vt': [], 'ed': [], 'fc': [], 'n': [], 'uv': {}})
        if last == 'fc':
            lists['fc'] += words
        elif last in ('uvsn', 'uvsp'):
            name, numbers = lists['uv'].setdefault(int(PLUG_INDEX.search(plug).group(1)), ['', []])
            lists['uv'][int(PLUG_INDEX.search(plug).group(1))] = [words[0] if last == 'uvsn' else name,
                                                                  numbers + (self.numbers(words) if last == 'uvsp' else [])]
        else:
            lists[last] += self.numbers(words)

    def mesh_of(self, lists):
        faces, words = [], iter(lists['fc'])
        for word in words:
            if word == 'f':
                faces.append(([], {}))
            if word == 'mu':
                number = int(next(words))
                ids = faces[-1][1].setdefault(number, [])
                ids += [int(next(words)) for _ in range(int(next(words)))]
            elif word in ('f', 'h'):
                faces[-1][0].append([int(next(words)) for _ in range(int(next(words)))])
            else:
                raise Unsupported('face data ' + word)
        edges = [tuple(map(int, lists['ed'][i:i + 3])) for i in range(0, len(lists['ed']), 3)]
        return self.mb.mesh('o', [v * self.linear for v in lists['vt']], edges, faces,
                            [lists['uv'][number] for number in sorted(lists['uv'])], lists['n'])


def twin(text, wide=True):
    return Converter(wide).convert(text)


if __name__ == '__main__':
    import sys
    with open(sys.argv[1], encoding='utf-8') as source, open(sys.argv[2], 'wb') as target:
        target.write(twin(source.read()))
