#!/usr/bin/env python3
"""Writes examples/still_life.ma: a table with a few things on it, as an artist's small scene would be saved.

  make_example_scene.py > examples/still_life.ma

Everything a first look should show: stored meshes with soft and hard edges, texture coordinates, a face with a hole, two instances of one
shape, tweaks, a per-face material, a textured material, groups with pivots, a camera, metres as the working unit.
"""
import math


class Mesh:
    """Vertices and faces (loops of vertex numbers, holes as further loops); edges are numbered by first use."""

    def __init__(self):
        self.points, self.faces, self.uvs, self.smooth = [], [], [], lambda a, b: False

    def edges(self):
        number, edges = {}, []
        for loops, _ in self.faces:
            for loop in loops:
                for a, b in zip(loop, loop[1:] + loop[:1]):
                    if (a, b) not in number and (b, a) not in number:
                        number[(a, b)] = len(edges)
                        edges.append((a, b))
        return number, edges

    def text(self, name, parent, extra=''):
        number, edges = self.edges()
        ref = lambda a, b: number[(a, b)] if (a, b) in number else -number[(b, a)] - 1
        num = lambda x: '%.9g' % x
        out = ['createNode mesh -n "%s" -p "%s";' % (name, parent), '\tsetAttr -k off ".v";', extra.rstrip('\n') if extra else None,
               '\tsetAttr ".uvst[0].uvsn" -type "string" "map1";',
               '\tsetAttr -s %d ".uvst[0].uvsp[0:%d]" -type "float2" %s;' % (
                   len(self.uvs), len(self.uvs) - 1, ' '.join(num(c) for uv in self.uvs for c in uv)),
               '\tsetAttr ".cuvs" -type "string" "map1";',
               '\tsetAttr -s %d ".vt[0:%d]"  %s;' % (
                   len(self.points), len(self.points) - 1, ' '.join(num(c) for p in self.points for c in p)),
               '\tsetAttr -s %d ".ed[0:%d]"  %s;' % (
                   len(edges), len(edges) - 1, '  '.join('%d %d %d' % (a, b, self.smooth(a, b)) for a, b in edges))]
        faces = []
        for loops, uv in self.faces:
            for k, loop in enumerate(loops):
                refs = [ref(a, b) for a, b in zip(loop, loop[1:] + loop[:1])]
                faces.append('%s %d %s' % ('h' if k else 'f', len(refs), ' '.join(map(str, refs))))
            faces.append('mu 0 %d %s' % (len(uv), ' '.join(map(str, uv))))
        out.append('\tsetAttr -s %d -ch %d ".fc[0:%d]" -type "polyFaces" \n\t\t%s;' % (
            len(self.faces), sum(len(l) for f, _ in self.faces for l in f), len(self.faces) - 1, '\n\t\t'.join(faces)))
        return '\n'.join(line for line in out if line) + '\n'


def lathe(profile, segments, smooth_rows=True):
    """A surface of revolution about y from (radius, height) pairs; the ends close with a fan where the radius is not 0."""
    m = Mesh()
    for r, y in profile:
        for k in range(segments):
            a = 2 * math.pi * k / segments
            m.points.append((r * math.cos(a), y, -r * math.sin(a)))
    rows = len(profile)
    for i in range(rows):
        for k in range(segments + 1):
            m.uvs.append((k / segments, i / (rows - 1)))
    for i in range(rows - 1):
        for k in range(segments):
            n = (k + 1) % segments
            m.faces.append(([[i * segments + k, i * segments + n, (i + 1) * segments + n, (i + 1) * segments + k]],
                            [i * (segments + 1) + k, i * (segments + 1) + k + 1,
                             (i + 1) * (segments + 1) + k + 1, (i + 1) * (segments + 1) + k]))
    for row, down in ((0, True), (rows - 1, False)):
        loop = [row * segments + k for k in range(segments)]
        uv = [row * (segments + 1) + k for k in range(segments)]
        m.faces.append(([loop[::-1] if down else loop], uv[::-1] if down else uv))
    first, last = 0, rows - 1
    def smooth(a, b):
        ra, rb = a // segments, b // segments
        return 0 if ra == rb and ra in (first, last) else 1 if smooth_rows else 0
    m.smooth = smooth
    return m


def box(w, h, d):
    m = Mesh()
    for z in (d / 2, -d / 2):
        for y in (-h / 2, h / 2):
            for x in (-w / 2, w / 2):
                m.points.append((x, y, z))
    m.uvs = [(0, 0), (1, 0), (1, 1), (0, 1)]
    for loop in ([0, 1, 3, 2], [5, 4, 6, 7], [4, 0, 2, 6], [1, 5, 7, 3], [2, 3, 7, 6], [4, 5, 1, 0]):
        m.faces.append(([loop], [0, 1, 2, 3]))
    return m


def frame(size, hole, depth):
    """A picture frame: front and back are faces with a hole, one concave notch in the outline for good measure."""
    m = Mesh()
    s, t = size / 2, hole / 2
    outline = [(-s, -s), (s, -s), (s, s), (0, s * 0.85), (-s, s)]
    inner = [(-t, -t), (-t, t), (t, t), (t, -t)]
    for z in (depth / 2, -depth / 2):
        m.points += [(x, y, z) for x, y in outline + inner]
    n, k = len(outline), len(outline) + len(inner)
    m.uvs = [((x / size + .5), (y / size + .5)) for x, y in outline + inner] + [(0, 0), (1, 0), (1, 1), (0, 1)]
    front = [list(range(n)), list(range(n, k))]
    back = [[v + k for v in loop[::-1]] for loop in front]
    m.faces.append((front, front[0] + front[1]))
    m.faces.append((back, front[0][::-1] + front[1][::-1]))
    for loop in front:
        for a, b in zip(loop, loop[1:] + loop[:1]):
            m.faces.append(([[b, a, a + k, b + k]], [k, k + 1, k + 2, k + 3]))
    return m


def transform(name, parent=None, **channels):
    out = 'createNode transform -n "%s"%s;\n' % (name, ' -p "%s"' % parent if parent else '')
    for key, value in channels.items():
        out += '\tsetAttr ".%s" -type "double3" %s ;\n' % (key, ' '.join('%.9g' % v for v in value))
    return out


def main():
    out = ['''//Maya ASCII 2018 scene
//Name: still_life.ma
//Codeset: UTF-8
requires maya "2018";
currentUnit -l meter -a degree -t film;
fileInfo "application" "maya";
createNode transform -s -n "persp";
	setAttr ".v" no;
	setAttr ".t" -type "double3" 1.1 1.05 1.3 ;
	setAttr ".r" -type "double3" -22 40 0 ;
createNode camera -s -n "perspShape" -p "persp";
	setAttr -k off ".v" no;
	setAttr ".fl" 35;
	setAttr ".ncp" 0.001;
	setAttr ".fcp" 100;
''']
    out.append(transform('table', t=(0, 0.7, 0)))
    table = box(1.2, 0.05, 0.8)
    out.append(transform('tabletop', 'table'))
    out.append(table.text('tabletopShape', '|table|tabletop'))
    leg = lathe([(0.03, -0.35), (0.025, 0), (0.03, 0.33)], 16)
    out.append(transform('leg1', 'table', t=(-0.52, -0.36, 0.32)))
    out.append(leg.text('legShape', 'leg1'))
    for i, (x, z) in enumerate(((0.52, 0.32), (0.52, -0.32), (-0.52, -0.32)), 2):
        out.append(transform('leg%d' % i, 'table', t=(x, -0.36, z)))
    vase = lathe([(0.05, 0), (0.09, 0.06), (0.11, 0.14), (0.07, 0.22), (0.045, 0.27), (0.06, 0.32)], 24)
    out.append(transform('things', 'table', t=(0, 0.025, 0)))
    out.append(transform('vase', 'things', t=(-0.2, 0, 0.02), r=(0, 15, 0)))
    # a dent by tweaks, and the lowest ring in another material
    dent = '\tsetAttr -s 3 ".pt";\n' + ''.join('\tsetAttr ".pt[%d]" -type "float3" -0.015 0 0 ;\n' % v for v in (48, 49, 71))
    out.append(vase.text('vaseShape', 'vase', dent
                         + '\tsetAttr -s 2 ".iog[0].og";\n'
                         + '\tsetAttr ".iog[0].og[0].gcl" -type "componentList" 2 "f[24:119]" "f[121]";\n'
                         + '\tsetAttr ".iog[0].og[1].gcl" -type "componentList" 2 "f[0:23]" "f[120]";\n'))
    cup = lathe([(0.03, 0), (0.045, 0.02), (0.05, 0.09)], 20)
    out.append(transform('cup', 'things', t=(0.12, 0, 0.15)))
    out.append(cup.text('cupShape', 'cup'))
    out.append(transform('book', 'things', t=(0.22, 0.02, -0.12), r=(0, -25, 0), s=(1, 1, 1), rp=(-0.1, 0, 0), sp=(-0.1, 0, 0)))
    out.append(box(0.2, 0.04, 0.28).text('bookShape', 'book'))
    out.append(transform('picture', 'things', t=(0.1, 0.16, -0.3), r=(-12, 0, 0)))
    out.append(frame(0.3, 0.2, 0.02).text('pictureShape', 'picture'))
    for i in (2, 3, 4):
        out.append('parent -s -nc -r -add "|table|leg1|legShape" "leg%d" ;\n' % i)
    out.append('''createNode lambert -n "wood";
	setAttr ".c" -type "float3" 0.45 0.28 0.15 ;
createNode blinn -n "glaze";
	setAttr ".c" -type "float3" 0.1 0.35 0.5 ;
	setAttr ".sc" -type "float3" 0.6 0.6 0.6 ;
createNode phong -n "paper";
	setAttr ".dc" 0.9;
createNode file -n "cover";
	setAttr ".ftn" -type "string" "textures/cover.png";
	setAttr ".rf" 90;
createNode place2dTexture -n "place2dTexture1";
''')
    for shader in ('wood', 'glaze', 'paper'):
        out.append('createNode shadingEngine -n "%sSG";\n\tsetAttr ".ihi" 0;\n\tsetAttr ".ro" yes;\n' % shader)
    out.append('createNode groupId -n "groupId1";\ncreateNode groupId -n "groupId2";\n')
    out.append('select -ne :time1;\n\tsetAttr ".o" 1;\n')
    for shader in ('wood', 'glaze', 'paper'):
        out.append('connectAttr "%s.oc" "%sSG.ss";\nconnectAttr "%sSG.pa" ":renderPartition.st" -na;\n' % (shader, shader, shader))
    out.append('connectAttr "cover.oc" "paper.c";\nconnectAttr "place2dTexture1.o" "cover.uv";\n')
    for shape, group in (('tabletopShape', 'woodSG'), ('|table|leg1|legShape', 'woodSG'), ('|table|leg2|legShape', 'woodSG'),
                         ('|table|leg3|legShape', 'woodSG'), ('|table|leg4|legShape', 'woodSG'), ('bookShape', 'paperSG'),
                         ('pictureShape', 'woodSG'), ('cupShape', ':initialShadingGroup')):
        out.append('connectAttr "%s.iog" "%s.dsm" -na;\n' % (shape, group))
    for k, group in ((0, 'glazeSG'), (1, 'woodSG')):
        out.append('connectAttr "groupId%d.id" "vaseShape.iog.og[%d].gid";\n' % (k + 1, k)
                   + 'connectAttr "%s.mwc" "vaseShape.iog.og[%d].gco";\n' % (group, k)
                   + 'connectAttr "vaseShape.iog.og[%d]" "%s.dsm" -na;\n' % (k, group)
                   + 'connectAttr "groupId%d.msg" "%s.gn" -na;\n' % (k + 1, group))
    out.append('// End of still_life.ma\n')
    print(''.join(out), end='')


if __name__ == '__main__':
    main()
