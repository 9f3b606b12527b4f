#!/usr/bin/env python3
"""The reader of tests/support accepts a file written by hand and refuses every small departure from it."""
import math
import os
import struct
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support'))
import obx


def floats(letter, *values):
    return b'[ \x01\x02\x03' + letter + struct.pack('<I%df' % len(values), len(values), *values) + b'] '


def integers(*values):
    return b'[ \x01\x02\x03i' + struct.pack('<I%di' % len(values), len(values), *values) + b'] '


LOAD = b'load "orvrtopt.so" {\n"import_mode" on,\n"import_up_vector" 1,\n"meter_scale" 39.3701,\n"ext" off,\n}\n'
CAMERA = (b'\ncamera "persp" {\nprojection "perspective"\nfov 54.4322\nreflection map "orv_envmap" {\n'
          b'"texture" "startup.hdr",\n"format" 3,\n"radius" 25,\n}\nposition 0 0 10\n'
          b'transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 10 1\n}\n')
MATERIALS = (b'\n#define material "lambert1" {\nsurface "orv_diffuse" {\n"diffuse" 0.4 0.4 0.4,\n}\n}\n'
             b'\n#define material "wood" {\nsurface "orv_advanced" {\n"diffuse" 0.4 0.4 0.4,\n"glossy" on,\n'
             b'"diffuse" ! "texture_rgb" {\n"wrap" on,\n"texture" "wood.png",\n},\n}\n}\n')
OBJECT = (b'#define object "triShape" {\nid 1\ngeometry "triangles" {\n"vertices" '
          + floats(b'c', 0, 0, 0, 1, 0, 0, 0, 1, 0) + b',\n"triangles" ' + integers(0, 1, 2) + b',\n"uv_tex" '
          + floats(b'f', 0, 0, 1, 0, 0, 1) + b',\n"normals" ' + floats(b'c', 0, 0, 1, 0, 0, 1, 0, 0, 1)
          + b',\n}\n}\nprogress "triShape" 0.200\n\n#print "Export "geometry""\n')
USE = b'object "triShape" {\ngeometry "instance" {\n"id" 1,\n}\nmaterial "lambert1"\n}\n'
GROUP = (b'\ngroup "room" {\nflags 32768\nattribute "source file" "/a/room.ma"\n'
         b'\ngroup xX62c3bc {\nflags 32768\ntransform 2 0 0 0 0 2 0 0 0 0 2 0 1 2 3 1\n' + USE
         + b'\ngroup "inner" {\ntransform 1 0 0 0 0 1 0 0 0 0 1 0 10 0 0 1\n' + USE + b'}\n}\n}\n')
FILE = (obx.HEADER + b'#print "' + obx.BANNER.encode() + b'"\nversion 9\n\n' + LOAD + CAMERA + MATERIALS + OBJECT + GROUP)


class ReaderTest(unittest.TestCase):
    def refused(self, data):
        with self.assertRaises(obx.SyntaxFault) as caught:
            obx.parse(data)
        return caught.exception.offset

    def told(self, old, new):
        self.assertIn(old, FILE)
        return '\n'.join(obx.faults(obx.parse(FILE.replace(old, new, 1))))

    def test_reads_the_tree(self):
        scene = obx.parse(FILE)
        self.assertEqual(obx.faults(scene), [])
        self.assertEqual(scene.first('load').parameters(), ['import_mode', 'import_up_vector', 'meter_scale', 'ext'])
        self.assertEqual([i.value for i in scene.first('load').items], [True, 1, 39.3701, False])
        camera = scene.first('camera')
        self.assertEqual(camera.get('position'), (0, 0, 10))
        shader = camera.get('reflection map')
        self.assertEqual((shader.name, shader.get('radius')), ('orv_envmap', 25))
        wood = scene.all('material')[1].first('surface').value
        self.assertEqual(wood.connected('diffuse').get('texture'), 'wood.png')
        geometry = scene.first('object').first('geometry')
        self.assertEqual(list(geometry.get('triangles')), [0, 1, 2])
        self.assertEqual(geometry.get('vertices').typecode, 'f')

    def test_places_objects_by_row_vectors(self):
        first, second = obx.placements(obx.parse(FILE))
        self.assertEqual((first.path, second.path), (('b\u00fc',), ('b\u00fc', 'inner')))
        self.assertEqual(first.world[12:15], (1, 2, 3))
        self.assertEqual(second.world[12:15], (2 * 10 + 1, 2, 3))
        self.assertEqual(second.world[0], 2)
        self.assertIs(first.geometry, second.geometry)

    def test_every_prefix_is_refused(self):
        whole_pieces = set()
        piece = obx.HEADER + b'#print "' + obx.BANNER.encode() + b'"\n'
        for more in (b'', b'version 9\n\n', LOAD, CAMERA, MATERIALS[:MATERIALS.index(b'\n#', 5)],
                     MATERIALS[MATERIALS.index(b'\n#', 5):], OBJECT[:OBJECT.index(b'progress')],
                     OBJECT[OBJECT.index(b'progress'):OBJECT.index(b'#print')], OBJECT[OBJECT.index(b'#print'):], GROUP):
            piece += more
            whole_pieces.add(len(piece))
        self.assertIn(len(FILE), whole_pieces)
        whole_pieces.add(len(obx.HEADER))
        for length in range(len(FILE)):
            if length not in whole_pieces:
                self.refused(FILE[:length])

    def test_a_blank_anywhere_outside_texts_and_arrays_is_refused(self):
        for old, new in ((b'version 9\n\n', b'version 9\n'), (b'"ext" off,', b'"ext" off ,'), (b'},\n', b'}\n'),
                         (b'fov 54.4322\n', b'fov 54.4322,\n'), (b'\n\ngroup "inner"', b'\ngroup "inner"'),
                         (b'id 1\n', b'id  1\n'), (b'] ,', b'],'), (b'"glossy" on', b'"glossy" true'),
                         (b'1 2 3 1\n', b'1 2 3\n'), (b'xX62c3bc', b'xX62C3BC'), (b'xX62c3bc', b'xX6263'),
                         (b'"wood" {', b'"wo\xc3\xb6d" {'), (b' 0.200\n', b' 0.2\n'), (b'"meter_scale" 39.3701', b'"meter_scale" 39.37010'),
                         (b'flags 32768', b'flags 032768'), (b'position 0 0 10', b'position 0 NaN 10'), (b'#print', b'print')):
            self.assertIn(old, FILE)
            self.refused(FILE.replace(old, new, 1))

    def test_offset_is_that_of_the_fault(self):
        at = FILE.index(b'fov ')
        self.assertEqual(self.refused(FILE[:at] + b'!' + FILE[at:]), at)

    def test_array_that_announces_too_much_is_refused(self):
        self.refused(FILE.replace(b'\x01\x02\x03i\x03\0\0\0', b'\x01\x02\x03i\xff\xff\xff\x7f', 1))

    def test_references_and_ranges(self):
        self.assertIn('not defined before', self.told(b'"id" 1,', b'"id" 2,'))
        self.assertIn('not defined before its use', self.told(b'material "lambert1"\n}', b'material "lambert2"\n}'))
        self.assertIn('without an id', self.told(b'id 1\n', b''))
        self.assertIn('defined twice', self.told(b'material "wood"', b'material "lambert1"'))
        self.assertIn('3 entries', self.told(integers(0, 1, 2), integers(0, 1, 3)))
        self.assertIn('3 entries', self.told(integers(0, 1, 2), integers(0, 1, -1)))
        self.assertIn('not finite', self.told(floats(b'f', 0, 0, 1, 0, 0, 1), floats(b'f', 0, 0, math.nan, 0, 0, 1)))
        self.assertIn('not finite', self.told(b'position 0 0 10', b'position 0 nan 10'))
        self.assertIn('not finite', self.told(b'0 2 0 1 2 3 1', b'0 2 0 1 -inf 3 1'))
        self.assertIn('not finite', self.told(b'"radius" 25', b'"radius" inf'))
        self.assertIn('of width 2', self.told(floats(b'f', 0, 0, 1, 0, 0, 1), floats(b'f', 0, 0, 1, 0)))
        self.assertIn('out of order', self.told(b'flags 32768\ntransform 2 0 0 0 0 2 0 0 0 0 2 0 1 2 3 1\n',
                                                b'transform 2 0 0 0 0 2 0 0 0 0 2 0 1 2 3 1\nflags 32768\n'))

    def test_text_arrays_break_after_nine_then_eight(self):
        good = b'[ ' + b','.join(b'%d' % n for n in range(9)) + b',\n' + b','.join(b'%d' % n for n in range(9, 12)) + b' ] '
        scene = obx.parse(FILE.replace(integers(0, 1, 2), good))
        self.assertEqual(list(scene.first('object').first('geometry').get('triangles')), list(range(12)))
        self.refused(FILE.replace(integers(0, 1, 2), good.replace(b'8,\n9', b'8,9')))


if __name__ == '__main__':
    unittest.main()
