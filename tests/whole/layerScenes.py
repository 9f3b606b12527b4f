#!/usr/bin/env python3
"""Display layers from end to end: what is regrouped, and what is not. Expectations are worked out by hand.

  layerScenes.py [--runner WRAPPER] MAYA_IMPORTER [unittest arguments]
"""
import os
import sys
import time

sys.path[:0] = [os.path.dirname(os.path.abspath(__file__)), os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support')]
import obx
import sceneFiles
from animatedScenes import playback, slide
from mayaText import connect, node, scene, shaded, transform, triangle, triple
from sceneFiles import COLLAPSED, KEPT, SceneFileTest

VIEWS = ['persp', 'top', 'front', 'side']
NOTHING = 'There were no layers to split'


def layer(name, *members):
    return node('displayLayer', name) + ''.join(connect(name + '.di', member + '.do') for member in members)


class Layers(SceneFileTest):
    def split(self, *statements, **settings):
        found = self.convert(scene(*statements), split_layers=True, **settings)
        self.told = [item.value for item in found.all('print')]
        return self.root(found)

    def names(self, group):
        return [g.name for g in group.groups()]

    def test_a_member_stands_twice_once_flat(self):
        root = self.split(transform('a', None, triple('.t', 1, 0, 0)), transform('b', 'a', triple('.t', 0, 2, 0)),
                          triangle('s', '|a|b'), shaded('s'), layer('L', 'b'))
        self.assertEqual((root.name, root.flags, root.transform), ('scene', COLLAPSED, None))
        self.assertEqual(list(root.attributes), ['source file'])
        self.assertEqual(self.names(root), ['defaultLayer', 'L'])
        whole = root.group('defaultLayer')
        self.assertEqual((whole.flags, whole.attributes), (COLLAPSED, {}))
        self.assertEqual(self.names(whole), VIEWS + ['a'])
        self.assertEqual([i.kind for i in whole.group('a', 'b').items], ['flags', 'transform', 'object'])
        kept = root.group('L')
        self.assertEqual([i.kind for i in kept.items], ['group'])  # no flags, no transform
        copy = kept.group('b')
        self.assertEqual(copy.transform[12:15], (1, 2, 0))
        self.assertEqual([o.name for o in copy.all('object')], ['s'])
        self.assertNotIn(NOTHING, self.told)

    def test_transforms_are_multiplied_from_the_member_up(self):
        # a quarter turn about z above a step along x: the step is turned into y, then moved by (10, 0, 0)
        root = self.split(transform('a', None, triple('.t', 10, 0, 0), triple('.r', 0, 0, 90)),
                          transform('b', 'a', triple('.t', 3, 0, 0)), layer('L', 'b'))
        copy = root.group('L', 'b')
        self.near(copy.transform, (0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 3, 0, 1))

    def test_copies_keep_the_tree_below_them(self):
        root = self.split(transform('a'), transform('b', 'a'), transform('c', '|a|b', triple('.t', 0, 0, 4)), layer('L', 'a'))
        self.assertEqual(self.names(root.group('L')), ['a'])
        self.assertEqual(root.group('L', 'a', 'b', 'c').transform[14], 4)

    def test_layers_and_members_keep_their_order(self):
        root = self.split(transform('a'), transform('b'), transform('c'), layer('L2', 'c', 'a'), layer('L1', 'b'))
        self.assertEqual(self.names(root), ['defaultLayer', 'L2', 'L1'])
        self.assertEqual((self.names(root.group('L2')), self.names(root.group('L1'))), (['c', 'a'], ['b']))

    def test_the_kept_hierarchy_shows_in_the_flags(self):
        root = self.split(transform('a'), layer('L', 'a'), collapse_hierarchy=False)
        self.assertEqual((root.flags, root.group('defaultLayer').flags, root.group('L', 'a').flags), (KEPT, KEPT, KEPT))

    def test_the_default_layer_alone_splits_nothing(self):
        content = scene(transform('a'), triangle('s', 'a'), shaded('s'))
        found = self.convert(content, split_layers=True)
        self.assertEqual([i.value for i in found.all('print')].count(NOTHING), 1)
        self.assertEqual(self.names(self.root(found)), VIEWS + ['a'])
        # the sentence follows what the walk says and precedes the tree; the tree is the same
        unsplit = self.run_importer(content)
        split = self.run_importer(content, split_layers=True)
        self.assertEqual(split, unsplit.replace(b'\n\ngroup "scene"', b'\n#print "' + NOTHING.encode() + b'"\n\ngroup "scene"'))

    def test_the_failure_is_told_on_standard_error_with_its_spelling(self):
        with open(self.path('scene.ma'), 'w') as file:
            file.write(scene(transform('a')))
        for split, expected in ((True, b'no layers to day\n'), (False, b'')):
            done = sceneFiles.IMPORTER.run(self.path('scene.ma'), self.path('out.obx'), self.folder, split_layers=split)
            self.assertEqual(done.stderr.replace(b'\r', b'').count(b'no layers to day\n'), len(expected) > 0)

    def test_the_layers_that_every_file_saves_are_those_of_the_scene(self):
        saved = node('displayLayerManager', 'layerManager', None, '".cdl" 1', '-s 2 ".dli[1]"  1') + node('displayLayer', 'defaultLayer')
        ties = connect('layerManager.dli[0]', 'defaultLayer.id')
        root = self.split(transform('a'), saved, node('displayLayer', 'L'), ties, connect('layerManager.dli[1]', 'L.id'),
                          connect('L.di', 'a.do'))
        self.assertEqual(self.names(root), ['defaultLayer', 'L'])
        self.split(transform('a'), saved, ties)
        self.assertIn(NOTHING, self.told)

    def test_layers_without_members_split_nothing(self):
        root = self.split(transform('a'), layer('L'))
        self.assertEqual(self.names(root), VIEWS + ['a'])
        self.assertIn(NOTHING, self.told)

    def test_an_empty_layer_is_written_when_another_has_members(self):
        root = self.split(transform('a'), layer('Empty'), layer('L', 'a'))
        self.assertEqual(self.names(root), ['defaultLayer', 'Empty', 'L'])
        self.assertEqual(root.group('Empty').items, [])

    def test_a_shape_has_no_group(self):
        root = self.split(transform('a'), triangle('s', 'a'), shaded('s'), layer('L', 's', 'a'))
        self.assertEqual(self.names(root.group('L')), ['a'])

    def test_a_layer_of_shapes_only_splits_nothing(self):
        root = self.split(transform('a'), triangle('s', 'a'), shaded('s'), layer('L', 's'))
        self.assertEqual(self.names(root), VIEWS + ['a'])
        self.assertIn(NOTHING, self.told)

    def test_a_camera_shape_has_no_group_but_its_transform_has(self):
        root = self.split(layer('L', ':persp', ':perspShape'))
        self.assertEqual(self.names(root.group('L')), ['persp'])

    def test_an_unhandled_shape_has_a_group(self):
        root = self.split(transform('a', None, triple('.t', 1, 0, 0)), node('locator', 'l', 'a'), layer('L', 'l'))
        self.assertEqual(root.group('L', 'l').transform[12], 1)

    def test_nodes_outside_the_dag_are_passed_over(self):
        root = self.split(transform('a'), node('displayLayer', 'Other'), node('multiplyDivide', 'm'), node('displayLayer', 'L'),
                          connect('L.v', 'm.i1x'), connect('L.di', 'a.do'))
        self.assertEqual(self.names(root.group('L')), ['a'])

    def test_names_with_namespaces_and_beyond_ascii_are_found(self):
        root = self.split('namespace -add "n";\n' + transform('n:b\u00fcro'), layer('n:L', 'n:b\u00fcro'))
        self.assertEqual(self.names(root.group('n:L')), ['n:b\u00fcro'])

    def test_an_instance_is_found_by_its_first_path(self):
        root = self.split(transform('a', None, triple('.t', 1, 0, 0)), transform('b', None, triple('.t', 2, 0, 0)),
                          transform('x', 'a', triple('.t', 0, 1, 0)), 'parent -s -nc -r -add "|a|x" "b" ;\n', layer('L', '|a|x'))
        self.assertEqual([g.transform[12:15] for g in root.group('L').groups()], [(1, 1, 0)])

    def test_equal_names_under_two_parents_are_told_apart(self):
        root = self.split(transform('a', None, triple('.t', 1, 0, 0)), transform('b', None, triple('.t', 2, 0, 0)),
                          transform('x', 'a'), transform('x', 'b'), layer('L', '|b|x'))
        self.assertEqual([(g.name, g.transform[12]) for g in root.group('L').groups()], [('x', 2)])

    def test_the_members_of_a_hidden_layer_are_groups_without_geometry(self):
        root = self.split(transform('a'), triangle('s', 'a'), shaded('s'), node('displayLayer', 'L', None, '".v" no'),
                          connect('L.di', 'a.do'))
        self.assertEqual([i.kind for i in root.group('L', 'a').items], ['flags', 'transform'])

    def test_a_copy_has_the_animation_of_its_group(self):
        root = self.split(transform('a', None, triple('.t', 0, 5, 0)), transform('b', 'a'), slide('b'), layer('L', 'b'), playback(1, 2))
        copy = root.group('L', 'b')
        self.assertEqual([i.kind for i in copy.items], ['flags', 'animation'])

    def test_many_members_below_one_parent_take_a_moment(self):
        count = 30000
        parts = [transform('p')]
        parts += ['createNode transform -n "m%d" -p "p";\n' % i for i in range(count)]
        content = scene(*parts, layer('L', *('m%d' % i for i in range(count))))
        with open(self.path('scene.ma'), 'w') as file:
            file.write(content)
        seconds = []
        for split in (False, True):
            begin = time.monotonic()
            data = self.run_importer(content, split_layers=split)
            seconds.append(time.monotonic() - begin)
        self.assertEqual(data.count(b'\ngroup "m'), 2 * count)
        # one search through all for each would take several times as long as everything else
        self.assertLess(seconds[1], 4 * seconds[0] + 1, seconds)


if __name__ == '__main__':
    sceneFiles.main()
