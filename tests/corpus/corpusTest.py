#!/usr/bin/env python3
"""Converts every scene of a folder of real ones and compares stored meshes with what Maya made of them.

  ORV_CORPUS=FOLDER corpusTest.py --importer MAYA_IMPORTER [--runner WRAPPER] [--only TEXT] [--keep FOLDER]

Every scene is converted at the frame at which it was saved; that must end with status 0 and leave a file that reads strictly
and holds together; an independent checker beside the folder (../tools/obxcheck.py) is asked too where there is one.
pairs.tsv of the folder names the truths. Compared are the meshes whose faces are stored in the scene and that no history
feeds. Without ORV_CORPUS nothing is run.
"""
import argparse
import collections
import concurrent.futures
import glob
import json
import os
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, '..', 'support')]
import mayaScene
import obx
import truth as truths
from compareMesh import Comparison
from importer import Importer

PBRT = 'hpd__PBRTForMaya'
MATRIX = 1e-5  # of the largest number of a row

# (scene, node): why the truth's place is not that of the scene; such meshes are compared in the space of their node
PLACED_OTHERWISE = {
    ('alpha_transp_from_maya.ma', 'pSphere1'): 'exported while the sphere stood in the origin; the scene moves it by 2.21',
    ('Bookshelf.mb', 'Book'): 'exported in the space of its node; the places of all nodes are compared apart',
}


class Converted:
    """One scene: its output, what went wrong, and what was compared."""

    def __init__(self, name, scene, output):
        self.name, self.scene, self.output = name, scene, output
        self.wrong, self.notes, self.file, self.seconds = [], [], None, 0.0
        self.compared = self.matched = self.displaced = self.computed = 0
        self.matrices = self.matrices_matched = 0
        self.chosen = None  # (parent, shape) of the meshes to compare; none: those that the scene stores


def convert(record, options):
    started = time.time()
    try:
        with tempfile.TemporaryDirectory() as folder:
            frame = mayaScene.current_frame(record.scene) if options.as_saved else None
            settings = {} if frame is None else {'frame': frame}
            done = options.run.run(record.scene, record.output, folder, **settings)
    except subprocess.TimeoutExpired:
        record.wrong.append('still running after %d seconds' % options.run.seconds)
        return record
    record.seconds = time.time() - started
    if done.returncode != 0:
        record.wrong.append('exit status %d: %s' % (done.returncode, done.stderr[-300:].decode('utf-8', 'replace')))
    try:
        record.file = obx.read(record.output)
        record.wrong.extend(obx.faults(record.file)[:5])
        if record.file.first('load') is None:
            record.wrong.append('not opened: ' + done.stderr[-300:].decode('utf-8', 'replace'))
    except (OSError, obx.SyntaxFault) as fault:
        record.wrong.append(str(fault))
    if options.checker and os.path.exists(record.output):
        ask_checker(record, options.checker)
    return record


def ask_checker(record, checker):
    done = subprocess.run([sys.executable, checker, '--json', '--arrays', 'binary', record.output], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE)
    try:
        found = json.loads(done.stdout)['violations']
    except (ValueError, KeyError):
        found = [(done.stderr or done.stdout)[-200:].decode('utf-8', 'replace')]
    if found or done.returncode:
        record.wrong.append('checker: %s' % found[:3])


def stored_names(record):
    """(parent, shape) of the meshes that stand in the scene as they are, and those that history makes."""
    if record.chosen is not None:
        return record.chosen, []
    stored, made = [], []
    for mesh in mayaScene.meshes(record.scene):
        (stored if mesh.stored else made).append((mesh.parent.split('|')[-1], mesh.name))
    return stored, made


def compare_truth(record, name, meshes):
    stored, _ = stored_names(record)
    placements = obx.placements(record.file)
    for mesh in meshes:
        parent = mesh.node.split('|')[-1]
        shapes = {shape for above, shape in stored if above == parent}
        if not shapes:
            record.computed += 1
            continue
        found = [p for p in placements if p.path[-1] == parent and p.object.name in shapes]
        record.compared += 1
        excuse = PLACED_OTHERWISE.get((os.path.basename(record.name), parent))
        if excuse and found:
            mesh = mesh.moved(found[0].world)
            record.displaced += 1
            record.notes.append('%s, %s: place not compared: %s' % (name, mesh.node, excuse))
        fails = Comparison(mesh, found).fails if found else ['absent from the scene file']
        if fails:
            record.wrong.append('%s, %s: %s' % (name, mesh.node, '; '.join(fails)))
        else:
            record.matched += 1


def read_pairs(folder):
    path = os.path.join(folder, 'pairs.tsv')
    pairs = {}
    if os.path.exists(path):
        with open(path, encoding='utf-8') as file:
            for line in file:
                cells = line.rstrip('\n').split('\t')
                if len(cells) > 1 and not line.startswith('#'):
                    pairs.setdefault(cells[0], []).append((cells[1], cells[2] if len(cells) > 2 else '-'))
    return pairs


def compare_pairs(record, folder, pairs):
    for name, _ in pairs.get(record.name, ()):
        meshes = truths.read(os.path.join(folder, name))
        if meshes is None:
            record.notes.append('%s is of a kind that is not read here' % name)
        else:
            compare_truth(record, os.path.basename(name), meshes)


# --- text scenes and PLY meshes of another exporter

def usual_matrices(folder):
    """World matrices as most of the text scenes have them: those of the scene that they all refer to."""
    found = {}
    for path in sorted(glob.glob(os.path.join(folder, PBRT, 'renderData', '*.pbrt'))):
        for node, matrix in truths.read_matrices(path).items():
            found.setdefault(node, collections.Counter())[matrix] += 1
    return {node: count.most_common(1)[0][0] for node, count in found.items()}


def compare_renderer_scene(record, folder, usual):
    """Group matrices against those of the text scene of the same name; stored meshes against their PLY."""
    base = os.path.splitext(os.path.basename(record.scene))[0]
    own = os.path.join(folder, PBRT, 'renderData', base + '.pbrt')
    matrices = truths.read_matrices(own) if os.path.exists(own) else usual
    worlds = {'|' + '|'.join(path): world for path, _, world in obx.worlds(record.file) if path}
    stored, _ = stored_names(record)
    for node, expected in sorted(matrices.items()):
        if node not in worlds:
            continue
        record.matrices += 1
        off = [spread_of_row(worlds[node], expected, row) for row in range(4)]
        if max(off) <= MATRIX:
            record.matrices_matched += 1
        else:
            record.wrong.append('%s: world matrix off by %g of its rows' % (node, max(off)))
        compare_ply(record, folder, node, expected, stored)


def spread_of_row(world, expected, row):
    numbers = range(4 * row, 4 * row + 4)
    return max(abs(world[k] - expected[k]) for k in numbers) / max(abs(expected[k]) for k in numbers)


def compare_ply(record, folder, node, world, stored):
    for parent, shape in stored:
        ply = os.path.join(folder, PBRT, 'renderData', '%s|%s.ply' % (node, shape))
        ply = os.path.join(os.path.dirname(ply), os.path.basename(ply).replace('|', '__'))
        if parent == node.split('|')[-1] and os.path.exists(ply):
            compare_truth(record, os.path.basename(ply), [truths.read_ply(ply, node, world)])


def compare_exported_places(record):
    """World matrices of the file of placements beside the scene; names are those of transforms."""
    path = os.path.splitext(record.scene)[0] + '.SceneExport.json'
    if not os.path.exists(path):
        return
    worlds = {}
    for way, _, world in obx.worlds(record.file):
        worlds.setdefault(way[-1] if way else '', []).append(world)
    for node, expected in sorted(truths.read_exported_places(path).items()):
        record.matrices += 1
        off = min((max(spread_of_row(world, expected, row) for row in range(4)) for world in worlds.get(node, ())), default=None)
        if off is not None and off <= MATRIX:
            record.matrices_matched += 1
        else:
            record.wrong.append('%s: world matrix %s' % (node, 'absent' if off is None else 'off by %g of its rows' % off))


# --- the run

def tell(record):
    state = 'FAILED' if record.wrong else 'ok'
    extra = ''
    if record.compared or record.matrices:
        extra = '  meshes %d/%d, matrices %d/%d' % (record.matched, record.compared, record.matrices_matched, record.matrices)
    if record.computed:
        extra += '  (%d made by history)' % record.computed
    print('%-6s %6.2fs  %s%s' % (state, record.seconds, record.name, extra))
    for line in record.wrong + record.notes:
        print('         ' + line)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--importer', required=True)
    parser.add_argument('--runner', default='')
    parser.add_argument('--only', default='')
    parser.add_argument('--keep', default='')
    options = parser.parse_args()
    folder = os.environ.get('ORV_CORPUS')
    if not folder:
        print('skipped: ORV_CORPUS is not set, 0 scenes run')
        return 0
    folder = os.path.abspath(folder)
    options.run = Importer(options.importer, options.runner)
    checker = os.path.join(folder, '..', 'tools', 'obxcheck.py')
    options.checker = checker if os.path.exists(checker) else None
    options.as_saved = True  # matrices of the frame at which the scene was saved instead of tracks
    with tempfile.TemporaryDirectory() as temporary:
        return run(options, folder, options.keep or temporary)


def run(options, folder, output):
    os.makedirs(output, exist_ok=True)
    scenes = mayaScene.scenes_below(folder, options.only)
    records = [Converted(name, os.path.join(folder, name), os.path.join(output, name.replace(os.sep, '__') + '.obx'))
               for name in scenes]
    pairs, usual = read_pairs(folder), usual_matrices(folder)
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for record in pool.map(lambda r: convert(r, options), records):
            if record.file is not None:
                compare_pairs(record, folder, pairs)
                if record.name.startswith(PBRT):
                    compare_renderer_scene(record, folder, usual)
                compare_exported_places(record)
            record.file = None
            tell(record)
            if not options.keep and os.path.exists(record.output):
                os.remove(record.output)
    return summary(records, options)


def summary(records, options):
    def total(name):
        return sum(getattr(record, name) for record in records)

    failed = sum(1 for record in records if record.wrong)
    print('%d scenes run, %d failed%s; %d stored meshes compared, %d matched, %d of them without their place; %d meshes made by '
          'history not compared; %d world matrices compared, %d matched'
          % (len(records), failed, '' if options.checker else ' (no independent checker found)', total('compared'),
             total('matched'), total('displaced'), total('computed'), total('matrices'), total('matrices_matched')))
    return 1 if failed or not records else 0


if __name__ == '__main__':
    sys.exit(main())
