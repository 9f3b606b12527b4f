"""What a scene's file says about its meshes, layers and frame, read without the importer's help: .ma and .mb."""
import os
import re
import struct
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'support'))
import binaryReader

SCENES = ('.ma', '.mb')

NAME = re.compile(rb' -n "([^"]*)"')
PARENT = re.compile(rb' -p "([^"]*)"')
FACES = re.compile(rb'setAttr (?:-\S+ \S+ )*"\.(?:fc|face)\[')
FED = re.compile(rb'connectAttr (?:-\S+ )*"[^"]*" (?:-\S+ )*"([^"]*)\.(?:i|inMesh)"')
INTERMEDIATE = re.compile(rb'setAttr (?:-\S+ \S+ )*"\.(?:io|intermediateObject)" (?:yes|on|1)')
LAYER = re.compile(r'^createNode displayLayer (?:-s )?-n "([^"]*)"', re.M)
MEMBER = re.compile(r'^connectAttr "([^"]*)\.di" "([^"]*)\.do"', re.M)
FRAMES = {'game': 15, 'film': 24, 'pal': 25, 'ntsc': 30, 'show': 48, 'palf': 50, 'ntscf': 60, 'sec': 1}  # a second
CURRENT = re.compile(rb'^select -ne :time1;\n(?:\tsetAttr [^;]*;\n)*?\tsetAttr (?:-\S+ \S+ )*"\.(?:o|outTime)" ([-+0-9.e]+)', re.M)


class Mesh:
    """A mesh shape: its name, the path of its parent as written, and whether its faces are stored and seen as they are."""

    def __init__(self, name, parent):
        self.name, self.parent, self.has_faces, self.is_fed, self.is_intermediate = name, parent, False, False, False

    @property
    def stored(self):
        return self.has_faces and not self.is_fed and not self.is_intermediate


def is_binary(path):
    return path.endswith('.mb')


def scenes_below(folder, only=''):
    """Paths relative to the folder, sorted."""
    return sorted(os.path.relpath(os.path.join(place, name), folder) for place, _, names in os.walk(folder)
                  for name in names if name.endswith(SCENES) and only in os.path.join(place, name))


def meshes(path):
    """All mesh shapes of a scene in file order."""
    found, fed = binary_meshes(path) if is_binary(path) else text_meshes(path)
    for mesh in found:
        mesh.is_fed = mesh.name in fed or any(name.endswith('|' + mesh.name) and name.split('|')[-2] == mesh.parent.split('|')[-1]
                                              for name in fed if '|' in name)
    return found


def binary_meshes(path):
    scene, found = binaryReader.read(path), []
    for node in scene.nodes:
        if node.code == b'DMSH' and not node.selected:
            found.append(Mesh(node.name, node.parent))
            found[-1].has_faces = any(tag == 'MESH' for tag, _ in node.values.values())
            found[-1].is_intermediate = any(node.values.get('io', ('', b''))[1])
    return found, {plug[:-2] for _, plug in scene.connections if plug.endswith('.i')}


def text_meshes(path):
    with open(path, 'rb') as file:
        data = file.read()
    found = []
    starts = [m.start() for m in re.finditer(rb'^createNode ', data, re.M)] + [len(data)]
    for start, end in zip(starts, starts[1:]):
        line = data[start:data.find(b';', start)]
        if not line.startswith(b'createNode mesh '):
            continue
        name, parent = NAME.search(line), PARENT.search(line)
        mesh = Mesh(text(name), text(parent))
        mesh.has_faces = FACES.search(data, start, end) is not None
        mesh.is_intermediate = INTERMEDIATE.search(data, start, end) is not None
        found.append(mesh)
    return found, {match.group(1).decode('utf-8', 'replace') for match in FED.finditer(data)}


def current_frame(path):
    """The whole frame at which a scene was saved; 1 where it does not say, none where it is no whole one or -1."""
    if is_binary(path):
        return binary_frame(binaryReader.read(path))
    with open(path, 'rb') as file:
        found = CURRENT.search(file.read())
    frame = float(found.group(1)) if found else 1.0
    return int(frame) if frame.is_integer() and frame != -1 else None


def binary_frame(scene):
    frame = 1.0
    for node in scene.nodes:
        if node.selected and node.name == ':time1' and 'o' in node.values:
            payload = node.values['o'][1]
            ticks, = struct.unpack('>q' if len(payload) == 8 else '>i', payload)
            frame = ticks * FRAMES[scene.texts.get('TUNI', 'film')] / scene.ticks
    return int(frame) if frame.is_integer() and frame != -1 else None


def layer_members(path):
    """Layers in the order of their creation, each with the names of its members in the order of connections; none where no
    layer, not even the default one, has a member."""
    if is_binary(path):
        scene = binaryReader.read(path)
        names = [node.name for node in scene.nodes if node.code == b'DSPL' and not node.selected]
        links = [(one[:-3], other[:-3]) for one, other in scene.connections if one.endswith('.di') and other.endswith('.do')]
    else:
        with open(path, encoding='utf-8', errors='replace') as file:
            data = file.read()
        names, links = LAYER.findall(data), MEMBER.findall(data)
    layers = {name: [] for name in names}
    for layer, member in links:
        layers.setdefault(layer.lstrip(':'), []).append(member)
    layers.pop('defaultLayer', None)
    return layers if links else None


def text(match):
    return match.group(1).decode('utf-8', 'replace') if match else ''
