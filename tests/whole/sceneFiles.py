#!/usr/bin/env python3
"""Small scenes from end to end: what the scene file holds, with expectations worked out by hand.

  sceneFiles.py [--runner WRAPPER] MAYA_IMPORTER [unittest arguments]
"""
import argparse
import math
import os
import re
import shutil
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support'))
import obx
from importer import Importer
from mayaText import (connect, cube, face_set, mesh, node, scene, shaded, shader, transform, triangle, triple)

IMPORTER = None
COLLAPSED, KEPT = 0x8000, 0x8001
NEW = 'createNode transform -s -n "persp";\ncreateNode camera -s -n "perspShape" -p "persp";\n'  # what a new scene saves first


class SceneFileTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix='scene-files-')
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.folder, name)

    def run_importer(self, content, name='scene.ma', **settings):
        """Bytes of the scene file that the statements become."""
        with open(self.path(name), 'wb') as file:
            file.write(content if isinstance(content, bytes) else content.encode())
        done = IMPORTER.run(self.path(name), self.path('out.obx'), self.folder, **settings)
        self.assertEqual(done.returncode, 0, done.stderr)
        with open(self.path('out.obx'), 'rb') as file:
            return file.read()

    def convert(self, content, name='scene.ma', **settings):
        """The scene, read and found faultless."""
        found = obx.parse(self.run_importer(content, name, **settings))
        self.assertEqual(obx.faults(found), [])
        return found

    def near(self, actual, expected, places=5):
        self.assertEqual(len(actual), len(expected), (actual, expected))
        for a, e in zip(actual, expected):
            self.assertAlmostEqual(a, e, places, (tuple(actual), tuple(expected)))

    def geometries(self, found, name):
        return [o.first('geometry') for o in found.all('object') if o.name == name]

    def root(self, found):
        return found.groups()[0]


def points_of(geometry, name='vertices', width=3):
    values = geometry.get(name)
    return [tuple(values[i:i + width]) for i in range(0, len(values), width)]


def corners_of(geometry):
    points, indices = points_of(geometry), geometry.get('triangles')
    return [[points[i] for i in indices[k:k + 3]] for k in range(0, len(indices), 3)]


def area_vector(corners):
    """Sum of the triangles' area vectors: their length is the area where all face one way."""
    total = [0.0, 0.0, 0.0]
    for a, b, c in corners:
        u, v = [b[k] - a[k] for k in range(3)], [c[k] - a[k] for k in range(3)]
        for k in range(3):
            total[k] += (u[(k + 1) % 3] * v[(k + 2) % 3] - u[(k + 2) % 3] * v[(k + 1) % 3]) / 2
    return total


def area(corners):
    return sum(math.hypot(*area_vector([triangle_corners])) for triangle_corners in corners)


class WholeFile(SceneFileTest):
    def test_golden_of_a_triangle_in_the_debug_layout(self):
        views = ''.join('createNode transform -s -n "%s";\n\tsetAttr ".t" -type "double3" %s;\n\tsetAttr ".r" -type "double3" 0 0 0;\n'
                        'createNode camera -s -n "%sShape" -p "%s";\n\tsetAttr ".ncp" 0.1;\n\tsetAttr ".fcp" 1000;\n'
                        '\tsetAttr ".cap" -type "double2" 1.4173228346456694 0.94488188976377963;\n\tsetAttr ".fl" 35;\n'
                        % (name, place, name, name) for name, place in
                        (('persp', '0 0 10'), ('top', '0 50 0'), ('front', '0 0 50'), ('side', '50 0 0')))
        text = self.run_importer(scene(views, transform('tri', None, triple('.t', 1, 2, 3)), triangle('triShape', 'tri'),
                                       shaded('triShape')), name='tri.ma', debugobx=True).decode('latin-1')
        text = re.sub(r'(attribute "source file" ")[^"\n]*"', r'\1PATH"', text)
        text = re.sub(r'(Vistrel 7\.2\.-1 \(built )[^)\n]*\)', r'\1STAMP)', text)
        text = re.sub(r'-0(?=[ \n])', '0', text)  # zeros of either sign
        self.maxDiff = None
        self.assertEqual(text.split('\n'), GOLDEN.split('\n'))

    def test_scene_that_cannot_be_opened_leaves_the_beginning_and_status_0(self):
        done = IMPORTER.run(self.path('none.ma'), self.path('out.obx'), self.folder)
        self.assertEqual(done.returncode, 0)
        with open(self.path('out.obx'), 'rb') as file:
            self.assertEqual(file.read(), obx.HEADER + b'#print "' + obx.BANNER.encode() + b'"\nversion 9\n\n')
        self.assertIn(b'could not open Maya file', done.stderr)

    def test_empty_scene_has_persp_lambert1_once_and_four_view_groups(self):
        found = self.convert(scene(NEW))
        self.assertEqual([m.name for m in found.all('material')], ['lambert1'])
        self.assertEqual([c.name for c in found.all('camera')], ['persp'])
        self.assertEqual([g.name for g in self.root(found).groups()], ['persp', 'top', 'front', 'side'])
        self.assertEqual(found.all('object'), [])
        self.assertEqual(found.all('progress'), [])
        surface = found.first('material').first('surface').value
        self.assertEqual((surface.name, surface.parameters()), ('orv_diffuse', ['diffuse']))
        self.near(surface.get('diffuse'), (0.4, 0.4, 0.4))  # colour 0.5 times weight 0.8

    def test_load_block_holds_eleven_options(self):
        load = self.convert(scene(NEW)).first('load')
        self.assertEqual(load.name, 'orvrtopt.so')
        self.assertEqual([(i.name, i.value) for i in load.items],
                         [('import_mode', True), ('import_merge_groups', True), ('import_merge_objects', True),
                          ('import_up_vector', 1), ('meter_scale', 100), ('import_keep_original', True),
                          ('import_center_geometry', False), ('import_snap_to_ground', False),
                          ('import_adjust_camera', False), ('import_adjust_environment', True), ('ext', True)])

    def test_same_scene_with_a_frame_is_the_same_file_when_nothing_moves(self):
        content = scene(transform('a'), triangle('s', 'a'), shaded('s'))
        self.assertEqual(self.run_importer(content, frame=5), self.run_importer(content))

    def test_banner_of_the_exporter_follows_the_definitions(self):
        found = self.convert(scene(transform('a'), triangle('s', 'a'), shaded('s')))
        kinds = [i.kind for i in found.items]
        prints = [i.value for i in found.all('print')]
        self.assertTrue(prints[1].startswith('Export geometry. Using Maya2018. Vistrel 7.2.-1 (built '), prints)
        self.assertLess(kinds.index('object'), found.items.index(found.all('print')[1]))
        self.assertLess(found.items.index(found.all('print')[1]), kinds.index('group'))


class Groups(SceneFileTest):
    def test_root_is_named_after_the_file_and_holds_its_path(self):
        found = self.convert(scene(NEW), name='room.final.ma')
        root = self.root(found)
        self.assertEqual((root.name, root.flags, root.transform), ('room.final', COLLAPSED, None))
        self.assertEqual(list(root.attributes), ['source file'])
        written = root.attributes['source file'].replace('\\', '/')
        self.assertTrue(written.endswith(self.path('room.final.ma')), written)

    def test_every_group_bears_the_flag_of_the_kept_hierarchy(self):
        content = scene(transform('a'), transform('b', 'a'), triangle('s', '|a|b'), shaded('s'))
        for setting, flags in ((True, COLLAPSED), (False, KEPT)):
            found = self.convert(content, collapse_hierarchy=setting)
            self.assertEqual({g.flags for _, g, _ in obx.worlds(found)}, {flags})

    def test_tree_follows_the_parents_and_objects_come_before_groups(self):
        found = self.convert(scene(transform('a', None, triple('.t', 1, 0, 0)), transform('b', 'a', triple('.t', 0, 2, 0)),
                                   triangle('bs', '|a|b'), triangle('as', 'a'), transform('c'), shaded('bs'), shaded('as')))
        root = self.root(found)
        self.assertEqual([g.name for g in root.groups()], ['persp', 'top', 'front', 'side', 'a', 'c'])
        self.assertEqual([i.kind for i in root.group('a').items], ['flags', 'transform', 'object', 'group'])
        self.assertEqual(root.group('c').items[1].value, obx.IDENTITY)
        places = {p.object.name: p.world[12:15] for p in obx.placements(found)}
        self.assertEqual(places, {'as': (1, 0, 0), 'bs': (1, 2, 0)})

    def test_nine_hundred_levels(self):
        lines = [transform('n0', None, triple('.t', 1, 0, 0))]
        path = '|n0'
        for level in range(1, 900):
            lines.append(transform('n%d' % level, path, triple('.t', 1, 0, 0)))
            path += '|n%d' % level
        found = self.convert(scene(*lines, triangle('s', path), shaded('s')))
        placed = obx.placements(found)
        self.assertEqual([len(p.path) for p in placed], [900])
        self.assertEqual(placed[0].world[12:15], (900, 0, 0))

    def test_same_name_under_two_parents(self):
        found = self.convert(scene(transform('a'), transform('b'), transform('x', 'a', triple('.t', 1, 0, 0)),
                                   transform('x', 'b', triple('.t', 2, 0, 0)), triangle('s', '|b|x'), shaded('s')))
        self.assertEqual([p.path for p in obx.placements(found)], [('b', 'x')])
        self.assertEqual(obx.placements(found)[0].world[12:15], (2, 0, 0))

    def test_name_beyond_ascii_is_written_in_hexadecimal(self):
        data = self.run_importer(scene(transform('b\u00fcro')))
        self.assertIn(b'\ngroup xX62c3bc726f {\n', data)

    def test_name_with_a_quote_is_written_in_hexadecimal(self):
        data = self.run_importer(scene(transform('a\\"b')))
        self.assertIn(b'\ngroup xX612262 {\n', data)

    def test_unknown_types_become_groups_and_are_told_once_a_type(self):
        found = self.convert(scene(transform('l1'), node('pointLight', 'l1Shape', 'l1'), transform('l2'),
                                   node('pointLight', 'l2Shape', 'l2'), transform('o'), node('locator', 'oShape', 'o'),
                                   node('neverHeardOf', 'odd', 'o')))
        told = [i.value for i in found.all('print')[2:]]
        self.assertEqual(told[:2], ['Maya2018:Unhandled node(2): l1Shape: pointLight  dagPath: |l1|l1Shape',
                                    'Maya2018:Unhandled node(2): oShape: locator  dagPath: |o|oShape'])
        self.assertEqual(len(told), 3)
        self.assertTrue(told[2].startswith('Maya2018:Unhandled node(2): odd: '), told)
        root = self.root(found)
        for path in (('l1', 'l1Shape'), ('l2', 'l2Shape'), ('o', 'oShape'), ('o', 'odd')):
            group = root.group(*path)
            self.assertEqual((group.flags, group.transform), (COLLAPSED, obx.IDENTITY), path)


class Visibility(SceneFileTest):
    def shapes(self, *statements, **settings):
        found = self.convert(scene(*statements), **settings)
        return found, sorted({o.name for o in found.all('object')}), sorted(p.object.name for p in obx.placements(found))

    def test_hidden_mesh_is_absent_and_its_groups_stay(self):
        found, defined, used = self.shapes(transform('a'), triangle('s', 'a', '".v" no'), transform('b', None, '".v" no'),
                                           transform('c', 'b'), triangle('t', '|b|c'), transform('d'), triangle('u', 'd'),
                                           shaded('s'), shaded('t'), shaded('u'))
        self.assertEqual((defined, used), (['u'], ['u']))
        self.assertEqual([i.kind for i in self.root(found).group('a').items], ['flags', 'transform'])
        self.root(found).group('b', 'c')

    def test_intermediate_and_lod_hidden_meshes_are_absent(self):
        _, defined, used = self.shapes(transform('a'), triangle('s', 'a', '".io" yes'), transform('b', None, '".lodv" no'),
                                       triangle('t', 'b'), shaded('s'), shaded('t'))
        self.assertEqual((defined, used), ([], []))

    def test_override_hides_only_when_enabled(self):
        _, defined, _ = self.shapes(transform('a', None, '".ove" yes', '".ovv" no'), triangle('s', 'a'),
                                    transform('b', None, '".ovv" no'), triangle('t', 'b'), shaded('s'), shaded('t'))
        self.assertEqual(defined, ['t'])

    def test_hidden_display_layer_hides_its_members(self):
        _, defined, used = self.shapes(transform('a'), triangle('s', 'a'), transform('b'), triangle('t', 'b'), shaded('s'),
                                       shaded('t'), node('displayLayer', 'layer1', None, '".v" no'),
                                       connect('layer1.di', 'a.do'), connect('layerManager.dli[1]', 'layer1.id'))
        self.assertEqual((defined, used), (['t'], ['t']))

    def test_mesh_without_shading_group_is_absent(self):
        _, defined, used = self.shapes(transform('a'), triangle('s', 'a'))
        self.assertEqual((defined, used), ([], []))


class Instances(SceneFileTest):
    TWICE = (transform('a', None, triple('.t', 1, 0, 0)), transform('b', None, triple('.t', 5, 0, 0)),
             triangle('s', 'a'), 'parent -s -nc -r -add "|a|s" "b";\n')
    WORN = connect('|a|s.iog[0]', ':initialShadingGroup.dsm') + connect('|b|s.iog[1]', ':initialShadingGroup.dsm')

    def test_instances_share_one_definition(self):
        found = self.convert(scene(*self.TWICE, self.WORN))
        self.assertEqual([o.first('id').value for o in found.all('object')], [1])
        placed = obx.placements(found)
        self.assertEqual([p.path for p in placed], [('a',), ('b',)])
        self.assertEqual([p.object.first('geometry').get('id') for p in placed], [1, 1])
        self.assertEqual([p.world[12] for p in placed], [1, 5])

    def test_instanced_transform_is_written_under_both_parents(self):
        found = self.convert(scene(transform('a', None, triple('.t', 1, 0, 0)), transform('b', None, triple('.t', 5, 0, 0)),
                                   transform('x', 'a', triple('.t', 0, 1, 0)), triangle('s', '|a|x'),
                                   'parent -s -nc -r -add "|a|x" "b";\n', connect('|a|x|s.iog[0]', ':initialShadingGroup.dsm')))
        placed = obx.placements(found)
        self.assertEqual([p.path for p in placed], [('a', 'x'), ('b', 'x')])
        self.assertEqual([p.world[12:14] for p in placed], [(1, 1), (5, 1)])
        self.assertEqual(len(found.all('object')), 1)

    def test_first_path_hidden_leaves_nothing_even_where_the_second_is_visible(self):
        found = self.convert(scene(*self.TWICE, self.WORN, 'setAttr "|a.v" no;\n'))
        self.assertEqual((found.all('object'), obx.placements(found)), ([], []))


class Cameras(SceneFileTest):
    def test_default_camera_sees_54_degrees(self):
        camera = self.convert(scene(NEW)).first('camera')
        self.assertEqual(camera.get('projection'), 'perspective')
        self.assertEqual(camera.get('fov'), 54.4322)  # 36 mm of film behind 35 mm of focal length
        shader = camera.get('reflection map')
        self.assertEqual([(i.name, i.value) for i in shader.items], [('texture', 'startup.hdr'), ('format', 3), ('radius', 25)])
        self.assertEqual(shader.name, 'orv_envmap')

    def test_camera_turned_a_quarter_looks_along_minus_x(self):
        found = self.convert(scene(transform('cam', None, triple('.t', 1, 2, 3), triple('.r', 0, 90, 0)),
                                   node('camera', 'camShape1', 'cam', '".cap" -type "double2" 1 1', '".fl" 12.7', '".ncp" 0.5',
                                        '".fcp" 20')))
        camera = next(c for c in found.all('camera') if c.name == 'cam1')
        self.assertEqual(camera.parameters(), ['projection', 'fov', 'reflection map', 'position', 'direction', 'up', 'clipping'])
        self.assertEqual(camera.get('fov'), 90)  # 2 atan(25.4 / 2 / 12.7)
        self.assertEqual(camera.get('position'), (1, 2, 3))
        self.near(camera.get('direction'), (-1, 0, 0))
        self.near(camera.get('up'), (0, 1, 0))
        self.assertEqual(camera.get('clipping'), (0.5, 20))
        self.near(camera.transform, (0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 1, 2, 3, 1))

    def test_views_named_top_front_side_are_dropped_others_kept(self):
        found = self.convert(scene(*(transform(n) + node('camera', s, n) for n, s in
                                     (('v1', 'topView'), ('v2', 'leftShape'), ('v3', 'aShape'), ('v4', 'topShape1')))))
        self.assertEqual([c.name for c in found.all('camera')], ['persp', 'topView', 'left', 'aShape', 'top1'])

    def test_camera_under_a_scaled_parent_keeps_unit_vectors(self):
        found = self.convert(scene(transform('p', None, triple('.s', 2, 2, 2)), transform('cam', 'p', triple('.t', 1, 0, 0)),
                                   node('camera', 'camShape', '|p|cam')))
        camera = next(c for c in found.all('camera') if c.name == 'cam')
        self.assertEqual(camera.get('position'), (2, 0, 0))
        self.near(camera.get('direction'), (0, 0, -1))
        self.near(camera.get('up'), (0, 1, 0))


class Units(SceneFileTest):
    def test_metres_give_scale_1_and_centimetre_coordinates(self):
        found = self.convert(scene(transform('a', None, triple('.t', 1, 0, 0.5)), triangle('s', 'a'), shaded('s'), unit='meter'))
        self.assertEqual(found.first('load').get('meter_scale'), 1)
        self.assertEqual(self.root(found).group('a').transform[12:15], (100, 0, 50))
        self.assertEqual(sorted(points_of(self.geometries(found, 's')[0])), [(0, 0, 0), (0, 100, 0), (100, 0, 0)])

    def test_scale_of_every_unit(self):
        for unit, scale, factor in (('millimeter', 1000, 0.1), ('kilometer', 0.001, 100000), ('inch', 39.3701, 2.54),
                                    ('foot', 3.28084, 30.48), ('yard', 1.09361, 91.44), ('mile', 0.000621371, 160934.4),
                                    ('cm', 100, 1), ('in', 39.3701, 2.54)):
            found = self.convert(scene(transform('a', None, triple('.t', 2, 0, 0)), unit=unit))
            self.assertEqual(found.first('load').get('meter_scale'), scale, unit)
            self.assertAlmostEqual(self.root(found).group('a').transform[12] / (2 * factor), 1, 5, unit)


class Transforms(SceneFileTest):
    def local(self, *settings, type='transform'):
        found = self.convert(scene(transform('n', None, *settings, type=type)))
        return self.root(found).group('n').transform

    def test_rotation_orders(self):
        def turn(axis, degrees):
            c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
            m = [1.0 if k % 5 == 0 else 0.0 for k in range(16)]
            i, j = (axis + 1) % 3, (axis + 2) % 3
            m[5 * i] = m[5 * j] = c
            m[4 * i + j], m[4 * j + i] = s, -s
            return tuple(m)

        angles = (30, 40, 50)
        for number, order in enumerate(('xyz', 'yzx', 'zxy', 'xzy', 'yxz', 'zyx')):
            expected = obx.IDENTITY
            for letter in order:
                expected = obx.multiplied(expected, turn('xyz'.index(letter), angles['xyz'.index(letter)]))
            self.near(self.local(triple('.r', *angles), '".ro" %d' % number), expected, 5)

    def test_rotation_about_a_pivot(self):
        # the origin lies at (-1, 0, 0) from the pivot; a quarter turn about z takes that to (0, -1, 0)
        self.near(self.local(triple('.r', 0, 0, 90), triple('.rp', 1, 0, 0)), (0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 1, -1, 0, 1))

    def test_scale_about_a_pivot_and_its_translation(self):
        # (0 - 2) * 3 + 2 = -4, and the pivot's translation adds 5
        self.near(self.local(triple('.s', 3, 1, 1), triple('.sp', 2, 0, 0), triple('.spt', 5, 0, 0)),
                  (3, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1))

    def test_shear(self):
        self.near(self.local(triple('.sh', 0.5, 0.25, 2)), (1, 0, 0, 0, 0.5, 1, 0, 0, 0.25, 2, 1, 0, 0, 0, 0, 1))

    def test_rotate_axis_comes_before_the_rotation(self):
        # x goes to y by the axis about z, and stays there while the rotation about y turns z to x
        self.near(self.local(triple('.ra', 0, 0, 90), triple('.r', 0, 90, 0)), (0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 1))

    def test_joint_orient_comes_after_the_rotation(self):
        # z to x by the rotation about y, then x to y by the orient about z
        self.near(self.local(triple('.r', 0, 90, 0), triple('.jo', 0, 0, 90), type='joint'),
                  (0, 0, -1, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 1))

    def test_joint_makes_up_for_the_scale_of_its_parent(self):
        # rotation row times (1/2, 1, 1), the translation untouched; the world keeps the length of the child's axes
        found = self.convert(scene(transform('j1', None, triple('.s', 2, 1, 1), type='joint'),
                                   transform('j2', 'j1', triple('.t', 1, 0, 0), triple('.jo', 0, 0, 90), type='joint'),
                                   connect('j1.s', 'j2.is')))
        self.near(self.root(found).group('j1', 'j2').transform, (0, 1, 0, 0, -0.5, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1))
        self.near(obx.worlds(found)[-1][2], (0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 2, 0, 0, 1))

    def test_joint_without_compensation_keeps_the_scale(self):
        found = self.convert(scene(transform('j1', None, triple('.s', 2, 1, 1), type='joint'),
                                   transform('j2', 'j1', '".ssc" no', type='joint'), connect('j1.s', 'j2.is')))
        self.assertEqual(self.root(found).group('j1', 'j2').transform, obx.IDENTITY)


class Meshes(SceneFileTest):
    def one(self, *statements, **settings):
        found = self.convert(scene(transform('a'), *statements, shaded('s')), **settings)
        geometries = self.geometries(found, 's')
        self.assertEqual(len(geometries), 1)
        return geometries[0]

    def test_cube_splits_its_corners_by_normal(self):
        found = self.one(cube('s', 'a'))
        self.assertEqual(found.parameters(), ['vertices', 'triangles', 'uv_tex', 'normals'])
        self.assertEqual(len(points_of(found)), 24)
        self.assertEqual(len(corners_of(found)), 12)
        self.assertAlmostEqual(area(corners_of(found)), 6)
        self.near(area_vector(corners_of(found)), (0, 0, 0))
        normals = points_of(found, 'normals')
        for k, corners in enumerate(corners_of(found)):
            across = area_vector([corners])
            for i in found.get('triangles')[3 * k:3 * k + 3]:
                self.near(normals[i], [2 * c for c in across])  # each triangle has an area of one half

    def test_vertices_stand_in_order_of_first_use(self):
        found = self.one(cube('s', 'a'))
        seen = []
        for index in found.get('triangles'):
            if index not in seen:
                seen.append(index)
        self.assertEqual(seen, list(range(24)))

    def test_soft_cube_shares_corners_and_averages_normals(self):
        points = [(-.5, -.5, .5), (.5, -.5, .5), (-.5, .5, .5), (.5, .5, .5), (-.5, .5, -.5), (.5, .5, -.5), (-.5, -.5, -.5),
                  (.5, -.5, -.5)]
        loops = [[0, 1, 3, 2], [2, 3, 5, 4], [4, 5, 7, 6], [6, 7, 1, 0], [1, 7, 5, 3], [6, 0, 2, 4]]
        found = self.one(mesh('s', 'a', points, loops, smooth=True))
        self.assertEqual(len(points_of(found)), 8)
        for point, normal in zip(points_of(found), points_of(found, 'normals')):
            self.near(normal, [2 * c / math.sqrt(3) for c in point])

    def test_concave_face_covers_its_own_area(self):
        # an L of three unit squares, counted against the clock
        corners = corners_of(self.one(mesh('s', 'a', [(0, 0, 0), (2, 0, 0), (2, 1, 0), (1, 1, 0), (1, 2, 0), (0, 2, 0)],
                                           [[0, 1, 2, 3, 4, 5]])))
        self.assertEqual(len(corners), 4)
        self.assertAlmostEqual(area(corners), 3)
        self.near(area_vector(corners), (0, 0, 3))

    def test_hole_is_left_open(self):
        # a square of 4 by 4 with a square of 2 by 2 cut out of its middle
        points = [(0, 0, 0), (4, 0, 0), (4, 4, 0), (0, 4, 0), (1, 1, 0), (1, 3, 0), (3, 3, 0), (3, 1, 0)]
        corners = corners_of(self.one(mesh('s', 'a', points, [([0, 1, 2, 3], [4, 5, 6, 7])])))
        self.assertEqual(len(corners), 8)
        self.assertAlmostEqual(area(corners), 12)
        self.near(area_vector(corners), (0, 0, 12))
        for each in corners:
            centre = [sum(p[k] for p in each) / 3 for k in range(2)]
            self.assertFalse(1 < centre[0] < 3 and 1 < centre[1] < 3, each)

    def test_mesh_without_uvs_keeps_its_triangles_and_has_zero_uvs(self):
        found = self.one(mesh('s', 'a', [(0, 0, 0), (1, 0, 0), (0, 1, 0)], [[0, 1, 2]]))
        self.assertEqual(len(corners_of(found)), 1)
        self.assertEqual(set(found.get('uv_tex', ())), {0.0})
        self.assertEqual(len(found.get('uv_tex')), 6)

    def test_uvs_go_with_their_corners(self):
        found = self.one(triangle('s', 'a'))
        self.assertEqual(dict(zip(points_of(found), points_of(found, 'uv_tex', 2))),
                         {(0, 0, 0): (0, 0), (1, 0, 0): (1, 0), (0, 1, 0): (0, 1)})

    def test_tweaks_move_the_stored_points(self):
        found = self.one(triangle('s', 'a', '-s 2 ".pt"', '".pt[0]" -type "float3" 0 0 5', '".pt[2]" -type "float3" 1 1 1'))
        self.assertEqual(sorted(points_of(found)), [(0, 0, 5), (1, 0, 0), (1, 2, 1)])

    def test_fan_of_a_pentagon_keeps_the_winding(self):
        points = [(math.cos(2 * math.pi * k / 5), 0, -math.sin(2 * math.pi * k / 5)) for k in range(5)]
        corners = corners_of(self.one(mesh('s', 'a', points, [[0, 1, 2, 3, 4]])))
        self.assertEqual(len(corners), 3)
        self.near(area_vector(corners), (0, 2.5 * math.sin(2 * math.pi / 5), 0))

    def test_progress_counts_shapes_and_cameras(self):
        found = self.convert(scene(transform('a'), triangle('s', 'a'), transform('b'), triangle('t', 'b'), shaded('s'), shaded('t')))
        # two meshes among six shapes, four of them cameras
        self.assertEqual([(p.name, p.value) for p in found.all('progress')], [('s', 0.167), ('t', 0.333)])
        kinds = [i.kind for i in found.items if i.kind in ('object', 'progress')]
        self.assertEqual(kinds, ['object', 'progress'] * 2)


class Shading(SceneFileTest):
    TWO = (transform('a'), cube('s', 'a'), shader('lambert', 'red', triple('.c', 1, 0, 0).replace('double3', 'float3')),
           shader('lambert', 'blue', triple('.c', 0, 0, 1).replace('double3', 'float3')),
           face_set('s', 0, 'redSG', 0, 1), face_set('s', 1, 'blueSG', 2, 5))

    def surface(self, *statements, **settings):
        found = self.convert(scene(transform('a'), triangle('s', 'a'), *statements, shaded('s', 'matSG')), **settings)
        self.assertEqual([p.material for p in obx.placements(found)], ['mat'])
        return next(m for m in found.all('material') if m.name == 'mat').first('surface').value

    def test_faces_are_split_among_their_sets(self):
        found = self.convert(scene(*self.TWO))
        placed = obx.placements(found)
        self.assertEqual([p.material for p in placed], ['red', 'blue'])
        self.assertEqual([p.object.name for p in placed], ['s', 's'])
        front_and_top, rest = (corners_of(p.geometry) for p in placed)
        self.assertEqual((len(front_and_top), len(rest)), (4, 8))
        self.near(area_vector(front_and_top), (0, 1, 1))
        self.near(area_vector(rest), (0, -1, -1))
        self.assertEqual([len(points_of(p.geometry)) for p in placed], [8, 16])

    def test_beta_extractor_gives_every_part_all_vertices(self):
        placed = obx.placements(self.convert(scene(*self.TWO), experimental='beta'))
        self.assertEqual([len(points_of(p.geometry)) for p in placed], [24, 24])
        self.assertEqual(placed[0].geometry.get('vertices'), placed[1].geometry.get('vertices'))
        self.assertEqual([len(corners_of(p.geometry)) for p in placed], [4, 8])
        self.near(area_vector(corners_of(placed[0].geometry)), (0, 1, 1))

    def test_beta_is_spelled_exactly(self):
        for spelling in ('Beta', 'beta ', 'betax', ''):
            placed = obx.placements(self.convert(scene(*self.TWO), experimental=spelling))
            self.assertEqual([len(points_of(p.geometry)) for p in placed], [8, 16], spelling)

    def test_definitions_follow_the_names_of_the_groups(self):
        found = self.convert(scene(*self.TWO))
        self.assertEqual([m.name for m in found.all('material')], ['blue', 'lambert1', 'red'])  # blueSG, initial..., redSG

    def test_unique_materials_stand_in_place_and_bear_the_shape(self):
        found = self.convert(scene(*self.TWO), unique_materials=True)
        self.assertEqual(found.all('material'), [])
        placed = obx.placements(found)
        self.assertEqual([p.material for p in placed], ['s:red', 's:blue'])
        self.assertTrue(all(isinstance(p.object.first('material'), obx.Block) for p in placed))

    def test_colour_times_weight(self):
        surface = self.surface(shader('lambert', 'mat', '".c" -type "float3" 0.8 0.4 0.2', '".dc" 0.5'))
        self.assertEqual((surface.name, surface.parameters()), ('orv_diffuse', ['diffuse']))
        self.near(surface.get('diffuse'), (0.4, 0.2, 0.1))

    def test_transparency_becomes_alpha(self):
        for transparency, alpha in (('0.5 0.5 0.5', 0.5), ('1 0 0', 0.666667), ('1 1 1', 0.1)):
            surface = self.surface(shader('lambert', 'mat', '".it" -type "float3" ' + transparency))
            self.assertEqual((surface.name, surface.get('alpha')), ('orv_advanced', alpha), transparency)
        surface = self.surface(shader('lambert', 'mat', '".it" -type "float3" 0.005 0.005 0.005'))
        self.assertEqual(surface.name, 'orv_diffuse')

    def test_phong_writes_its_specular_colour(self):
        surface = self.surface(shader('phong', 'mat', '".sc" -type "float3" 0.1 0.2 0.3'))
        self.assertEqual([(i.name, i.value) for i in surface.items],
                         [('diffuse', (0.4, 0.4, 0.4)), ('specular', (0.1, 0.2, 0.3)), ('fresnel', True), ('roughness', 0),
                          ('ior', 1.5), ('glossy', True), ('glossy_samples', 9), ('alpha', 1)])

    def test_texture_is_connected_after_the_parameters(self):
        surface = self.surface(shader('lambert', 'mat'), node('file', 'file1', None, '".ftn" -type "string" "maps\\\\wood.png"',
                                                              '".tf" -type "float2" 0.25 -0.5', '".rf" 90'),
                               connect('file1.oc', 'mat.c'))
        self.assertEqual([(i.kind, i.name) for i in surface.items],
                         [('parameter', n) for n in ('diffuse', 'specular', 'fresnel', 'roughness', 'ior', 'glossy',
                                                     'glossy_samples', 'alpha')] + [('connection', 'diffuse')])
        texture = surface.connected('diffuse')
        self.assertEqual((texture.name, texture.parameters()),
                         ('texture_rgb', ['project', 'wrap', 'texture', 'default_color', 'angle', 'shift_u', 'shift_v',
                                          'scale_u', 'scale_v']))
        self.assertEqual([texture.get(n) for n in ('project', 'wrap', 'texture', 'angle', 'shift_u', 'shift_v', 'scale_u', 'scale_v')],
                         [3, True, 'maps\\wood.png', 90, 0.25, -0.5, 1, 1])
        self.assertEqual(texture.get('default_color'), surface.get('diffuse'))

    def test_group_of_a_shader_outside_the_lambert_family(self):
        found = self.convert(scene(transform('a'), triangle('s', 'a'), node('surfaceShader', 'flat'),
                                   node('shadingEngine', 'flatSG'), connect('flat.oc', 'flatSG.ss'), shaded('s', 'flatSG')))
        use = obx.placements(found)[0].object.first('material')
        self.assertEqual((use.name, use.first('flags').value), ('No maya shader found', 4096))
        self.assertEqual(use.first('surface').value.name, 'orv_diffuse')
        self.assertEqual(use.first('surface').value.get('diffuse'), (0.75, 0.5, 0.5))


GOLDEN = '''//---orvane:dal:7---
//---import:dal:1---
//---id:1---
// This is a Vistrel scene file

#print "Vistrel SceneApi oo 7.3.37  (built Fri Feb  2 07:20:39 2018)"
version 9

load "orvrtopt.so" {
 "import_mode" on,
 "import_merge_groups" on,
 "import_merge_objects" on,
 "import_up_vector" 1,
 "meter_scale" 100,
 "import_keep_original" on,
 "import_center_geometry" off,
 "import_snap_to_ground" off,
 "import_adjust_camera" off,
 "import_adjust_environment" on,
 "ext" on,
}

camera "persp" {
 projection "perspective"
 fov 54.4322
 reflection map   "orv_envmap" {
   "texture" "startup.hdr",
   "format" 3,
   "radius" 25,
  }
 position 0 0 10
 direction 0 0 -1
 up 0 1 0
 clipping 0.1 1000
 transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 10 1
}

#define material "lambert1" {
 surface  "orv_diffuse" {
  "diffuse" 0.4 0.4 0.4,
 } 
}
#define object "triShape" {
 id 1
 geometry "triangles" {
  "vertices" [ 0 0 0,1 0 0,0 1 0 ] ,
  "triangles" [ 0,1,2 ] ,
  "uv_tex" [ 0,0,1,0,0,1 ] ,
  "normals" [ 0 0 1,0 0 1,0 0 1 ] ,
 }
}
progress "triShape" 0.200

#print "Export geometry. Using Maya2018. Vistrel 7.2.-1 (built STAMP)"

group "tri" {
 flags 32768
 attribute "source file" "PATH"

 group "persp" {
  flags 32768
  transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 10 1
 }

 group "top" {
  flags 32768
  transform 1 0 0 0 0 1 0 0 0 0 1 0 0 50 0 1
 }

 group "front" {
  flags 32768
  transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 50 1
 }

 group "side" {
  flags 32768
  transform 1 0 0 0 0 1 0 0 0 0 1 0 50 0 0 1
 }

 group "tri" {
  flags 32768
  transform 1 0 0 0 0 1 0 0 0 0 1 0 1 2 3 1
  object "triShape" {
   geometry "instance" {
    "id" 1,
   }
   material "lambert1"
  }
 }
}
'''


def main():
    global IMPORTER
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--runner', default='')
    parser.add_argument('importer')
    options, rest = parser.parse_known_args()
    IMPORTER = Importer(options.importer, options.runner)
    unittest.main(argv=[sys.argv[0]] + rest)


if __name__ == '__main__':
    main()
