"""Scenes with one maker each at the settings of published primitives, and the comparison of what comes out, number by number.

The primitives lie in primitives/*.truth.json of the folder of real scenes: points, faces and texture coordinates in Maya's order.
"""
import json
import os
import subprocess
import tempfile

POINT = 2e-6  # single precision, and seven digits in the truths
UV = 1e-5

# truth -> statements of the nodes, the last one gives the mesh; the settings are those under which the truth was made: what is not
# named is the maker's default
MAKERS = {
    'cube': 'createNode polyCube -n "last";',
    'cone_abc': 'createNode polyCone -n "last";',
    'cylinder_abc': 'createNode polyCylinder -n "last"; setAttr ".sc" 1;',
    'cylinder_20_caps1': 'createNode polyCylinder -n "last"; setAttr ".sc" 1;',
    'plane_10x10': 'createNode polyPlane -n "last"; setAttr ".cuv" 2;',
    'sphere_20x20': 'createNode polySphere -n "last";',
    'sphere_20x20_normals': 'createNode polySphere -n "last";',
    'platonic_20': 'createNode polyPlatonicSolid -n "last"; setAttr ".st" 1;',
}
SCENE = '//Maya ASCII 2018 scene\n%s\ncreateNode transform -n "t";\ncreateNode mesh -n "shape" -p "t";\nconnectAttr "last.out" "shape.i";\n'


def maker(name):
    return MAKERS[name].split()[1]


def made(teller, statements):
    """The mesh that a chain gives: points, faces, uvs, uvIds."""
    with tempfile.TemporaryDirectory() as folder:
        scene = os.path.join(folder, 'made.ma')
        with open(scene, 'w', encoding='utf-8') as file:
            file.write(SCENE % statements)
        done = subprocess.run([teller, '--meshes', scene], stdout=subprocess.PIPE, check=True)
    return json.loads(done.stdout)['shapes'][0].get('mesh')


def split(values, counts):
    found, at = [], 0
    for count in counts:
        found.append(values[at:at + count])
        at += count
    return found


def apart(own, expected):
    """How far two lists of numbers are from one another; none where they are not as long."""
    if len(own) != len(expected):
        return None
    return max((abs(a - b) for a, b in zip(own, expected)), default=0)


def differences(own, truth):
    """Texts for what differs between a mesh and a truth."""
    if own is None:
        return ['nothing is made']
    fails = []
    reverse = 'left-handed' in truth.get('note', '')
    faces = split(truth['indices'], truth['counts'])
    faces = [face[::-1] for face in faces] if reverse else faces
    if own['faces'] != faces:
        first = next((k for k, pair in enumerate(zip(own['faces'], faces)) if pair[0] != pair[1]), 'none')
        fails.append('%d faces, expected %d, first other one %s' % (len(own['faces']), len(faces), first))
    off = apart([c for point in own['points'] for c in point], truth['points'])
    if off is None or off > POINT:
        fails.append('points: %s' % ('%d, expected %d' % (len(own['points']), len(truth['points']) // 3) if off is None else 'off by %g' % off))
    fails.extend(uv_differences(own, truth))
    return fails


def uv_differences(own, truth):
    if 'uvs' not in truth:
        return []
    ids = truth['uvs_indices'] if truth['uvs_interp'] == 'faceVarying' else None
    expected = split(truth['uvs'], [2] * (len(truth['uvs']) // 2))
    if ids is None:  # one for each point
        table = [expected[i] for i in truth['uvs_indices']]
        per_corner = [table[i] for face in own['faces'] for i in face]
    else:
        per_corner = [expected[i] for i in ids]
    if len(own.get('uvIds', ())) != len(per_corner):
        return ['%d corners with texture coordinates, expected %d' % (len(own.get('uvIds', ())), len(per_corner))]
    off = apart([c for i in own['uvIds'] for c in own['uvs'][i]], [c for uv in per_corner for c in uv])
    if off > UV:
        return ['texture coordinates off by %g' % off]
    if ids is None:
        return []
    # an exporter that numbers by first use tells who shares, but not Maya's numbers
    numbers = by_first_use(own['uvIds']) if ids == by_first_use(ids) else own['uvIds']
    return [] if numbers == ids else ['texture coordinates in another order']


def by_first_use(ids):
    known = {}
    return [known.setdefault(i, len(known)) for i in ids]


def compare_all(teller, folder):
    """(name, fails) of every truth that a maker is known for."""
    found = []
    for name, statements in sorted(MAKERS.items()):
        path = os.path.join(folder, 'primitives', name + '.truth.json')
        if os.path.exists(path):
            with open(path, encoding='utf-8') as file:
                truth = json.load(file)['polys'][0]
            found.append((name, differences(made(teller, statements), truth)))
    return found
