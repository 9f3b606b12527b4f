// The geometry of shapes, and how it came about.
#include "host/session/SessionState.h"

#include <algorithm>

namespace host::session {

/// What a shape of `type` gives on the attribute `output`; its history comes in on `input`.
template<class T>
std::shared_ptr<const T> Session::geometryOf(NodeId shape, std::string_view type,
                                             std::string_view output, std::string_view input)
{
    if (shape >= m_graph->nodeCount() || !m_graph->node(shape).type.isA(type)) {
        return nullptr;
    }
    const Plug plug = findPlug(shape, output);
    auto result = value(plug).data<T>();
    if (m_evaluation->shapes.count(shape) == 0) {
        noteShape(shape, plug, input, result != nullptr);
    }
    return result;
}

std::shared_ptr<const geometry::MeshData> Session::mesh(NodeId shape)
{
    return geometryOf<geometry::MeshData>(shape, "mesh", "outMesh", "inMesh");
}

std::shared_ptr<const geometry::SurfaceData> Session::surface(NodeId shape)
{
    return geometryOf<geometry::SurfaceData>(shape, "nurbsSurface", "local", "create");
}

std::shared_ptr<const geometry::CurveData> Session::curve(NodeId shape)
{
    return geometryOf<geometry::CurveData>(shape, "nurbsCurve", "local", "create");
}

/// Says once for a shape what its geometry is worth.
void Session::noteShape(NodeId shape, const Plug& output, std::string_view input, bool hasGeometry)
{
    const auto typeWord = [&](NodeId node) -> std::string_view {
        const graph::Node& passed = m_graph->node(node);
        return passed.unknownType.empty() ? passed.type.name()
                                          : std::string_view(passed.unknownType);
    };
    const std::string& name = m_graph->node(shape).name;
    const auto passed = m_evaluation->evaluator.passedNodes(output);
    const bool isOnlyTextures =
        !passed.empty() && std::all_of(passed.begin(), passed.end(), [&](const auto& node) {
            return m_evaluation->evaluator.lackOf(node.node) == Lack::Textures;
        });
    const Plug source = m_graph->inputOf(findPlug(shape, input));
    const ShapeOutcome outcome = !hasGeometry ? source ? ShapeOutcome::Missing : ShapeOutcome::Empty
                                 : isOnlyTextures  ? ShapeOutcome::TexturesOnly
                                 : !passed.empty() ? ShapeOutcome::Approximated
                                 : source          ? ShapeOutcome::Computed
                                                   : ShapeOutcome::Exact;
    m_evaluation->shapes[shape] = outcome;
    if (source && m_evaluation->history.size() < kMaxReportedShapes) {
        HistoryShape entry{shape, outcome, {}};
        for (const eval::PassedNode& node : passed) {
            if (entry.passed.size() < kMaxReportedPasses) {
                entry.passed.push_back(node.node);
            }
        }
        m_evaluation->history.push_back(std::move(entry));
    }
    if (!hasGeometry) {
        if (source) {
            const NodeId last = passed.empty() ? source.node : passed.back().node;
            m_diagnostics.note(DiagnosticKind::MissingGeometry, typeWord(last), name);
        }
        return;
    }
    std::vector<std::string_view> noted;
    for (const eval::PassedNode& node : passed) {
        const std::string_view type = typeWord(node.node);
        if (std::find(noted.begin(), noted.end(), type) == noted.end()) {
            noted.push_back(type);
            m_diagnostics.note(DiagnosticKind::ApproximatedShape, type,
                               name + ", node " + m_graph->node(node.node).name);
        }
    }
}

} // namespace host::session
