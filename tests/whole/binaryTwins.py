#!/usr/bin/env python3
"""Converts text scenes and their binary twins, and sees that the results are the same to the last byte.

  binaryTwins.py [--runner WRAPPER] --importer PATH SCENE...

The twins are written by tests/support/binaryTwin.py, which knows nothing of the importer: both forms of a scene say the
same, so the scene files must, too. Each is opened under the same name, which says nothing of the form.
"""
import argparse
import os
import sys
import tempfile
import unittest

FOLDER = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(FOLDER, '..', 'support'))
sys.path.insert(0, FOLDER)
import animatedScenes
import layerScenes
import sceneFiles
import surfaceScenes
from binaryTwin import Unsupported, triangle_scene, twin
from importer import Importer
from mayaText import scene, shaded, transform, triangle
from mutated import own_scenes

OPTIONS = None


class TwinImporter(Importer):
    """Runs each text scene, then its twins in its place, and keeps what differs."""

    def __init__(self, program, runner=''):
        super().__init__(program, runner)
        self.pairs, self.differences = 0, []

    def run(self, scene, output, folder, environment=None, **settings):
        done = super().run(scene, output, folder, environment, **settings)
        try:
            text = self.read(scene)
            twins = [twin(text.decode('utf-8'), wide) for wide in ((True,) if self.foreign else (False, True))]
        except (OSError, Unsupported, KeyError, ValueError):
            return done
        result = self.read(output)
        for data in twins:
            self.write(scene, data)
            again = super().run(scene, output, folder, environment, **settings)
            self.pairs += 1
            if (again.returncode, again.stderr, self.read(output)) != (done.returncode, done.stderr, result):
                self.differences.append(text.decode('utf-8'))
        self.write(scene, text)
        self.write(output, result)
        return done

    @staticmethod
    def read(path):
        with open(path, 'rb') as file:
            return file.read()

    @staticmethod
    def write(path, data):
        with open(path, 'wb') as file:
            file.write(data)


class BinaryTwins(unittest.TestCase):
    def convert(self, data, **settings):
        with tempfile.TemporaryDirectory() as folder:
            path, output = os.path.join(OPTIONS.folder, 'scene'), os.path.join(folder, 'out.obx')
            with open(path, 'wb') as file:
                file.write(data)
            done = OPTIONS.importer.run(path, output, folder, **settings)
            self.assertEqual(done.returncode, 0, done.stderr)
            with open(output, 'rb') as file:
                return file.read(), done.stderr

    def expect_same(self, text, **settings):
        expected = self.convert(text.encode(), **settings)
        self.assertIn(b'load "', expected[0])
        for wide in (False, True):
            self.assertEqual(self.convert(twin(text, wide), **settings), expected)

    def test_scenes_of_files(self):
        for path in OPTIONS.scenes:
            with open(path, encoding='utf-8') as file, self.subTest(path):
                self.expect_same(file.read())

    def test_small_scenes(self):
        for name, text in own_scenes():
            with self.subTest(name):
                self.expect_same(text)

    def test_nurbs_and_layers(self):
        for path in OPTIONS.scenes:
            with open(path, encoding='utf-8') as file, self.subTest(path):
                text = file.read()
                self.expect_same(text, include_nurbs=True, tessellate=False)
                self.expect_same(text, split_layers=True, frame=7)

    def test_scenes_of_the_other_tests(self):
        sceneFiles.IMPORTER = importer = TwinImporter(OPTIONS.importer.program, *OPTIONS.importer.runner)
        modules = (sceneFiles, animatedScenes, layerScenes, surfaceScenes)
        suite = unittest.TestSuite(map(unittest.defaultTestLoader.loadTestsFromModule, modules))
        with open(os.devnull, 'w') as nowhere:
            unittest.TextTestRunner(nowhere).run(suite)
        self.assertEqual(importer.differences, [])
        self.assertGreater(importer.pairs, 100)

    def test_units_are_for_show(self):
        for unit in ('meter', 'inch', 'foot'):
            text = scene(transform('a', None, '".t" -type "double3" 1 2 3', '".r" -type "double3" 10 20 30'), triangle('s', 'a'),
                         shaded('s'), unit=unit)
            self.expect_same(text)

    def test_a_triangle_written_by_hand(self):
        for wide in (False, True):
            self.assertIn(b'triShape', self.convert(triangle_scene(wide))[0])


def main():
    global OPTIONS
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--runner', default='')
    parser.add_argument('--importer', required=True)
    parser.add_argument('scenes', nargs='*')
    OPTIONS = parser.parse_args()
    OPTIONS.importer = Importer(OPTIONS.importer, OPTIONS.runner)
    with tempfile.TemporaryDirectory() as OPTIONS.folder:
        unittest.main(argv=sys.argv[:1])


if __name__ == '__main__':
    main()
