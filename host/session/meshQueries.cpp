// The meshes of shapes, and how they came about.
#include "host/session/SessionState.h"

#include <algorithm>

namespace host::session {

std::shared_ptr<const geometry::MeshData> Session::mesh(NodeId shape)
{
    if (shape >= m_graph->nodeCount() || !m_graph->node(shape).type.isA("mesh")) {
        return nullptr;
    }
    const Plug plug = findPlug(shape, "outMesh");
    auto result = value(plug).data<geometry::MeshData>();
    if (m_evaluation->meshes.count(shape) == 0) {
        noteMesh(shape, plug, result != nullptr);
    }
    return result;
}

/// Says once for a shape what its mesh is worth.
void Session::noteMesh(NodeId shape, const Plug& plug, bool hasMesh)
{
    const auto typeWord = [&](NodeId node) -> std::string_view {
        const graph::Node& passed = m_graph->node(node);
        return passed.unknownType.empty() ? passed.type.name()
                                          : std::string_view(passed.unknownType);
    };
    const std::string& name = m_graph->node(shape).name;
    const auto passed = m_evaluation->evaluator.passedNodes(plug);
    if (!hasMesh) {
        const Plug source = m_graph->inputOf(findPlug(shape, "inMesh"));
        m_evaluation->meshes[shape] = source ? MeshOutcome::Missing : MeshOutcome::Empty;
        if (source) {
            const NodeId last = passed.empty() ? source.node : passed.back().node;
            m_diagnostics.note(DiagnosticKind::MissingGeometry, typeWord(last), name);
        }
        return;
    }
    m_evaluation->meshes[shape] = passed.empty() ? MeshOutcome::Exact : MeshOutcome::Approximated;
    std::vector<std::string_view> noted;
    for (const eval::PassedNode& node : passed) {
        const std::string_view type = typeWord(node.node);
        if (std::find(noted.begin(), noted.end(), type) == noted.end()) {
            noted.push_back(type);
            m_diagnostics.note(DiagnosticKind::ApproximatedShape, type, name);
        }
    }
}

} // namespace host::session
