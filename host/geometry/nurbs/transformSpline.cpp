#include "host/geometry/nurbs/transformSpline.h"

namespace host::geometry {
namespace {

void transformPoles(std::vector<double>& poles, std::size_t stride, const Matrix4& matrix)
{
    for (std::size_t at = 0; at + 3 <= poles.size(); at += stride) {
        const Vec3d moved = transformPoint({poles[at], poles[at + 1], poles[at + 2]}, matrix);
        poles[at] = moved.x;
        poles[at + 1] = moved.y;
        poles[at + 2] = moved.z;
    }
}

std::shared_ptr<const TrimRegion> transformed(const TrimRegion& region, const Matrix4& matrix)
{
    auto moved = std::make_shared<TrimRegion>(region);
    for (TrimBoundary& boundary : moved->boundaries) {
        for (TrimEdge& edge : boundary.edges) {
            for (CurveData& curve : edge.curves3d) {
                curve = geometry::transformed(curve, matrix);
            }
        }
    }
    return moved;
}

} // namespace

CurveData transformed(const CurveData& curve, const Matrix4& matrix)
{
    CurveData moved = curve;
    if (moved.dimension == 3) {
        transformPoles(moved.poles, moved.stride(), matrix);
    }
    return moved;
}

SurfaceData transformed(const SurfaceData& surface, const Matrix4& matrix)
{
    SurfaceData moved = surface;
    transformPoles(moved.poles, moved.stride(), matrix);
    for (auto& region : moved.trims) {
        region = region != nullptr ? transformed(*region, matrix) : region;
    }
    return moved;
}

} // namespace host::geometry
