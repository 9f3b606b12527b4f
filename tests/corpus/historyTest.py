#!/usr/bin/env python3
"""What becomes of the meshes of real scenes that their construction history makes.

  ORV_CORPUS=FOLDER historyTest.py --teller MESH_HISTORY --importer MAYA_IMPORTER [--runner WRAPPER] [--only TEXT] [--table FILE]

For every scene: how many visible meshes have a live history, how many of them are computed whole, how many results equal what
Maya made of them where an export of Maya's is there, and whether the components that later nodes name exist in the mesh that
comes to them. Besides, values that Maya left in the scenes (infile_truth.jsonl), values that others assert
(maya_usd/expected*.json) and primitives (madePrimitives.py). Thresholds stand below: shares that must be reached.

--table writes docs/history-nodes.md: node types of all histories with their uses and what became of them; what is known of each
stands in docs/history-nodes.tsv. Without ORV_CORPUS nothing is run.
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

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, '..', 'support')]
import corpusTest
import historyTable
import madePrimitives
import mayaScene
import truth as truths
from importer import Importer

DEFORMERS = {'skinCluster', 'blendShape', 'nonLinear', 'shellDeformer', 'vectorAdjust', 'cluster', 'ffd', 'wire', 'wrap', 'sculpt',
             'jiggle', 'deltaMush', 'polySmoothFaceDeformer'}  # they bend what the history has made; not counted as operations

# what must be reached, in percent of: all visible shapes with a history; those of them without deformers; those with a truth;
# those whose operations name components; primitives; values that the scenes or others tell
COMPUTED, COMPUTED_UNBENT, MATCHED, EXISTING, PRIMITIVES, VALUES = 90, 92, 100, 92, 100, 100


# scenes whose exporter writes each face of a double-sided material twice, from the front and turned round
BOTH_SIDES = {'DoubleSidedMaterial.mb'}


class Shape:
    """A visible mesh with a history: what the teller says of it."""

    def __init__(self, told, outcome):
        self.path, self.told = told['shape'], told
        self.outcome, self.passed = outcome['outcome'], {node['type'] for node in outcome['passed']}
        self.operations = [node for node in told['chain'] if node['type'] != 'mesh']
        self.is_matched = False  # equal to a truth
        self.is_bent = any(node['type'] in DEFORMERS for node in self.operations)

    @property
    def name(self):
        return self.path.split('|')[-1]

    @property
    def parent(self):
        return self.path.split('|')[-2]

    @property
    def is_computed(self):
        return self.outcome == 'computed'

    def lacking(self):
        """Texts for operations that name what the mesh does not have; none where the shape names nothing."""
        named = [node for node in self.operations if node.get('named') and node['points']]
        wrong = ['%s (%s): %d of %d of kind %s lack in %d points, %d edges, %d faces, %d uvs'
                 % (node['node'], node['type'], node['lacking'], node['named'], node['kind'], node['points'], node['edges'],
                    node['faces'], node['uvs']) for node in named if node['lacking']]
        tweak = self.told['highestTweak']
        if tweak >= 0 and self.told['points'] and tweak >= self.told['points']:
            wrong.append('%s: point %d is tweaked, there are %d' % (self.name, tweak, self.told['points']))
        return wrong if named or tweak >= 0 else None


class Scene(corpusTest.Converted):
    def __init__(self, name, path, output):
        super().__init__(name, path, output)
        self.shapes, self.types, self.uses, self.passed = [], set(), collections.Counter(), collections.Counter()
        self.values = self.values_right = self.naming = self.existing = self.waiting = 0

    def count(self, test):
        return sum(1 for shape in self.shapes if test(shape))


def ask_teller(scene, options):
    done = subprocess.run(options.runner_words + [options.teller, options.run.named(scene.scene)], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, timeout=300)
    if done.returncode:
        scene.wrong.append('the teller ends with %d: %s' % (done.returncode, done.stderr[-200:].decode('utf-8', 'replace')))
        return None
    return json.loads(done.stdout)


def take_shapes(scene, told):
    outcomes = {entry['shape']: entry for entry in told['report']['history']}
    scene.types.update(told['computedTypes'])
    nodes = {}
    for entry in told['shapes']:
        nodes.update({node['node']: node['type'] for node in entry['chain'] if node['type'] != 'mesh'})
        if entry['isVisible']:
            scene.shapes.append(Shape(entry, outcomes[entry['shape']]))
    passed = {node['node']: node['type'] for entry in told['report']['history'] for node in entry['passed']}
    nodes.update(passed)
    scene.uses.update(nodes.values())
    scene.passed.update(passed.values())


def check_components(scene):
    for shape in scene.shapes:
        wrong = shape.lacking()
        if wrong is not None:
            scene.naming += 1
            scene.existing += not wrong
            scene.notes.extend('%s: %s' % (shape.path, line) for line in wrong)


# --- truths

def compare_truths(scene, options):
    """Meshes whose whole history is computed and that nothing bends, against exports of Maya's."""
    computed = [shape for shape in scene.shapes if shape.is_computed and not shape.is_bent]
    scene.chosen = [(shape.parent, shape.name) for shape in computed]
    pairs = options.pairs.get(scene.name, ())
    plies = glob.glob(os.path.join(options.folder, corpusTest.PBRT, 'renderData', '*.ply')) if scene.name.startswith(corpusTest.PBRT) else ()
    if not computed or not (pairs or plies):
        return
    corpusTest.convert(scene, options)
    if scene.file is not None:
        for name, _ in pairs:
            meshes = truths.read(os.path.join(options.folder, name)) or ()
            is_doubled = os.path.basename(scene.name) in BOTH_SIDES
            for mesh in meshes:
                compare_mesh(scene, name, one_sided(mesh) if is_doubled else mesh)
        if plies:
            corpusTest.compare_renderer_scene(scene, options.folder, {})
    scene.file = None


def compare_mesh(scene, name, mesh):
    before = scene.matched
    corpusTest.compare_truth(scene, os.path.basename(name), [mesh])
    if scene.matched > before:
        for shape in scene.shapes:
            shape.is_matched |= shape.is_computed and not shape.is_bent and shape.parent == mesh.node.split('|')[-1]


def one_sided(mesh):
    """The mesh without triangles that turn an earlier one of the same corners round."""
    one, known = truths.TruthMesh(mesh.node, mesh.world, mesh.triangulated, mesh.tolerance), set()
    for corners, group in zip(mesh.faces, mesh.groups):
        points = [tuple(round(c, 3) for c in point) for point, _, _ in corners]
        start = points.index(min(points))
        points = points[start:] + points[:start]
        if tuple(points[:1] + points[:0:-1]) not in known:
            known.add(tuple(points))
            one.add(corners, group)
    return one


def check_values(scene, options):
    for fact in options.facts.get(scene.name, ()):
        told = VALUES_OF_KIND[fact['kind']](scene, fact)
        if told is not None:
            scene.values += 1
            scene.values_right += told == ''
            if told:
                scene.notes.append('%s %s: %s' % (fact['kind'], fact.get('node') or fact.get('skin'), told))


def shape_of(scene, name):
    return next((s for s in scene.shapes if name in (s.name, s.path, s.parent) and s.told['points']), None)


def tweak_count(scene, fact):
    shape = shape_of(scene, fact['node'])
    if shape is None or 'pt' not in fact['highest']:
        return None
    points = shape.told['points']
    return '' if fact['highest']['pt'] < points else 'point %d of %d' % (fact['highest']['pt'], points)


def face_groups(scene, fact):
    """The faces that groups name are all the faces there are, each once."""
    shape = shape_of(scene, fact['node'])
    if shape is None:
        return None
    faces = shape.told['faces']
    is_whole = fact['contiguous'] and fact['named_faces'] == fact['highest'] + 1
    return '' if (fact['named_faces'] == faces if is_whole else fact['highest'] < faces) else '%d faces' % faces


def skin_points(scene, fact):
    skins = [node for shape in scene.shapes for node in shape.operations if node['node'] == fact['skin'] and node['points']]
    if not skins:
        return None
    return '' if skins[0]['points'] == fact['points'] else '%d points, weights for %d' % (skins[0]['points'], fact['points'])


def first_point(scene, fact):
    shape = shape_of(scene, fact['node'])
    if shape is None or 'firstPoint' not in shape.told:
        return None
    own = shape.told['firstPoint'][0]
    return '' if abs(own - fact['value']) <= fact['tol'] else 'x is %g, expected %g' % (own, fact['value'])


def shading_faces(scene, fact):
    shape = shape_of(scene, fact['node'])
    if shape is None:
        return None
    sets = dict(shape.told.get('shading') or ())
    return '' if sets.get(fact['value']['set']) == fact['value']['faces'] else 'shading is %s' % sets


VALUES_OF_KIND = {'tweakcount': tweak_count, 'facegroups': face_groups, 'skinpoints': skin_points, 'first_point_x': first_point,
                  'shading_faces': shading_faces}


def read_facts(folder):
    """Scene -> what it or others tell of its meshes."""
    facts = collections.defaultdict(list)
    path = os.path.join(folder, 'infile_truth.jsonl')
    if os.path.exists(path):
        with open(path, encoding='utf-8') as file:
            for fact in map(json.loads, file):
                facts[fact['scene']].append(fact)
    for path in sorted(glob.glob(os.path.join(folder, '*', 'expected*.json'))):
        with open(path, encoding='utf-8') as file:
            for name, entry in json.load(file)['scenes'].items():
                facts[os.path.join(os.path.basename(os.path.dirname(path)), name)].extend(entry['checks'])
    return {name: [fact for fact in found if fact['kind'] in VALUES_OF_KIND] for name, found in facts.items()}


# --- the run

def examine(scene, options):
    told = ask_teller(scene, options)
    if told is not None:
        take_shapes(scene, told)
        check_components(scene)
        check_values(scene, options)
        compare_truths(scene, options)
        if os.path.exists(scene.output):
            os.remove(scene.output)
    return scene


def tell(scene):
    if not scene.shapes:
        return
    passed = collections.Counter(kind for shape in scene.shapes for kind in shape.passed)
    print('%3d shapes, %3d computed, truths %d/%d, components %d/%d, values %d/%d  %s%s'
          % (len(scene.shapes), scene.count(lambda s: s.is_computed), scene.matched, scene.compared, scene.existing, scene.naming,
             scene.values_right, scene.values, scene.name,
             '  not: ' + ' '.join('%s:%d' % pair for pair in passed.most_common()) if passed else ''))
    for line in scene.wrong + scene.notes:
        print('         ' + line)


def share(part, whole):
    return 100.0 * part / whole if whole else 100.0


class Totals:
    def __init__(self):
        self.rows, self.is_well = [], True

    def add(self, what, part, whole, least):
        reached = share(part, whole)
        below = reached < least
        self.is_well &= not below
        print('%-52s %4d of %4d  %5.1f %%%s' % (what, part, whole, reached, ', must be %g' % least if below else ''))
        self.rows.append((what, part, whole))


def summary(scenes, primitives):
    def total(name):
        return sum(getattr(scene, name) for scene in scenes)

    shapes = [shape for scene in scenes for shape in scene.shapes]
    unbent = [shape for shape in shapes if not shape.is_bent]
    totals = Totals()
    totals.add('visible meshes with a history, computed whole', sum(s.is_computed for s in shapes), len(shapes), COMPUTED)
    totals.add('those without deformers', sum(s.is_computed for s in unbent), len(unbent), COMPUTED_UNBENT)
    totals.add('computed and with a truth, the same', total('matched'), total('compared'), MATCHED)
    totals.add('naming components, all of which exist', total('existing'), total('naming'), EXISTING)
    totals.add('values told by scenes or others', total('values_right'), total('values'), VALUES)
    totals.add('primitives, number by number', sum(not fails for _, fails in primitives), len(primitives), PRIMITIVES)
    return totals


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--teller', required=True)
    parser.add_argument('--importer', required=True)
    parser.add_argument('--runner', default='')
    parser.add_argument('--only', default='')
    parser.add_argument('--table', default='')
    options = parser.parse_args()
    folder = os.environ.get('ORV_CORPUS')
    if not folder:
        print('skipped: ORV_CORPUS is not set, 0 scenes run')
        return 0
    options.folder = os.path.abspath(folder)
    options.run = Importer(options.importer, options.runner)
    options.runner_words = options.run.runner
    options.teller = os.path.abspath(options.teller)
    options.checker, options.as_saved = None, True
    options.pairs, options.facts = corpusTest.read_pairs(options.folder), read_facts(options.folder)
    with tempfile.TemporaryDirectory() as output:
        return run(options, output)


def run(options, output):
    names = mayaScene.scenes_below(options.folder, options.only)
    scenes = [Scene(name, os.path.join(options.folder, name), os.path.join(output, '%d.obx' % k)) for k, name in enumerate(names)]
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for scene in pool.map(lambda s: examine(s, options), scenes):
            tell(scene)
    primitives = [] if options.runner_words else madePrimitives.compare_all(options.teller, options.folder)
    for name, fails in primitives:
        print('%-8s primitive %s %s' % ('differs' if fails else 'ok', name, '; '.join(fails)))
    totals = summary(scenes, primitives)
    if options.table:
        makers = {madePrimitives.maker(name) for name, fails in primitives if not fails}
        historyTable.write(options.table, scenes, makers, totals.rows)
    return 0 if totals.is_well and scenes else 1


if __name__ == '__main__':
    sys.exit(main())
