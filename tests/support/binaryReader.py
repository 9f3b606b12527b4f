"""Reads as much of a binary scene (.mb) as tests need to know what is in it, without the importer's help.

    scene = binaryReader.read(path)
    scene.texts['VERS'], scene.ticks                       # header texts, ticks of a second
    for node in scene.nodes: node.code, node.name, node.parent, node.values['o'], ...
    for source, destination in scene.connections: ...

A value is (tag, payload); ranges are not spread. A file that is cut short gives what there is.
"""
import struct

OLD_TICKS = 6000


class Node:
    """`code` is the type's four bytes; `selected` nodes are those that every scene has."""

    def __init__(self, code, name, parent, selected=False):
        self.code, self.name, self.parent, self.selected = code, name, parent, selected
        self.values = {}


class Scene:
    def __init__(self, data):
        if data[:4] not in (b'FOR4', b'FOR8'):
            raise ValueError('no binary scene')
        self.data, self.wide = data, data[3:4] == b'8'
        self.texts, self.nodes, self.connections, self.instances, self.types = {}, [], [], [], {}
        (_, start, end), = list(self.chunks(0, len(data)))[:1]
        for tag, begin, stop in self.chunks(start + 4, end):
            self.section(data[begin:begin + 4], begin + 4, stop)

    def chunks(self, at, end):
        """(tag, start, end) of the payloads between two offsets."""
        head, unit = (16, 8) if self.wide else (8, 4)
        while at + head <= end:
            tag = self.data[at:at + 4]
            size, = struct.unpack_from('>Q' if self.wide else '>I', self.data, at + head - unit)
            start = at + head
            stop = min(start + size, end)
            yield tag, start, stop
            at = stop if tag[:3] in (b'FOR', b'LIS', b'CAT', b'PRO') and tag[3:] in b'48' else stop + -size % unit

    @property
    def ticks(self):
        return int(self.texts.get('TDUR', OLD_TICKS))

    def section(self, kind, start, end):
        if kind == b'HEAD':
            for tag, begin, stop in self.chunks(start, end):
                if tag not in (b'PLUG', b'FINF'):
                    self.texts.setdefault(tag.decode('latin-1'), decoded(self.data[begin:stop].rstrip(b'\0')))
        elif kind == b'CONS':
            for _, begin, stop in self.chunks(start, end):
                self.links(begin + 4, stop)
        elif kind == b'PING':
            for _, begin, stop in self.chunks(start, end):
                self.instances.append(texts(self.data[begin + 1:stop])[:2])
        elif kind not in (b'FRDI', b'FREF', b'LKCU'):
            self.node(kind, start, end)

    def links(self, start, end):
        for tag, begin, stop in self.chunks(start, end):
            if tag == b'CWFL':
                self.connections.append(tuple(texts(self.data[begin + 1:stop])[:2]))

    def node(self, code, start, end):
        node = None
        for tag, begin, stop in self.chunks(start, end):
            payload = self.data[begin:stop]
            if tag == b'CREA':
                name, _, rest = payload[1:].partition(b'\0')
                parent = b'' if payload[0] & 0x80 else rest.partition(b'\0')[0]
                node = Node(code, decoded(name), decoded(parent))
                self.nodes.append(node)
            elif tag == b'SLCT':
                node = Node(code, decoded(payload.rstrip(b'\0')), '', True)
                self.nodes.append(node)
            elif node is not None and tag != b'ATTR':
                name, _, rest = payload.partition(b'\0')
                sized = bool(rest) and rest[0] & 0x08
                node.values[decoded(name)] = (tag.decode('latin-1'), rest[5 if sized else 1:])


def texts(raw):
    return [decoded(part) for part in raw.split(b'\0')]


def decoded(raw):
    return raw.decode('utf-8', 'replace')


def read(path):
    with open(path, 'rb') as file:
        return Scene(file.read())
