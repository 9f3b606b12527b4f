#!/usr/bin/env python3
"""Splits the real scenes that have members in display layers, and compares the result with their connections.

  ORV_CORPUS=FOLDER layersTest.py --importer MAYA_IMPORTER [--runner WRAPPER] [--only TEXT]

What a layer must hold is worked out from the scene's file (.ma, .mb) and from the same scene converted without a split: one copy for
each connected member that has a group, in the order of the connections, flat, with the product of the matrices on the way
to it. Hidden layers must take the geometry of their members out of the scene. Without ORV_CORPUS nothing is run.
"""
import argparse
import os
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [HERE, os.path.join(HERE, '..', 'support')]
import mayaScene
import obx
from importer import Importer

CLOSE = 1e-5  # for each matrix on the way, written with six digits


def convert(importer, scene, folder, split):
    output = os.path.join(folder, 'split.obx' if split else 'whole.obx')
    done = importer.run(scene, output, folder, split_layers=split, frame=1)
    if done.returncode:
        raise obx.SyntaxFault(0, 'exit status %d %s' % (done.returncode, done.stderr[-300:].decode('utf-8', 'replace')))
    return obx.read(output)


def places(scene):
    """Path of a group -> its matrix below the root."""
    return {path: world for path, _, world in obx.worlds(scene)}


def located(member, whole):
    """The places that a member's name may mean: by its path, or anywhere by its plain name."""
    wanted = tuple(part for part in member.split('|') if part)
    return [path for path in whole if path[-len(wanted):] == wanted]


def compare_layer(name, members, group, whole, wrong):
    expected = [located(member, whole) for member in members]
    expected = [paths for paths in expected if paths]  # shapes and nodes outside the DAG have no group
    found = group.groups()
    if [copy.name for copy in found] != [paths[0][-1] for paths in expected]:
        wrong.append('layer %s: %d copies, %d members with a group' % (name, len(found), len(expected)))
        return
    for copy, paths in zip(found, expected):
        own = copy.transform or obx.IDENTITY
        if all(max(abs(a - b) for a, b in zip(own, whole[path])) > CLOSE * len(path) * max(1, *map(abs, own)) for path in paths):
            wrong.append('layer %s: the copy of %s stands elsewhere' % (name, copy.name))


def check(importer, scene, layers):
    wrong = []
    with tempfile.TemporaryDirectory() as folder:
        whole = places(convert(importer, scene, folder, False))
        parted = convert(importer, scene, folder, True)
    wrong += obx.faults(parted)[:5]
    if not any(located(member, whole) for members in layers.values() for member in members):
        if not any(item.value == 'There were no layers to split' for item in parted.all('print')):
            wrong.append('nothing to split, and nothing said')
        return 0, wrong
    root = parted.groups()[0]
    names = [group.name for group in root.groups()]
    if names[:1] != ['defaultLayer'] or names[1:] != list(layers):
        wrong.append('layers %r, expected defaultLayer and %r' % (names[:8], list(layers)[:8]))
        return 0, wrong
    copied = root.group('defaultLayer')
    kept = [group.name for group in copied.groups()]
    if kept != [path[0] for path in whole if len(path) == 1]:
        wrong.append('defaultLayer does not hold the whole tree')
    for group in root.groups()[1:]:
        compare_layer(group.name, layers[group.name], group, whole, wrong)
    return sum(len(group.groups()) for group in root.groups()[1:]), wrong


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--importer', required=True)
    parser.add_argument('--runner', default='')
    parser.add_argument('--only', default='')
    options = parser.parse_args()
    folder = os.environ.get('ORV_CORPUS')
    if not folder:
        print('skipped: ORV_CORPUS is not set, 0 scenes run')
        return 0
    importer = Importer(options.importer, options.runner)
    scenes = copies = failed = 0
    folder = os.path.abspath(folder)
    for name in mayaScene.scenes_below(folder, options.only):
        path = os.path.join(folder, name)
        layers = mayaScene.layer_members(path)
        if layers is None:
            continue
        try:
            count, wrong = check(importer, path, layers)
        except obx.SyntaxFault as fault:
            count, wrong = 0, [str(fault)]
        scenes, copies, failed = scenes + 1, copies + count, failed + bool(wrong)
        print('%-6s %s: %d copies in layers' % ('FAILED' if wrong else 'ok', name, count))
        for line in wrong[:10]:
            print('         ' + line)
    print('%d scenes with members in layers, %d failed; %d members found in their layers' % (scenes, failed, copies))
    return 1 if failed else 0


if __name__ == '__main__':
    sys.exit(main())
