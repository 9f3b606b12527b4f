"""docs/history-nodes.md: what becomes of each node type that the meshes of real scenes go through."""
import collections
import os

HERE = os.path.dirname(os.path.abspath(__file__))
NOTES = os.path.join(HERE, '..', '..', 'docs', 'history-nodes.tsv')
HEAD = '''# Construction history of meshes, node by node

Many scenes store how a mesh was made, not the mesh. The host carries the operations out; every vertex, edge, face and texture
coordinate must get the number that Maya gives it, because the next operation names its components by number. An operation that is
not computed, or that names what its input does not have, passes its input on; the shape then counts as approximated, and
`--report` names the node.

This page is written by `tests/corpus/historyTest.py --table docs/history-nodes.md` from the real scenes that `ORV_CORPUS` names
and from `docs/history-nodes.tsv`, where what is known of each type is kept: change it there.

- *uses*: nodes of the type in the histories of all mesh shapes of those scenes; *not*: how many of them were passed by.
- *result*: "computed" where the type has a computation, "passed through" where it has none.
- *verified*: "truth": shapes whose history holds the type and that equal an export of Maya's, or a published primitive;
  "consistency": shapes in which nodes after it name components by number and all of them exist; "hand case": numbering worked out
  by hand in a unit test; or "none".
'''


def read_notes():
    """Type -> ("hand case" or "none", what is computed and known)."""
    notes = {}
    with open(NOTES, encoding='utf-8') as file:
        for line in file:
            cells = line.rstrip('\n').split('\t')
            if len(cells) == 3 and not line.startswith('#'):
                notes[cells[0]] = cells[1:]
    return notes


def evidence(scenes, makers):
    """Type -> number of matched shapes that it made or changed, and of shapes in which later nodes name what exists."""
    truth, consistent = collections.Counter({kind: 1 for kind in makers}), collections.Counter()
    for shape in (shape for scene in scenes for shape in scene.shapes):
        truth.update({node['type'] for node in shape.operations} if shape.is_matched else ())
        kinds, is_later_right = set(), shape.told['highestTweak'] >= 0
        for node in shape.operations:  # the last one first
            if is_later_right and node['type'] not in shape.passed:
                kinds.add(node['type'])
            is_later_right |= bool(node.get('named')) and node['points'] > 0
        consistent.update(kinds if shape.lacking() == [] else ())
    return truth, consistent


def verification(kind, truth, consistent, by_hand):
    words = ['truth (%d)' % truth[kind]] if truth[kind] else []
    words += ['consistency (%d)' % consistent[kind]] if consistent[kind] else []
    return ', '.join(words + [by_hand] if by_hand != 'none' else words) or 'none'


def write(path, scenes, makers, totals):
    uses, passed, computed = collections.Counter(), collections.Counter(), set()
    for scene in scenes:
        uses.update(scene.uses)
        passed.update(scene.passed)
        computed |= scene.types
    truth, consistent = evidence(scenes, makers)
    notes = read_notes()
    lines = [HEAD, '| figure | of | reached |', '|---|---|---|']
    lines.extend('| %s | %d | %.1f %% |' % (what, whole, 100.0 * part / max(1, whole)) for what, part, whole in totals)
    lines.extend(['', '| node type | uses | not | result | verified | what is computed, how its numbers are known, what is not |',
                  '|---|---|---|---|---|---|'])
    for kind in sorted(set(uses) | set(notes), key=lambda k: (-uses[k], k.lower())):
        by_hand, known = notes.get(kind, ('none', ''))
        result = 'computed' if kind in computed else 'passed through'
        words = verification(kind, truth, consistent, by_hand) if kind in computed else 'none'
        lines.append('| %s | %d | %d | %s | %s | %s |' % (kind, uses[kind], passed[kind], result, words, known))
    with open(path, 'w', encoding='utf-8') as file:
        file.write('\n'.join(lines) + '\n')
