// The lines of Paint Effects shapes.
#include "host/geometry/hair/strands.h"
#include "host/session/SessionState.h"
#include "host/session/hairSettings.h"
#include "host/session/strokeLines.h"

#include <utility>

namespace host::session {
namespace {

/// Values of simulationMethod: of hair systems, and of follicles.
constexpr double kSystemOff = 0;
constexpr double kSystemDynamicOnly = 2;
constexpr double kFolliclePassive = 0;
constexpr double kFollicleDynamic = 2;

/// The hair system that feeds a pfxHair shape; kNoNode when there is none.
NodeId hairSystemOf(Session& session, NodeId shape)
{
    const Plug source = session.source(session.findPlug(shape, "renderHairs"));
    const bool isSystem = source && session.graph().node(source.node).type.isA("hairSystem");
    return isSystem ? source.node : kNoNode;
}

/// The follicles of a system by their index in it.
std::vector<std::pair<std::int32_t, NodeId>> folliclesOf(Session& session, NodeId hairSystem)
{
    std::vector<std::pair<std::int32_t, NodeId>> follicles;
    const Plug hairs = session.findPlug(hairSystem, "inputHair");
    for (const std::int32_t index : session.graph().elementIndices(hairs)) {
        const Plug source = session.source(session.element(hairs, index));
        if (source && session.graph().node(source.node).type.isA("follicle")) {
            follicles.emplace_back(index, source.node);
        }
    }
    return follicles;
}

/// Whether a follicle has a surface that gives it no place: its curve is then where it was stored.
bool isAstray(Session& session, NodeId follicle)
{
    const bool hasSurface = session.source(session.findPlug(follicle, "inputMesh")) ||
                            session.source(session.findPlug(follicle, "inputSurface"));
    return hasSurface && readNumber(session, follicle, "validUv", 1) == 0;
}

/// The shape's own seed; 0 for one that is no whole number of reasonable size.
std::uint64_t seedOf(Session& session, NodeId shape)
{
    constexpr double kLargest = 2147483648.0;
    const double seed = readNumber(session, shape, "seed", 0);
    return seed > -kLargest && seed < kLargest
               ? static_cast<std::uint64_t>(static_cast<std::int64_t>(seed))
               : 0;
}

/// The strands of a hair system in world space, and whether they stand in for others.
struct SystemStrands {
    geometry::Strands strands;
    bool isApproximated = false;
};

SystemStrands strandsOf(Session& session, NodeId shape, NodeId hairSystem)
{
    SystemStrands result;
    const double method = readNumber(session, hairSystem, "simulationMethod", 3);
    if (method == kSystemOff) {
        return result;
    }
    geometry::HairStyle style = readHairStyle(session, hairSystem);
    style.seed = seedOf(session, shape);
    const double frame = static_cast<double>(session.currentTime()) /
                         static_cast<double>(session.units().ticksPerFrame);
    const bool isLater = frame > readNumber(session, hairSystem, "startFrame", 1);
    result.isApproximated = hasUnusedHairSettings(session, hairSystem);
    std::vector<geometry::HairGuide> guides;
    for (const auto& [index, follicle] : folliclesOf(session, hairSystem)) {
        const double kind = readNumber(session, follicle, "simulationMethod", kFollicleDynamic);
        if (method == kSystemDynamicOnly && kind == kFolliclePassive) {
            continue; // hidden
        }
        const bool wouldMove = isLater && method >= kSystemDynamicOnly &&
                               (kind == kFollicleDynamic || kind == kFolliclePassive);
        result.isApproximated =
            result.isApproximated || wouldMove || readNumber(session, follicle, "braid", 0) != 0;
        guides.push_back(readHairGuide(session, follicle, static_cast<std::uint32_t>(index)));
        const bool isBare = guides.back().points.size() < 2; // no place and no curve
        result.isApproximated = result.isApproximated || isBare || isAstray(session, follicle);
    }
    result.strands = geometry::makeStrands(style, guides);
    result.isApproximated = result.isApproximated || result.strands.isRandom;
    return result;
}

/// What was made for a shape.
struct ShapeLines {
    std::shared_ptr<geometry::RenderLines> lines; ///< in world space; null when nothing is known
    ShapeOutcome outcome = ShapeOutcome::Empty;
    std::string_view maker;               ///< the type to name in notes
    std::vector<std::string_view> limits; ///< that were met
};

std::vector<std::string_view> limitsOf(const geometry::Strands& strands)
{
    std::vector<std::string_view> limits;
    if (strands.isLimited) {
        limits.push_back("points of strands");
    }
    if (strands.isClumpLimited) {
        limits.push_back("hairs of a clump");
    }
    if (strands.isHairLimited) {
        limits.push_back("points of a hair");
    }
    return limits;
}

ShapeLines hairLines(Session& session, NodeId shape)
{
    ShapeLines made;
    const NodeId hairSystem = hairSystemOf(session, shape);
    if (hairSystem == kNoNode) {
        return made;
    }
    SystemStrands system = strandsOf(session, shape, hairSystem);
    made.lines = std::make_shared<geometry::RenderLines>(std::move(system.strands.lines));
    made.outcome = system.isApproximated ? ShapeOutcome::Approximated : ShapeOutcome::Exact;
    made.maker = session.graph().node(hairSystem).type.name();
    made.limits = limitsOf(system.strands);
    return made;
}

/// Strokes as plain lines; toon lines are not computed.
ShapeLines paintedLines(Session& session, NodeId shape)
{
    const NodeType type = session.graph().node(shape).type;
    ShapeLines made;
    made.lines = type.isA("stroke") ? strokeLines(session, shape) : nullptr;
    made.outcome = made.lines != nullptr ? ShapeOutcome::Approximated : ShapeOutcome::Missing;
    made.maker = type.name();
    return made;
}

void transformLines(std::vector<geometry::RenderLine>& lines, const Matrix4& matrix)
{
    if (matrix == Matrix4()) {
        return;
    }
    for (geometry::RenderLine& line : lines) {
        for (Vec3d& point : line.points) {
            point = transformPoint(point, matrix);
        }
    }
}

void noteLines(Diagnostics& diagnostics, const ShapeLines& made, const std::string& shape)
{
    if (made.outcome == ShapeOutcome::Approximated) {
        diagnostics.note(DiagnosticKind::ApproximatedShape, made.maker, shape);
    } else if (made.outcome == ShapeOutcome::Missing) {
        diagnostics.note(DiagnosticKind::MissingGeometry, made.maker, shape);
    }
    for (const std::string_view limit : made.limits) {
        diagnostics.note(DiagnosticKind::Limit, limit, shape);
    }
}

} // namespace

std::shared_ptr<const geometry::RenderLines> Session::renderLines(NodeId shape)
{
    if (shape >= m_graph->nodeCount() || !m_graph->node(shape).type.isA("pfxGeometry")) {
        return nullptr;
    }
    const bool isHair = m_graph->node(shape).type.isA("pfxHair");
    const ShapeLines made = isHair ? hairLines(*this, shape) : paintedLines(*this, shape);
    if (m_evaluation->shapes.emplace(shape, made.outcome).second) {
        noteLines(m_diagnostics, made, m_graph->node(shape).name);
    }
    if (made.lines != nullptr) {
        transformLines(made.lines->main, inverse(inclusiveMatrix(firstPathTo(shape))));
    }
    return made.lines;
}

} // namespace host::session
