#include "host/nodes/deform/geometryPoints.h"

#include "host/geometry/deform/LatticeData.h"
#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/nurbs/SurfaceEvaluator.h"
#include "host/geometry/nurbs/repeatOverlap.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::CurveData;
using geometry::LatticeData;
using geometry::MeshData;
using geometry::SurfaceData;

std::vector<Vec3d> polePoints(const std::vector<double>& poles, std::size_t stride)
{
    std::vector<Vec3d> points;
    points.reserve(poles.size() / stride);
    for (std::size_t at = 0; at + stride <= poles.size(); at += stride) {
        points.push_back({poles[at], poles[at + 1], poles[at + 2]});
    }
    return points;
}

void setPoles(std::vector<double>& poles, std::size_t stride, const std::vector<Vec3d>& points)
{
    const std::size_t count = std::min(points.size(), poles.size() / stride);
    for (std::size_t i = 0; i < count; ++i) {
        poles[i * stride] = points[i].x;
        poles[i * stride + 1] = points[i].y;
        poles[i * stride + 2] = points[i].z;
    }
}

Value withVertices(const MeshData& mesh, const std::vector<Vec3d>& points)
{
    auto vertices = std::make_shared<std::vector<Vec3f>>(points.size());
    std::transform(points.begin(), points.end(), vertices->begin(), toFloat);
    auto moved = std::make_shared<MeshData>(mesh);
    moved->points = std::move(vertices);
    return Value(Shared<MeshData>(std::move(moved)));
}

bool isInSpace(const CurveData& curve)
{
    return curve.dimension == 3;
}

} // namespace

std::vector<Vec3d> pointsOf(const Value& geometry)
{
    if (const auto mesh = geometry.data<MeshData>()) {
        std::vector<Vec3d> points(mesh->points != nullptr ? mesh->points->size() : 0);
        if (mesh->points != nullptr) {
            std::transform(mesh->points->begin(), mesh->points->end(), points.begin(), toDouble);
        }
        return points;
    }
    if (const auto curve = geometry.data<CurveData>()) {
        return isInSpace(*curve) ? polePoints(curve->poles, curve->stride()) : std::vector<Vec3d>();
    }
    if (const auto surface = geometry.data<SurfaceData>()) {
        return polePoints(surface->poles, surface->stride());
    }
    const auto lattice = geometry.data<LatticeData>();
    return lattice != nullptr ? lattice->points : std::vector<Vec3d>();
}

Value withPoints(const Value& geometry, const std::vector<Vec3d>& points)
{
    if (const auto mesh = geometry.data<MeshData>()) {
        return withVertices(*mesh, points);
    }
    if (const auto curve = geometry.data<CurveData>()) {
        CurveData moved = *curve;
        setPoles(moved.poles, moved.stride(), points);
        geometry::repeatOverlap(moved);
        return Value::of(std::move(moved));
    }
    if (const auto surface = geometry.data<SurfaceData>()) {
        SurfaceData moved = *surface;
        setPoles(moved.poles, moved.stride(), points);
        if (geometry::isValidSurface(moved)) {
            geometry::repeatOverlap(moved);
        }
        return Value::of(std::move(moved));
    }
    if (const auto lattice = geometry.data<LatticeData>()) {
        LatticeData moved = *lattice;
        moved.points = points;
        return Value::of(std::move(moved));
    }
    return geometry;
}

std::vector<std::uint32_t> pointBrackets(const Value& geometry)
{
    if (const auto surface = geometry.data<SurfaceData>()) {
        if (!geometry::isValidSurface(*surface)) {
            return {};
        }
        return {static_cast<std::uint32_t>(surface->cvCountU()),
                static_cast<std::uint32_t>(surface->cvCountV())};
    }
    if (const auto lattice = geometry.data<LatticeData>()) {
        return {static_cast<std::uint32_t>(std::max(0, lattice->s)),
                static_cast<std::uint32_t>(std::max(0, lattice->t)),
                static_cast<std::uint32_t>(std::max(0, lattice->u))};
    }
    if (const auto mesh = geometry.data<MeshData>()) {
        return {mesh->topology->vertexCount};
    }
    const auto curve = geometry.data<CurveData>();
    return curve != nullptr && isInSpace(*curve)
               ? std::vector{static_cast<std::uint32_t>(curve->cvCount())}
               : std::vector<std::uint32_t>();
}

std::shared_ptr<const std::vector<std::uint32_t>> pointGroup(const Value& geometry, std::int32_t id)
{
    const auto mesh = geometry.data<MeshData>();
    if (mesh == nullptr) {
        return nullptr;
    }
    const auto found =
        std::find_if(mesh->pointGroups.begin(), mesh->pointGroups.end(),
                     [id](const geometry::PointGroup& group) { return group.id == id; });
    return found != mesh->pointGroups.end() ? found->points : nullptr;
}

Matrix4 worldOf(ComputeContext& context, const Value& geometry)
{
    const auto mesh = geometry.data<MeshData>();
    return mesh != nullptr ? context.worldMatrixOf(mesh->shape) : Matrix4{};
}

} // namespace host::nodes
