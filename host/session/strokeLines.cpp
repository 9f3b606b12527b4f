#include "host/session/strokeLines.h"

#include "host/geometry/hair/guidePoints.h"
#include "host/session/hairSettings.h"

#include <algorithm>
#include <cmath>

namespace host::session {
namespace {

/// Lines of one stroke.
constexpr std::size_t kMaxPaths = 10000;

/// The child of a compound element by its name; null plug when there is none.
Plug childNamed(Session& session, const Plug& compound, std::string_view name)
{
    const AttributeIndex wanted = session.graph().findAttribute(compound.node, name);
    for (const Plug& child : session.children(compound)) {
        if (child.attribute == wanted) {
            return child;
        }
    }
    return {};
}

/// The brush that a stroke is painted with.
NodeId brushOf(Session& session, NodeId stroke)
{
    const Plug source = session.source(session.findPlug(stroke, "brush"));
    return source && session.graph().node(source.node).type.isA("brush") ? source.node : kNoNode;
}

std::vector<Vec3d> pathPoints(Session& session, const Plug& path, double density)
{
    const auto curve =
        session.value(childNamed(session, path, "curve")).data<geometry::CurveData>();
    if (curve == nullptr || curve->stride() == 0 || curve->cvCount() == 0) {
        return {};
    }
    const double samples = session.number(childNamed(session, path, "samples"), 0);
    const auto cvCount = static_cast<double>(curve->cvCount());
    const double perCv = samples > 1 ? samples / cvCount : 1;
    std::vector<Vec3d> points =
        geometry::guidePoints(*curve, {perCv * density, false, 1}, Matrix4());
    if (session.number(childNamed(session, path, "opposite"), 0) != 0) {
        std::reverse(points.begin(), points.end());
    }
    return points;
}

} // namespace

std::shared_ptr<geometry::RenderLines> strokeLines(Session& session, NodeId stroke)
{
    const NodeId brush = brushOf(session, stroke);
    if (brush == kNoNode || readNumber(session, brush, "tubes", 0) != 0) {
        return nullptr;
    }
    const double width = readNumber(session, brush, "brushWidth", 0.05) *
                         readNumber(session, brush, "globalScale", 1);
    const Vec3d color{readNumber(session, brush, "color1R", 0),
                      readNumber(session, brush, "color1G", 0),
                      readNumber(session, brush, "color1B", 0)};
    const double density = readNumber(session, stroke, "sampleDensity", 1);
    const Plug paths = session.findPlug(stroke, "pathCurve");
    auto lines = std::make_shared<geometry::RenderLines>();
    for (const std::int32_t index : session.graph().elementIndices(paths)) {
        geometry::RenderLine line;
        line.points = pathPoints(session, session.element(paths, index), density);
        if (line.points.empty() || lines->main.size() == kMaxPaths) {
            continue;
        }
        line.widths.assign(line.points.size(), std::isfinite(width) ? width : 0);
        line.colors.assign(line.points.size(), color);
        lines->main.push_back(std::move(line));
    }
    return lines->main.empty() ? nullptr : lines;
}

} // namespace host::session
