#!/usr/bin/env python3
"""Runs maya_importer as the renderer does: arguments, streams, log file, exit statuses.

  runSequence.py [--runner WRAPPER] MAYA_IMPORTER

WRAPPER runs foreign programs (wine); the program is then taken for one of Windows, and its registry
lives in a Wine prefix of the test's own.
"""
import argparse
import glob
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

OPTIONS = None

ALPHABET = 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/'
KEYS = {'major_version': 0, 'loglevel': 4, 'import_filename': 11, 'output_filename': 12, 'debugobx': 14}
HEADER = (b'//---orvane:dal:7---\n//---import:dal:1---\n//---id:1---\n'
          b'// This is a Vistrel scene file\n\n')
BINARY_MARK = b'\x01\x02\x03'
OLD_CALLER = 'ERROR:  trying to use old Vistrel Version'
STAMP = r'\d\d:\d\d:\d\d\.\d\d\d'
SCENE = '''//Maya ASCII 2018 scene
requires maya "2018";
currentUnit -l centimeter -a degree -t film;
createNode transform -n "tri";
createNode mesh -n "triShape" -p "tri";
	setAttr ".vt[0:2]"  0 0 0 1 0 0 0 1 0;
	setAttr -s 3 ".ed[0:2]"  0 1 0 1 2 0 2 0 0;
	setAttr -s 1 -ch 3 ".fc[0]" -type "polyFaces" f 3 0 1 2;
connectAttr "triShape.iog" ":initialShadingGroup.dsm" -na;
'''


def encode(text):
    """Base64 by the bits, so that the program's own encoder is not what it is tested with."""
    data = text.encode('utf-8')
    bits = ''.join('{:08b}'.format(byte) for byte in data)
    bits += '0' * (-len(bits) % 6)
    characters = ''.join(ALPHABET[int(bits[i:i + 6], 2)] for i in range(0, len(bits), 6))
    return characters + '=' * (-len(characters) % 4)


class Run:
    """What one run left behind."""

    def __init__(self, process, log):
        self.status = process.returncode
        self.output = process.stdout
        self.errors = process.stderr.decode('utf-8', 'replace').replace('\r\n', '\n')
        self.log = log.decode('utf-8', 'replace').replace('\r\n', '\n')
        self.records = self.log.split('\n')


class ImporterTest(unittest.TestCase):
    def setUp(self):
        top = tempfile.mkdtemp(prefix='vistrel-run-')
        self.addCleanup(shutil.rmtree, top, ignore_errors=True)
        self.folder = os.path.join(top, 'm\u00e4dchen \u6f22')
        os.mkdir(self.folder)
        self.scene = self.write('tri.ma', SCENE)
        if OPTIONS.runner:
            self.install(HKEY_CURRENT_USER=('7.3', self.folder))

    # --- files and names

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, text):
        with open(self.path(name), 'wb') as file:
            file.write(text.encode('utf-8'))
        return self.path(name)

    def read(self, name):
        try:
            with open(self.path(name), 'rb') as file:
                return file.read()
        except FileNotFoundError:
            return b''

    def native(self, path):
        """The path as the program sees it."""
        return 'Z:' + path.replace('/', '\\') if OPTIONS.runner else path

    # --- the registry

    def environment(self, **variables):
        env = dict(os.environ)
        if OPTIONS.runner:  # one TMPDIR for all runs: Wine starts anew for each other one
            env.update(WINEPREFIX=OPTIONS.prefix, WINEDEBUG='-all', TMPDIR=OPTIONS.prefix)
        else:
            env.update(TMPDIR=self.folder)
        for name, value in variables.items():
            env.pop(name, None)
            if value is not None:
                env[name] = value
        return env

    def install(self, **folders):
        """Makes the registry hold just these installations: root=(version, folder or None)."""
        lines = ['Windows Registry Editor Version 5.00', '']
        for root in ('HKEY_LOCAL_MACHINE', 'HKEY_CURRENT_USER'):
            key = root + r'\SOFTWARE\Orvane'
            lines += ['[-{}]'.format(key), '']
            if root in folders:
                version, folder = folders[root]
                lines += ['[{}]'.format(key), '"VistrelVersion"="{}"'.format(version), '',
                          '[{}\\{}]'.format(key, version)]
                if folder:
                    lines.append('"ResourceFolder"="{}"'.format(self.native(folder).replace('\\', r'\\')))
                lines.append('')
        with open(self.path('install.reg'), 'wb') as file:
            file.write('\r\n'.join(lines).encode('utf-16'))
        subprocess.run(OPTIONS.runner + ['reg', 'import', self.native(self.path('install.reg'))],
                       env=self.environment(), check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=120)

    # --- running

    def run_importer(self, log='sceneapi.log', variables=None, output=subprocess.PIPE, **settings):
        texts = ['{} {}'.format(KEYS[name], value) for name, value in settings.items()]
        return self.run_arguments([encode(text) for text in texts], log, variables, output)

    def run_arguments(self, arguments, log='sceneapi.log', variables=None, output=subprocess.PIPE):
        process = subprocess.run(OPTIONS.runner + [OPTIONS.importer] + arguments, stdout=output,
                                 stderr=subprocess.PIPE, env=self.environment(**(variables or {})),
                                 cwd=self.folder, timeout=120)
        return Run(process, self.read(log))

    def convert(self, name, **settings):
        """A whole conversion; returns the run and the bytes written."""
        run = self.run_importer(major_version=7, import_filename=self.native(self.scene),
                                output_filename=self.native(self.path(name)), **settings)
        return run, self.read(name)


class VersionTest(ImporterTest):
    def test_missing_version_is_refused_before_maya_is_touched(self):
        run = self.run_arguments([])
        self.assertEqual(run.status, 1)
        self.assertEqual(run.output, b'')
        self.assertIn(OLD_CALLER, run.log)
        self.assertNotIn('initialize MAYA', run.log)

    def test_version_five_is_refused_and_nothing_is_written(self):
        run = self.run_importer(major_version=5, loglevel='DEBUG4', import_filename=self.native(self.scene),
                                output_filename=self.native(self.path('out')))
        self.assertEqual(run.status, 1)
        self.assertIn(OLD_CALLER, run.log)
        self.assertNotIn('initialize MAYA', run.log)
        self.assertFalse(os.path.exists(self.path('out')))

    def test_version_six_is_accepted(self):
        run = self.run_importer(major_version=6, loglevel='DEBUG4', import_filename=self.native(self.scene),
                                output_filename=self.native(self.path('out')))
        self.assertEqual(run.status, 0)
        self.assertNotIn(OLD_CALLER, run.log)
        self.assertTrue(self.read('out').startswith(HEADER))

    def test_version_that_is_no_number_is_refused(self):
        self.assertEqual(self.run_importer(major_version='seven').status, 1)

    def test_foreign_argument_overwrites_the_version(self):
        run = self.run_arguments([encode('0 7'), encode('x y')])
        self.assertEqual(run.status, 1)


class OutputTest(ImporterTest):
    def test_standard_output_gets_the_bytes_of_the_file_and_nothing_else(self):
        run = self.run_importer(major_version=7, import_filename=self.native(self.scene))
        self.assertEqual(run.status, 0)
        _, written = self.convert('out')
        self.assertTrue(run.output.startswith(HEADER))
        self.assertNotIn(b'\r\n', run.output[:len(HEADER)])
        self.assertIn(BINARY_MARK, run.output)
        self.assertEqual(run.output, written)

    def test_dash_is_the_same_as_no_output_name(self):
        named = self.run_importer(major_version=7, import_filename=self.native(self.scene),
                                  output_filename='-')
        unnamed = self.run_importer(major_version=7, import_filename=self.native(self.scene))
        self.assertEqual(named.output, unnamed.output)

    def test_file_output_leaves_standard_output_empty(self):
        run, written = self.convert('out')
        self.assertEqual((run.status, run.output), (0, b''))
        self.assertTrue(written.startswith(HEADER))

    def test_output_name_is_taken_from_the_current_folder(self):
        run = self.run_importer(major_version=7, import_filename='tri.ma', output_filename='near.obx')
        self.assertEqual(run.status, 0)
        self.assertEqual(self.read('near.obx'), self.convert('out')[1])

    def test_quoted_arguments_are_taken(self):
        run = self.run_arguments(['"' + encode('0 7') + '"', encode('11 ' + self.native(self.scene))])
        self.assertEqual(run.status, 0)
        self.assertTrue(run.output.startswith(HEADER))

    def test_unopenable_scene_still_ends_with_status_zero(self):
        run = self.run_importer(major_version=7, import_filename=self.native(self.path('none.ma')))
        self.assertEqual(run.status, 0)
        self.assertTrue(run.output.startswith(HEADER))
        self.assertIn('could not open Maya file', run.errors)
        self.assertIn('WARNING:  could not open Maya file: ', run.log)

    def test_no_scene_at_all_still_ends_with_status_zero(self):
        run = self.run_importer(major_version=7)
        self.assertEqual(run.status, 0)
        self.assertTrue(run.output.startswith(HEADER))

    def test_unopenable_output_is_reported_with_status_one(self):
        target = self.native(self.path(os.path.join('none', 'out')))
        run = self.run_importer(major_version=7, import_filename=self.native(self.scene),
                                output_filename=target)
        message = 'could not open file: "{}"'.format(target)
        self.assertEqual(run.status, 1)
        self.assertIn('opening file: ', run.errors)
        self.assertIn(message + '\n', run.errors)
        self.assertIn('ERROR:  ' + message + '\n', run.log)

    def test_full_device_is_reported_with_status_one(self):
        if OPTIONS.runner or not os.path.exists('/dev/full'):
            self.skipTest('there is no full device here')
        run = self.run_importer(major_version=7, import_filename=self.scene, output_filename='/dev/full')
        self.assertEqual(run.status, 1)
        self.assertIn('closing file: ', run.errors)
        self.assertIn('could not close file\n', run.errors)
        self.assertIn('ERROR:  could not close file\n', run.log)

    def test_full_standard_output_is_reported_with_status_one(self):
        if OPTIONS.runner or not os.path.exists('/dev/full'):
            self.skipTest('there is no full device here')
        with open('/dev/full', 'wb') as full:
            run = self.run_importer(major_version=7, import_filename=self.scene, output=full)
        self.assertEqual(run.status, 1)
        self.assertIn('could not close file\n', run.errors)


class DebugLayoutTest(ImporterTest):
    def test_absent_and_false_leave_the_layout_alone(self):
        plain = self.convert('plain')[1]
        self.assertEqual(self.convert('false', debugobx='false')[1], plain)
        self.assertEqual(self.convert('zero', debugobx='0')[1], plain)
        self.assertIn(BINARY_MARK, plain)

    def test_true_indents_and_ends_binary_arrays_after_the_prologue(self):
        plain = self.convert('plain')[1]
        debug = self.convert('debug', debugobx='true')[1]
        self.assertNotIn(BINARY_MARK, debug)
        self.assertRegex(debug, rb'\n[ \t]+\S')
        prologue = plain[:plain.index(b'(built ')]
        self.assertTrue(prologue.startswith(HEADER))
        self.assertTrue(debug.startswith(prologue))


class LogTest(ImporterTest):
    def test_banner_comes_first_with_small_milliseconds(self):
        run = self.convert('out')[0]
        pattern = (r'main\.cpp:\d+ - \d\d:\d\d:\d\d\.(\d\d\d) INFO:  Starting maya importer '
                   r'\(built .+\) for MAYA_API_VERSION:20180000')
        match = re.fullmatch(pattern, run.records[0])
        self.assertTrue(match, run.records[0])
        self.assertLess(int(match.group(1)), 100)

    def test_lowest_level_shows_every_step(self):
        run = self.convert('out', loglevel='DEBUG4')[0]
        self.assertIn('DEBUG4:  could  initialize MAYA \n', run.log)
        self.assertIn('DEBUG4:  TRACE CHECK: ', run.log)

    def test_default_level_is_info(self):
        run = self.convert('out')[0]
        self.assertIn('INFO:  cnf parsed to:\n', run.log)
        self.assertNotIn('DEBUG', run.log)

    def test_arguments_are_listed_by_ascending_key(self):
        run = self.run_importer(output_filename='x', major_version=5)
        start = next(i for i, record in enumerate(run.records) if record.endswith('cnf parsed to:'))
        self.assertEqual(run.records[start + 1:start + 4], ['MAJOR_VERSION: 5', 'OUTPUT_FILENAME: x', ''])

    def test_no_arguments_list_nothing(self):
        run = self.run_arguments([])
        start = next(i for i, record in enumerate(run.records) if record.endswith('cnf parsed to:'))
        self.assertEqual(run.records[start + 1], '')
        self.assertIn(OLD_CALLER, run.records[start + 2])

    def test_error_level_hides_what_comes_after_the_banner(self):
        run = self.convert('out', loglevel='ERROR')[0]
        self.assertEqual(len(run.records), 2)  # the banner and the end of its line
        self.assertIn('Starting maya importer', run.records[0])

    def test_lower_case_level_warns_and_means_info(self):
        run = self.convert('out', loglevel='info')[0]
        self.assertRegex(run.records[1], '^:0 - ' + STAMP + " WARNING:  Unknown logging level 'info'. "
                         'Using INFO level as default.$')
        self.assertIn('INFO:  cnf parsed to:\n', run.log)

    def test_none_shows_everything(self):
        self.assertIn('DEBUG4:  could  initialize MAYA \n', self.convert('out', loglevel='NONE')[0].log)

    def test_log_grows_from_run_to_run(self):
        self.run_arguments([])
        self.assertEqual(self.run_arguments([]).log.count('Starting maya importer'), 2)

    def test_log_of_twenty_mebibytes_is_started_afresh(self):
        for size, is_kept in ((20971519, True), (20971520, False)):
            self.write('sceneapi.log', 'old')
            os.truncate(self.path('sceneapi.log'), size)
            self.run_arguments([])
            after = os.path.getsize(self.path('sceneapi.log'))
            self.assertEqual(after > size, is_kept, after)

    def test_unopenable_log_is_reported_for_each_record_and_the_run_goes_on(self):
        variables = {'TMPDIR': self.path('none')}
        if OPTIONS.runner:
            self.install(HKEY_CURRENT_USER=('7.3', self.path('none')))
            variables = {}
        run = self.run_importer(log='none/sceneapi.log', variables=variables, major_version=7,
                                import_filename=self.native(self.scene))
        self.assertEqual(run.status, 0, run.errors)
        self.assertTrue(run.output.startswith(HEADER))
        self.assertGreater(run.errors.count('could not open log file:\nopening log: '), 1)


class MayaLocationTest(ImporterTest):
    def test_no_value_changes_the_run(self):
        for value in (None, '', 'x', '/usr/autodesk/maya', 'y' * 1014, 'z' * 20000):
            run = self.run_importer(major_version=7, import_filename=self.native(self.scene),
                                    variables={'MAYA_LOCATION': value})
            self.assertEqual(run.status, 0, value)
            self.assertTrue(run.output.startswith(HEADER))


class LogFolderTest(ImporterTest):
    """Where the log lies on Windows."""

    def setUp(self):
        super().setUp()
        if not OPTIONS.runner:
            self.skipTest('there is no registry here')
        os.mkdir(self.path('user'))
        os.mkdir(self.path('machine'))

    def logs(self):
        places = {'user': self.path('user'), 'machine': self.path('machine')}
        found = {name for name, folder in places.items()
                 if os.path.exists(os.path.join(folder, 'sceneapi.log'))}
        if self.fallbacks():
            found.add('temporary')
        return found

    def fallbacks(self):
        return [path for path in glob.glob(OPTIONS.prefix + '/drive_c/**/sceneapi.log', recursive=True)]

    def run_and_find(self):
        for path in self.fallbacks():
            os.remove(path)
        self.run_arguments([])
        return self.logs()

    def test_fallback_is_the_temporary_folder(self):
        self.install()
        self.assertEqual(self.run_and_find(), {'temporary'})

    def test_machine_alone(self):
        self.install(HKEY_LOCAL_MACHINE=('7.3', self.path('machine')))
        self.assertEqual(self.run_and_find(), {'machine'})

    def test_user_overrides_the_machine(self):
        self.install(HKEY_LOCAL_MACHINE=('7.3', self.path('machine')),
                     HKEY_CURRENT_USER=('7.3', self.path('user')))
        self.assertEqual(self.run_and_find(), {'user'})

    def test_version_without_resource_folder_keeps_the_temporary_folder(self):
        self.install(HKEY_CURRENT_USER=('7.3', None))
        self.assertEqual(self.run_and_find(), {'temporary'})

    def test_lines_end_as_windows_ends_them(self):
        self.install(HKEY_CURRENT_USER=('7.3', self.path('user')))
        self.run_arguments([])
        raw = self.read('user/sceneapi.log')
        self.assertEqual(raw.count(b'\n'), raw.count(b'\r\n'))
        self.assertGreater(raw.count(b'\r\n'), 2)


class EncoderTest(unittest.TestCase):
    """RFC 4648, section 10: the encoder above is no worse than what it checks."""

    def test_published_vectors(self):
        vectors = {'': '', 'f': 'Zg==', 'fo': 'Zm8=', 'foo': 'Zm9v', 'foob': 'Zm9vYg==',
                   'fooba': 'Zm9vYmE=', 'foobar': 'Zm9vYmFy'}
        for text, encoded in vectors.items():
            self.assertEqual(encode(text), encoded)


def end_wine(prefix):
    """Ends the prefix's server, which would write its registry into the removed folder otherwise."""
    server = shutil.which('wineserver') if OPTIONS.runner else None
    if server:
        env = dict(os.environ, WINEPREFIX=prefix, TMPDIR=prefix)
        subprocess.run([server, '-k'], env=env, check=False)
        subprocess.run([server, '-w'], env=env, check=False, timeout=60)


def main():
    global OPTIONS
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--runner', help='program that runs the importer')
    parser.add_argument('importer')
    OPTIONS, rest = parser.parse_known_args()
    OPTIONS.runner = [os.path.abspath(OPTIONS.runner)] if OPTIONS.runner else []
    OPTIONS.importer = os.path.abspath(OPTIONS.importer)
    with tempfile.TemporaryDirectory(prefix='vistrel-wine-', ignore_cleanup_errors=True) as prefix:
        OPTIONS.prefix = prefix  # of Wine: making one takes longer than all the runs in it
        try:
            unittest.main(argv=[sys.argv[0]] + rest)
        finally:
            end_wine(prefix)


if __name__ == '__main__':
    main()
