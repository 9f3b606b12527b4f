#!/usr/bin/env python3
"""NURBS surfaces and hair from end to end: what is written for which settings. Expectations are worked out by hand.

  surfaceScenes.py [--runner WRAPPER] MAYA_IMPORTER [unittest arguments]
"""
import math
import os
import sys

sys.path[:0] = [os.path.dirname(os.path.abspath(__file__)), os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support')]
import obx
import sceneFiles
from mayaText import connect, node, scene, shaded, shader, transform, triangle, triple
from sceneFiles import SceneFileTest, area, area_vector, corners_of, points_of

SURFACE = ['umin', 'umax', 'vmin', 'vmax', 'uorder', 'vorder', 'uknot', 'vknot', 'Pw']
TRIMS = ['trim_nedges', 'trim_inside', 'edge_order', 'edge_nknots', 'edge_min', 'edge_max', 'edge_knot', 'edge_uvw']


def numbers(values):
    return ' '.join('%r' % value for value in values)


def surface(name, parent, degrees, knots, points, rational=False, *settings):
    """An open surface; points by u, then by v, each x y z (w)."""
    payload = '%d %d 0 0 %s %d %s %d %s %d %s' % (degrees[0], degrees[1], 'yes' if rational else 'no', len(knots[0]), numbers(knots[0]),
                                                 len(knots[1]), numbers(knots[1]), len(points), numbers(sum(points, ())))
    return node('nurbsSurface', name, parent, '".cc" -type "nurbsSurface" ' + payload, *settings)


def square(name, parent, *settings, size=2.0):
    """A flat square in the xz plane, u along x and v along z, both from 0 to 1."""
    points = [(0, 0, 0), (0, 0, size), (size, 0, 0), (size, 0, size)]
    return surface(name, parent, (1, 1), ([0, 1], [0, 1]), points, False, *settings)


def line(u0, v0, u1, v1):
    """An edge of a trim: the same straight line in space and in the parameter plane, over 4 to 5."""
    return ('1 1 1 0 no 3 2 4 5 2 %r 0 %r %r 0 %r 0.001 0 -1 1 1 1 0 no 2 2 4 5 2 %r %r %r %r 0 0.001 '
            % (u0, v0, u1, v1, u0, v0, u1, v1))


def loop(*corners):
    """A boundary of straight edges between corners of the parameter plane."""
    return [line(*a, *b) for a, b in zip(corners, corners[1:] + corners[:1])]


def region(index, outer, *holes):
    boundaries = [(0, outer)] + [(1, hole) for hole in holes]
    text = ''.join('%d %d %s%s' % (kind, len(edges), '0 ' * len(edges), ''.join(edges)) for kind, edges in boundaries)
    return '".tf[%d]" -type "nurbsTrimface" no %d %s' % (index, len(boundaries), text)


class Surfaces(SceneFileTest):
    def definition(self, found, name, type):
        return next(o.first('geometry') for o in found.all('#define object') + [o for o in found.all('object')]
                    if o.name == name and o.first('geometry').name == type)

    def uses(self, found):
        """Names and ids of the objects in the tree, with the name of the group around each."""
        return [(p.path[-1], p.object.name, p.object.first('geometry').get('id')) for p in obx.placements(found)]

    def nurbs(self, *statements, name='s', **settings):
        found = self.convert(scene(transform('a'), *statements), include_nurbs=True, **settings)
        return next(o.first('geometry') for o in found.all('object') if o.name == name and o.first('geometry').name == 'nurbs')

    def test_attributes_stand_in_order_without_trims(self):
        self.assertEqual(self.nurbs(square('s', 'a')).parameters(), SURFACE)

    def test_points_run_along_u_and_are_multiplied_by_their_weights(self):
        points = [(0, 0, 0, 1), (0, 1, 0, 2), (1, 0, 5, .5), (1, 1, 5, .5), (2, 0, 0, 1), (2, 1, 0, 1)]
        found = self.nurbs(surface('s', 'a', (2, 1), ([0, 0, 1, 1], [3, 5]), points, True))
        self.assertEqual([found.get(n) for n in ('umin', 'umax', 'vmin', 'vmax', 'uorder', 'vorder')], [0, 1, 3, 5, 3, 2])
        self.assertEqual(list(found.get('uknot')), [0, 0, 0, 1, 1, 1])
        self.assertEqual(list(found.get('vknot')), [1, 3, 5, 7])
        self.assertEqual(points_of(found, 'Pw', 4), [(0, 0, 0, 1), (.5, 0, 2.5, .5), (2, 0, 0, 1),
                                                     (0, 2, 0, 2), (.5, .5, 2.5, .5), (2, 1, 0, 1)])

    def test_two_by_three_points_without_weights(self):
        points = [(u, 0, v) for u in range(2) for v in range(3)]
        found = self.nurbs(surface('s', 'a', (1, 1), ([0, 1], [0, 1, 2]), points))
        self.assertEqual(points_of(found, 'Pw', 4), [(0, 0, 0, 1), (1, 0, 0, 1), (0, 0, 1, 1), (1, 0, 1, 1), (0, 0, 2, 1), (1, 0, 2, 1)])

    def test_points_are_those_of_the_object_whatever_stands_above(self):
        found = self.convert(scene(transform('a', None, triple('.t', 5, 0, 0)), square('s', 'a')), include_nurbs=True)
        self.assertEqual(points_of(self.definition(found, 's', 'nurbs'), 'Pw', 4)[1], (2, 0, 0, 1))

    def test_trims_follow_the_points(self):
        outer, hole = loop((0, 0), (1, 0), (1, 1), (0, 1)), loop((.25, .25), (.5, .75))
        found = self.nurbs(square('s', 'a', region(0, outer, hole)))
        self.assertEqual(found.parameters(), SURFACE + TRIMS)
        self.assertEqual(list(found.get('trim_nedges')), [4, 2])
        self.assertEqual(list(found.get('trim_inside')), [1, 0])
        self.assertEqual(list(found.get('edge_order')), [2] * 6)
        self.assertEqual(list(found.get('edge_nknots')), [4] * 6)
        self.assertEqual((list(found.get('edge_min')), list(found.get('edge_max'))), ([4] * 6, [5] * 6))
        self.assertEqual(list(found.get('edge_knot')), [3, 4, 5, 6] * 6)
        self.assertEqual(points_of(found, 'edge_uvw')[8:], [(.25, .25, 1), (.5, .75, 1), (.5, .75, 1), (.25, .25, 1)])

    def test_every_region_has_its_own_outer_boundary(self):
        left, right = loop((0, 0), (.4, 0), (.4, 1), (0, 1)), loop((.6, 0), (1, 0), (1, 1), (.6, 1))
        found = self.nurbs(square('s', 'a', region(0, left, loop((.1, .1), (.1, .9), (.3, .5))), region(1, right)))
        self.assertEqual(list(found.get('trim_nedges')), [4, 3, 4])
        self.assertEqual(list(found.get('trim_inside')), [1, 0, 1])

    def test_the_mesh_covers_the_surface_and_faces_its_way(self):
        found = self.convert(scene(transform('a'), square('s', 'a')))
        corners = corners_of(self.definition(found, 's', 'triangles'))
        self.near([area(corners)], [4], 4)
        self.near(area_vector(corners), (0, -4, 0), 4)  # x cross z: u to v
        points = points_of(self.definition(found, 's', 'triangles'))
        self.assertTrue(all(abs(y) < 1e-6 and -1e-6 <= x <= 2.000001 and -1e-6 <= z <= 2.000001 for x, y, z in points))

    def test_a_hole_is_missing_from_the_mesh(self):
        hole = loop((.25, .25), (.25, .75), (.75, .75), (.75, .25))
        found = self.convert(scene(transform('a'), square('s', 'a', region(0, loop((0, 0), (1, 0), (1, 1), (0, 1)), hole))))
        self.near([area(corners_of(self.definition(found, 's', 'triangles')))], [3], 3)  # 4 less a square of edge 1

    def test_settings_choose_between_surface_and_mesh(self):
        content = scene(transform('a'), square('s', 'a'))
        for included, tessellated, expected in ((False, True, [('a', 's', 2)]), (True, True, [('s', 's', 2), ('s', 's', 1)]),
                                                (True, False, [('s', 's', 1)]), (False, False, [])):
            found = self.convert(content, include_nurbs=included, tessellate=tessellated)
            self.assertEqual(self.uses(found), expected)
            types = [o.first('geometry').name for o in found.all('object') if o.defines]
            self.assertEqual(types, ['nurbs', 'triangles'] if tessellated else ['nurbs'])

    def test_the_surface_and_its_mesh_stand_in_a_group_of_flags(self):
        found = self.convert(scene(transform('a'), square('s', 'a')), include_nurbs=True)
        group = self.root(found).group('a', 's')
        self.assertEqual([i.kind for i in group.items], ['flags', 'object', 'object'])
        self.assertEqual(group.flags, 65536)

    def test_both_wear_the_surface_shader(self):
        found = self.convert(scene(shader('blinn', 'red', triple('.c', 1, 0, 0).replace('double3', 'float3')), transform('a'),
                                   square('s', 'a'), shaded('s', 'redSG')), include_nurbs=True)
        self.assertEqual([p.material for p in obx.placements(found)], ['red', 'red'])

    def test_instances_share_their_definitions(self):
        found = self.convert(scene(transform('a'), transform('b', None, triple('.t', 7, 0, 0)), square('s', 'a'),
                                   'parent -s -nc -r -add "|a|s" "b" ;\n'))
        self.assertEqual(self.uses(found), [('a', 's', 2), ('b', 's', 2)])

    def test_a_hidden_surface_is_left_out(self):
        found = self.convert(scene(transform('a', None, '".v" no'), square('s', 'a')), include_nurbs=True)
        self.assertEqual(self.uses(found), [])
        self.assertEqual([o.name for o in found.all('object')], [])

    def test_a_surface_without_geometry_harms_nobody(self):
        content = scene(transform('a'), node('nurbsSurface', 's', 'a'), transform('b'), square('t', 'b'))
        for included in (False, True):
            for tessellated in (False, True):
                data = self.run_importer(content, include_nurbs=included, tessellate=tessellated)
                self.assertIn(b'"t" {\nid ', data)

    def test_layers_hold_surfaces_too(self):
        found = self.convert(scene(transform('a'), square('s', 'a'), node('displayLayer', 'L'), connect('L.di', 'a.do')),
                             include_nurbs=True, split_layers=True)
        kept = self.root(found).group('L', 'a', 's')
        self.assertEqual([i.kind for i in kept.items], ['flags', 'object', 'object'])

    def test_a_curve_is_an_unhandled_shape(self):
        found = self.convert(scene(transform('c'), node('nurbsCurve', 'cShape', 'c', '".cc" -type "nurbsCurve" 1 1 0 no 3 2 0 1 2 0 0 0 1 0 0')))
        self.assertEqual([i.value for i in found.all('print')[2:]], ['Maya2018:Unhandled node(2): cShape: nurbsCurve  dagPath: |c|cShape'])
        self.assertEqual(self.root(found).group('c', 'cShape').items[-1].kind, 'transform')

    def test_experimental_meshes_leave_surfaces_as_they_are(self):
        content = scene(transform('a'), square('s', 'a'))
        self.assertEqual(self.run_importer(content, experimental='beta'), self.run_importer(content))


class Hair(SceneFileTest):
    def curves(self, *statements, **settings):
        found = self.convert(scene(*statements), **settings)
        return [p for p in obx.placements(found) if p.object.first('geometry').name == 'orv_curves']

    def test_hair_without_strands_is_an_empty_batch(self):
        (place,) = self.curves(transform('a'), node('pfxHair', 'hair', 'a'))
        self.assertEqual((place.path[-1], place.object.name), ('a', ''))
        geometry = place.object.first('geometry')
        self.assertEqual(geometry.parameters(), ['radius', 'order', 'fitToCubic', 'p', 'nvertices'])
        self.assertEqual([geometry.get(n) for n in ('radius', 'order', 'fitToCubic')], [1, 2, False])
        self.assertEqual((list(geometry.get('p')), list(geometry.get('nvertices'))), ([], []))
        self.assertEqual(place.material, 'diffuse')

    def test_settings_reach_the_batch(self):
        (place,) = self.curves(transform('a'), node('pfxHair', 'hair', 'a'), curveradius=0.125, smooth_curves=True)
        geometry = place.object.first('geometry')
        self.assertEqual((geometry.get('radius'), geometry.get('fitToCubic')), (0.125, True))

    def test_every_instance_is_written_in_full(self):
        places = self.curves(transform('a'), transform('b'), node('pfxHair', 'hair', 'a'), 'parent -s -nc -r -add "|a|hair" "b" ;\n')
        self.assertEqual([place.path[-1] for place in places], ['a', 'b'])


if __name__ == '__main__':
    sceneFiles.main()
