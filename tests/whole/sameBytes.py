#!/usr/bin/env python3
"""The same scene gives the same bytes: twice over, under other locales, and on the other system.

  sameBytes.py --importer A [--runner WRAPPER] [--other B] [--other-runner WRAPPER] SCENE...

The scenes given and some of the test's own are converted by A, and by B where there is one. Only the value of "source file"
may differ between two systems: it is the path of the scene there.
"""
import argparse
import hashlib
import os
import re
import shutil
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support'))
from importer import Importer
from mayaText import cube, face_set, mesh, node, scene, shaded, shader, transform, triple

SOURCE = re.compile(rb'(?m)^( *attribute "source file" ).*$')
LOCALES = ({'LC_ALL': 'de_DE.UTF-8', 'LANG': 'de_DE.UTF-8'}, {'LC_ALL': 'tr_TR.UTF-8'}, {'LC_NUMERIC': 'fr_FR.UTF-8', 'LANG': 'ja_JP'},
           {'LC_ALL': 'C', 'TZ': 'Asia/Tokyo'})


def own_scenes():
    """Names of files and their texts: what is likely to differ between machines."""
    angles = [transform('t%d' % k, None, triple('.t', 0.1 * k, 1e-7 * k, 1e9 / (k + 1)), triple('.r', 37.7 * k, 11.3 * k, -73.1 * k),
                        triple('.s', 1 / 3, 2 / 3, 1e-3), '".ro" %d' % (k % 6)) for k in range(24)]
    yield 'numbers.ma', scene(*angles)
    yield 'faces.ma', scene(transform('a'), cube('s', 'a'), shader('phong', 'red', '".c" -type "float3" 0.7 0.1 0.33'),
                            shader('lambert', 'blue', '".it" -type "float3" 0.1 0.2 0.4'), face_set('s', 0, 'redSG', 0, 2),
                            face_set('s', 1, 'blueSG', 3, 5))
    ring = [(round(3 * x, 9), round(y, 9), 0) for x, y in ((0, 0), (4, .3), (3.1, 2), (4.2, 4), (2, 2.9), (-.5, 4.4), (1, 2))]
    yield 'b\u00fcro \u5ba4.ma', scene(transform('\u5ba4'), mesh('ring', '\u5ba4', ring, [list(range(7))]), shaded('ring'),
                                       node('pointLight', 'light'), unit='inch')
    yield 'wave.ma', scene(transform('w'), wave('ws', 'w'), shaded('ws'))


def wave(name, parent, size=24):
    """A soft sheet: its averaged normals show every difference in rounding."""
    points = [(x / 3, ((x * 7 + z * 13) % 11) / 7, z / 3) for x in range(size) for z in range(size)]
    faces = [[x * size + z, x * size + z + 1, (x + 1) * size + z + 1, (x + 1) * size + z]
             for x in range(size - 1) for z in range(size - 1)]
    return mesh(name, parent, points, faces, smooth=True)


class SameBytes:
    def __init__(self, options, folder):
        self.folder = folder
        self.importer = Importer(options.importer, options.runner)
        self.other = Importer(options.other, options.other_runner) if options.other else None
        self.compared, self.wrong = 0, []

    def convert(self, importer, name, environment=None, **settings):
        """Bytes of the scene file; names are relative to the folder, so that both systems read the same ones."""
        output = os.path.join(self.folder, 'out.obx')
        if os.path.exists(output):
            os.remove(output)
        done = importer.run(name, 'out.obx', self.folder, environment, **settings)
        if done.returncode != 0 or not os.path.exists(output):
            raise RuntimeError('%s: exit status %d: %s' % (name, done.returncode, done.stderr[-300:]))
        with open(output, 'rb') as file:
            data = file.read()
        if b'load "orvrtopt.so"' not in data:
            raise RuntimeError('%s was not opened: %s' % (name, done.stderr[-300:]))
        return data

    def compare(self, what, first, second):
        self.compared += 1
        if first == second:
            return
        at = next((k for k, (a, b) in enumerate(zip(first, second)) if a != b), min(len(first), len(second)))
        around = slice(max(0, at - 60), at + 60)
        self.wrong.append('%s: %d and %d bytes, first difference at %d:\n    %r\n    %r'
                          % (what, len(first), len(second), at, first[around], second[around]))

    def scene(self, name):
        for settings in ({}, {'debugobx': True}, {'experimental': 'beta'}, {'unique_materials': True, 'collapse_hierarchy': False}):
            first = self.convert(self.importer, name, **settings)
            told = '%s %s' % (name, settings or '')
            self.compare(told + ' twice', first, self.convert(self.importer, name, **settings))
            if not settings:
                # Wine names files in the locale that it is started under, and shows no others
                for locale in LOCALES if name.isascii() or not self.importer.foreign else ():
                    self.compare('%s under %s' % (told, locale), first, self.convert(self.importer, name, locale))
            if self.other:
                second = self.convert(self.other, name, **settings)
                self.compare(told + ' on the other system', SOURCE.sub(rb'\1', first), unstamped(SOURCE.sub(rb'\1', second), first))
            print('%s  %8d bytes  %s' % (hashlib.sha256(SOURCE.sub(rb'\1', first)).hexdigest()[:16], len(first), told))


STAMP = re.compile(rb'(Vistrel 7\.2\.-1 \(built )[^)\n]*\)')


def unstamped(data, model):
    """The data with the time of building that the model has: two programs are built at two times."""
    stamp = STAMP.search(model)
    return STAMP.sub(lambda match: stamp.group(), data) if stamp else data


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--importer', required=True)
    parser.add_argument('--runner', default='')
    parser.add_argument('--other', default='')
    parser.add_argument('--other-runner', default='')
    parser.add_argument('scenes', nargs='*')
    options = parser.parse_args()
    if options.other and not os.path.exists(options.other):
        options.other = ''
    folder = tempfile.mkdtemp(prefix='same-bytes-')
    try:
        return run(options, folder)
    finally:
        shutil.rmtree(folder, ignore_errors=True)


def run(options, folder):
    test = SameBytes(options, folder)
    names = []
    for path in options.scenes:
        names.append(os.path.basename(path))
        shutil.copy(path, folder)
    for name, text in own_scenes():
        names.append(name)
        with open(os.path.join(folder, name), 'w', encoding='utf-8', newline='\n') as file:
            file.write(text)
    for name in names:
        test.scene(name)
    for line in test.wrong:
        print('FAILED ' + line)
    if not test.other:
        print('skipped: the comparison with another system, no second importer was given or found')
    print('%d scenes, %d comparisons, %d differ' % (len(names), test.compared, len(test.wrong)))
    return 1 if test.wrong else 0


if __name__ == '__main__':
    sys.exit(main())
