#!/usr/bin/env python3
"""Tracks of moving scenes from end to end: times, poses, and what stands after the sampling. Expectations are worked out by hand.

  animatedScenes.py [--runner WRAPPER] MAYA_IMPORTER [unittest arguments]
"""
import os
import sys

sys.path[:0] = [os.path.dirname(os.path.abspath(__file__)), os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support')]
import obx
import sceneFiles
from mayaText import connect, node, scene, shaded, transform, triangle, triple
from sceneFiles import SceneFileTest

SLOPE = 2  # tangents that make straight lines of curves


def playback(first, last, rate='film'):
    """The playback range of a scene in frames of the rate."""
    return node('script', 'sceneConfigurationScriptNode', None,
                '".b" -type "string" "playbackOptions -min %g -max %g -ast %g -aet %g "' % (first, last, first, last), '".st" 6')


def moving(scene_text, rate):
    return scene_text.replace('-t film', '-t ' + rate)


def curve(name, target, *keys, type='animCurveTL'):
    """A curve of straight lines through (frame, value) keys that drives a plug."""
    numbers = ' '.join('%r %r' % key for key in keys)
    return (node(type, name, None, '".tan" %d' % SLOPE, '-s %d ".ktv[0:%d]"  %s' % (len(keys), len(keys) - 1, numbers))
            + connect(name + '.o', target))


def slide(name, target='.tx', first=0, last=200):
    """The value is the frame itself: 5 at frame 5."""
    return curve(name + '_curve', name + target, (first - 100, first - 100), (last, last))


class Tracks(SceneFileTest):
    def track(self, *statements, rate='film', name='mover', **settings):
        found = self.convert(moving(scene(*statements), rate), **settings)
        return self.root(found).group(name).first('animation')

    def stamps(self, first, last, rate='film'):
        track = self.track(transform('mover'), slide('mover'), playback(first, last), rate=rate)
        return list(track.get('timestamps'))

    def poses(self, track, element=12):
        """One element of each key's matrix."""
        values = track.get('matrices')
        return [values[i + element] for i in range(0, len(values), 16)]


class Times(Tracks):
    def test_film_range_of_ten_frames(self):
        # frame n stands at 1000 n / 24 ms, cut off; the first key is one frame before the range
        self.assertEqual(self.stamps(1, 10), [0, 41, 83, 125, 166, 208, 250, 291, 333, 375])

    def test_start_and_duration_are_in_seconds(self):
        track = self.track(transform('mover'), slide('mover'), playback(1, 10))
        self.assertEqual(track.type, 'fbx_animation')
        self.assertEqual(track.name, 'mover')
        self.assertEqual(track.parameters(), ['start_time', 'duration', 'timestamps', 'matrices', 'interpolate', 'folder'])
        self.assertEqual(track.get('start_time'), 0)
        self.near([track.get('duration')], [10 / 24])
        self.assertEqual((track.get('interpolate'), track.get('folder')), (True, ''))
        late = self.track(transform('mover'), slide('mover'), playback(13, 24))
        self.near([late.get('start_time'), late.get('duration')], [0.5, 0.5])  # frames 12 to 24

    def test_pal_frames_are_forty_milliseconds(self):
        self.assertEqual(self.stamps(1, 10, 'pal'), [0, 40, 80, 120, 160, 200, 240, 280, 320, 360])

    def test_ntsc_frames_are_cut_off_after_thirds(self):
        self.assertEqual(self.stamps(1, 10, 'ntsc'), [0, 33, 66, 100, 133, 166, 200, 233, 266, 300])

    def test_frames_of_24000_1001_last_a_little_longer(self):
        # 1001 n / 24 ms: 41.708, 83.417, 125.125, 166.833 ...; after 24 of them a millisecond is lost
        stamps = self.stamps(1, 26, '23.976fps')
        self.assertEqual(stamps[:10], [0, 41, 83, 125, 166, 208, 250, 291, 333, 375])
        self.assertEqual(stamps[12:15], [500, 542, 583])
        self.assertEqual(stamps[24:], [1001, 1042])

    def test_a_range_of_one_frame_has_one_key(self):
        self.assertEqual(self.stamps(5, 5), [166])  # frame 4
        track = self.track(transform('mover'), slide('mover'), playback(5, 5))
        self.assertEqual(self.poses(track), [5])
        self.near([track.get('duration')], [1 / 24])

    def test_a_range_from_zero_begins_before_time(self):
        # frame -1 is at -41.67 ms, which is cut off towards zero; it wraps in 32 bits and comes out again
        self.assertEqual(self.stamps(0, 2), [-41, 0, 41])

    def test_a_range_from_before_zero(self):
        # frames -4 to 0: -166.67, -125, -83.33, -41.67, 0
        self.assertEqual(self.stamps(-3, 1), [-166, -125, -83, -41, 0])

    def test_a_range_that_ends_before_it_begins_is_its_first_frame(self):
        track = self.track(transform('mover'), slide('mover'), playback(10, 5))
        self.assertEqual((list(track.get('timestamps')), self.poses(track)), ([375], [10]))

    def test_fractions_of_frames_step_from_where_the_range_begins(self):
        # 0.5, 1.5, 2.5 frames; 3.5 is not before the end
        self.assertEqual(self.stamps(1.5, 3.25), [20, 62, 104])

    def test_a_range_that_never_ends_is_cut(self):
        data = self.run_importer(scene(transform('mover'), slide('mover'), playback(1, 1e9)))
        matrices = data[data.index(b'"matrices" [ '):data.index(b'"interpolate"')]
        self.assertEqual(matrices.count(b','), 200000)  # one between two, and one behind the list


class Poses(Tracks):
    def test_a_key_holds_the_pose_of_the_next_frame(self):
        track = self.track(transform('mover'), slide('mover'), playback(1, 10))
        self.assertEqual(self.poses(track), [1, 2, 3, 4, 5, 6, 7, 8, 9, 10])
        for element, value in ((0, 1), (5, 1), (10, 1), (15, 1), (13, 0)):
            self.assertEqual(set(self.poses(track, element)), {value})

    def test_the_track_replaces_the_transform(self):
        found = self.convert(scene(transform('mover'), slide('mover'), playback(1, 2)))
        self.assertEqual([i.kind for i in self.root(found).group('mover').items], ['flags', 'animation'])

    def test_groups_have_local_matrices_and_tracks_of_their_own_only(self):
        found = self.convert(scene(transform('above'), slide('above'), transform('mover', 'above'), slide('mover', '.ty'),
                                   transform('still', '|above|mover', triple('.t', 0, 0, 7)), playback(1, 2)))
        above = self.root(found).group('above')
        self.assertEqual(self.poses(above.first('animation')), [1, 2])
        self.assertEqual(self.poses(above.first('animation'), 13), [0, 0])
        mover = above.group('mover').first('animation')
        self.assertEqual((self.poses(mover), self.poses(mover, 13)), ([0, 0], [1, 2]))
        still = above.group('mover', 'still')
        self.assertIsNone(still.first('animation'))
        self.assertEqual(still.transform[12:15], (0, 0, 7))

    def test_a_frame_takes_the_tracks_away(self):
        found = self.convert(scene(transform('mover'), slide('mover'), playback(1, 10)), frame=7)
        group = self.root(found).group('mover')
        self.assertIsNone(group.first('animation'))
        self.assertEqual(group.transform[12], 7)

    def test_joints_move_too(self):
        found = self.convert(scene(transform('mover', type='joint'), slide('mover'), playback(1, 2)))
        self.assertEqual(self.poses(self.root(found).group('mover').first('animation')), [1, 2])

    def test_the_geometry_of_an_animated_group_is_inside_it(self):
        found = self.convert(scene(transform('mover'), slide('mover'), triangle('s', 'mover'), shaded('s'), playback(1, 2)))
        self.assertEqual([i.kind for i in self.root(found).group('mover').items], ['flags', 'animation', 'object'])


class Cameras(Tracks):
    CAMERA = transform('shot') + node('camera', 'shotShape', 'shot')

    def camera(self, found, name='shot'):
        return next(c for c in found.all('camera') if c.name == name)

    def test_an_animated_camera_has_a_track_and_no_transform(self):
        found = self.convert(scene(self.CAMERA, slide('shot'), playback(1, 3)))
        camera = self.camera(found)
        self.assertIsNone(camera.transform)
        track = camera.first('animation')
        self.assertEqual(track.name, 'shotShape')  # the node's own name, unlike the camera's
        self.assertEqual(list(track.get('timestamps')), [0, 41, 83])
        self.assertEqual(self.poses(track), [1, 2, 3])
        names = camera.parameters()
        for name in ('fov', 'position', 'direction', 'up', 'clipping'):
            self.assertIn(name, names)

    def test_parents_count_and_matrices_are_those_of_the_world(self):
        found = self.convert(scene(transform('rig', None, triple('.t', 0, 3, 0)), slide('rig'),
                                   transform('shot', 'rig', triple('.t', 0, 0, 5)), node('camera', 'shotShape', '|rig|shot'),
                                   playback(1, 2)))
        track = self.camera(found).first('animation')
        self.assertEqual((self.poses(track), self.poses(track, 13), self.poses(track, 14)), ([1, 2], [3, 3], [5, 5]))

    def test_a_frame_gives_a_transform_at_that_frame(self):
        found = self.convert(scene(self.CAMERA, slide('shot'), playback(1, 10)), frame=4)
        camera = self.camera(found)
        self.assertIsNone(camera.first('animation'))
        self.assertEqual(camera.transform[12], 4)
        self.assertEqual(camera.get('position'), (4, 0, 0))

    def test_a_still_camera_has_both_vectors_and_matrix(self):
        found = self.convert(scene(transform('shot', None, triple('.t', 1, 2, 3)), node('camera', 'shotShape', 'shot'),
                                   playback(1, 10)))
        camera = self.camera(found)
        self.assertIsNone(camera.first('animation'))
        self.assertEqual((camera.get('position'), camera.transform[12:15]), ((1, 2, 3), (1, 2, 3)))

    def test_an_orthographic_and_a_hidden_camera_are_written_as_perspective_ones(self):
        found = self.convert(scene(transform('plan', None, '".v" no'), node('camera', 'planShape', 'plan', '".o" yes', '".rnd" no')))
        self.assertEqual(self.camera(found, 'plan').get('projection'), 'perspective')

    def test_animated_default_views_are_dropped_all_the_same(self):
        found = self.convert(scene(slide(':top'), playback(1, 2)))
        self.assertEqual([c.name for c in found.all('camera')], ['persp'])


class AfterSampling(Tracks):
    """Sampling leaves the scene at the last frame of the range."""
    SHOWN_LATE = curve('shown', 'tri.v', (1, 0), (4, 0), (5, 1), type='animCurveTU')
    SHOWN_EARLY = curve('shown', 'tri.v', (1, 1), (4, 1), (5, 0), type='animCurveTU')
    MESH = transform('holder') + triangle('tri', 'holder') + shaded('tri')

    def objects(self, *statements):
        return [o.name for o in self.convert(scene(*statements, playback(1, 10))).all('object')]

    def test_geometry_is_that_of_the_saved_time_without_an_animated_camera(self):
        self.assertEqual(self.objects(self.MESH, self.SHOWN_LATE), [])
        self.assertEqual(self.objects(self.MESH, self.SHOWN_EARLY), ['tri'])

    def test_geometry_is_that_of_the_last_frame_after_an_animated_camera(self):
        self.assertEqual(self.objects(self.MESH, self.SHOWN_LATE, Cameras.CAMERA, slide('shot')), ['tri'])
        self.assertEqual(self.objects(self.MESH, self.SHOWN_EARLY, Cameras.CAMERA, slide('shot')), [])

    def test_still_groups_after_a_sampled_one_stand_at_the_last_frame(self):
        # what feeds these two is no curve directly, so they have no tracks
        driven = ''.join(transform(name) + node('addDoubleLinear', name + 'Sum') + curve(name + 'Curve', name + 'Sum.i1', (-100, -100), (200, 200))
                         + connect(name + 'Sum.o', name + '.tx') for name in ('before',))
        driven += transform('mover') + slide('mover')
        driven += transform('after') + connect('beforeSum.o', 'after.tx')
        root = self.root(self.convert(scene(driven, playback(1, 10))))
        self.assertIsNone(root.group('before').first('animation'))
        self.assertEqual((root.group('before').transform[12], root.group('after').transform[12]), (1, 10))


if __name__ == '__main__':
    sceneFiles.main()
