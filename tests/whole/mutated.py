#!/usr/bin/env python3
"""Damages scenes in many ways, the same ways for the same seed, and sees that the importer takes each with good grace.

  mutated.py --importer PATH [-n 300] [--seed 1] [--runner WRAPPER] [--keep FOLDER] SCENE...

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
import subprocess
import sys
import tempfile
import threading

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support'))
import obx
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
    parser.add_argument('scenes', nargs='*')
    options = parser.parse_args()
    seeds = [(name, text.encode()) for name, text in own_scenes()]
    for path in sorted(options.scenes):
        with open(path, 'rb') as file:
            seeds.append((os.path.basename(path), file.read()))
    seeds = [(name, data) for name, data in seeds if data]
    with tempfile.TemporaryDirectory() as folder:
        return run(options, seeds, Judge(options, folder))


def run(options, seeds, judge):
    def one(number):
        rng = random.Random('%d %d' % (options.seed, number))
        name, data = seeds[number % len(seeds)]
        change = MUTATIONS[(number // len(seeds)) % len(MUTATIONS)]
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
