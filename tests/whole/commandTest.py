#!/usr/bin/env python3
"""Runs maya2vistrel as a person would: exit statuses, whole files or none, reports.

  commandTest.py [--runner WRAPPER] MAYA2VISTREL

WRAPPER runs foreign programs (wine). The importer is expected beside the command.
"""
import argparse
import json
import os
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support'))
from binaryTwin import MayaBinary, triangle_scene

OPTIONS = None
SCENE = '''//Maya ASCII 2018 scene
requires maya "2018";
currentUnit -l centimeter -a degree -t film;
createNode transform -n "tri";
createNode mesh -n "triShape" -p "tri";
	setAttr ".uvst[0].uvsn" -type "string" "map1";
	setAttr -s 3 ".uvst[0].uvsp[0:2]" -type "float2" 0 0 1 0 0 1;
	setAttr -s 3 ".vt[0:2]"  0 0 0 1 0 0 0 1 0;
	setAttr -s 3 ".ed[0:2]"  0 1 0 1 2 0 2 0 0;
	setAttr -s 1 -ch 3 ".fc[0]" -type "polyFaces" f 3 0 1 2 mu 0 3 0 1 2;
connectAttr "triShape.iog" ":initialShadingGroup.dsm" -na;
'''


class CommandTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix='maya2vistrel-test-')
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.scene = self.write('tri.ma', SCENE)

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text):
        with open(self.path(name), 'wb') as file:
            file.write(text if isinstance(text, bytes) else text.encode())
        return self.path(name)

    def read(self, name):
        with open(self.path(name), 'rb') as file:
            return file.read()

    def run_command(self, *arguments, stdout=subprocess.PIPE, **environment):
        """Runs the command in the test's folder; outputs go through files, which servers of a wrapper cannot hold open."""
        env = dict(os.environ, TMPDIR=OPTIONS.temporary, TMP=OPTIONS.temporary, TEMP=OPTIONS.temporary, **environment)
        with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
            done = subprocess.run(OPTIONS.runner + [OPTIONS.command] + list(arguments),
                                  stdout=out if stdout == subprocess.PIPE else stdout, stderr=err,
                                  stdin=subprocess.DEVNULL, env=env, cwd=self.folder, timeout=120)
            for stream in (out, err):
                stream.seek(0)
            done.stdout, done.stderr = out.read(), err.read().replace(b'\r\n', b'\n')
        return done

    def leftovers(self):
        """Files of the folder that a run may not leave behind."""
        return sorted(f for f in os.listdir(self.folder)
                      if f != 'tri.ma')

    def test_writes_beside_the_scene_and_tells_so_in_one_line(self):
        done = self.run_command('tri.ma')
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.leftovers(), ['tri.ma.obx'])
        self.assertTrue(self.read('tri.ma.obx').startswith(b'//---orvane:dal:7---\n'))
        lines = done.stderr.decode().splitlines()
        self.assertEqual(len(lines), 1, done.stderr)
        self.assertIn('wrote tri.ma.obx: 1 mesh part, ', lines[0])
        self.assertEqual(done.stdout, b'')

    def test_quiet_says_nothing(self):
        done = self.run_command('tri.ma', '-q')
        self.assertEqual((done.returncode, done.stdout, done.stderr.strip()), (0, b'', b''))

    def test_standard_output_gets_the_same_bytes_as_a_file(self):
        self.assertEqual(self.run_command('tri.ma', '-o', 'a.obx').returncode, 0)
        done = self.run_command('tri.ma', '-o', '-')
        self.assertEqual(done.returncode, 0)
        self.assertEqual(done.stdout, self.read('a.obx'))
        self.assertEqual(self.leftovers(), ['a.obx'])

    def test_text_flag_writes_no_binary_arrays(self):
        self.run_command('tri.ma', '-o', 'a.obx', '--text')
        self.assertNotIn(b'\x01\x02\x03', self.read('a.obx'))
        self.run_command('tri.ma', '-o', 'b.obx')
        self.assertIn(b'\x01\x02\x03c', self.read('b.obx'))

    def test_keep_hierarchy_changes_the_flags_of_the_groups(self):
        self.run_command('tri.ma', '-o', 'a.obx', '--keep-hierarchy')
        self.assertIn(b'flags 32769', self.read('a.obx'))
        self.run_command('tri.ma', '-o', 'b.obx')
        self.assertIn(b'flags 32768', self.read('b.obx'))

    def test_wrong_usage_is_2(self):
        self.assertEqual(self.run_command().returncode, 2)
        self.assertEqual(self.run_command('tri.ma', '--frame', 'x').returncode, 2)
        self.assertEqual(self.run_command('tri.ma', '-o', 'tri.ma').returncode, 2)
        self.assertEqual(self.read('tri.ma'), SCENE.encode())

    def test_missing_or_unreadable_scene_is_3(self):
        done = self.run_command('nothing.ma')
        self.assertEqual(done.returncode, 3)
        self.assertIn(b'nothing.ma', done.stderr)
        self.assertEqual(self.run_command(self.folder).returncode, 3)
        self.assertEqual(self.leftovers(), [])

    def test_no_scene_is_4_whatever_its_name(self):
        self.write('picture.ma', b'\x89PNG\r\n\x1a\n')
        self.write('empty.ma', b'')
        self.write('empty.mb', b'')
        self.write('short.mb', triangle_scene()[:19])
        self.write('image4.mb', MayaBinary(wide=False).group('CIMG', b'TBHD\0\0\0\0'))
        self.write('image8.mb', MayaBinary(wide=True).group('CIMG'))
        for name in ('picture.ma', 'empty.ma', 'empty.mb', 'short.mb', 'image4.mb', 'image8.mb'):
            done = self.run_command(name, '-o', 'a.obx')
            self.assertEqual(done.returncode, 4, name)
            self.assertFalse(os.path.exists(self.path('a.obx')))
            for word in (name, 'empty' if name.startswith('empty') else 'no Maya scene', '//Maya', 'FOR4', 'FOR8', '.ma', '.mb'):
                self.assertIn(word, done.stderr.decode())

    def test_content_decides_not_the_name(self):
        self.write('tri.txt', SCENE)
        self.assertEqual(self.run_command('tri.txt', '-o', 'a.obx').returncode, 0)
        self.write('text.mb', SCENE)
        self.write('binary.ma', triangle_scene())
        for name in ('text.mb', 'binary.ma'):
            done = self.run_command(name)
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn(b': 1 mesh part, ', done.stderr)
        self.assertEqual(self.leftovers(), ['a.obx', 'binary.ma', 'binary.ma.obx', 'text.mb', 'text.obx', 'tri.txt'])

    def test_binary_scenes_of_both_widths(self):
        for wide in (False, True):
            self.write('tri.mb', triangle_scene(wide))
            done = self.run_command('tri.mb')
            self.assertEqual(done.returncode, 0, done.stderr)
            self.assertIn('wrote tri.obx: 1 mesh part, ', done.stderr.decode())
            self.assertEqual(self.leftovers(), ['tri.mb', 'tri.obx'])
            self.assertIn(b'triShape', self.read('tri.obx'))

    def test_a_binary_scene_cut_short_keeps_what_is_there_and_the_report_tells_where(self):
        data = triangle_scene()
        self.write('cut.mb', data[:data.rindex(b'HEAD')])  # the last group has no kind
        done = self.run_command('cut.mb', '--report', 'a.json')
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn(b': 1 mesh part, ', done.stderr)
        report = json.loads(self.read('a.json'))['importer']
        self.assertEqual([entry['word'] for entry in report['badStatements']], ['FOR8'])
        self.assertEqual(report['badStatements'][0]['where'], 'offset 0x%x' % (data.rindex(b'HEAD') - 16))

    def test_damaged_scene_is_4_and_keeps_the_old_result(self):
        self.write('a.obx', 'old')
        self.write('cut.ma', SCENE[:60])
        done = self.run_command('cut.ma', '-o', 'a.obx')
        self.assertEqual(done.returncode, 4, done.stderr)
        self.assertEqual(self.read('a.obx'), b'old')
        self.write('cut.mb', triangle_scene()[:60])
        done = self.run_command('cut.mb', '-o', 'a.obx')
        self.assertEqual(done.returncode, 4, done.stderr)
        self.assertEqual(self.read('a.obx'), b'old')
        self.assertEqual(self.leftovers(), ['a.obx', 'cut.ma', 'cut.mb'])

    def test_unwritable_output_is_6(self):
        done = self.run_command('tri.ma', '-o', 'no/such/folder/a.obx')
        self.assertEqual(done.returncode, 6)
        self.assertEqual(self.leftovers(), [])

    @unittest.skipUnless(os.path.exists('/dev/full'), 'no /dev/full here')
    def test_full_disk_is_6(self):
        if OPTIONS.runner:
            self.skipTest('devices differ under the wrapper')
        self.assertEqual(self.run_command('tri.ma', '-o', '/dev/full').returncode, 6)
        with open('/dev/full', 'wb') as full:
            self.assertEqual(self.run_command('tri.ma', '-o', '-', stdout=full).returncode, 6)

    def test_missing_importer_is_7(self):
        self.write('a.obx', 'old')
        done = self.run_command('tri.ma', '-o', 'a.obx', '--importer', self.path('no_importer'))
        self.assertEqual(done.returncode, 7, done.stderr)
        self.assertEqual(self.read('a.obx'), b'old')

    def test_dying_importer_is_7_and_keeps_the_old_result(self):
        if OPTIONS.runner:
            self.skipTest('a shell script is no program under the wrapper')
        script = self.write('dies', '#!/bin/sh\nprintf "//---orvane:dal:7---\\nload \\"orvrtopt.so\\" {\\n"\n'
                                    'echo last words >&2\nkill -9 $$\n')
        os.chmod(script, os.stat(script).st_mode | stat.S_IXUSR)
        self.write('a.obx', 'old')
        done = self.run_command('tri.ma', '-o', 'a.obx', '--importer', script)
        self.assertEqual(done.returncode, 7)
        self.assertIn(b'last words', done.stderr)
        self.assertEqual(self.read('a.obx'), b'old')
        self.assertEqual(self.leftovers(), ['a.obx', 'dies'])

    def test_report_lists_what_was_left_out(self):
        self.write('odd.ma', SCENE + 'createNode strangeThing -n "odd1" -p "tri";\ncreateNode strangeThing -n "odd2";\n'
                   'createNode polyReduce -n "polyCube1";\ncreateNode transform -n "cube";\n'
                   'createNode mesh -n "cubeShape" -p "cube";\nconnectAttr "polyCube1.out" "cubeShape.i";\n'
                   'connectAttr "cubeShape.iog" ":initialShadingGroup.dsm" -na;\n'
                   'createNode file -n "file1";\n\tsetAttr ".ftn" -type "string" "wood.png";\n'
                   'file -r -ns "x" -dr 1 -rfn "xRN" -typ "mayaAscii" "props/chair.ma";\nfrobnicate 1 2 3;\n')
        done = self.run_command('odd.ma', '-o', 'a.obx', '--report', 'a.json')
        self.assertEqual(done.returncode, 0, done.stderr)
        report = json.loads(self.read('a.json'))
        self.assertEqual(report['scene'], 'odd.ma')
        host = report['importer']
        self.assertEqual([(t['type'], t['count'], t['first']) for t in host['unknownNodeTypes']],
                         [('strangeThing', 2, 'odd1')])
        self.assertEqual([(t['type'], t['firstShape']) for t in host['missingBecauseOf']], [('polyReduce', 'cubeShape')])
        self.assertEqual(host['referencesLeftOut'], ['props/chair.ma'])
        self.assertEqual([t['word'] for t in host['unknownStatements']], ['frobnicate'])
        self.assertEqual(host['textures'], ['wood.png'])
        self.assertIn(b'2 nodes of unknown types', done.stderr)

    def test_names_beyond_ascii(self):
        folder = self.path('Szene \u00e4\u00f6\u65e5\u672c')
        os.mkdir(folder)
        scene = os.path.join(folder, 'b\u00fcro \u5ba4.ma')
        shutil.copy(self.scene, scene)
        done = self.run_command(scene)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertTrue(os.path.exists(scene + '.obx'))


def main():
    global OPTIONS
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--runner', default='')
    parser.add_argument('command')
    OPTIONS, rest = parser.parse_known_args()
    OPTIONS.runner = [os.path.abspath(OPTIONS.runner)] if OPTIONS.runner else []
    OPTIONS.command = os.path.abspath(OPTIONS.command)
    with tempfile.TemporaryDirectory(prefix='maya2vistrel-temporary-', ignore_cleanup_errors=True) as OPTIONS.temporary:
        unittest.main(argv=[sys.argv[0]] + rest)


if __name__ == '__main__':
    main()
