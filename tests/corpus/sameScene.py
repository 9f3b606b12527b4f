#!/usr/bin/env python3
"""Compares scenes that exist in both formats: what the two files say, then what they are converted to.

  ORV_CORPUS=FOLDER sameScene.py --printer PRINT_PLUGS [--importer MAYA_IMPORTER [--runner WRAPPER]] [--only TEXT]
  sameScene.py --printer PRINT_PLUGS A.ma B.mb ...          pairs of other files
  sameScene.py --printer PRINT_PLUGS --writer WRITE_BINARY A.ma ...   of text scenes, or all of a folder, a pair made here: the
                                                            writer makes a binary file in the manner of each version of Maya

A pair is A.ma with A.mb beside it. Nodes are compared in the order of their making, attributes as the printer spreads them,
connections in the files' order; flags where both files tell them; numbers within what the text has digits for. Each
difference must be covered by a rule of RULES. With an importer both are converted, and the results must be equal byte for
byte but for the scenes' names; before that a copy of the text is given the values by which a camera of the panels was saved
apart, of the binary file. Without ORV_CORPUS nothing is run.
"""
import argparse
import collections
import math
import os
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, '..', 'support')]
from importer import Importer

# The text has 17 digits of a number of double precision, and angles are in degrees there: a few units of the last place.
# It has 9 of one of single precision, or fewer in old versions.
CLOSE = {'d': 2e-15, 'f': 6e-9, 'i': 0.0}
NO_VALUE = 'left out: a value of '
VERSIONS = ('2019', '8.5', '2016', '2011', '2015', '2012')
DATA_CLOSE = 2e-14  # of matrices, which the reader composes of angles and lengths


class Scene:
    """What the printer says of a file."""

    def __init__(self, options, path):
        runner = [os.path.abspath(options.runner)] if options.runner else []
        done = subprocess.run(runner + [options.printer, 'Z:' + path if runner else path], stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        if done.returncode:
            raise RuntimeError('%s: %s' % (path, done.stderr.decode('utf-8', 'replace').strip()))
        self.header, self.nodes, self.links, self.fed = [], {}, [], set()
        for line in done.stdout.decode('utf-8', 'surrogateescape').split('\n')[:-1]:
            self.take(line.rstrip('\r').split('\t'))

    def take(self, cells):
        kind = cells[0]
        if kind == 'node':
            node = self.nodes[cells[1]] = Node(cells)
            node.position = len(self.nodes)
        elif kind == 'define':
            self.nodes[cells[1]].definitions.append(cells[2:])
        elif kind == 'flags':
            self.nodes[cells[1]].flags[cells[2]] = cells[3:]
        elif kind in ('number', 'data'):
            self.nodes[cells[1]].values[cells[2]] = (kind, cells[3:])
        elif kind in ('connect', 'parent', 'oddity'):
            self.links.append(cells)
            if kind == 'connect':
                self.fed.add(cells[2][1:-1])
        else:
            self.header.append(cells)

    def lines(self, kind):
        return [cells[1:] for cells in self.header + self.links if cells[0] == kind]

    def children(self, node):
        return [other for path, other in self.nodes.items() if path[:-1].rpartition('|')[0] == node.path[:-1]]


class Node:
    def __init__(self, cells):
        self.path, self.type, self.uuid = cells[1], cells[2], cells[4].upper()
        self.is_shared, self.is_locked = bool(int(cells[3]) & 1), bool(int(cells[3]) & 2)
        self.definitions, self.flags, self.values = [], {}, {}


class Difference:
    """`one` and `other` are the values of the text and of the binary file; none where one does not tell it."""

    def __init__(self, what, node=None, other_node=None, plug='', one=None, other=None, scenes=()):
        self.what, self.node, self.other_node, self.plug = what, node, other_node, plug
        self.one, self.other, self.scenes = one, other, scenes

    def text(self):
        shown = [('nothing' if value is None else ' '.join(value[1]))[:90] for value in (self.one, self.other)]
        return '%s %s.%s: %s | %s' % (self.what, self.node.path if self.node else '', self.plug, *shown)


# --- what the two formats, or two saves, make different

def has_view(difference):
    """The node is one of the cameras of the panels, or its shape."""
    node, scene = difference.node, difference.scenes[0]
    below = [child.type for child in scene.children(node)]
    return node.is_shared and (node.type == 'camera' or (node.type == 'transform' and below == ['camera']))


def is_left_out(difference):
    """One file tells a number that the attribute has anyhow."""
    told = difference.one or difference.other
    return (difference.one is None or difference.other is None) and told[0] == 'number' and told[1][3] != '?' and \
        is_close('d', float(told[1][2]), float(told[1][3]))


def is_fed(difference):
    """The text tells all members of a compound, the binary file those that no connection feeds."""
    return difference.one is not None and difference.other is None and \
        difference.node.path[1:-1] + '.' + difference.plug in difference.scenes[1].fed


def is_zero(difference):
    """One file tells a zero of an attribute whose initial value nobody knows, or empty data."""
    told = difference.one or difference.other
    if difference.one is not None and difference.other is not None:
        return False
    if told[0] == 'number':
        return told[1][3] == '?' and float(told[1][2]) == 0
    return told[1][0] in ('""', 'polyComponent0 indices x0 values x0', 'polyComponent1 indices x0 values x0',
                          'polyComponent2 indices x0 values x0', 'polyComponent3 indices x0 values x0', 'strings', 'components')


RULES = (
    # (name, what it covers)
    ('left out: the attribute has this value anyhow', is_left_out),
    ('left out: zero or empty', is_zero),
    ('left out: a connection feeds it', is_fed),
    ('saved apart: the panels\' layout, which a script node keeps',
     lambda d: d.node.type == 'script' and d.plug == 'b' and all(
         v and v[1][0].startswith('"// Maya Mel UI Configuration File') for v in (d.one, d.other))),
    ('saved apart: where a camera of the panels stands',
     lambda d: d.what == 'value' and d.one and d.other and has_view(d)
     and d.plug in ('tx', 'ty', 'tz', 'rx', 'ry', 'rz', 'coi', 'ow')),
)
SAVED_APART = 'saved apart: where a camera of the panels stands'


def is_close(storage, one, other):
    if math.isnan(one) and math.isnan(other):
        return True
    return abs(one - other) <= CLOSE[storage] * max(abs(one), abs(other))


class Comparison:
    def __init__(self, text, binary, unwritten=()):
        self.text, self.binary = text, binary
        self.counts, self.spread = collections.Counter(), collections.Counter()
        self.differences, self.wrong, self.covered, self.saved_apart = [], [], collections.Counter(), []
        self.compare()
        for difference in self.differences:
            rule = next((name for name, covers in RULES if difference.node and covers(difference)), None)
            if difference.other is None and difference.plug in unwritten:
                self.covered['not written: ' + difference.plug] += 1
            elif rule:
                self.covered[rule] += 1
                if rule == SAVED_APART:
                    self.saved_apart.append(difference)
            else:
                self.wrong.append(difference.text())

    def compare(self):
        for kind in ('unit', 'parent', 'oddity', 'refer', 'plugin'):
            self.compare_lists(kind, self.text.lines(kind), self.binary.lines(kind))
        self.compare_info()
        self.compare_lists('connect', self.text.lines('connect'), self.binary.lines('connect'))
        self.compare_lists('node', [n.path for n in self.text.nodes.values()], [n.path for n in self.binary.nodes.values()])
        for path, node in self.text.nodes.items():
            if path in self.binary.nodes:
                self.compare_nodes(node, self.binary.nodes[path])

    def compare_lists(self, kind, ones, others):
        """In order; where they are not equal, what only one of them has."""
        self.counts[kind] += len(ones)
        if ones == others:
            return
        have, lack = collections.Counter(map(str, ones)), collections.Counter(map(str, others))
        apart = sorted((have - lack).elements())[:5], sorted((lack - have).elements())[:5]
        self.wrong.append('%s: %d and %d; only in text %s; only in binary %s' % (kind, len(ones), len(others), *apart)
                          if any(apart) else '%s: %d in another order' % (kind, len(ones)))

    def compare_info(self):
        """The binary file keeps escapes as they are typed; a save may add lines of its own."""
        ones, others = ({key: value.replace('\\\\', '\\') for key, value in scene.lines('info')} for scene in (self.text, self.binary))
        self.counts['info'] += len(ones)
        for key in sorted(set(ones) | set(others)):
            if key not in ones or key not in others:
                self.covered['saved apart: ' + key] += 1
            elif ones[key] != others[key]:
                self.wrong.append('info: %s is %s | %s' % (key, ones[key], others[key]))

    def compare_nodes(self, one, other):
        if one.is_locked != other.is_locked:
            self.covered['not read: locked nodes'] += 1
        for name in ('type', 'is_shared', 'uuid'):
            if getattr(one, name) != getattr(other, name):
                self.wrong.append('%s: %s %r | %r' % (one.path, name, getattr(one, name), getattr(other, name)))
        self.compare_lists('define', one.definitions, other.definitions)
        for plug, told in one.flags.items():
            for name, state, again in zip(('keyable', 'locked', 'channelBox'), told, other.flags.get(plug, ())):
                if state != '-1' and again != '-1':
                    self.counts['flag'] += 1
                    if state != again:
                        self.wrong.append('%s.%s: %s %s | %s' % (one.path, plug, name, state, again))
        for plug in list(one.values) + [plug for plug in other.values if plug not in one.values]:
            self.compare_values(one, other, plug)

    def compare_values(self, node, other_node, plug):
        one, other = node.values.get(plug), other_node.values.get(plug)
        self.counts['value'] += 1
        if one is None or other is None or not self.equal(one, other):
            self.differences.append(Difference('value', node, other_node, plug, one, other, (self.text, self.binary)))

    def equal(self, one, other):
        if one[0] != other[0]:
            return False
        if one[0] == 'number':
            if one[1][1] != other[1][1] and one[1][3] != '?':  # who does not know an attribute guesses its storage
                return False
            numbers, storage = ([one[1][2]], [other[1][2]]), one[1][1]
        else:
            if one[1][0] != other[1][0] or len(one[1]) != len(other[1]):
                return False
            numbers, storage = (one[1][1:], other[1][1:]), 'data'
        for text, binary in zip(*numbers):
            self.counts['number'] += 1
            if text == binary:
                continue
            a, b = float(text), float(binary)
            off = abs(a - b) / max(abs(a), abs(b), 1e-300 if storage != 'data' else 1)
            if off > CLOSE.get(storage, DATA_CLOSE):
                return False
            self.spread[storage] = max(self.spread[storage], off)
        return True


def statement(difference, units):
    """The binary file's value as a statement of the text."""
    centimetres, radians, _ = (float(cell) for cell in units)
    unit = radians if difference.plug in ('rx', 'ry', 'rz') else centimetres
    return 'setAttr %s %.17g;\n' % (difference.node.path[:-1] + '.' + difference.plug + '"', float(difference.other[1][2]) / unit)


def convert(importer, path, folder):
    output = os.path.join(folder, 'out.obx')
    done = importer.run(path, output, folder)
    if done.returncode:
        raise RuntimeError('%s: exit status %d' % (path, done.returncode))
    with open(output, 'rb') as file:
        data = file.read()
    for name in (path, os.path.basename(path)):
        data = data.replace(os.fsencode(name), b'SCENE')
    return data


def compare_converted(importer, text, binary, more):
    """`more` statements are added to a copy of the text."""
    with tempfile.TemporaryDirectory() as folder:
        copy = os.path.join(folder, os.path.basename(text))
        with open(text, 'rb') as source, open(copy, 'wb') as target:
            target.write(source.read() + b'\n' + more.encode())
        one, other = convert(importer, copy, folder), convert(importer, binary, folder)
    print('         converted: %d and %d bytes, %s' % (len(one), len(other), 'equal' if one == other else 'not equal'))
    ones, others = one.split(b'\n'), other.split(b'\n')
    if len(ones) != len(others):
        return ['converted: %d and %d lines' % (len(ones), len(others))]
    return ['line %d: %r | %r' % (n, a[:80], b[:80]) for n, (a, b) in enumerate(zip(ones, others), 1) if a != b]


def check(options, text, binary):
    comparison = Comparison(Scene(options, text), Scene(options, binary), getattr(options, 'unwritten', ()))
    wrong = list(comparison.wrong)
    print('         ' + ', '.join('%s %d' % pair for pair in sorted(comparison.counts.items())))
    for kind, off in sorted(comparison.spread.items()):
        print('         farthest apart of %s: %.2g of the number' % (kind, off))
    for rule, count in comparison.covered.items():
        print('         %d %s' % (count, rule))
    if options.importer:
        units = (comparison.text.lines('unit') or [('1', '1', '1')])[0]
        more = ''.join(statement(difference, units) for difference in comparison.saved_apart)
        wrong += compare_converted(options.run, text, binary, more)
    return wrong


def saved_pairs(options):
    """Pairs of files that exist."""
    if options.files:
        files = [os.path.abspath(path) for path in options.files]
        return list(zip(files[::2], files[1::2]))
    texts = sorted(os.path.join(place, name) for place, _, names in os.walk(os.path.abspath(options.folder))
                   for name in names if name.endswith('.ma') and name[:-3] + '.mb' in names)
    return [(path, path[:-3] + '.mb') for path in texts if options.only in path]


def written_pairs(options, folder):
    """Pairs whose second file is written here; scenes that the writer cannot write whole are told and left out."""
    texts = [os.path.abspath(path) for path in options.files]
    if not texts:
        texts = sorted(os.path.join(place, name) for place, _, names in os.walk(os.path.abspath(options.folder))
                       for name in names if name.endswith('.ma') and options.only in os.path.join(place, name))
    options.left_out = collections.Counter()
    for text in texts:
        base = os.path.splitext(os.path.basename(text))[0]
        for version in [[name] for name in VERSIONS] if options.files else [[]]:  # none: the scene's own
            binary = os.path.join(folder, '%s.mb' % base)
            runner = [os.path.abspath(options.runner)] if options.runner else []
            names = ['Z:' + path if runner else path for path in (text, binary)]
            done = subprocess.run(runner + [options.writer] + names + version, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
            told = (done.stdout + done.stderr).decode('utf-8', 'replace').strip().split('\n')
            options.unwritten = [line.split()[-1] for line in told if line.startswith(NO_VALUE)]
            if done.returncode == 0 or (done.returncode == 3 and all(line.startswith(NO_VALUE) for line in told)):
                yield text, binary
            else:
                options.left_out[next(line for line in told if not line.startswith(NO_VALUE))[:60]] += 1


def compare_all(options, pairs):
    failed = total = 0
    for text, binary in pairs:
        total += 1
        print(os.path.basename(binary))
        try:
            wrong = check(options, text, binary)
        except RuntimeError as fault:
            wrong = [str(fault)]
        failed += bool(wrong)
        print('%-6s  %s' % ('FAILED' if wrong else 'ok', os.path.basename(binary)))
        for line in wrong[:40]:
            print('         ' + line)
    print('%d scenes in both formats, %d failed' % (total, failed))
    for reason, count in sorted(getattr(options, 'left_out', {}).items()):
        print('%d scenes not written: %s' % (count, reason))
    return 1 if failed or not total or options.files and getattr(options, 'left_out', {}) else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--printer', required=True)
    parser.add_argument('--writer', default='')
    parser.add_argument('--importer', default='')
    parser.add_argument('--runner', default='')
    parser.add_argument('--only', default='')
    parser.add_argument('files', nargs='*')
    options = parser.parse_args()
    options.run = Importer(options.importer, options.runner) if options.importer else None
    options.folder = os.environ.get('ORV_CORPUS')
    if not options.folder and not options.files:
        print('skipped: ORV_CORPUS is not set, 0 scenes run')
        return 0
    if not options.writer:
        return compare_all(options, saved_pairs(options))
    with tempfile.TemporaryDirectory() as folder:
        return compare_all(options, written_pairs(options, folder))


if __name__ == '__main__':
    sys.exit(main())
