#!/usr/bin/env python3
"""Damages scenes in many ways, the same ways for the same seed, and sees that the importer takes each with good grace.

  mutated.py --importer PATH [-n 300] [--seed 1] [--runner WRAPPER] [--keep FOLDER] [--only-binary] SCENE...

Scenes are of either form; text scenes are taken in the binary form as well where tests/support/binaryTwin.py can write it.

Each run must end by itself within 10 s with status 0 or 1, without a sanitizer's report, within 20 times the input and
256 MiB of memory (peak resident size; a program built with AddressSanitizer gets twice that and 512 MiB for its shadow and
its quarantine), and leave a scene file that reads strictly and holds together; only numbers that are not finite may pass, since real scenes hold
some and they are not the importer's to judge. A scene that is not opened must be told of
on standard error. What fails is kept in --keep and named.
"""
import argparse
import concurrent.futures
import os
import random
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import threading

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support'))
import obx
from binaryTwin import MayaBinary, Unsupported, twin
from importer import Importer
from mayaText import cube, face_set, node, scene, shaded, shader, transform, triangle, triple

SECONDS = 10
MIB = 1 << 20
NUMBER = re.compile(rb'(?<![\w."|])-?\d+(?:\.\d+)?(?:e[-+]?\d+)?(?![\w"|])')
RANGE = re.compile(rb'\[(\d+)(?::(\d+))?\]')
SIZE = re.compile(rb'-s(?:ize)? (\d+)|-ch (\d+)')
QUOTED = re.compile(rb'"([^"\n]*)"')
STATEMENT = re.compile(rb'[^;]*;[ \t]*\n?')
NODE = re.compile(rb'createNode (\w+)[^;]*? -n "([^"]*)"')
PLUG = re.compile(rb'connectAttr "([^"]*)" "([^"]*)"')
ODD_NUMBERS = (b'-1', b'0', b'2147483647', b'2147483648', b'-2147483648', b'4294967295', b'4294967296', b'9223372036854775807',
               b'99999999999999999999', b'1e400', b'-1e400', b'1e-400', b'nan', b'inf', b'-nan(ind)', b'1.#QNAN', b'0x10', b'1e38',
               b'3.5e38', b'--1', b'1,5', b'')


def flip_bytes(data, rng):
    data = bytearray(data)
    for _ in range(rng.choice((1, 1, 4, 30))):
        data[rng.randrange(len(data))] ^= 1 << rng.randrange(8)
    return bytes(data)


def overwrite_bytes(data, rng):
    at, piece = rng.randrange(len(data)), bytes(rng.randrange(256) for _ in range(rng.choice((1, 7, 100))))
    return data[:at] + piece + data[at + rng.choice((0, len(piece))):]


def delete_bytes(data, rng):
    at = rng.randrange(len(data))
    return data[:at] + data[at + rng.choice((1, 10, 1000, len(data) // 4)):]


def truncate(data, rng):
    return data[:rng.randrange(len(data))]


def statements(data):
    return STATEMENT.findall(data) or [data]


def delete_statements(data, rng):
    parts = statements(data)
    for _ in range(rng.choice((1, 3, len(parts) // 4))):
        if len(parts) > 1:
            parts.pop(rng.randrange(len(parts)))
    return b''.join(parts)


def duplicate_statements(data, rng):
    parts = statements(data)
    at = rng.randrange(len(parts))
    return b''.join(parts[:at] + parts[at:at + rng.choice((1, 5))] * rng.choice((2, 3, 50)) + parts[at:])


def move_statement(data, rng):
    parts = statements(data)
    part = parts.pop(rng.randrange(len(parts)))
    parts.insert(rng.randrange(len(parts) + 1), part)
    return b''.join(parts)


def replace_match(data, pattern, rng, text):
    found = list(pattern.finditer(data))
    if not found:
        return data
    match = rng.choice(found)
    return data[:match.start()] + text(match) + data[match.end():]


def odd_number(data, rng):
    for _ in range(rng.choice((1, 1, 5))):
        data = replace_match(data, NUMBER, rng, lambda match: rng.choice(ODD_NUMBERS))
    return data


def odd_index(data, rng):
    huge = rng.choice((b'[4000000000]', b'[0:2147483647]', b'[2147483646:2147483647]', b'[-1]', b'[5:2]', b'[99999999:100000000]', b'[]',
                       b'[0:]', b'[*]', b'[1000000]'))
    return replace_match(data, RANGE, rng, lambda match: huge)


def odd_size(data, rng):
    huge = rng.choice((b'-s 4000000000', b'-s -5', b'-ch 2147483647', b'-s 999999999', b'-s 0', b'-ch 0', b'-s'))
    return replace_match(data, SIZE, rng, lambda match: huge)


def other_name(data, rng):
    names = [match.group(1) for match in QUOTED.finditer(data)] or [b'x']
    odd = [rng.choice(names), rng.choice(names), b'', b'|', b'::', b':a:b', b'\xff\xfe', b'a|a|a', b'x' * 5000, b'\xc3\xa9', b'world']
    return replace_match(data, QUOTED, rng, lambda match: b'"' + rng.choice(odd) + b'"')


def rename_node(data, rng):
    names = [match.group(2) for match in NODE.finditer(data)]
    if len(names) < 2:
        return data
    return data.replace(b'"' + rng.choice(names) + b'"', b'"' + rng.choice(names) + b'"')


def other_type(data, rng):
    types = [match.group(1) for match in NODE.finditer(data)] + [b'transform', b'joint', b'mesh', b'nurbsSurface', b'groupParts',
                                                                 b'noSuchType', b'displayLayer', b'file', b'unknownDag']
    return replace_match(data, re.compile(rb'(?<=createNode )\w+'), rng, lambda match: rng.choice(types))


def circle_of_parents(data, rng):
    names = [match.group(2) for match in NODE.finditer(data)] or [b'a']
    lines = [b'parent -s -nc -r%s "%s" "%s";\n' % (rng.choice((b'', b' -add')), rng.choice(names), rng.choice(names))
             for _ in range(rng.choice((1, 3, 20)))]
    lines += [b'createNode transform -n "loop" -p "loop";\n'] * rng.randrange(2)
    return data + b''.join(lines)


def circle_of_connections(data, rng):
    plugs = [plug for match in PLUG.finditer(data) for plug in match.groups()]
    names = [match.group(2) for match in NODE.finditer(data)] or [b'a']
    plugs += [name + rng.choice((b'.t', b'.tx', b'.m', b'.wm', b'.oc', b'.c', b'.o', b'.i', b'.v', b'.iog', b'.is', b'.s', b'.do'))
              for name in names]
    lines = [b'connectAttr %s"%s" "%s"%s;\n' % (rng.choice((b'', b'-f ')), rng.choice(plugs), rng.choice(plugs), rng.choice((b'', b' -na')))
             for _ in range(rng.choice((1, 10, 60)))]
    return data + b''.join(lines)


def deep_nest(data, rng):
    count = rng.choice((100, 3000))
    return data + b'createNode transform -n "d";\n' + b'createNode transform -n "d" -p "d";\n' * count


def unclosed(data, rng):
    return replace_match(data, re.compile(rb'[";\n]'), rng, lambda match: rng.choice((b'', b'"', b';', b'\\', b'\0', b'/*', b'//', b'`')))


def mixed(data, rng):
    for _ in range(4):
        data = rng.choice(MUTATIONS[:-1])(data, rng) or b'\n'
    return data


# Binary scenes. What they are cut into is found by walking them as far as they go; damages that change the length of a chunk
# come with sizes that fit again (`rebuilt`) or do not.

def is_binary(data):
    return data[:4] in (b'FOR4', b'FOR8')


def chunks(data, begin=0, end=None):
    """(offset, heading's length, payload's end, whether a group) of all chunks at all levels."""
    wide = data[3:4] == b'8'
    head = 16 if wide else 8
    end = len(data) if end is None else end
    while begin + head <= end:
        size, = struct.unpack_from('>Q' if wide else '>I', data, begin + head - (8 if wide else 4))
        stop = min(begin + head + size, end)
        is_group = data[begin:begin + 4] in (b'FOR4', b'LIS4', b'FOR8', b'LIS8')
        yield begin, head, stop, is_group
        if is_group:
            yield from chunks(data, begin + head + 4, stop)
        begin = stop if is_group else begin + head + (stop - begin - head + head // 2 - 1) // (head // 2) * (head // 2)


def tree(data, begin=0, end=None):
    """Leaves (tag, payload) and groups (tag, kind, children), nested."""
    found, skip = [], begin
    for at, head, stop, is_group in chunks(data, begin, end):
        if at >= skip:
            tag = data[at:at + 4].decode('latin1')
            found.append((tag, data[at + head:at + head + 4].decode('latin1'), tree(data, at + head + 4, stop)) if is_group
                         else (tag, data[at + head:stop]))
            skip = stop
    return found


def rebuilt(nodes, mb):
    return b''.join(mb.leaf(*node) if len(node) == 2 else mb.group(node[1], rebuilt(node[2], mb), sort=node[0][:3]) for node in nodes)


def lists_of(nodes):
    yield nodes
    for node in nodes:
        if len(node) == 3:
            yield from lists_of(node[2])


def with_tree(data, rng, change):
    """The scene after `change(list of chunks, position)` somewhere in its tree, all sizes fitting again."""
    nodes = tree(data)
    lists = [entry for entry in lists_of(nodes) if entry]
    if not lists:
        return data
    children = rng.choice(lists)
    change(children, rng.randrange(len(children)))
    return rebuilt(nodes, MayaBinary(data[3:4] == b'8'))


def delete_chunks(data, rng):
    return with_tree(data, rng, lambda children, at: children.__delitem__(slice(at, at + rng.choice((1, 1, 5)))))


def repeat_chunks(data, rng):
    return with_tree(data, rng, lambda children, at: children.__setitem__(slice(at, at + 1), children[at:at + 1] * rng.choice((2, 3, 50))))


def move_chunk(data, rng):
    return with_tree(data, rng, lambda children, at: children.insert(rng.randrange(len(children) + 1), children.pop(at)))


def change_leaf(data, rng, change):
    """The scene with another payload of one leaf, half of the time one of the longer ones."""
    nodes = tree(data)
    leaves = [(children, at) for children in lists_of(nodes) for at, node in enumerate(children) if len(node) == 2]
    if not leaves:
        return data
    leaves.sort(key=lambda entry: len(entry[0][entry[1]][1]))
    children, at = rng.choice(leaves[-8:] if rng.randrange(2) else leaves)
    children[at] = (children[at][0], change(children[at][1]))
    return rebuilt(nodes, MayaBinary(data[3:4] == b'8'))


def shorten_leaf(data, rng):
    return change_leaf(data, rng, lambda payload: payload[:rng.randrange(len(payload) + 1)])


def lengthen_leaf(data, rng):
    return change_leaf(data, rng, lambda payload: payload + bytes(rng.randrange(256) for _ in range(rng.choice((1, 4, 8, 999)))))


def odd_words(data, rng):
    """Counts, indices and numbers: four or eight bytes of a payload become odd ones."""
    odd = [struct.pack('>I', n) for n in (0, 1, 2, 0x7fffffff, 0x80000000, 0xffffffff, 0x40000000, 0x20000000, 0x10000, 1000000)]
    odd += [struct.pack('>d', n) for n in (float('nan'), float('inf'), -1e308, 1e-310, 1e39)]

    def change(payload):
        for _ in range(rng.choice((1, 1, 6))):
            if len(payload) >= 4:
                at, word = rng.randrange(len(payload) - 3), rng.choice(odd)
                payload = payload[:at] + word + payload[at + len(word):]
        return payload
    return change_leaf(data, rng, change)


def odd_sizes(data, rng):
    """Sizes of chunks become others while all else stands where it stood."""
    wide = data[3:4] == b'8'
    sizes = (0, 1, 3, 4, 5, 0x7fffffff, 0xffffffff, 0xfffffff0) + ((1 << 63, (1 << 64) - 1, 1 << 32) if wide else ())
    found = list(chunks(data))
    for at, head, stop, _ in rng.sample(found, min(len(found), rng.choice((1, 1, 4)))):
        size = rng.choice(sizes + (stop - at + rng.choice((-9, -1, 1, 4, 8, 100)),))
        where = at + head - (8 if wide else 4)
        data = data[:where] + struct.pack('>Q' if wide else '>I', max(size, 0)) + data[at + head:]
    return data


def other_codes(data, rng):
    """Tags and kinds become those of other chunks, or nobody's."""
    found = [at for at, _, _, _ in chunks(data)] + [at + head for at, head, _, is_group in chunks(data) if is_group]
    for at in rng.sample(found, min(len(found), rng.choice((1, 3, 10)))):
        other = rng.choice(found)
        code = rng.choice((data[other:other + 4], data[other:other + 4], b'ODD!', b'\0\x11\x5c\0', b'FOR8', b'DMSH', b'MESH', b'XFRM'))
        data = data[:at] + code + data[at + 4:]
    return data


def other_texts(data, rng):
    """Names and plugs become others of the same length or not, with sizes that fit."""
    texts = [part for at, head, stop, is_group in chunks(data) if not is_group
             for part in re.findall(rb'[|:\w.\[\]]{1,60}(?=\0)', data[at + head:stop])]
    odd = [b'', b'|', b'::', b'x' * 5000, b'\xff\xfe', b't[0:2147483646]', b'pt[4294967295]', b'vt[5:2]', b'a.b.c.d.e.f.g.h.i.j.k.l.m']

    def change(payload):
        found = list(re.finditer(rb'[|:\w.\[\]]{1,60}(?=\0)', payload))
        if not found:
            return payload
        match = rng.choice(found)
        return payload[:match.start()] + rng.choice(odd + texts[:200] * 2 or [b'']) + payload[match.end():]
    return change_leaf(data, rng, change)


def mixed_binary(data, rng):
    for _ in range(4):
        data = rng.choice(BINARY_MUTATIONS[:-1])(data, rng) or b'\n'
    return data


BINARY_MUTATIONS = [flip_bytes, overwrite_bytes, delete_bytes, truncate, delete_chunks, repeat_chunks, move_chunk, shorten_leaf,
                    lengthen_leaf, odd_words, odd_sizes, other_codes, other_texts, mixed_binary]


MUTATIONS = [flip_bytes, overwrite_bytes, delete_bytes, truncate, delete_statements, duplicate_statements, move_statement,
             odd_number, odd_index, odd_size, other_name, rename_node, other_type, circle_of_parents, circle_of_connections,
             deep_nest, unclosed, mixed]


def own_scenes():
    yield 'instances.ma', scene(transform('a', None, triple('.t', 1, 2, 3)), transform('b', 'a'), triangle('s', '|a|b'), transform('c'),
                                'parent -s -nc -r -add "|a|b" "c";\n', shaded('|a|b|s'),
                                transform('j1', None, triple('.s', 2, 1, 1), type='joint'), transform('j2', 'j1', type='joint'),
                                connect_scale(), node('displayLayer', 'layer1', None, '".v" no'), 'connectAttr "layer1.di" "c.do";\n')
    yield 'faces.ma', scene(transform('a'), cube('s', 'a', '".pt[3]" -type "float3" 1 1 1'), shader('phong', 'red'),
                            shader('lambert', 'blue'), face_set('s', 0, 'redSG', 0, 2), face_set('s', 1, 'blueSG', 3, 5),
                            node('file', 'file1', None, '".ftn" -type "string" "wood.png"'), 'connectAttr "file1.oc" "blue.c";\n')


def twins_of(seeds):
    """Text scenes in binary form, 32-bit and 64-bit in turn."""
    for number, (name, data) in enumerate(seeds):
        try:
            yield os.path.splitext(name)[0] + '.mb', twin(data.decode('utf-8'), wide=number % 2 == 1)
        except (Unsupported, ValueError, KeyError, StopIteration):
            pass  # odd on purpose


def connect_scale():
    return 'connectAttr "j1.s" "j2.is";\n'


class Judge:
    def __init__(self, options, folder):
        self.importer = Importer(options.importer, options.runner)
        self.folder = folder
        with open(options.importer, 'rb') as file:
            self.sanitized = b'__asan_init' in file.read()

    def limit(self, size):
        plain = 20 * size + 256 * MIB
        return 2 * plain + 512 * MIB if self.sanitized else plain

    def run(self, number, data):
        """What is wrong with the run on a scene; empty when nothing is."""
        place = os.path.join(self.folder, str(number))
        os.mkdir(place)
        try:
            return self.judge(place, data)
        finally:
            shutil.rmtree(place, ignore_errors=True)

    def judge(self, place, data):
        scene_path, output = os.path.join(place, 'scene.ma'), os.path.join(place, 'out.obx')
        with open(scene_path, 'wb') as file:
            file.write(data)
        status, peak, told = self.start(self.importer.command(scene_path, output), place)
        if status == 'late':
            return 'still running after %d s' % SECONDS
        if b'Sanitizer' in told or b'runtime error:' in told:
            return 'sanitizer: %s' % told[-1500:].decode('utf-8', 'replace')
        if status not in (0, 1):
            return 'status %d: %s' % (status, told[-300:].decode('utf-8', 'replace'))
        if peak > self.limit(len(data)) and not self.importer.foreign:
            return 'took %d MiB for %d bytes' % (peak // MIB, len(data))
        try:
            found = obx.read(output)
        except (OSError, obx.SyntaxFault) as fault:
            return 'scene file: %s' % fault
        faults = obx.faults(found, must_be_finite=False)
        if faults:
            return 'scene file: %s' % '; '.join(faults[:3])
        if found.first('load') is None and not told.strip():
            return 'not opened, and not a word on standard error'
        return ''

    def start(self, command, place):
        """(status or "late", peak memory in bytes, standard error); the peak is that of this process alone."""
        env = dict(os.environ, TMPDIR=place, ASAN_OPTIONS='detect_leaks=0:quarantine_size_mb=16:allocator_may_return_null=0')
        if self.importer.foreign:
            env = dict(os.environ)
        with open(os.path.join(place, 'stderr'), 'w+b') as error:
            process = subprocess.Popen(command, cwd=place, env=env, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=error)
            late = threading.Event()

            def stop():
                late.set()
                os.kill(process.pid, signal.SIGKILL)

            timer = threading.Timer(SECONDS, stop)
            timer.start()
            _, status, usage = os.wait4(process.pid, 0)
            timer.cancel()
            process.returncode = os.waitstatus_to_exitcode(status)
            error.seek(0)
            told = error.read()
        return 'late' if late.is_set() else process.returncode, usage.ru_maxrss * 1024, told


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--importer', required=True)
    parser.add_argument('--runner', default='')
    parser.add_argument('-n', type=int, default=300)
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--keep', default='mutated_scenes')
    parser.add_argument('--only-binary', action='store_true', help='leave the text scenes out')
    parser.add_argument('scenes', nargs='*')
    options = parser.parse_args()
    seeds = [(name, text.encode()) for name, text in own_scenes()]
    for path in sorted(options.scenes):
        with open(path, 'rb') as file:
            seeds.append((os.path.basename(path), file.read()))
    seeds = [(name, data) for name, data in seeds if data]
    seeds += list(twins_of(seeds))
    if options.only_binary:
        seeds = [(name, data) for name, data in seeds if is_binary(data)]
    with tempfile.TemporaryDirectory() as folder:
        return run(options, seeds, Judge(options, folder))


def run(options, seeds, judge):
    def one(number):
        rng = random.Random('%d %d' % (options.seed, number))
        name, data = seeds[number % len(seeds)]
        changes = BINARY_MUTATIONS if is_binary(data) else MUTATIONS
        change = changes[(number // len(seeds)) % len(changes)]
        data = change(data, rng)
        return number, name, change.__name__, data, judge.run(number, data)

    failed, kinds = 0, {}
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for number, name, change, data, wrong in pool.map(one, range(options.n)):
            kinds[change] = kinds.get(change, 0) + 1
            if wrong:
                failed += 1
                os.makedirs(options.keep, exist_ok=True)
                kept = os.path.abspath(os.path.join(options.keep, 'seed%d_%d_%s_%s' % (options.seed, number, change, name)))
                with open(kept, 'wb') as file:
                    file.write(data)
                print('FAILED %s\n       %s' % (kept, wrong))
    print('%d damaged scenes from %d seeds in %d ways, %d failed%s'
          % (options.n, len(seeds), len(kinds), failed, ' (under AddressSanitizer)' if judge.sanitized else ''))
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
