// Paths, instance numbers, visibility and matrices.
#include "host/session/SessionState.h"

#include <algorithm>

namespace host::session {
namespace {

using graph::Graph;
using graph::Node;

/// The path of one instance, from its end up.
DagPath pathOf(const eval::InstanceTable& instances, NodeId node, std::uint32_t instance)
{
    DagPath path;
    while (node != kWorld && path.nodes.size() <= graph::kMaxDagDepth) {
        path.nodes.push_back(node);
        const eval::InstanceTable::Step above = instances.above(node, instance);
        if (above.parent == kNoNode) {
            return {};
        }
        node = above.parent;
        instance = above.instance;
    }
    std::reverse(path.nodes.begin(), path.nodes.end());
    return path;
}

VisibilityAttributes visibilityAttributes(NodeType type)
{
    VisibilityAttributes found;
    found.visibility = type.findAttribute("visibility");
    found.lodVisibility = type.findAttribute("lodVisibility");
    found.intermediateObject = type.findAttribute("intermediateObject");
    found.overrideEnabled = type.findAttribute("overrideEnabled");
    found.overrideVisibility = type.findAttribute("overrideVisibility");
    return found;
}

Plug topPlug(NodeId node, AttributeIndex attribute)
{
    return attribute == kNoAttribute ? Plug{} : Plug{node, attribute, graph::kNoSlot, -1};
}

} // namespace

std::vector<DagPath> Session::pathsTo(NodeId node) const
{
    std::vector<DagPath> paths;
    const std::uint32_t count = m_evaluation->instances.pathCount(node);
    for (std::uint32_t instance = 0; instance < count; ++instance) {
        paths.push_back(pathOf(m_evaluation->instances, node, instance));
    }
    return paths;
}

DagPath Session::firstPathTo(NodeId node) const
{
    return pathOf(m_evaluation->instances, node, 0);
}

std::uint32_t Session::instanceNumber(const DagPath& path) const
{
    std::uint32_t instance = 0;
    NodeId parent = kWorld;
    for (const NodeId node : path.nodes) {
        instance += m_evaluation->instances.firstThrough(node, parent);
        parent = node;
    }
    return instance;
}

bool Session::isInstanced(const DagPath& path) const
{
    return m_evaluation->instances.pathCount(path.end()) > 1;
}

std::string Session::fullPathName(const DagPath& path) const
{
    std::string name;
    for (const NodeId node : path.nodes) {
        name += '|';
        name += m_graph->node(node).name;
    }
    return name;
}

/// Visible unless switched off by itself, by a level-of-detail group, as an intermediate object, or
/// by an enabled override. Template and reference display hide nothing. This is the one place that
/// decides what hides.
bool Session::isNodeVisible(NodeId node)
{
    if (m_graph->node(node).slots.empty()) {
        return true; // all at their defaults
    }
    const NodeType type = m_graph->node(node).type;
    const auto [known, isNew] = m_evaluation->visibilityOfType.try_emplace(type.name());
    if (isNew) {
        known->second = visibilityAttributes(type);
    }
    const VisibilityAttributes& own = known->second;
    const auto isOn = [&](AttributeIndex attribute, bool fallback) {
        return number(topPlug(node, attribute), fallback ? 1 : 0) != 0;
    };
    if (!isOn(own.visibility, true) || !isOn(own.lodVisibility, true) ||
        isOn(own.intermediateObject, false)) {
        return false;
    }
    return !isOn(own.overrideEnabled, false) || isOn(own.overrideVisibility, true);
}

bool Session::isVisible(const DagPath& path)
{
    const std::uint32_t round = m_evaluation->visibilityRound;
    for (const NodeId node : path.nodes) {
        Evaluation::Visibility& known = m_evaluation->visibility[node];
        if (known.round != round) {
            known = {round, isNodeVisible(node)};
        }
        if (!known.isVisible) {
            return false;
        }
    }
    return true;
}

/// The matrices above the node that the last path had in common with this one are there already.
Matrix4 Session::inclusiveMatrix(const DagPath& path)
{
    std::vector<NodeId>& known = m_evaluation->lastPath.nodes;
    std::vector<Matrix4>& worlds = m_evaluation->lastWorlds;
    const auto differing =
        std::mismatch(known.begin(), known.end(), path.nodes.begin(), path.nodes.end());
    known.erase(differing.first, known.end());
    worlds.resize(known.size());
    for (std::size_t depth = known.size(); depth < path.nodes.size(); ++depth) {
        const Matrix4 above = depth == 0 ? Matrix4{} : worlds.back();
        worlds.push_back(worldMatrix(path.nodes[depth], above));
        known.push_back(path.nodes[depth]);
    }
    return worlds.empty() ? Matrix4{} : worlds.back();
}

/// World matrix of a node below one whose world matrix is `above`; a shape stands where that does.
Matrix4 Session::worldMatrix(NodeId node, const Matrix4& above)
{
    const NodeType type = m_graph->node(node).type;
    if (!type.isTransform()) {
        return above;
    }
    const Plug offset = topPlug(node, type.findAttribute("offsetParentMatrix"));
    const Plug inherits = topPlug(node, type.findAttribute("inheritsTransform"));
    Matrix4 world = localMatrix(node).valueOr(Matrix4{});
    if (const auto matrix = value(offset).data<Matrix4>()) {
        world = world * *matrix;
    }
    return number(inherits, 1) != 0 ? world * above : world;
}

Expected<Matrix4> Session::localMatrix(NodeId node)
{
    if (node >= m_graph->nodeCount() || !m_graph->node(node).type.isTransform()) {
        return Error{ErrorCode::InvalidParameter, "not a transform", {}};
    }
    const auto matrix =
        value(topPlug(node, m_graph->findAttribute(node, "matrix"))).data<Matrix4>();
    return matrix != nullptr ? *matrix : Matrix4{};
}

} // namespace host::session
