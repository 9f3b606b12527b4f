#include "host/geometry/mesh/primitives/makeFace.h"

#include <algorithm>
#include <array>
#include <limits>

namespace host::geometry {
namespace {

/// The ends of the loops; empty where they do not fit.
std::vector<std::uint32_t> loopEnds(std::size_t pointCount,
                                    std::span<const std::uint32_t> loopSizes)
{
    std::vector<std::uint32_t> ends;
    std::size_t end = 0;
    for (const std::uint32_t size : loopSizes) {
        end += size;
        if (size < 3 || end > pointCount) {
            return {};
        }
        ends.push_back(static_cast<std::uint32_t>(end));
    }
    if (ends.empty() && pointCount >= 3) {
        ends.push_back(0);
    }
    if (!ends.empty()) {
        ends.back() = static_cast<std::uint32_t>(pointCount);
    }
    return ends;
}

std::array<double, 3> coordinatesOf(const Vec3f& point)
{
    return {point.x, point.y, point.z};
}

/// The axes across and up of the view along which the loop has the largest area.
std::array<std::size_t, 2> viewOf(std::span<const Vec3f> loop)
{
    Vec3d normal;
    for (std::size_t i = 0; i < loop.size(); ++i) {
        normal = normal + cross(toDouble(loop[i]), toDouble(loop[(i + 1) % loop.size()]));
    }
    const double x = std::fabs(normal.x);
    const double y = std::fabs(normal.y);
    const double z = std::fabs(normal.z);
    if (y > x && y >= z) {
        return {0, 2};
    }
    return x > z ? std::array<std::size_t, 2>{2, 1} : std::array<std::size_t, 2>{0, 1};
}

/// Where a coordinate lies between the least and the largest.
class Range {
public:
    void include(double number)
    {
        m_low = std::min(m_low, number);
        m_high = std::max(m_high, number);
    }
    float place(double number) const
    {
        const double size = m_high - m_low;
        return size > 0 ? static_cast<float>((number - m_low) / size) : 0.0F;
    }

private:
    double m_low = std::numeric_limits<double>::infinity();
    double m_high = -std::numeric_limits<double>::infinity();
};

void addUvs(SolidBuilder& builder, std::span<const Vec3f> points, std::uint32_t outerSize)
{
    const auto [across, up] = viewOf(points.first(outerSize));
    Range u;
    Range v;
    for (const Vec3f& point : points) {
        u.include(coordinatesOf(point)[across]);
        v.include(coordinatesOf(point)[up]);
    }
    for (const Vec3f& point : points) {
        builder.addUv(u.place(coordinatesOf(point)[across]), v.place(coordinatesOf(point)[up]));
    }
}

} // namespace

std::shared_ptr<const MeshData> makeFace(std::span<const Vec3f> points,
                                         std::span<const std::uint32_t> loopSizes, bool hasUvs,
                                         std::string_view uvSetName)
{
    const std::vector<std::uint32_t> ends = loopEnds(points.size(), loopSizes);
    if (ends.empty()) {
        return nullptr;
    }
    SolidBuilder builder;
    if (hasUvs) {
        addUvs(builder, points, ends[0]);
    }
    for (const Vec3f& point : points) {
        builder.addPoint(toDouble(point));
    }
    std::uint32_t first = 0;
    for (const std::uint32_t end : ends) {
        for (std::uint32_t i = first; i < end; ++i) {
            const std::uint32_t edge = builder.addEdge(i, i + 1 == end ? first : i + 1, false);
            builder.addForward(edge, hasUvs ? i : 0);
        }
        builder.endFace();
        first = end;
    }
    builder.joinLoops();
    SolidPlacement placement;
    placement.uvSetName = uvSetName;
    return builder.finish(placement, 0);
}

} // namespace host::geometry
