// Prints what a scene says, one value a line, in a form that does not depend on the file's format.
//
//   print_plugs SCENE
//
// Lines of cells with tabs between; texts in cells are quoted:
//   unit     LINEAR ANGULAR TIME             centimetres, radians and ticks of one unit
//   info     KEY VALUE
//   plugin   NAME VERSION TYPE...
//   refer    PATH NODE NAMESPACE FLAGS       1 listed, 2 deferred
//   node     PATH TYPE FLAGS UUID            1 shared, 2 locked; of ":name" without a type: one
//   that
//                                            every scene has
//   define   PATH LONG SHORT PARENT KIND INITIAL   a dynamic attribute
//   flags    PATH PLUG KEYABLE LOCKED CHANNELBOX   -1: not told
//   number   PATH PLUG ATTRIBUTE STORAGE NUMBER INITIAL   d double, f float, i integer; "?":
//   unknown data     PATH PLUG FORM NUMBER... connect  SOURCE DESTINATION FLAGS        1 next
//   available parent   NODE PARENT FLAGS               1 added, 2 removed oddity   WORD REASON what
//   could not be read
//
// Nodes and what belongs to them stand in the order of their making, plugs of a node sorted,
// connections in the file's order. A plug is written with short names, and without the compounds
// that have no index: "t" gives "tx", "ty" and "tz", as single members do; "wl[0].w[2]". Later
// values have replaced earlier ones.
#include "host/file/PayloadText.h"
#include "host/file/readScene.h"
#include "host/file/runningStep.h"
#include "host/geometry/deform/LatticeData.h"
#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/SurfaceData.h"
#include "host/math/units.h"
#include "host/session/Session.h"
#include "platform/MappedFile.h"
#include "platform/programMain.h"
#include "tests/support/NodeTableSink.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace host;
using file::numberText;
using file::quotedText;
using file::SetAttribute;

// --- data as a word for its form and all its numbers

struct Flat {
    std::string form;
    std::vector<double> numbers;

    void add(std::string_view word) { form += (form.empty() ? "" : " ") + std::string(word); }
    void add(double number) { numbers.push_back(number); }
    template<class T>
    void addAll(std::string_view word, const T& list)
    {
        add(word);
        add("x" + std::to_string(list.size()));
        for (const auto& entry : list) {
            add(static_cast<double>(entry));
        }
    }
};

void add(Flat& flat, const std::string& data)
{
    flat.add(quotedText(data));
}

void add(Flat& flat, const Matrix4& data)
{
    flat.add("matrix");
    for (const auto& row : data.m) {
        for (const double number : row) {
            flat.add(number);
        }
    }
}

void add(Flat& flat, const std::vector<std::string>& data)
{
    flat.add("strings");
    for (const std::string& text : data) {
        flat.add(quotedText(text));
    }
}

void add(Flat& flat, const std::vector<std::int32_t>& data)
{
    flat.addAll("integers", data);
}

void add(Flat& flat, const std::vector<double>& data)
{
    flat.addAll("numbers", data);
}

void add(Flat& flat, const std::vector<Vec3d>& data)
{
    flat.add("vectors");
    for (const Vec3d& v : data) {
        for (const double number : {v.x, v.y, v.z}) {
            flat.add(number);
        }
    }
}

void add(Flat& flat, const std::vector<std::array<double, 4>>& data)
{
    flat.add("points");
    for (const auto& point : data) {
        for (const double number : point) {
            flat.add(number);
        }
    }
}

void add(Flat& flat, const ComponentList& data)
{
    flat.add("components");
    for (const std::string& component : data.components) {
        flat.add(component);
    }
}

void add(Flat& flat, const PolyComponentData& data)
{
    flat.add("polyComponent" + std::to_string(static_cast<int>(data.domain)));
    flat.addAll("indices", data.indices);
    flat.addAll("values", data.values);
}

void add(Flat& flat, const PolyFaces&)
{
    flat.add("faces");
}

void add(Flat& flat, const geometry::MeshData&)
{
    flat.add("mesh");
}

void add(Flat& flat, const geometry::CurveData& data)
{
    flat.add("curve");
    for (const int number : {data.degree, data.spans, static_cast<int>(data.form),
                             data.rational ? 1 : 0, data.dimension}) {
        flat.add(std::to_string(number));
    }
    flat.addAll("knots", data.knots);
    flat.addAll("poles", data.poles);
}

void add(Flat& flat, const geometry::SurfaceData& data)
{
    flat.add("surface");
    for (const int number : {data.degreeU, data.degreeV, static_cast<int>(data.formU),
                             static_cast<int>(data.formV), data.rational ? 1 : 0}) {
        flat.add(std::to_string(number));
    }
    flat.addAll("knotsU", data.knotsU);
    flat.addAll("knotsV", data.knotsV);
    flat.addAll("poles", data.poles);
}

void add(Flat& flat, const geometry::TrimRegion& data)
{
    flat.add(data.flipNormal ? "trim flipped" : "trim");
    for (const geometry::TrimBoundary& boundary : data.boundaries) {
        flat.add("boundary" + std::to_string(boundary.type));
        flat.addAll("flags", boundary.edgeFlags);
        for (const geometry::TrimEdge& edge : boundary.edges) {
            flat.add("edge");
            for (const geometry::CurveData& curve : edge.curves3d) {
                add(flat, curve);
            }
            flat.add(edge.reversed ? "reversed" : "forward");
            flat.add(std::to_string(edge.continuity));
            for (const geometry::CurveData& curve : edge.curves2d) {
                add(flat, curve);
            }
            flat.add(edge.monotone ? "monotone" : "any");
            flat.add(edge.tolerance3d);
            flat.add(edge.tolerance2d);
        }
    }
}

void add(Flat& flat, const geometry::LatticeData& data)
{
    flat.add("lattice");
    for (const int number : {data.s, data.t, data.u}) {
        flat.add(std::to_string(number));
    }
    for (const Vec3d& v : data.points) {
        for (const double number : {v.x, v.y, v.z}) {
            flat.add(number);
        }
    }
}

void add(Flat& flat, const OpaqueText& data)
{
    flat.add("opaque " + quotedText(data.type) + " " + quotedText(data.text));
}

template<class T>
void addIf(Flat& flat, const Value& value)
{
    if (const auto data = value.data<T>()) {
        add(flat, *data);
    }
}

template<class... Types>
Flat flattened(const Value& value)
{
    Flat flat;
    (addIf<Types>(flat, value), ...);
    if (value.isNumber()) {
        flat.add("number");
        flat.add(value.number());
    }
    return flat;
}

Flat flattenedValue(const Value& value)
{
    return flattened<std::string, Matrix4, std::vector<std::string>, std::vector<std::int32_t>,
                     std::vector<double>, std::vector<Vec3d>, std::vector<std::array<double, 4>>,
                     ComponentList, PolyComponentData, PolyFaces, geometry::MeshData,
                     geometry::CurveData, geometry::SurfaceData, geometry::TrimRegion,
                     geometry::LatticeData, OpaqueText>(value);
}

// --- nodes

std::string exactText(double number)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.17g", number);
    return text.data();
}

/// A number of a plug: one attribute that has no parts.
struct Leaf {
    std::string name;
    std::string initial = "?";
};

struct Definition {
    std::string longName;
    std::string shortName;
    std::string parent;
    AttributeKind kind = AttributeKind::Any;
    double initial = 0;
    bool isMulti = false;
};

struct NodeRecord {
    std::string path;
    std::string typeName;
    NodeType type;
    std::string uuid;
    bool isShared = false;
    bool isLocked = false;
    std::vector<Definition> definitions;
    std::map<std::string, file::AttributeFlags> flags; ///< by plug
    std::map<std::string, std::string> values;         ///< by plug: the rest of the line
    std::map<std::string, std::int64_t> faceCounts;    ///< by plug
};

constexpr int kDeepest = 8;

void collectLeaves(NodeType type, AttributeIndex index, int depth, std::vector<Leaf>& leaves)
{
    const Attribute attribute = type.attribute(index);
    if (attribute.firstChild == kNoAttribute || depth == kDeepest) {
        leaves.push_back({std::string(attribute.shortName), exactText(attribute.initial)});
        return;
    }
    for (AttributeIndex child = attribute.firstChild; child != kNoAttribute;
         child = type.attribute(child).nextSibling) {
        collectLeaves(type, child, depth + 1, leaves);
    }
}

void collectLeaves(const NodeRecord& node, const Definition& definition, int depth,
                   std::vector<Leaf>& leaves)
{
    if (definition.kind != AttributeKind::Compound || depth == kDeepest) {
        leaves.push_back({definition.shortName, exactText(definition.initial)});
        return;
    }
    for (const Definition& child : node.definitions) {
        if (child.parent == definition.longName || child.parent == definition.shortName) {
            collectLeaves(node, child, depth + 1, leaves);
        }
    }
}

const Definition* findDefinition(const NodeRecord& node, std::string_view name)
{
    for (const Definition& definition : node.definitions) {
        if (definition.shortName == name || definition.longName == name) {
            return &definition;
        }
    }
    return nullptr;
}

AttributeIndex findStatic(const NodeRecord& node, std::string_view name)
{
    return node.type ? node.type.findAttribute(name) : kNoAttribute;
}

std::string shortName(const NodeRecord& node, std::string_view name)
{
    if (const AttributeIndex index = findStatic(node, name); index != kNoAttribute) {
        return std::string(node.type.attribute(index).shortName);
    }
    const Definition* const definition = findDefinition(node, name);
    return definition != nullptr ? definition->shortName : std::string(name);
}

/// The parts of an attribute that hold its numbers; the attribute itself where it has none.
std::vector<Leaf> leavesOf(const NodeRecord& node, std::string_view name)
{
    std::vector<Leaf> leaves;
    const Definition* const definition = findDefinition(node, name);
    if (const AttributeIndex index = findStatic(node, name); index != kNoAttribute) {
        collectLeaves(node.type, index, 0, leaves);
    } else if (definition != nullptr) {
        collectLeaves(node, *definition, 0, leaves);
    } else {
        leaves.push_back({std::string(name), "?"});
    }
    return leaves;
}

/// An element of the step that the elements run along, in the text of a plug: all steps with an
/// index, and the last one.
std::string plugText(const NodeRecord& node, const PlugPath& plug, std::int64_t element)
{
    const std::size_t running = file::runningStep(plug);
    std::string text;
    for (std::size_t i = 0; i < plug.stepCount; ++i) {
        const PlugStep& step = plug.steps[i];
        if (!step.hasIndex() && i + 1 < plug.stepCount) {
            continue;
        }
        text += text.empty() ? "" : ".";
        text += shortName(node, step.name);
        if (step.hasIndex()) {
            text += "[" + std::to_string(i == running ? step.first + element : step.first) + "]";
        }
    }
    return text;
}

/// The plug of a part: "t" has "tx", "pt[3]" has "pt[3].px".
std::string partText(const std::string& plug, const std::string& leaf, bool isItself)
{
    if (isItself) {
        return plug;
    }
    const std::size_t dot = plug.rfind('.');
    const bool hasIndex = plug.back() == ']';
    const std::string around = hasIndex                   ? plug + "."
                               : dot == std::string::npos ? ""
                                                          : plug.substr(0, dot + 1);
    return around + leaf;
}

class Table : public file::CommandSink {
public:
    /// Values of nodes that every scene has need their types.
    Table()
    {
        const session::Session empty;
        for (session::NodeId id = 0; id < empty.graph().nodeCount(); ++id) {
            const auto& node = empty.graph().node(id);
            m_types[std::string(node.name)] = node.type;
            file::CreateNode command;
            command.type = node.type.name();
            command.name = node.name;
            m_shapes.createNode(command);
        }
    }

    void at(const file::Place& place) override { m_shapes.at(place); }
    void requirePlugin(std::string_view plugin, std::string_view version,
                       std::span<const std::string_view> nodeTypes) override
    {
        std::string line = "plugin\t" + quotedText(plugin) + "\t" + quotedText(version);
        for (const std::string_view type : nodeTypes) {
            line += "\t" + quotedText(type);
        }
        m_header.push_back(line);
    }
    void currentUnit(const file::Units& units) override
    {
        const auto linear = findLinearUnit(units.linear);
        m_header.push_back("unit\t" + exactText(linear ? linear->centimetres : 0) + "\t" +
                           exactText(findAngularUnit(units.angular).value_or(0)) + "\t" +
                           exactText(static_cast<double>(findTimeUnit(units.time).value_or(0))));
    }
    void fileInfo(std::string_view key, std::string_view value) override
    {
        m_header.push_back("info\t" + quotedText(key) + "\t" + quotedText(value));
    }
    void reference(const file::Reference& reference) override
    {
        m_header.push_back(
            "refer\t" + quotedText(reference.path) + "\t" + quotedText(reference.nodeName) + "\t" +
            quotedText(reference.nameSpace) + "\t" +
            std::to_string((reference.isTableOfContents ? 1 : 0) + (reference.isDeferred ? 2 : 0)));
    }
    void createNode(const file::CreateNode& command) override
    {
        m_shapes.createNode(command);
        NodeRecord& node = m_nodes.emplace_back();
        node.typeName = command.type;
        node.type = NodeType::find(command.type);
        node.isShared = command.isShared;
        const NodeRecord* const parent =
            command.parent.empty() ? nullptr : findNode(command.parent);
        const bool isInDag = !command.parent.empty() || node.type.isDag();
        node.path = parent != nullptr ? parent->path : "";
        node.path += isInDag ? "|" : "";
        node.path += command.name;
        m_current = &node;
        m_byName[std::string(command.name)] = &node;
    }
    void renameNode(std::string_view newName) override
    {
        m_links.push_back("oddity\t\"rename\"\t" + quotedText(newName));
    }
    void uuid(std::string_view uuid) override { m_current->uuid = uuid; }
    void selectNode(std::string_view name) override
    {
        m_shapes.selectNode(name);
        m_current = findNode(name);
        if (m_current == nullptr) {
            m_current = &m_nodes.emplace_back();
            m_current->path = name;
            const std::string bare(name.starts_with(':') ? name.substr(1) : name);
            const auto known = m_types.find(bare);
            m_current->type = known == m_types.end() ? NodeType{} : known->second;
            m_byName[bare] = m_current;
        }
    }
    void parentNodes(const file::ParentNodes& command) override
    {
        for (const std::string_view node : command.nodes) {
            m_links.push_back(
                "parent\t" + quotedText(node) + "\t" + quotedText(command.parent) + "\t" +
                std::to_string((command.isAdded ? 1 : 0) + (command.isRemoved ? 2 : 0)));
        }
    }
    void lockNode(bool isLocked) override { m_current->isLocked = isLocked; }
    void addAttribute(const file::AddAttribute& command) override
    {
        m_shapes.addAttribute(command);
        const std::string_view brief =
            command.shortName.empty() ? command.longName : command.shortName;
        m_current->definitions.push_back({std::string(command.longName), std::string(brief),
                                          std::string(command.parent), command.kind,
                                          command.initial, command.isMulti});
    }
    PlugShape shapeOf(const PlugPath& plug) override { return m_shapes.shapeOf(plug); }
    void setAttribute(const SetAttribute& command) override
    {
        NodeRecord* const node =
            command.plug.node.empty() ? m_current : findNode(command.plug.node);
        if (node == nullptr) {
            m_links.push_back("oddity\t\"setAttr\"\t" + quotedText(command.plug.node));
            return;
        }
        addFlags(*node, command);
        switch (command.payload) {
        case SetAttribute::Payload::None:
            break;
        case SetAttribute::Payload::Numbers:
            addNumbers(*node, command);
            break;
        case SetAttribute::Payload::SparseNumbers:
            addSparse(*node, command);
            break;
        case SetAttribute::Payload::Faces:
            addFaces(*node, command);
            break;
        case SetAttribute::Payload::Value:
            addValues(*node, command);
            break;
        }
    }
    void connect(const file::Connection& command) override
    {
        m_links.push_back("connect\t" + quotedText(plugName(command.source)) + "\t" +
                          quotedText(plugName(command.destination)) + "\t" +
                          (command.isNextAvailable ? "1" : "0"));
    }
    void disconnect(const file::Connection& command) override
    {
        m_links.push_back("oddity\t\"disconnectAttr\"\t" + quotedText(command.destination));
    }
    void unknown(std::string_view word) override
    {
        m_links.push_back("oddity\t" + quotedText(word) + "\t\"unknown\"");
    }
    void damaged(std::string_view word, std::string_view reason) override
    {
        m_links.push_back("oddity\t" + quotedText(word) + "\t" + quotedText(reason));
    }
    void endOfScene() override {}

    void print() const
    {
        for (const std::string& line : m_header) {
            std::printf("%s\n", line.c_str());
        }
        for (const NodeRecord& node : m_nodes) {
            printNode(node);
        }
        for (const std::string& line : m_links) {
            std::printf("%s\n", line.c_str());
        }
    }

private:
    static void printNode(const NodeRecord& node)
    {
        const std::string path = quotedText(node.path);
        std::printf("node\t%s\t%s\t%d\t%s\n", path.c_str(), node.typeName.c_str(),
                    (node.isShared ? 1 : 0) + (node.isLocked ? 2 : 0), node.uuid.c_str());
        for (const Definition& each : node.definitions) {
            std::printf("define\t%s\t%s\t%s\t%s\t%d%s\t%s\n", path.c_str(),
                        quotedText(each.longName).c_str(), quotedText(each.shortName).c_str(),
                        quotedText(each.parent).c_str(), static_cast<int>(each.kind),
                        each.isMulti ? "*" : "", exactText(each.initial).c_str());
        }
        for (const auto& [plug, flags] : node.flags) {
            std::printf("flags\t%s\t%s\t%d\t%d\t%d\n", path.c_str(), plug.c_str(), flags.isKeyable,
                        flags.isLocked, flags.isInChannelBox);
        }
        for (const auto& [plug, value] : node.values) {
            const std::size_t tab = value.find('\t');
            std::printf("%s\t%s\t%s%s\n", value.substr(0, tab).c_str(), path.c_str(), plug.c_str(),
                        value.substr(tab).c_str());
        }
    }

    /// By path, by the end of a path, or by name.
    NodeRecord* findNode(std::string_view name)
    {
        const std::string_view bare = name.starts_with(':') ? name.substr(1) : name;
        if (bare.find('|') == std::string_view::npos) {
            const auto found = m_byName.find(std::string(bare));
            return found == m_byName.end() ? nullptr : found->second;
        }
        const std::string end = bare.starts_with('|') ? std::string(bare) : "|" + std::string(bare);
        for (NodeRecord& node : m_nodes) {
            if (bare.starts_with('|') ? node.path == end : node.path.ends_with(end)) {
                return &node;
            }
        }
        return nullptr;
    }

    /// "node.plug" with the node's path and short names.
    std::string plugName(std::string_view text)
    {
        const auto plug = parsePlugPath(text);
        const NodeRecord* const node = plug ? findNode(plug->node) : nullptr;
        if (node == nullptr || plug->stepCount == 0) {
            return std::string(text);
        }
        return node->path + "." + plugText(*node, *plug, 0);
    }

    static void addFlags(NodeRecord& node, const SetAttribute& command)
    {
        const file::AttributeFlags& flags = command.flags;
        if (flags.isKeyable < 0 && flags.isLocked < 0 && flags.isInChannelBox < 0) {
            return;
        }
        const std::int64_t count = file::elementCount(command.plug);
        for (std::int64_t i = 0; i < (count < 4096 ? count : 1); ++i) {
            file::AttributeFlags& known = node.flags[plugText(node, command.plug, i)];
            known.isKeyable = flags.isKeyable < 0 ? known.isKeyable : flags.isKeyable;
            known.isLocked = flags.isLocked < 0 ? known.isLocked : flags.isLocked;
            known.isInChannelBox =
                flags.isInChannelBox < 0 ? known.isInChannelBox : flags.isInChannelBox;
        }
    }

    static void addNumber(NodeRecord& node, const std::string& plug, const Leaf& leaf, char storage,
                          double number)
    {
        node.values[plug] = "number\t" + leaf.name + "\t" + storage + "\t" + exactText(number) +
                            "\t" + leaf.initial;
    }

    static void addNumbers(NodeRecord& node, const SetAttribute& command)
    {
        const file::NumberBlock& block = command.numbers;
        std::vector<Leaf> leaves = leavesOf(node, command.plug.last().name);
        const bool isSplit = leaves.size() == block.width && leaves.size() > 1;
        if (leaves.size() != block.width) {
            leaves.assign(block.width, {std::string(command.plug.last().name), "?"});
        }
        for (std::size_t i = 0; i < block.count(); ++i) {
            const std::string plug = plugText(node, command.plug, static_cast<std::int64_t>(i));
            for (std::size_t k = 0; k < block.width; ++k) {
                const std::size_t at = i * block.width + k;
                const bool isWhole = block.width == 1;
                std::string part = partText(plug, leaves[k].name, isWhole && !isSplit);
                part += isSplit || isWhole ? "" : "#" + std::to_string(k);
                if (!block.floats.empty()) {
                    addNumber(node, part, leaves[k], 'f', static_cast<double>(block.floats[at]));
                } else if (!block.doubles.empty()) {
                    addNumber(node, part, leaves[k], 'd', block.doubles[at]);
                } else {
                    addNumber(node, part, leaves[k], 'i', static_cast<double>(block.integers[at]));
                }
            }
        }
    }

    static void addSparse(NodeRecord& node, const SetAttribute& command)
    {
        const Leaf leaf = leavesOf(node, command.plug.last().name).front();
        PlugPath plug = command.plug;
        const std::size_t running = file::runningStep(plug);
        for (const file::SparseNumber& entry : command.sparse) {
            plug.steps[running].first = plug.steps[running].last = entry.outer;
            PlugStep& inner = plug.steps[plug.stepCount - 1];
            inner.first = inner.last = entry.inner;
            addNumber(node, plugText(node, plug, 0), leaf, 'd', entry.number);
        }
    }

    /// One line a face: its loops, and its ids in each set that it has any in.
    static void addFaces(NodeRecord& node, const SetAttribute& command)
    {
        const PolyFaces& faces = *command.faces;
        PlugPath plug = command.plug;
        PlugStep& step = plug.steps[plug.stepCount - 1];
        const std::int64_t first = step.first < 0 ? 0 : step.first;
        std::size_t loop = 0;
        std::size_t corner = 0;
        for (std::size_t face = 0; face < faces.faceLoopCounts.size(); ++face) {
            Flat flat;
            const std::size_t begin = corner;
            for (std::uint32_t i = 0; i < faces.faceLoopCounts[face]; ++i, ++loop) {
                flat.add((i == 0 ? "f" : "h") + std::to_string(faces.loopSizes[loop]));
                for (std::uint32_t k = 0; k < faces.loopSizes[loop]; ++k, ++corner) {
                    flat.add(faces.corners[corner]);
                }
            }
            for (const PolyFaces::UvIds& set : faces.uvSets) {
                const std::span<const std::int32_t> ids(set.ids.data() + begin, corner - begin);
                if (std::any_of(ids.begin(), ids.end(), [](std::int32_t id) { return id != -1; })) {
                    flat.addAll("mu" + std::to_string(set.set), ids);
                }
            }
            step.first = step.last = first + static_cast<std::int64_t>(face);
            addData(node, plugText(node, plug, 0), flat);
        }
    }

    static void addData(NodeRecord& node, const std::string& plug, const Flat& flat)
    {
        std::string line = "data\t" + flat.form;
        for (const double number : flat.numbers) {
            line += "\t" + exactText(number);
        }
        node.values[plug] = line;
    }

    static void addValues(NodeRecord& node, const SetAttribute& command)
    {
        for (std::size_t i = 0; i < command.values.size(); ++i) {
            addData(node, plugText(node, command.plug, static_cast<std::int64_t>(i)),
                    flattenedValue(command.values[i]));
        }
    }

    test::NodeTableSink m_shapes;
    std::map<std::string, NodeType> m_types; ///< of the nodes that every scene has
    std::vector<std::string> m_header;
    std::deque<NodeRecord> m_nodes;
    std::map<std::string, NodeRecord*> m_byName; ///< the last one of a name
    NodeRecord* m_current = nullptr;
    std::vector<std::string> m_links;
};

} // namespace

int programMain(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "print_plugs SCENE\n");
        return 2;
    }
    std::string error;
    const auto file = platform::MappedFile::open(argv[1], error);
    if (!file) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    Table table;
    const auto result = file::readScene({file->data(), file->size()}, table);
    table.print();
    if (!result) {
        std::fprintf(stderr, "%s\n", result.error().message.c_str());
        return 1;
    }
    return 0;
}
