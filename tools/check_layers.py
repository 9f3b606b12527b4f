#!/usr/bin/env python3
"""Checks that every file includes only what docs/layers.txt allows its room.

  check_layers.py [ROOT]

Prints each include that breaks a rule, and each folder of sources without a rule. Exit status 1 if there is any.
"""
import os
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
SOURCES = ('.h', '.cpp', '.inc')
TOP_FOLDERS = ('platform', 'host', 'sceneapi', 'scene', 'importers', 'plugins', 'apps')


def read_rules(path):
    """Room -> (rooms, single headers, may see the window)."""
    rules = {}
    with open(path, encoding='utf-8') as lines:
        for line in lines:
            line = line.split('#', 1)[0].strip()
            if not line:
                continue
            room, _, allowed = line.partition(':')
            words = allowed.split()
            rules[room.strip()] = (
                {w for w in words if w[0] not in '+<'},
                {w[1:] for w in words if w[0] == '+'},
                '<maya>' in words)
    return rules


def room_of(path, rooms):
    """The rule with the longest match: a file of its own before its folder."""
    best = ''
    for room in rooms:
        if (path == room or path.startswith(room + '/')) and len(room) > len(best):
            best = room
    return best


def check(root):
    rules = read_rules(os.path.join(root, 'docs', 'layers.txt'))
    problems, files = [], 0
    for top in TOP_FOLDERS:
        for folder, folders, names in os.walk(os.path.join(root, top)):
            folders.sort()
            for name in sorted(names):
                if not name.endswith(SOURCES):
                    continue
                full = os.path.join(folder, name)
                path = os.path.relpath(full, root).replace(os.sep, '/')
                room = room_of(path, rules)
                if not room:
                    problems.append('%s: no rule for its folder in docs/layers.txt' % path)
                    continue
                files += 1
                allowed, headers, window = rules[room]
                with open(full, encoding='utf-8') as lines:
                    for number, line in enumerate(lines, 1):
                        match = INCLUDE.match(line)
                        if not match:
                            continue
                        kind, target = match.groups()
                        if kind == '<':
                            if target.startswith('maya/') and not window:
                                problems.append('%s:%d: %s may not see <maya/...>' % (path, number, room))
                            continue
                        if not target.startswith(tuple(t + '/' for t in TOP_FOLDERS)):
                            problems.append('%s:%d: "%s" is not written from the root' % (path, number, target))
                            continue
                        of = room_of(target, [r for r in rules if not r.endswith('.cpp')])
                        if of != room and of not in allowed and target not in headers \
                                and not path.startswith(of + '/'):
                            problems.append('%s:%d: %s may not include "%s"' % (path, number, room, target))
    return problems, files


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(os.path.abspath(__file__)), '..')
    problems, files = check(root)
    for problem in problems:
        print(problem)
    print('%d files checked, %d problems' % (files, len(problems)))
    return 1 if problems or not files else 0


if __name__ == '__main__':
    sys.exit(main())
