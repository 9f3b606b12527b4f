#include "host/geometry/mesh/edit/clusterVertices.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <unordered_map>

namespace host::geometry {
namespace {

/// The vertices that are not taken yet, in cubes of four times the distance.
class VertexGrid {
public:
    VertexGrid(std::span<const std::uint32_t> vertices, std::span<const Vec3d> places,
               double distance);

    /// Takes a vertex and calls `take` with every other that is near it, in an order that only the
    /// input decides.
    template<class Take>
    void takeNear(std::uint32_t vertex, const Take& take);
    bool isThere(std::uint32_t vertex) const { return m_isThere[vertex]; }

private:
    /// Longer than any way between floats, and its square is a number.
    static constexpr double kLongest = 1e150;

    struct Steps {
        double x = 0, y = 0, z = 0;
    };

    double step(double coordinate) const;
    Steps steps(const Vec3d& place) const { return {step(place.x), step(place.y), step(place.z)}; }
    template<class Take>
    void takeFrom(const Steps& cube, const Vec3d& place, const Take& take);

    std::span<const Vec3d> m_places;
    double m_distance;
    std::vector<bool> m_isThere;                              ///< by vertex
    std::unordered_map<std::uint64_t, std::uint32_t> m_first; ///< of each cube
    std::vector<std::uint32_t> m_next;                        ///< in the cube, by vertex
};

bool isPlace(const Vec3d& place)
{
    return std::isfinite(place.x) && std::isfinite(place.y) && std::isfinite(place.z);
}

/// One number for a cube. That different cubes may get the same one is only slow, never wrong.
std::uint64_t mixed(double x, double y, double z)
{
    constexpr std::uint64_t kFactor = 0x9e3779b97f4a7c15;
    std::uint64_t mix = 0;
    for (const double number : {x, y, z}) {
        mix = (mix ^ std::bit_cast<std::uint64_t>(number + 0.0)) * kFactor; // no negative zero
        mix ^= mix >> 29;
    }
    return mix;
}

/// Which cube along an axis. Where cubes are smaller than what doubles can tell apart, each
/// coordinate is a cube of its own.
double VertexGrid::step(double coordinate) const
{
    constexpr double kCubeSize = 4;
    constexpr double kMostSteps = 4503599627370496.0;
    const double size = kCubeSize * m_distance;
    const double step = std::floor(coordinate / size);
    return std::fabs(step) < kMostSteps ? step : coordinate;
}

VertexGrid::VertexGrid(std::span<const std::uint32_t> vertices, std::span<const Vec3d> places,
                       double distance)
    : m_places(places)
    , m_distance(std::min(distance, kLongest))
    , m_isThere(places.size())
    , m_next(places.size(), kNone)
{
    m_first.reserve(vertices.size());
    for (const std::uint32_t vertex : vertices) {
        if (vertex < places.size() && isPlace(places[vertex])) {
            m_isThere[vertex] = true;
            const Steps cube = steps(places[vertex]);
            const auto [entry, isNew] = m_first.try_emplace(mixed(cube.x, cube.y, cube.z), kNone);
            m_next[vertex] = entry->second;
            entry->second = vertex;
        }
    }
}

template<class Take>
void VertexGrid::takeFrom(const Steps& cube, const Vec3d& place, const Take& take)
{
    const auto found = m_first.find(mixed(cube.x, cube.y, cube.z));
    if (found == m_first.end()) {
        return;
    }
    std::uint32_t* link = &found->second;
    while (*link != kNone) {
        const std::uint32_t vertex = *link;
        const Vec3d way = m_places[vertex] - place;
        const bool isNear = dot(way, way) <= m_distance * m_distance;
        if (isNear && m_isThere[vertex]) {
            m_isThere[vertex] = false;
            take(vertex);
        }
        if (m_isThere[vertex]) {
            link = &m_next[vertex];
        } else {
            *link = m_next[vertex];
        }
    }
}

template<class Take>
void VertexGrid::takeNear(std::uint32_t vertex, const Take& take)
{
    m_isThere[vertex] = false;
    const Vec3d& place = m_places[vertex];
    const Vec3d reach{m_distance, m_distance, m_distance};
    const Steps low = steps(place - reach);
    const Steps high = steps(place + reach);
    // The reach is a quarter of a cube: along each axis one cube or two.
    for (const double x : {low.x, high.x}) {
        for (const double y : {low.y, high.y}) {
            for (const double z : {low.z, high.z}) {
                takeFrom({x, y, z}, place, take);
                if (low.z == high.z) {
                    break;
                }
            }
            if (low.y == high.y) {
                break;
            }
        }
        if (low.x == high.x) {
            break;
        }
    }
}

/// Sums of points by the vertex that they go to.
class Means {
public:
    explicit Means(const MeshData& mesh)
        : m_points(*mesh.points), m_sums(mesh.points->size()), m_counts(mesh.points->size())
    {
    }
    void add(std::uint32_t target, std::uint32_t vertex)
    {
        m_sums[target] = m_sums[target] + toDouble(m_points[vertex]);
        ++m_counts[target];
    }
    void put(VertexJoin& join) const
    {
        for (std::size_t vertex = 0; vertex < m_sums.size(); ++vertex) {
            if (m_counts[vertex] > 1) {
                join.points[vertex] = toFloat(m_sums[vertex] * (1.0 / m_counts[vertex]));
            }
        }
    }

private:
    const std::vector<Vec3f>& m_points;
    std::vector<Vec3d> m_sums;
    std::vector<std::uint32_t> m_counts;
};

} // namespace

std::vector<Vec3d> placesIn(const MeshData& mesh, const Matrix4& matrix)
{
    std::vector<Vec3d> places;
    places.reserve(mesh.points->size());
    for (const Vec3f& point : *mesh.points) {
        places.push_back(transformPoint(toDouble(point), matrix));
    }
    return places;
}

Vec3d meanPoint(const MeshData& mesh, std::span<const std::uint32_t> vertices)
{
    Vec3d sum;
    for (const std::uint32_t vertex : vertices) {
        sum = sum + toDouble((*mesh.points)[vertex]);
    }
    return vertices.empty() ? sum : sum * (1.0 / static_cast<double>(vertices.size()));
}

VertexJoin joinAll(const MeshData& mesh, std::span<const std::uint32_t> vertices,
                   const Vec3d& point)
{
    VertexJoin join = unjoined(mesh);
    for (const std::uint32_t vertex : vertices) {
        join.target[vertex] = vertices.front();
        join.points[vertices.front()] = toFloat(point);
    }
    return join;
}

VertexJoin joinWithin(const MeshData& mesh, std::span<const std::uint32_t> vertices,
                      std::span<const Vec3d> places, double distance)
{
    VertexJoin join = unjoined(mesh);
    if (!(distance >= 0)) {
        return join;
    }
    VertexGrid grid(vertices, places, distance);
    Means means(mesh);
    for (const std::uint32_t vertex : vertices) {
        if (vertex >= places.size() || !grid.isThere(vertex)) {
            continue;
        }
        means.add(vertex, vertex);
        grid.takeNear(vertex, [&](std::uint32_t other) {
            join.target[other] = vertex;
            means.add(vertex, other);
        });
    }
    means.put(join);
    return join;
}

VertexJoin joinSets(const MeshData& mesh, DisjointSets& sets)
{
    VertexJoin join = unjoined(mesh);
    Means means(mesh);
    for (std::uint32_t vertex = 0; vertex < join.target.size(); ++vertex) {
        join.target[vertex] = sets.lowest(vertex);
        means.add(join.target[vertex], vertex);
    }
    means.put(join);
    return join;
}

} // namespace host::geometry
