// The triangles of surfaces, as their shapes ask to be shown.
#include "host/geometry/tessellation/tessellate.h"
#include "host/math/angle.h"
#include "host/session/SessionState.h"

#include <algorithm>

namespace host::session {
namespace {

using geometry::LineMode;
using geometry::LineSettings;
using geometry::TessellationNote;
using geometry::TessellationSettings;

/// Reads the numbers of one shape.
class ShapeNumbers {
public:
    ShapeNumbers(Session& session, NodeId shape) : m_session(session), m_shape(shape) {}

    double number(std::string_view attribute, double fallback) const
    {
        const double value = m_session.number(m_session.findPlug(m_shape, attribute), fallback);
        return value == value ? value : fallback;
    }
    bool isOn(std::string_view attribute, bool fallback) const
    {
        return number(attribute, fallback ? 1 : 0) != 0;
    }
    std::int32_t count(std::string_view attribute, std::int32_t fallback) const
    {
        return static_cast<std::int32_t>(std::clamp(number(attribute, fallback), 0.0, 1e6));
    }

private:
    Session& m_session;
    NodeId m_shape;
};

/// The turn of an arc whose height is the share 1 - `ratio` of its chord: h = c / 2 tan(a / 4).
double angleOfRatio(double ratio)
{
    constexpr double kFlattest = 0.001;
    return 4 * angleOf(2 * std::clamp(1 - ratio, kFlattest, 1.0), 1);
}

/// Modes 1 to 3; the fourth goes by the size on the screen, which is not known here.
LineSettings lineSettings(std::int32_t mode, std::int32_t number)
{
    switch (mode) {
    case 1:
        return {LineMode::PerSurfaceByLength, number};
    case 2:
        return {LineMode::PerSurface, number};
    case 3:
        return {LineMode::PerSpan, number};
    default:
        return {};
    }
}

/// Numbers of lines, and tolerances only where they are switched on.
void setExplicit(const ShapeNumbers& shape, TessellationSettings& settings)
{
    settings.u = lineSettings(shape.count("modeU", 3), shape.count("numberU", 3));
    settings.v = lineSettings(shape.count("modeV", 3), shape.count("numberV", 3));
    const bool isByTolerance =
        settings.u.mode == LineMode::ByTolerance || settings.v.mode == LineMode::ByTolerance;
    if (!isByTolerance) {
        settings.chordTolerance = geometry::kNoTolerance;
        settings.angleTolerance = geometry::kNoTolerance;
    }
    if (shape.isOn("useChordHeight", false)) {
        settings.chordHeight = std::max(shape.number("chordHeight", 0.1), 1e-6);
    }
    if (shape.isOn("useChordHeightRatio", true)) {
        settings.angleTolerance = std::min(settings.angleTolerance,
                                           angleOfRatio(shape.number("chordHeightRatio", 0.983)));
    }
    settings.swapsEdges = shape.isOn("edgeSwap", false);
}

TessellationSettings settingsOf(const ShapeNumbers& shape)
{
    TessellationSettings settings;
    constexpr std::int32_t kFinestDisplay = 32;
    settings.curvedSpanSegments = std::clamp(shape.count("curvePrecisionShaded", 1),
                                             settings.curvedSpanSegments, kFinestDisplay);
    settings.isOpposite = shape.isOn("opposite", false);
    if (shape.isOn("smoothEdge", false)) {
        settings.edgeAngleTolerance = std::min(settings.edgeAngleTolerance,
                                               angleOfRatio(shape.number("smoothEdgeRatio", 0.99)));
    }
    if (shape.isOn("explicitTessellationAttributes", false)) {
        setExplicit(shape, settings);
    }
    return settings;
}

DiagnosticKind kindOf(TessellationNote note)
{
    const bool isLimit =
        note == TessellationNote::Coarsened || note == TessellationNote::EntangledBoundaries;
    return isLimit ? DiagnosticKind::Limit : DiagnosticKind::DamagedGeometry;
}

} // namespace

std::shared_ptr<const geometry::RenderMesh> Session::tessellation(NodeId shape)
{
    const auto surface = this->surface(shape);
    if (surface == nullptr) {
        return nullptr;
    }
    auto result = geometry::tessellate(*surface, settingsOf(ShapeNumbers(*this, shape)));
    for (const TessellationNote note : result.notes.list()) {
        m_diagnostics.note(kindOf(note), textOf(note), m_graph->node(shape).name);
    }
    return std::make_shared<const geometry::RenderMesh>(std::move(result.mesh));
}

} // namespace host::session
