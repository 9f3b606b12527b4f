#!/usr/bin/env python3
"""The comparison of meshes sees each kind of difference, and none where there is none."""
import array
import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, '..', 'support')]
import obx
import truth as truths
from compareMesh import Comparison

# two triangles of a square, and one above it, at the place of the node
WORLD = (2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 10, 0, 0, 1)
POINTS = [0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1]
UVS = [0, 0, 1, 0, 1, 1, 0, 1, .5, .5]
NORMALS = [0, 0, 1] * 5
FACES = [(0, 1, 2), (0, 2, 3), (0, 1, 4)]


def part(faces, world=WORLD, points=POINTS, uvs=UVS, normals=NORMALS):
    geometry = obx.Block('geometry', 'triangles', 0)
    for name, letter, values in (('vertices', 'f', points), ('triangles', 'i', [i for f in faces for i in f]),
                                 ('uv_tex', 'f', uvs), ('normals', 'f', normals)):
        geometry.items.append(obx.Item('parameter', name, array.array(letter, values), 0))
    return obx.Placement(('a',), world, None, geometry, 'm')


def truth(groups=(0, 0, 1), triangulated=True, faces=FACES):
    mesh = truths.TruthMesh('a', WORLD, triangulated)
    for face, group in zip(faces, groups):
        mesh.add([(truths.placed(POINTS[3 * i:3 * i + 3], WORLD), (0, 0, 1), tuple(UVS[2 * i:2 * i + 2])) for i in face], group)
    return mesh


class CompareMeshTest(unittest.TestCase):
    def fails(self, parts, expected=None):
        return ' '.join(Comparison(expected or truth(), parts).fails)

    def test_equal_meshes_agree_whatever_the_first_corner_and_the_order(self):
        self.assertEqual(self.fails([part([(2, 0, 1), (0, 2, 3)]), part([(4, 0, 1)])]), '')
        self.assertEqual(self.fails([part([(0, 1, 4)]), part([(3, 0, 2), (0, 1, 2)])]), '')

    def test_other_winding_and_other_diagonal(self):
        self.assertIn('2 the same', self.fails([part([(0, 2, 1), (0, 2, 3)]), part([(0, 1, 4)])]))
        self.assertIn('1 the same', self.fails([part([(0, 1, 3), (1, 2, 3)]), part([(0, 1, 4)])]))

    def test_missing_and_surplus_triangles(self):
        self.assertIn('3 triangles of the truth and 2', self.fails([part([(0, 2, 3)]), part([(0, 1, 4)])]))
        self.assertIn('and 4 of the scene file', self.fails([part(FACES[:2] + [(0, 1, 2)]), part([(0, 1, 4)])]))

    def test_point_uv_normal_and_matrix(self):
        moved = POINTS[:3] + [1.001] + POINTS[4:]
        self.assertIn('at no vertex', self.fails([part(FACES[:2], points=moved), part([FACES[2]], points=moved)]))
        self.assertIn('other UVs', self.fails([part(FACES[:2], uvs=[0.001] + UVS[1:]), part([FACES[2]])]))
        self.assertIn('other normals', self.fails([part(FACES[:2], normals=[0, 1, 0] + NORMALS[3:]), part([FACES[2]])]))
        world = WORLD[:12] + (10.01, 0, 0, 1)
        self.assertIn('world matrix', self.fails([part(FACES[:2], world=world), part([FACES[2]], world=world)]))

    def test_material_groups(self):
        self.assertIn('material groups', self.fails([part(FACES)]))
        self.assertIn('material groups', self.fails([part([FACES[0]]), part(FACES[1:])]))

    def test_polygons_may_be_cut_either_way(self):
        expected = truth(groups=(0, 1), triangulated=False, faces=[(0, 1, 2, 3), (0, 1, 4)])
        for cut in ([(0, 1, 2), (0, 2, 3)], [(0, 1, 3), (1, 2, 3)]):
            self.assertEqual(self.fails([part(cut), part([(0, 1, 4)])], expected), '')
        self.assertIn('not filled', self.fails([part([(0, 1, 2)]), part([(0, 1, 4)])], expected))
        self.assertIn('astray', self.fails([part([(0, 1, 2), (0, 3, 2)]), part([(0, 1, 4)])], expected))

    def test_inverse_matrix(self):
        m = (1, 2, 0, 0, 0, 3, 1, 0, 2, 0, 5, 0, 7, 8, 9, 1)
        for a, b in zip(truths.product(m, truths.inverse(m)), truths.IDENTITY):
            self.assertAlmostEqual(a, b)


if __name__ == '__main__':
    unittest.main()
