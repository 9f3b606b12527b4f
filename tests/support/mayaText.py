"""Small scenes of the text form, put together from pieces: each function returns statements."""

HEAD = '//Maya ASCII 2018 scene\n//Codeset: UTF-8\nrequires maya "2018";\ncurrentUnit -l %s -a degree -t film;\n'


def scene(*statements, unit='centimeter'):
    return HEAD % unit + ''.join(statements)


def transform(name, parent=None, *settings, type='transform'):
    return node(type, name, parent, *settings)


def node(type, name, parent=None, *settings):
    under = ' -p "%s"' % parent if parent else ''
    return 'createNode %s -n "%s"%s;\n%s' % (type, name, under, ''.join('\tsetAttr %s;\n' % s for s in settings))


def triple(attribute, x, y, z):
    return '"%s" -type "double3" %r %r %r' % (attribute, x, y, z)


def mesh(name, parent, points, loops, uvs=None, uv_loops=None, *settings, smooth=False):
    """A mesh: loops are lists of point indices; a face is a loop, or a tuple of a loop and its holes."""
    edges, numbers = [], {}

    def edge(a, b):
        if (a, b) in numbers:
            return numbers[a, b]
        if (b, a) in numbers:
            return -numbers[b, a] - 1
        numbers[a, b] = len(edges)
        edges.append((a, b))
        return numbers[a, b]

    faces, corners = [], 0
    for face, loop_or_loops in enumerate(loops):
        parts = loop_or_loops if isinstance(loop_or_loops, tuple) else (loop_or_loops,)
        for number, loop in enumerate(parts):
            signed = [edge(a, b) for a, b in zip(loop, loop[1:] + loop[:1])]
            faces.append('\t\t%s %d %s\n' % ('h' if number else 'f', len(loop), ' '.join(map(str, signed))))
            corners += len(loop)
        if uv_loops:
            faces.append('\t\tmu 0 %d %s\n' % (len(uv_loops[face]), ' '.join(map(str, uv_loops[face]))))
    lines = ['".uvst[0].uvsn" -type "string" "map1"', '".cuvs" -type "string" "map1"'] if uvs else []
    if uvs:
        lines.append('-s %d ".uvst[0].uvsp[0:%d]" -type "float2" %s' % (len(uvs), len(uvs) - 1, flat(uvs)))
    lines.append('-s %d ".vt[0:%d]"  %s' % (len(points), len(points) - 1, flat(points)))
    lines.append('-s %d ".ed[0:%d]"  %s' % (len(edges), len(edges) - 1, flat([e + (int(smooth),) for e in edges])))
    lines.append('-s %d -ch %d ".fc[0:%d]" -type "polyFaces"\n%s' % (len(loops), corners, len(loops) - 1, ''.join(faces)))
    return node('mesh', name, parent, *(list(settings) + lines))


def flat(rows):
    return ' '.join('%r' % number for row in rows for number in row)


def triangle(name, parent, *settings):
    return mesh(name, parent, [(0, 0, 0), (1, 0, 0), (0, 1, 0)], [[0, 1, 2]], [(0, 0), (1, 0), (0, 1)], [[0, 1, 2]],
                *settings)


CUBE_POINTS = [(-.5, -.5, .5), (.5, -.5, .5), (-.5, .5, .5), (.5, .5, .5), (-.5, .5, -.5), (.5, .5, -.5), (-.5, -.5, -.5),
               (.5, -.5, -.5)]
CUBE_LOOPS = [[0, 1, 3, 2], [2, 3, 5, 4], [4, 5, 7, 6], [6, 7, 1, 0], [1, 7, 5, 3], [6, 0, 2, 4]]


def cube(name, parent, *settings):
    """A cube of edge 1 with hard edges: faces front, top, back, bottom, right, left; one square of UVs for all."""
    return mesh(name, parent, CUBE_POINTS, CUBE_LOOPS, [(0, 0), (1, 0), (1, 1), (0, 1)], [[0, 1, 2, 3]] * 6, *settings)


def connect(source, target):
    return 'connectAttr "%s" "%s"%s;\n' % (source, target, ' -na' if target.endswith('.dsm') else '')


def shaded(shape, group=':initialShadingGroup'):
    return connect(shape + '.iog', group + '.dsm')


def shader(type, name, *settings):
    """A shader with its shading group NAMESG."""
    group = name + 'SG'
    return (node(type, name, None, *settings) + node('shadingEngine', group, None, '".ihi" 0', '".ro" yes')
            + connect(name + '.oc', group + '.ss'))


def face_set(shape, index, group, first, last, instance=0):
    """Faces first to last of an instance of a shape wear a shading group."""
    return ('setAttr "%s.iog[%d].og[%d].gcl" -type "componentList" 1 "f[%d:%d]";\n' % (shape, instance, index, first, last)
            + node('groupId', 'groupId_%s_%d_%d' % (shape.strip('|').replace('|', '_'), instance, index), None, '".ihi" 0')
            + connect('groupId_%s_%d_%d.id' % (shape.strip('|').replace('|', '_'), instance, index),
                      '%s.iog[%d].og[%d].gid' % (shape, instance, index))
            + connect('%s.mwc' % group, '%s.iog[%d].og[%d].gco' % (shape, instance, index))
            + connect('%s.iog[%d].og[%d]' % (shape, instance, index), '%s.dsm' % group))
