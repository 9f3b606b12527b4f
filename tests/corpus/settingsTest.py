#!/usr/bin/env python3
"""Converts every scene of a folder of real ones under many settings and checks that the files hold together.

  ORV_CORPUS=FOLDER settingsTest.py --importer MAYA_IMPORTER [--runner WRAPPER] [--only TEXT] [--all | --share N]

Every pair of values of any two settings occurs in one of eight runs; `--share N` gives each scene N of the eight in turn (2
without it), `--all` every combination. Each run must end with status 0 and leave a file that reads strictly and holds
together; an independent checker beside the folder (../tools/obxcheck.py) is asked too where there is one. Without
ORV_CORPUS nothing is run.
"""
import argparse
import concurrent.futures
import itertools
import os
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, '..', 'support')]
import mayaScene
from corpusTest import Converted, convert
from importer import Importer

NAMES = ('frame', 'include_nurbs', 'tessellate', 'split_layers', 'collapse_hierarchy', 'unique_materials', 'experimental')
VALUES = ((None, 7), (False, True), (True, False), (False, True), (True, False), (False, True), (None, 'beta'))

# The rows of a two-level orthogonal array: any two columns hold every pair of values twice.
ROWS = ('0000000', '0001111', '0110011', '0111100', '1010101', '1011010', '1100110', '1101001')


def settings_of(row):
    chosen = {name: values[int(level)] for name, values, level in zip(NAMES, VALUES, row)}
    return {name: value for name, value in chosen.items() if value is not None}


class WithSettings:
    """An importer that always gets the same settings."""

    def __init__(self, importer, settings):
        self.importer, self.settings, self.seconds = importer, settings, importer.seconds

    def run(self, scene, output, folder):
        return self.importer.run(scene, output, folder, **self.settings)


class Job:
    def __init__(self, options, record, row):
        self.run, self.checker, self.as_saved = WithSettings(options.run, settings_of(row)), options.checker, False
        self.record, self.row = record, row


def carry_out(job):
    record = convert(job.record, job)
    record.file = None
    if os.path.exists(record.output):
        os.remove(record.output)
    return job


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--importer', required=True)
    parser.add_argument('--runner', default='')
    parser.add_argument('--only', default='')
    parser.add_argument('--share', type=int, default=2)
    parser.add_argument('--all', action='store_true')
    options = parser.parse_args()
    folder = os.environ.get('ORV_CORPUS')
    if not folder:
        print('skipped: ORV_CORPUS is not set, 0 scenes run')
        return 0
    folder = os.path.abspath(folder)
    options.run = Importer(options.importer, options.runner)
    checker = os.path.join(folder, '..', 'tools', 'obxcheck.py')
    options.checker = checker if os.path.exists(checker) else None
    with tempfile.TemporaryDirectory() as output:
        return run(options, folder, output)


def run(options, folder, output):
    scenes = mayaScene.scenes_below(folder, options.only)
    every = [''.join(levels) for levels in itertools.product('01', repeat=len(NAMES))]
    jobs = []
    for number, name in enumerate(scenes):
        rows = every if options.all else [ROWS[(number * options.share + k) % len(ROWS)] for k in range(options.share)]
        for row in rows:
            target = os.path.join(output, '%s.%s.obx' % (name.replace(os.sep, '__'), row))
            jobs.append(Job(options, Converted(name, os.path.join(folder, name), target), row))
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for job in pool.map(carry_out, jobs):
            if job.record.wrong:
                failed += 1
                print('FAILED %s with %s' % (job.record.name, settings_of(job.row)))
                for line in job.record.wrong:
                    print('         ' + line)
    print('%d scenes, %d runs, %d failed%s' % (len(scenes), len(jobs), failed,
                                              '' if options.checker else ' (no independent checker found)'))
    return 1 if failed or not jobs else 0


if __name__ == '__main__':
    sys.exit(main())
