"""Runs the importer the way the renderer does: one base64 argument for each setting.

    importer = Importer('/path/maya_importer', runner='tools/wine.sh')
    done = importer.run('room.ma', 'room.obx', folder, frame=3)     # subprocess.CompletedProcess
"""
import base64
import os
import subprocess
import tempfile

KEYS = {'major_version': 0, 'minor_version': 1, 'loglevel': 4, 'curveradius': 5, 'smooth_curves': 6, 'include_nurbs': 7,
        'collapse_hierarchy': 8, 'split_layers': 9, 'frame': 10, 'import_filename': 11, 'output_filename': 12,
        'debugobx': 14, 'tessellate': 15, 'unique_materials': 20, 'experimental': 21}


def argument(key, value):
    if isinstance(value, bool):
        value = 'true' if value else 'false'
    return base64.b64encode(('%d %s' % (KEYS[key], value)).encode('utf-8', 'surrogateescape')).decode()


class Importer:
    def __init__(self, program, runner='', seconds=120):
        self.program = os.path.abspath(program)
        self.runner = [os.path.abspath(runner)] if runner else []
        self.seconds = seconds

    @property
    def foreign(self):
        """True for a Windows program under a wrapper."""
        return bool(self.runner)

    def named(self, path):
        """An absolute path as the program names it."""
        return 'Z:' + path if self.foreign and path.startswith('/') else path

    def command(self, scene, output, **settings):
        values = dict({'major_version': 7, 'minor_version': 3, 'loglevel': 'ERROR'}, **settings)
        values.update(import_filename=self.named(scene), output_filename=self.named(output))
        return self.runner + [self.program] + [argument(key, value) for key, value in values.items()]

    def run(self, scene, output, folder, environment=None, **settings):
        done = self.run_once(scene, output, folder, environment, settings)
        # Wine can fail to start a program, rarely and without a word; the importer says why it fails
        if self.foreign and done.returncode and not done.stdout and not done.stderr:
            done = self.run_once(scene, output, folder, environment, settings)
        return done

    def run_once(self, scene, output, folder, environment, settings):
        env = dict(os.environ, **(environment or {}))
        if not self.foreign:
            env.setdefault('ASAN_OPTIONS', 'detect_leaks=0')
            env['TMPDIR'] = folder
        # files, not pipes: Wine's servers keep the pipes of the first program open for seconds after its end
        with tempfile.TemporaryFile() as told, tempfile.TemporaryFile() as warned:
            done = subprocess.run(self.command(scene, output, **settings), cwd=folder, env=env, stdin=subprocess.DEVNULL,
                                  stdout=told, stderr=warned, timeout=self.seconds)
            for file in (told, warned):
                file.seek(0)
            done.stdout, done.stderr = told.read(), warned.read()
        return done
