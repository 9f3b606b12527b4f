// The commands about nodes and about the scene as a whole.
#include "host/session/SceneBuilder.h"

#include "host/math/units.h"
#include "host/session/plugLookup.h"
#include "host/session/unknownNodes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace host::session {

using graph::kNoNode;
using graph::kWorld;
using graph::NodeId;

namespace {

/// Types of which each file holds the nodes that a new scene has, too.
constexpr std::array<std::string_view, 7> kWrittenByEveryFile{
    "displayLayer", "displayLayerManager", "lightLinker",       "poseInterpolatorManager",
    "renderLayer",  "renderLayerManager",  "shapeEditorManager"};

} // namespace

SceneBuilder::SceneBuilder(graph::Graph& graph, Diagnostics& diagnostics, bool isDefault)
    : m_graph(graph), m_diagnostics(diagnostics), m_isDefault(isDefault)
{
}

void SceneBuilder::note(DiagnosticKind kind, std::string_view subject, std::string_view detail)
{
    if (!m_isDefault) {
        m_diagnostics.note(kind, subject, detail, m_place.text());
    }
}

void SceneBuilder::requirePlugin(std::string_view plugin, std::string_view version,
                                 std::span<const std::string_view>)
{
    // What a plug-in would bring shows in the node types that stay unknown. Maya itself weighs
    // normals by angle and area since version 2013; the scenes of older ones keep what they had,
    // all faces alike. Cylinders lie differently in texture space since 2023.
    constexpr int kFirstWeighing = 2013;
    constexpr int kFirstNewCylinder = 2023;
    if (plugin == "maya") {
        int year = 0;
        std::from_chars(version.data(), version.data() + version.size(), year);
        m_hasPlainNormals = year > 0 && year < kFirstWeighing; // 7.0, 8.5, 2008, 2012
        m_hasNewCylinders = year >= kFirstNewCylinder;
    }
}

void SceneBuilder::currentUnit(const file::Units& units)
{
    if (const auto linear = findLinearUnit(units.linear)) {
        m_facts.units.linear = linear->shortName;
        m_linearScale = units.areForDisplay ? 1 : linear->centimetres;
    }
    if (const auto radians = findAngularUnit(units.angular)) {
        m_facts.units.angular = units.angular.substr(0, 3);
        m_angularScale = units.areForDisplay ? 1 : *radians;
    }
    if (const auto ticks = findTimeUnit(units.time)) {
        m_facts.units.time = units.time;
        m_facts.units.ticksPerFrame = std::max<std::int64_t>(1, std::llround(*ticks));
    }
}

void SceneBuilder::fileInfo(std::string_view, std::string_view)
{
    // Says who wrote the file; nothing depends on it.
}

void SceneBuilder::reference(const file::Reference& reference)
{
    const std::string path(reference.path);
    if (reference.isTableOfContents || !m_referencesSeen.insert(path).second) {
        return;
    }
    m_facts.references.push_back(path);
    note(DiagnosticKind::ReferenceLeftOut, reference.path, reference.nodeName);
}

NodeId SceneBuilder::findParent(const file::CreateNode& command)
{
    if (command.parent.empty()) {
        return kWorld;
    }
    NodeId parent = m_graph.findNode(command.parent);
    if (parent == kNoNode) {
        note(DiagnosticKind::MissingNode, "createNode", command.parent);
        return kWorld;
    }
    if (isUnknown(m_graph, parent)) {
        parent = replaceUnknown(parent);
    }
    return m_graph.node(parent).isDag() ? parent : kWorld;
}

/// Makes an unknown node a transform; the commands that follow go to what it became.
NodeId SceneBuilder::replaceUnknown(NodeId node)
{
    const NodeId transform = makeUnknownTransform(m_graph, node);
    if (m_current == node) {
        m_current = transform;
    }
    return transform;
}

/// The node of a new scene that a file's own takes the place of: files write these anew, under the
/// same names, without calling them shared.
NodeId SceneBuilder::claimDefault(const file::CreateNode& command, NodeType type)
{
    const bool isWritten = std::find(kWrittenByEveryFile.begin(), kWrittenByEveryFile.end(),
                                     command.type) != kWrittenByEveryFile.end();
    const NodeId found = isWritten && !m_isDefault ? m_graph.findNode(command.name) : kNoNode;
    if (found == kNoNode || !m_graph.node(found).isDefault || !(m_graph.node(found).type == type)) {
        return kNoNode;
    }
    m_graph.node(found).isDefault = false; // a second one of that name is another node
    return found;
}

/// The node that a shared createNode means: of that name and type, below that parent.
NodeId SceneBuilder::findShared(const file::CreateNode& command, NodeType type, NodeId parent)
{
    if (!command.isShared || command.name.empty()) {
        return claimDefault(command, type);
    }
    NodeId found = kNoNode;
    if (type.isDag() && !command.parent.empty()) {
        found = m_graph.findNode(std::string(command.parent) + "|" + std::string(command.name));
    } else {
        found = m_graph.findNode(command.name);
    }
    if (found == kNoNode || found == kWorld) {
        return kNoNode;
    }
    const graph::Node& node = m_graph.node(found);
    const bool isSameType =
        node.unknownType.empty() ? node.type == type : node.unknownType == command.type;
    const bool isThere = !type.isDag() || std::find(node.parents.begin(), node.parents.end(),
                                                    parent) != node.parents.end();
    return isSameType && isThere ? found : kNoNode;
}

NodeType SceneBuilder::typeFor(const file::CreateNode& command, bool& isUnknownWord)
{
    const NodeType type = NodeType::find(command.type);
    isUnknownWord = !type;
    if (type) {
        return type;
    }
    note(DiagnosticKind::UnknownNodeType, command.type, command.name);
    return command.parent.empty() ? unknownType() : unknownDagType();
}

void SceneBuilder::createNode(const file::CreateNode& command)
{
    bool isUnknownWord = false;
    const NodeType type = typeFor(command, isUnknownWord);
    const NodeId parent = findParent(command);
    m_current = findShared(command, type, parent);
    if (m_current != kNoNode) {
        return;
    }
    const std::string invented = command.name.empty() ? std::string(command.type) + "1" : "";
    m_current = m_graph.createNode(type, command.name.empty() ? invented : command.name, parent);
    if (m_current == kNoNode) {
        note(DiagnosticKind::Limit, "nodes", command.name);
        return;
    }
    graph::Node& node = m_graph.node(m_current);
    node.isDefault = m_isDefault;
    if (isUnknownWord) {
        node.unknownType = command.type;
    }
    if (m_hasPlainNormals && type.isA("mesh")) {
        setInitial("vertexNormalMethod", 0);
    }
    if (m_hasNewCylinders && type.name().starts_with("poly")) {
        setInitial("maya2022UVs", 0);
    }
}

/// What a number of the current node is until the file says otherwise.
void SceneBuilder::setInitial(std::string_view attribute, double number)
{
    const AttributeIndex index = m_graph.node(m_current).type.findAttribute(attribute);
    if (index != kNoAttribute) {
        m_graph.setValue({m_current, index, graph::kNoSlot, -1}, number);
    }
}

void SceneBuilder::renameNode(std::string_view newName)
{
    if (m_current != kNoNode && !newName.empty()) {
        m_graph.renameNode(m_current, newName);
    }
}

void SceneBuilder::uuid(std::string_view)
{
    // Identities matter to references only, and those stay out.
}

void SceneBuilder::selectNode(std::string_view name)
{
    m_current = m_graph.findNode(name);
    if (m_current == kNoNode) {
        note(DiagnosticKind::MissingNode, "select", name);
    }
}

SceneBuilder::FoundNode SceneBuilder::findInstance(std::string_view nameOrPath) const
{
    if (nameOrPath.find('|') == std::string_view::npos) {
        return {m_graph.findNode(nameOrPath), 0};
    }
    std::vector<NodeId> chain;
    const NodeId node = m_graph.findPath(nameOrPath, chain);
    return {node, node == kNoNode ? 0 : instanceOf(chain)};
}

/// For each parent in order, for each path of that parent.
std::int32_t SceneBuilder::instanceOf(const std::vector<NodeId>& chain) const
{
    std::size_t instance = 0;
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const auto& parents = m_graph.node(chain[i]).parents;
        if (parents.size() < 2) {
            continue;
        }
        for (const NodeId parent : parents) {
            if (parent == chain[i - 1]) {
                break;
            }
            instance += m_graph.pathCount(parent);
        }
    }
    return static_cast<std::int32_t>(std::min<std::size_t>(instance, 0x7ffffffe));
}

void SceneBuilder::parentNodes(const file::ParentNodes& command)
{
    NodeId parent = kWorld;
    if (!command.parent.empty()) {
        parent = m_graph.findNode(command.parent);
        if (parent == kNoNode) {
            note(DiagnosticKind::MissingNode, "parent", command.parent);
            return;
        }
        if (isUnknown(m_graph, parent)) {
            parent = replaceUnknown(parent);
        }
    }
    for (const std::string_view name : command.nodes) {
        parentNode(command, name, parent);
    }
}

void SceneBuilder::parentNode(const file::ParentNodes& command, std::string_view name,
                              NodeId parent)
{
    std::vector<NodeId> chain;
    const NodeId child = m_graph.findPath(name, chain);
    if (child == kNoNode) {
        note(DiagnosticKind::MissingNode, "parent", name);
        return;
    }
    Expected<void> done;
    if (command.isRemoved) {
        const NodeId above = chain.size() > 1 ? chain[chain.size() - 2] : kWorld;
        done = m_graph.removeParent(child, command.parent.empty() ? above : parent);
    } else if (command.isAdded) {
        done = m_graph.addParent(child, parent);
    } else {
        done = m_graph.setParent(child, parent);
    }
    if (!done) {
        const bool isLimit = done.error().code == ErrorCode::Limit;
        note(isLimit ? DiagnosticKind::Limit : DiagnosticKind::BadStatement, "parent",
             done.error().message);
    }
}

void SceneBuilder::lockNode(bool)
{
    // Locks guard against people, not against readers.
}

void SceneBuilder::unknown(std::string_view word)
{
    note(DiagnosticKind::UnknownStatement, word);
}

void SceneBuilder::damaged(std::string_view word, std::string_view reason)
{
    note(DiagnosticKind::BadStatement, word, reason);
}

void SceneBuilder::endOfScene()
{
    m_meshes.build(m_graph, m_diagnostics);
    const std::size_t removed = m_graph.limitPaths(maxPaths(m_graph.nodeCount()));
    if (removed > 0) {
        note(DiagnosticKind::Limit, "instances",
             std::to_string(removed) + " instances were left out");
    }
}

std::size_t maxPaths(std::size_t nodeCount)
{
    constexpr std::size_t kAlwaysAllowed = 100000;
    constexpr std::size_t kPerNode = 16;
    return std::max(kAlwaysAllowed, kPerNode * nodeCount);
}

} // namespace host::session
