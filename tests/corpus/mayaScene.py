"""What the text of a scene says about its meshes, read without the importer's help."""
import re

STATEMENT = re.compile(rb'^(createNode (\w+)|connectAttr |setAttr |\tsetAttr )', re.M)
CREATE = re.compile(rb'createNode (\w+)((?: -\w+(?: "[^"]*")?)*) *;?')
NAME = re.compile(rb' -n "([^"]*)"')
PARENT = re.compile(rb' -p "([^"]*)"')
FACES = re.compile(rb'setAttr (?:-\S+ \S+ )*"\.(?:fc|face)\[')
FED = re.compile(rb'connectAttr (?:-\S+ )*"[^"]*" (?:-\S+ )*"([^"]*)\.(?:i|inMesh)"')
HIDDEN = re.compile(rb'setAttr (?:-\S+ \S+ )*"\.(?:v|visibility|io|intermediateObject)" (no|yes|off|on|0|1)')

CURRENT = re.compile(rb'^select -ne :time1;\n(?:\tsetAttr [^;]*;\n)*?\tsetAttr (?:-\S+ \S+ )*"\.(?:o|outTime)" ([-+0-9.e]+)', re.M)


class Mesh:
    """A mesh shape: its name, the path of its parent as written, and whether its faces are stored and used as they are."""

    def __init__(self, name, parent):
        self.name, self.parent, self.has_faces, self.is_fed = name, parent, False, False

    @property
    def stored(self):
        return self.has_faces and not self.is_fed


def meshes(path):
    """All mesh shapes of a text scene in file order."""
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
        found.append(mesh)
    fed = {match.group(1).decode('utf-8', 'replace') for match in FED.finditer(data)}
    for mesh in found:
        mesh.is_fed = mesh.name in fed or any(name.endswith('|' + mesh.name) and name.split('|')[-2] == mesh.parent.split('|')[-1]
                                              for name in fed if '|' in name)
    return found


def current_frame(path):
    """The whole frame at which a text scene was saved; 1 where it does not say, none where it is no whole one or -1."""
    with open(path, 'rb') as file:
        found = CURRENT.search(file.read())
    frame = float(found.group(1)) if found else 1.0
    return int(frame) if frame.is_integer() and frame != -1 else None


def text(match):
    return match.group(1).decode('utf-8', 'replace') if match else ''
