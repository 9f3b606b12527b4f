#!/usr/bin/env python3
"""Makes the tables of node types and their attributes (standard library only).

  make_node_tables.py              host/types/tables/*.txt -> host/types/tables/nodeTypeTables.inc
  make_node_tables.py --check      the same, but only compares: exit status 1 when the file would change
  make_node_tables.py --derive ATTRIBUTES.tsv TYPES.tsv
                                   lists of facts about node types -> host/types/tables/*.txt

The text tables are the source and may be edited by hand.

node_types.txt, one line each, sorted by name: "type NAME PARENT NUMBER" or "class NAME PARENT NUMBER", where a class is
never made itself, PARENT is "-" for the root and NUMBER is the function-set number of its own (0: none).

attributes.txt: "block NAME" followed by its attributes, indented, "LONG SHORT KIND[*] [^PARENT:POSITION] [=INITIAL]", where * marks
a multi, PARENT is the long name of the compound, POSITION orders its children, and INITIAL is in internal units
(centimetres, radians, ticks); then "type NAME BLOCK ...": the attributes of a type are those of its blocks in order.
"""
import collections
import math
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
TABLES = ROOT / "host" / "types" / "tables"
TYPES_TXT = TABLES / "node_types.txt"
ATTRIBUTES_TXT = TABLES / "attributes.txt"
OUTPUT = TABLES / "nodeTypeTables.inc"

KINDS = """Bool Byte Char Short Long Enum Float FloatLinear FloatAngle Double DoubleLinear DoubleAngle Time Compound
    Message String Matrix FloatMatrix StringArray Int32Array FloatArray DoubleArray VectorArray PointArray ComponentList
    AttributeAlias PolyFaces PolyComponent Mesh NurbsCurve NurbsSurface NurbsTrimface Lattice Geometry ReferenceEdits
    Any""".split()

Row = collections.namedtuple("Row", "long short kind multi parent position initial")

# ---------------------------------------------------------------------------------------------------------------------
# The text tables.


def format_number(number):
    text = repr(float(number))
    return text[:-2] if text.endswith(".0") else text


def write_text_tables(types, blocks, blocks_of_type):
    lines = ["# Node types and the classes that they are derived from: kind, name, parent, function-set number."]
    lines += [f"{kind} {name} {parent} {number}" for name, (kind, parent, number) in sorted(types.items())]
    TYPES_TXT.write_text("\n".join(lines) + "\n", newline="\n")
    lines = ["# Attributes in blocks, and the blocks of each type; tools/make_node_tables.py tells the form of a line."]
    for name, rows in blocks.items():
        lines.append(f"block {name}")
        for row in rows:
            line = f"  {row.long} {row.short} {row.kind}{'*' if row.multi else ''}"
            line += f" ^{row.parent}:{row.position}" if row.parent else ""
            line += f" ={format_number(row.initial)}" if row.initial else ""
            lines.append(line)
    lines += [f"type {name} {' '.join(names)}" for name, names in sorted(blocks_of_type.items())]
    ATTRIBUTES_TXT.write_text("\n".join(lines) + "\n", newline="\n")


def table_lines(path):
    for number, line in enumerate(path.read_text(encoding="ascii").splitlines(), 1):
        if line and not line.startswith("#"):
            yield f"{path.name}:{number}", line.startswith(" "), line.split()


def parse_row(where, words):
    kind, multi = words[2].rstrip("*"), words[2].endswith("*")
    if kind not in KINDS:
        sys.exit(f"{where}: unknown kind {kind}")
    parent, position, initial = "", 0, 0.0
    for word in words[3:]:
        if word.startswith("^"):
            parent, _, position = word[1:].rpartition(":")
            position = int(position)
        elif word.startswith("="):
            initial = float(word[1:])
        else:
            sys.exit(f"{where}: cannot read {word}")
    return Row(words[0], words[1], kind, multi, parent, position, initial)


def read_text_tables():
    types = {}
    for where, _, words in table_lines(TYPES_TXT):
        if len(words) != 4 or words[0] not in ("type", "class"):
            sys.exit(f"{where}: expected 'type|class NAME PARENT NUMBER'")
        types[words[1]] = (words[0], words[2], int(words[3]))
    blocks, rows_of_type, block = {}, {}, None
    for where, is_indented, words in table_lines(ATTRIBUTES_TXT):
        if is_indented:
            block.append(parse_row(where, words))
        elif words[0] == "block":
            block = blocks.setdefault(words[1], [])
        elif words[0] == "type":
            rows_of_type[words[1]] = [row for name in words[2:] for row in blocks[name]]
        else:
            sys.exit(f"{where}: expected a block, a type or an indented attribute")
    return types, rows_of_type


# ---------------------------------------------------------------------------------------------------------------------
# The C++ tables: plain integers and one store of characters, so that nothing is to be done when a program starts.

CHUNK = 8192  # characters of one literal, well below every compiler's limit


class NameStore:
    """Distinct names one after another; no name straddles two literals."""

    def __init__(self):
        self.text = ""
        self.offsets = {}

    def add(self, name):
        if name not in self.offsets:
            room = CHUNK - 1 - len(self.text) % CHUNK
            if len(name) > room:
                self.text += "\0" * (room + 1)
            self.offsets[name] = len(self.text)
            self.text += name
        return self.offsets[name]

    def chunks(self):
        return [self.text[i:i + CHUNK] for i in range(0, len(self.text), CHUNK)]


def family(rows):
    """Parent, first child and next sibling of each row, as positions (0xffff: none)."""
    none = 0xFFFF
    position = {}
    for index, row in enumerate(rows):
        position.setdefault(row.long, index)
    children = collections.defaultdict(list)
    parents = [none] * len(rows)
    for index, row in enumerate(rows):
        if row.parent:
            parents[index] = position[row.parent]
            children[position[row.parent]].append(index)
    first, following = [none] * len(rows), [none] * len(rows)
    for parent, members in children.items():
        members.sort(key=lambda index: rows[index].position)  # stable: equal positions stay in order
        first[parent] = members[0]
        for one, other in zip(members, members[1:]):
            following[one] = other
    return list(zip(parents, first, following))


def check_acyclic(name, links):
    for start in range(len(links)):
        seen, index = set(), start
        while index != 0xFFFF:
            if index in seen:
                sys.exit(f"{name}: attribute {start} is inside itself")
            seen.add(index)
            index = links[index][0]


def numbers(values, per_line=24):
    text = [str(value) for value in values]
    return "\n".join(",".join(text[i:i + per_line]) + "," for i in range(0, len(text), per_line))


def records(values):
    text = ["{" + ",".join(str(number) for number in value) + "}" for value in values]
    return "\n".join(",".join(text[i:i + 8]) + "," for i in range(0, len(text), 8))


def literal(text):
    text = text.rstrip("\0").replace("\0", "\\0\"\"")
    lines = [text[i:i + 110] for i in range(0, len(text), 110)] or [""]
    return "\n".join(f'"{line}"' for line in lines) + ","


def is_derived(types, name, ancestor):
    while name != "-":
        if name == ancestor:
            return True
        name = types[name][1]
    return False


def make_cpp(types, rows_of_type):
    store = NameStore()
    row_ids, row_records = {}, []
    initials = {0.0: 0}
    lists, list_ids = [], {}
    entries, name_index = [], []

    def row_id(row):
        key = (row.long, row.short, row.kind, row.multi, row.initial)
        if key not in row_ids:
            row_ids[key] = len(row_records)
            initial = initials.setdefault(row.initial, len(initials))
            row_records.append((store.add(row.long), store.add(row.short), len(row.long), len(row.short),
                                KINDS.index(row.kind), int(row.multi), initial))
        return row_ids[key]

    def list_id(name, rows):
        links = family(rows)
        check_acyclic(name, links)
        mine = tuple((row_id(row),) + link for row, link in zip(rows, links))
        if mine not in list_ids:
            words = sorted({(row.long, 2 * i) for i, row in enumerate(rows)}
                           | {(row.short, 2 * i + 1) for i, row in enumerate(rows) if row.short != row.long})
            list_ids[mine] = len(lists)
            lists.append((len(entries), len(mine), len(name_index), len(words)))
            entries.extend(mine)
            name_index.extend(word[1] for word in words)
        return list_ids[mine]

    class_names = sorted(types)
    class_ids = {name: i for i, name in enumerate(class_names)}
    classes = []
    for name in class_names:
        parent = types[name][1]
        classes.append((store.add(name), len(name), class_ids.get(parent, 0xFFFF), types[name][2]))
    type_records = []
    for name in class_names:
        if types[name][0] == "type":
            is_dag = is_derived(types, name, "dagNode")
            is_transform = is_derived(types, name, "transform")
            type_records.append((class_ids[name], list_id(name, rows_of_type[name]),
                                 int(is_dag) | 2 * int(is_transform)))
    for limit, values in ((1 << 16, row_records), (1 << 16, initials), (1 << 16, lists)):
        assert len(values) < limit
    assert all(entry[1] < 1 << 14 for entry in lists)

    chunks = store.chunks()
    parts = [
        "// Made by tools/make_node_tables.py from node_types.txt and attributes.txt: edit those.",
        "// clang-format off",
        f"constexpr char kNames[{len(chunks)}][{CHUNK}] = {{",
        *[literal(chunk) for chunk in chunks], "};",
        f"constexpr double kInitials[{len(initials)}] = {{", numbers(map(format_number, initials), 12), "};",
        "// long name, short name, their lengths, kind, is a multi, initial",
        f"constexpr AttributeRow kRows[{len(row_records)}] = {{", records(row_records), "};",
        "// row, parent, first child, next sibling",
        f"constexpr Entry kEntries[{len(entries)}] = {{", records(entries), "};",
        "// twice the position in the list, plus one for the short name; by name, then position",
        f"constexpr std::uint16_t kNameIndex[{len(name_index)}] = {{", numbers(name_index), "};",
        "// first entry, count, first of the name index, count",
        f"constexpr AttributeList kLists[{len(lists)}] = {{", records(lists), "};",
        "// name, its length, parent, function-set number; by name",
        f"constexpr Class kClasses[{len(classes)}] = {{", records(classes), "};",
        "// class, list, flags (1: in the DAG, 2: transform); by name",
        f"constexpr Type kTypes[{len(type_records)}] = {{", records(type_records), "};",
        "// clang-format on", "",
    ]
    return "\n".join(parts)


# ---------------------------------------------------------------------------------------------------------------------
# Derivation of the text tables from lists of facts.

TICKS_PER_FILM_FRAME = 141120000 / 24

KIND_OF_TYPE = {
    "bool": "Bool", "byte": "Byte", "char": "Char", "short": "Short", "long": "Long", "enum": "Enum", "float": "Float",
    "floatLinear": "FloatLinear", "floatAngle": "FloatAngle", "double": "Double", "doubleLinear": "DoubleLinear",
    "doubleAngle": "DoubleAngle", "time": "Time", "compound": "Compound", "double2": "Compound", "double3": "Compound",
    "double4": "Compound", "float2": "Compound", "float3": "Compound", "short2": "Compound", "short3": "Compound",
    "long2": "Compound", "long3": "Compound", "lightData": "Compound", "message": "Message", "string": "String",
    "matrix": "Matrix", "fltMatrix": "FloatMatrix", "stringArray": "StringArray", "Int32Array": "Int32Array",
    "floatArray": "FloatArray", "doubleArray": "DoubleArray", "vectorArray": "VectorArray", "pointArray": "PointArray",
    "componentList": "ComponentList", "polyFaces": "PolyFaces", "mesh": "Mesh", "nurbsCurve": "NurbsCurve",
    "nurbsSurface": "NurbsSurface", "lattice": "Lattice", "geometry": "Geometry", "any": "Any", "generic": "Any",
    "addr": "Any", "data": "Any", "renderHairs": "Any", "hairCurve": "Any",
}

# Attributes whose listed type is too vague or differs from what files hold: (type or declaring class, long name).
KIND_OF_ATTRIBUTE = {
    ("mesh", "vrtx"): "FloatLinear", ("mesh", "vrty"): "FloatLinear", ("mesh", "vrtz"): "FloatLinear",
    ("mesh", "pntx"): "FloatLinear", ("mesh", "pnty"): "FloatLinear", ("mesh", "pntz"): "FloatLinear",
    ("mesh", "creaseData"): "PolyComponent", ("mesh", "creaseVertexData"): "PolyComponent",
    ("mesh", "holeFaceData"): "PolyComponent", ("mesh", "pinData"): "PolyComponent",
    ("nurbsSurface", "trimFace"): "NurbsTrimface", ("transform", "rotationInterpolation"): "Enum",
    ("polyTweak", "tweakX"): "FloatLinear", ("polyTweak", "tweakY"): "FloatLinear",
    ("polyTweak", "tweakZ"): "FloatLinear",
    ("polyBase", "output"): "Mesh",
    ("unitConversion", "input"): "Double", ("unitConversion", "output"): "Double",
    ("timeToUnitConversion", "output"): "Double", ("unitToTimeConversion", "output"): "Time",
    ("distanceBetween", "distance"): "DoubleLinear", ("addDoubleLinear", "output"): "DoubleLinear",
    ("multDoubleLinear", "output"): "DoubleLinear", ("curveInfo", "arcLength"): "DoubleLinear",
    ("curveInfo", "knots"): "DoubleArray", ("surfaceInfo", "knotsU"): "DoubleArray",
    ("surfaceInfo", "knotsV"): "DoubleArray",
    ("expression", "output"): "Double", ("expression", "time"): "Time", ("expression", "frame"): "Double",
    ("blendWeighted", "output"): "Double", ("blend", "output"): "Double", ("remapValue", "outValue"): "Float",
    ("gammaCorrect", "outValue"): "Float", ("closestPointOnMesh", "closestFaceIndex"): "Long",
    ("closestPointOnMesh", "closestVertexIndex"): "Long",
}
for axis in "XYZ":
    for constraint in ("aimConstraint", "orientConstraint"):
        KIND_OF_ATTRIBUTE[constraint, f"offset{axis}"] = "DoubleAngle"
for axis in "TU":
    for value, kind in (("A", "DoubleAngle"), ("L", "DoubleLinear"), ("T", "Time"), ("U", "Double")):
        curve = f"animCurve{axis}{value}"
        for name in ("keyTime", "input"):
            KIND_OF_ATTRIBUTE[curve, name] = "Time" if axis == "T" else "Double"
        for name in ("keyValue", "output"):
            KIND_OF_ATTRIBUTE[curve, name] = kind

# Initial values, in the list's units, that the list has only in part.
INITIAL_OF_ATTRIBUTE = {
    ("renderGlobals", "endFrame"): 10.0, ("pointEmitter", "volumeSweep"): 360.0, ("field", "volumeSweep"): 360.0,
}

# Outputs and other attributes of no listed type: by the name of the compound, then by their own; the first that fits.
KIND_BY_PARENT = [
    (r"constraintRotate|rotate|outRotate|euler|camAg", "DoubleAngle"),
    (r"constraintTranslate|allCoordinates|outTranslate|\w*[cC]entroid\w*|controlPoints|worldPosition|position|center"
     r"|singleVertex|camPos|comp(Anchor|Pivot)", "DoubleLinear"),
    (r"constraint(Vector|Scale)|normal|restScale|outNormal|outTangent|\w*[aA]xis", "Double"),
]
KIND_BY_NAME = [
    (r"\w*Matrix\w*|matrix(Sum|EyeToWorld)?|\w*[bB]indPose|inputMat", "Matrix"),
    (r"inputPolymesh|inputMesh|inMesh|outMesh|cachedSmoothMesh|(in|out)putPoly(gon)?|(world|out)(Main|Leaf|Flower)Mesh"
     r"|outProfileMesh", "Mesh"),
    (r"latticeInput|latticeOutput|worldLattice", "Lattice"),
    (r"\w*[gG]eometry(Path)?|\w*Geom|inputGeomTarget|surface", "Geometry"),
    (r"\w*[cC]urve(OnSurface)?s?[1-4]?|inputProfile[12]?|inputRail[12]|output3dCurve", "NurbsCurve"),
    (r"\w*[sS]urfaces?[1-5]?", "NurbsSurface"),
    (r"outAlpha", "Float"), (r"weights", "Double"),
]
COMPONENT_NAMES = r"\w+[XYZRGBUVxyzHS]|[uv]Coord|outComp[123]|outSingle"  # of compounds, else of type Float
# Numbers known to carry a unit: which one, by name; the first that fits. Anything else is a length.
UNIT_BY_NAME = [
    (r"\w*[tT]ime\w*|start|hold|source(Start|End)|ghostRange\w*|\w*(Clip)?(Start|End)Frame|(start|end)Frame"
     r"|timelineClip\w*|increment", "Time"),
    (r"\w*[aA]ngle\w*|\w*[aA]ngular\w*|\w*[sS]weep\w*|(pre)?[rR]otation\w*", "DoubleAngle"),
    (r"\w*[wW]eights?\w*|friction|resilience|creasing|percent\w*|\w*Frequency|num\w+|\w*Branches|levelOfDetail|\w*Polarity"
     r"|bias|goalSmoothness|roundness|rounding|flowerStart|\w*Alpha|smap\w+|photonIntensity|exponent|\w*Falloff|tension"
     r"|scale|localInfluence|crossingEffect|wireLocator\w+|finalGather\w+|sharp\w+|threshold|bendMagnitude|searchScale\w",
     "Double"),
]

# Types that the lists lack or place differently: name, parent. Their attributes come from their nearest relatives.
PLACED_TYPES = {
    "bezierCurve": "nurbsCurve", "stereoRigCamera": "camera", "dagContainer": "transform", "fosterParent": "transform",
    "imagePlane": "shape", "nucleus": "transform", "creaseSet": "objectSet", "clusterFlexorShape": "shape",
    "decomposeMatrix": "dependNode", "nearestPointOnCurve": "dependNode", "standardSurface": "dependNode",
    "shapeEditorManager": "dependNode", "nodeGraphEditorInfo": "dependNode", "floatConstant": "dependNode",
    "poseInterpolatorManager": "dependNode", "polyBevel2": "polyModifierWorld", "polyBevel3": "polyModifierWorld",
    "polyPlatonic": "polyPrimitive", "polyDisc": "polyPrimitive", "polyCBoolOp": "polyBase", "container": "dependNode",
    "trackInfoManager": "dependNode",
}
DROPPED_TYPES = {"renderPartition", "componentList", "mentalrayIblShape"}
CONCRETE_WITHOUT_ROWS = {"dagNode", "nParticle", "fluidShape"}

# Attributes that files use and the lists lack or place differently: type -> long name, short name, type, initial, compound, position.
ADDED_ATTRIBUTES = {
    "blendShape": [("directoryParentVisibility", "dpvs", "bool", "1", "targetDirectory", 20),
                   ("directoryWeight", "dwgh", "float", "1", "targetDirectory", 21)],
    # A layer's drawInfo feeds the drawOverride of its members child by child: the same order as there.
    "displayLayer": [("hideOnPlayback", "hpb", "bool", "0", "drawInfo", 7),
                     ("overrideRGBColors", "ovrgbf", "bool", "0", "drawInfo", 8),
                     ("color", "c", "byte", "0", "drawInfo", 9),
                     ("overrideColorRGB", "ovrgb", "float3", "", "drawInfo", 10),
                     ("overrideColorA", "ovca", "float", "1", "drawInfo", 11)],
}

FUNCTION_SETS = {
    "object": 1, "namedObject": 2, "dependNode": 4, "animCurve": 7, "animCurveTA": 8, "animCurveTL": 9,
    "animCurveTT": 10, "animCurveTU": 11, "animCurveUA": 12, "animCurveUL": 13, "animCurveUT": 14, "animCurveUU": 15,
    "blendWeighted": 29, "nurbsTessellate": 78, "dagNode": 107, "transform": 110, "aimConstraint": 111,
    "ikEffector": 119, "ikHandle": 120, "joint": 121, "pointConstraint": 240, "parentConstraint": 242,
    "poleVectorConstraint": 243, "scaleConstraint": 244, "unknownTransform": 246, "shape": 248, "baseLattice": 249,
    "camera": 250, "stereoRigCamera": 250, "clusterHandle": 251, "geometryShape": 265, "curveShape": 266,
    "nurbsCurve": 267, "bezierCurve": 267, "annotationShape": 271, "distanceDimShape": 272, "lattice": 279,
    "locator": 281, "plane": 288, "sketchPlane": 289, "surfaceShape": 293, "nurbsSurface": 294, "mesh": 296,
    "renderSphere": 298, "light": 302, "ambientLight": 303, "areaLight": 305, "directionalLight": 308,
    "pointLight": 309, "spotLight": 310, "particle": 311, "unknownDag": 316, "shadingEngine": 320, "expression": 327,
    "geometryFilter": 334, "imagePlane": 368, "lambert": 369, "reflect": 370, "blinn": 371, "phong": 372,
    "phongE": 373, "layeredShader": 374, "place2dTexture": 453, "objectSet": 467, "shadingMap": 473,
    "surfaceShader": 484, "texture2d": 492, "file": 496, "movie": 496, "time": 516, "unitConversion": 525,
    "useBackground": 527, "unknown": 528, "anisotropic": 617, "subdiv": 679, "character": 683, "displayLayer": 728,
    "displayLayerManager": 729, "instancer": 757, "stroke": 759, "lightLinker": 763, "lodGroup": 768,
    "renderLayer": 780, "rampShader": 891, "volumeLight": 892, "oceanShader": 893, "fluidShape": 909,
    "constraint": 927, "follicle": 930, "hairSystem": 931, "pfxGeometry": 940, "pfxHair": 941, "hairTubeShader": 942,
    "psdFileTex": 943, "pfxToon": 966, "hikGroundPlane": 979, "dynamicConstraint": 986, "nucleus": 990, "nCloth": 1000,
    "nParticle": 1001, "nRigid": 1002, "container": 1006,
}

Fact = collections.namedtuple("Fact", "long short type initial multi parent base position")


def read_facts(path):
    facts = collections.defaultdict(list)
    for line in Path(path).read_text(encoding="utf-8").splitlines()[1:]:
        name, long, short, kind, initial, multi, parent, _, base, position, _ = line.split("\t")
        base = "dependNode" if base == "DependNode" else base
        parent = "" if parent == long else parent
        facts[name].append(Fact(long, short, kind, initial, multi == "1", parent, base, int(position or 0)))
    for name, added in ADDED_ATTRIBUTES.items():
        for long, short, kind, initial, parent, position in added:
            facts[name] = [fact for fact in facts[name] if fact.long != long]
            facts[name].append(Fact(long, short, kind, initial, False, parent, name, position))
    return facts


def read_parents(path):
    parents = {}
    for line in Path(path).read_text(encoding="utf-8").splitlines()[1:]:
        chain = line.split("\t")[3].split(">")
        for parent, child in zip(["-"] + chain, chain):
            parents.setdefault(child, parent)
    parents["dependNode"] = "namedObject"
    parents.update({"namedObject": "object", "object": "-"})
    parents.update(PLACED_TYPES)
    for name in DROPPED_TYPES:
        parents.pop(name, None)
    return parents


def lineage(parents, name):
    chain = []
    while name != "-":
        chain.append(name)
        name = parents[name]
    return chain[::-1]


def first_fit(rules, name):
    return next((kind for pattern, kind in rules if re.fullmatch(pattern, name)), None)


def kind_of(type_name, fact, has_children):
    for owner in (type_name, fact.base):
        if (owner, fact.long) in KIND_OF_ATTRIBUTE:
            return KIND_OF_ATTRIBUTE[owner, fact.long]
    if fact.type == "output/other":
        if has_children:
            return "Compound"
        is_component = fact.parent and re.fullmatch(COMPONENT_NAMES, fact.long)
        return (first_fit(KIND_BY_PARENT, fact.parent) or first_fit(KIND_BY_NAME, fact.long)
                or ("Float" if is_component else "Any"))
    if fact.type.endswith("?unit"):
        kind = first_fit(UNIT_BY_NAME, fact.long) or "DoubleLinear"
        return kind.replace("Double", "Float") if fact.type.startswith("float") else kind
    return KIND_OF_TYPE[fact.type]


def initial_of(fact, kind):
    given = INITIAL_OF_ATTRIBUTE.get((fact.base, fact.long))
    if given is None:
        text = {"off": "0", "on": "1"}.get(fact.initial, fact.initial)
        try:
            given = float(text)
        except ValueError:
            given = 0.0
    if KINDS.index(kind) > KINDS.index("Time"):
        return 0.0
    if kind in ("DoubleAngle", "FloatAngle"):
        return math.radians(given)
    if kind == "Time":
        return given * TICKS_PER_FILM_FRAME
    return given


def child_names(fact):
    """Names for the children of a vector that the list names alone."""
    is_color = "olor" in fact.long
    letters = "RGB" if is_color else "UV" if fact.type[-1] == "2" and "uv" in fact.long.lower() else "XYZW"
    for letter in letters[:int(fact.type[-1])]:
        yield fact.long + letter, fact.short + letter.lower()


# Precision of the children of a vector follows the vector's own.
PRECISION = {"float": {"Double": "Float", "DoubleLinear": "FloatLinear", "DoubleAngle": "FloatAngle"},
             "double": {"Float": "Double", "FloatLinear": "DoubleLinear", "FloatAngle": "DoubleAngle"}}


def rows_from(type_name, facts):
    """(declaring class, row) of each fact, and of children that go without saying."""
    with_children = {fact.parent for fact in facts}
    type_of = {fact.long: fact.type for fact in facts}
    for fact in facts:
        kind = kind_of(type_name, fact, fact.long in with_children)
        vector = re.fullmatch(r"(float|double)[234]", type_of.get(fact.parent, ""))
        if vector:
            kind = PRECISION[vector[1]].get(kind, kind)
        parent = fact.parent if fact.parent in type_of else ""
        yield fact.base, Row(fact.long, fact.short, kind, fact.multi, parent, fact.position, initial_of(fact, kind))
        vector = re.fullmatch(r"(float|double|long|short)[234]", fact.type)
        if vector and fact.long not in with_children:
            for position, (long, short) in enumerate(child_names(fact)):
                yield fact.base, Row(long, short, vector[1].capitalize(), False, fact.long, position, 0.0)


def derive(attributes_path, types_path):
    facts, parents = read_facts(attributes_path), read_parents(types_path)
    for name in DROPPED_TYPES:
        facts.pop(name, None)
    inner = set(parents.values())
    chains = {name: lineage(parents, name) for name in parents}
    types = {}
    for name in parents:
        is_class = name in inner and name not in facts and name not in CONCRETE_WITHOUT_ROWS
        types[name] = ("class" if is_class else "type", parents[name], FUNCTION_SETS.get(name, 0))
    known = {name: list(rows_from(name, rows)) for name, rows in facts.items()}

    def donor(name, base):
        """The rows that `base`, a class, gives to types: of the relative nearest to `name`."""
        best, best_key = [], None
        for other, rows in known.items():
            if base in chains[other]:
                shared = sum(one == two for one, two in zip(chains[name], chains[other]))
                mine = [entry for entry in rows if entry[0] == base]
                key = (shared, len(mine))
                if mine and (best_key is None or key > best_key):
                    best, best_key = mine, key
        return best

    blocks, block_names, blocks_of_type = {}, {}, {}
    for name in sorted(name for name, entry in types.items() if entry[0] == "type"):
        if name in known:
            rows = list(known[name])
            bases = {"dependNode", "dagNode", "transform"} & set(chains[name][:-1])
            if name in PLACED_TYPES:
                bases = set(chains[name][:-1])
        else:
            rows, bases = [], set(chains[name])
        for base in reversed(chains[name]):
            have = {row.long for _, row in rows}
            if base in bases:
                rows = [entry for entry in donor(name, base) if entry[1].long not in have] + rows
        grouped = collections.OrderedDict()
        for base, row in rows:
            grouped.setdefault(base, []).append(row)
        blocks_of_type[name] = []
        for base, members in grouped.items():
            key = (base, tuple(members))
            if key not in block_names:
                count = sum(1 for known_base, _ in block_names if known_base == base)
                block_names[key] = f"{base}-{count + 1}"
                blocks[block_names[key]] = members
            blocks_of_type[name].append(block_names[key])
        longs = [row.long for _, row in rows]
        missing = [row.parent for _, row in rows if row.parent and row.parent not in longs]
        assert not missing and len(longs) == len(set(longs)), (name, missing)
    write_text_tables(types, blocks, blocks_of_type)


def main(arguments):
    if len(arguments) == 3 and arguments[0] == "--derive":
        derive(arguments[1], arguments[2])
        return 0
    if arguments not in ([], ["--check"]):
        print(__doc__, file=sys.stderr)
        return 2
    text = make_cpp(*read_text_tables())
    if arguments:
        is_same = OUTPUT.exists() and OUTPUT.read_text(encoding="ascii") == text
        print("unchanged" if is_same else f"{OUTPUT} does not agree with its source tables")
        return 0 if is_same else 1
    OUTPUT.write_text(text, encoding="ascii", newline="\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
