// What smooth-mesh preview shows of mesh shapes.
#include "host/session/SessionState.h"

#include "host/geometry/mesh/shape/smoothMesh.h"
#include "host/nodes/polygon/shape/smoothingRules.h"

#include <algorithm>

namespace host::session {
namespace {

using geometry::SmoothingRules;

/// The numbers of a shape's attributes.
class ShapeNumbers {
public:
    ShapeNumbers(Session& session, NodeId shape) : m_session(session), m_shape(shape) {}
    double number(std::string_view attribute, double fallback) const
    {
        const Plug plug = m_session.findPlug(m_shape, attribute);
        return plug ? m_session.number(plug, fallback) : fallback;
    }
    bool isOn(std::string_view attribute, bool fallback) const
    {
        return number(attribute, fallback ? 1 : 0) != 0;
    }
    std::int32_t choice(std::string_view attribute, std::int32_t fallback) const
    {
        constexpr double kMost = 255;
        const double given = number(attribute, fallback);
        return given >= 0 && given <= kMost ? static_cast<std::int32_t>(given) : fallback;
    }

private:
    Session& m_session;
    NodeId m_shape;
};

/// 0 while the preview is off.
std::uint32_t previewDivisions(const ShapeNumbers& shape)
{
    if (shape.choice("displaySmoothMesh", 0) == 0) {
        return 0;
    }
    const bool isForRender = shape.isOn("useSmoothPreviewForRender", true);
    return static_cast<std::uint32_t>(
        shape.choice(isForRender ? "smoothLevel" : "renderSmoothLevel", 2));
}

SmoothingRules previewRules(const ShapeNumbers& shape)
{
    constexpr std::int32_t kSmoothsUniformly = 2;
    const bool isOsd = shape.isOn("useGlobalSmoothDrawType", true) ||
                       shape.choice("smoothDrawType", kSmoothsUniformly) != 0;
    nodes::BorderSettings border;
    border.isOsd = isOsd;
    border.usesOsdBoundaryMethods = shape.isOn("useOsdBoundaryMethods", true);
    border.osdVertBoundary = shape.choice("osdVertBoundary", 1);
    border.keepBorder = shape.isOn("keepBorder", false);
    border.boundaryRule = shape.choice("boundaryRule", 1);
    SmoothingRules rules;
    rules.border = nodes::borderRule(border);
    rules.propagatesHardEdges = shape.isOn("propagateEdgeHardness", false);
    rules.creases = shape.choice("osdCreaseMethod", 0) == 1 ? geometry::CreaseRule::Chaikin
                                                            : geometry::CreaseRule::Uniform;
    if (isOsd) {
        rules.uvs = nodes::uvRuleOfFvarBoundary(shape.choice("osdFvarBoundary", 3));
        rules.hasSmoothTriangles = shape.isOn("osdSmoothTriangles", false);
    } else {
        rules.uvs = nodes::uvRuleOfMapBorders(shape.choice("keepMapBorders", 1));
        rules.keepsHardEdges = shape.isOn("keepHardEdge", false);
        rules.continuity = std::clamp(shape.number("continuity", 1), 0.0, 1.0);
    }
    if (!shape.isOn("smoothUVs", true)) {
        rules.uvs = geometry::UvRule::Linear;
    }
    return rules;
}

} // namespace

ShownMesh Session::shownMesh(NodeId shape)
{
    ShownMesh shown{mesh(shape), 0};
    if (shown.mesh == nullptr) {
        return shown;
    }
    const ShapeNumbers numbers(*this, shape);
    const std::uint32_t asked = previewDivisions(numbers);
    const std::uint32_t divisions = geometry::possibleDivisions(*shown.mesh, asked);
    const std::string& name = m_graph->node(shape).name;
    if (divisions < asked) {
        m_diagnostics.note(DiagnosticKind::Limit, "level of smooth-mesh preview", name);
    }
    if (divisions == 0) {
        return shown;
    }
    auto smooth = geometry::smoothMesh(*shown.mesh, divisions, previewRules(numbers));
    if (smooth == nullptr) {
        m_diagnostics.note(DiagnosticKind::ApproximatedShape, "smooth-mesh preview", name);
        return shown;
    }
    return {std::move(smooth), divisions};
}

} // namespace host::session
