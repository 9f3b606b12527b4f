#include "host/geometry/mesh/primitives/surfaceMesh.h"

#include <array>
#include <bit>
#include <vector>

namespace host::geometry {
namespace {

/// Numbers points by their places; those that are no numbers are the same where their bits are.
/// The numbers lie in a table, each at the next free slot from where its place belongs.
class PlaceNumbers {
public:
    /// For no more places than that.
    PlaceNumbers(SolidBuilder& builder, std::size_t most)
        : m_builder(builder), m_slots(std::bit_ceil(2 * most + 1), kFree)
    {
        m_places.reserve(most);
    }

    std::uint32_t find(const Vec3f& point)
    {
        const Place place = placeOf(point);
        const std::size_t last = m_slots.size() - 1; // all bits
        std::size_t at = slotOf(place) & last;
        while (m_slots[at] != kFree && m_places[m_slots[at]] != place) {
            at = (at + 1) & last;
        }
        if (m_slots[at] == kFree) {
            m_slots[at] = m_builder.addPoint(toDouble(point));
            m_places.push_back(place);
        }
        return m_slots[at];
    }

private:
    using Place = std::array<std::uint32_t, 3>; ///< bits
    static constexpr std::uint32_t kFree = 0xffffffff;

    static Place placeOf(const Vec3f& point)
    {
        // -0 and 0 are equal
        return {std::bit_cast<std::uint32_t>(point.x + 0.0F),
                std::bit_cast<std::uint32_t>(point.y + 0.0F),
                std::bit_cast<std::uint32_t>(point.z + 0.0F)};
    }
    static std::size_t slotOf(const Place& place)
    {
        std::uint64_t sum = 0;
        for (const std::uint32_t bits : place) {
            sum = (sum ^ bits) * 0x9e3779b97f4a7c15ULL;
            sum ^= sum >> 29;
        }
        return static_cast<std::size_t>(sum ^ sum >> 32);
    }

    SolidBuilder& m_builder;
    std::vector<std::uint32_t> m_slots; ///< twice as many as places, at least
    std::vector<Place> m_places;        ///< by number
};

using Corners = std::array<std::uint32_t, 3>;

bool isFlat(const Corners& points)
{
    return points[0] == points[1] || points[1] == points[2] || points[2] == points[0];
}

/// A quad's corners where the second triangle completes the first to a rectangle of parameters;
/// the position in the first triangle after which the fourth corner stands, or 3 for none.
std::size_t joinPlace(const std::vector<Vec2f>& uvs, const Corners& first, const Corners& second,
                      std::uint32_t& fourth)
{
    for (std::size_t i = 0; i < 3; ++i) {
        const std::uint32_t a = first[i];
        const std::uint32_t b = first[(i + 1) % 3];
        for (std::size_t k = 0; k < 3; ++k) {
            if (second[k] != b || second[(k + 1) % 3] != a) {
                continue;
            }
            fourth = second[(k + 2) % 3];
            const Vec2f& opposite = uvs[first[(i + 2) % 3]];
            const Vec2f& other = uvs[fourth];
            const bool isRectangle = (uvs[a].x == opposite.x && uvs[a].y == other.y &&
                                      uvs[b].x == other.x && uvs[b].y == opposite.y) ||
                                     (uvs[a].x == other.x && uvs[a].y == opposite.y &&
                                      uvs[b].x == opposite.x && uvs[b].y == other.y);
            return isRectangle ? i : 3;
        }
    }
    return 3;
}

class FaceCollector {
public:
    FaceCollector(const RenderMesh& mesh, SolidBuilder& builder) : m_mesh(mesh)
    {
        PlaceNumbers places(builder, mesh.positions.size());
        m_points.reserve(mesh.positions.size());
        for (const Vec3f& position : mesh.positions) {
            m_points.push_back(places.find(position));
        }
        for (const Vec2f& uv : mesh.uvs) {
            builder.addUv(uv.x, uv.y);
        }
    }

    void collect(bool joinsCells)
    {
        const std::size_t count = m_mesh.indices.size() / 3;
        for (std::size_t i = 0; i < count; ++i) {
            const Corners corners = triangle(i);
            if (isFlat(pointsOf(corners))) {
                continue;
            }
            std::uint32_t fourth = 0;
            const bool mayJoin = joinsCells && i + 1 < count && !isFlat(pointsOf(triangle(i + 1)));
            const std::size_t place =
                mayJoin ? joinPlace(m_mesh.uvs, corners, triangle(i + 1), fourth) : 3;
            for (std::size_t k = 0; k < 3; ++k) {
                add(corners[k]);
                if (k == place) {
                    add(fourth);
                }
            }
            m_faces.endFace();
            i += place < 3 ? 1 : 0;
        }
    }
    const PolygonList& faces() const { return m_faces; }
    const std::vector<std::uint32_t>& uvs() const { return m_uvs; }

private:
    Corners triangle(std::size_t i) const
    {
        return {m_mesh.indices[3 * i], m_mesh.indices[3 * i + 1], m_mesh.indices[3 * i + 2]};
    }
    Corners pointsOf(const Corners& corners) const
    {
        return {m_points[corners[0]], m_points[corners[1]], m_points[corners[2]]};
    }
    void add(std::uint32_t corner)
    {
        m_faces.corners.push_back(m_points[corner]);
        m_uvs.push_back(corner);
    }

    const RenderMesh& m_mesh;
    std::vector<std::uint32_t> m_points;
    PolygonList m_faces;
    std::vector<std::uint32_t> m_uvs;
};

/// Control points of one direction, each once.
std::size_t ownCount(std::size_t count, std::int32_t degree, SplineForm form)
{
    if (form == SplineForm::Periodic) {
        return count - static_cast<std::size_t>(degree);
    }
    return form == SplineForm::Closed ? count - 1 : count;
}

} // namespace

std::shared_ptr<const MeshData> meshOfTessellation(const RenderMesh& triangles, bool joinsCells,
                                                   std::string_view uvSetName)
{
    SolidBuilder builder;
    FaceCollector collector(triangles, builder);
    collector.collect(joinsCells);
    if (collector.faces().size() == 0) {
        return nullptr;
    }
    builder.addFaces(collector.faces(), collector.uvs(), true);
    SolidPlacement placement;
    placement.uvSetName = uvSetName;
    return builder.finish(placement, 0);
}

std::shared_ptr<const MeshData> meshOfControlPoints(const SurfaceData& surface,
                                                    std::string_view uvSetName)
{
    const std::size_t rowSize = surface.cvCountV();
    const std::size_t across = ownCount(surface.cvCountU(), surface.degreeU, surface.formU);
    const std::size_t up = ownCount(rowSize, surface.degreeV, surface.formV);
    const bool closesU = surface.formU != SplineForm::Open;
    const bool closesV = surface.formV != SplineForm::Open;
    if (across < 2 || up < 2 ||
        surface.poles.size() < surface.cvCountU() * rowSize * surface.stride()) {
        return nullptr;
    }
    SolidBuilder builder;
    for (std::size_t i = 0; i < across; ++i) {
        for (std::size_t j = 0; j < up; ++j) {
            const double* pole = &surface.poles[(i * rowSize + j) * surface.stride()];
            builder.addPoint({pole[0], pole[1], pole[2]});
        }
    }
    const std::size_t spansU = closesU ? across : across - 1;
    const std::size_t spansV = closesV ? up : up - 1;
    PolygonList faces;
    std::vector<std::uint32_t> uvs;
    for (std::size_t i = 0; i <= spansU; ++i) {
        for (std::size_t j = 0; j <= spansV; ++j) {
            builder.addUv(static_cast<float>(static_cast<double>(i) / static_cast<double>(spansU)),
                          static_cast<float>(static_cast<double>(j) / static_cast<double>(spansV)));
        }
    }
    const auto point = [&](std::size_t i, std::size_t j) {
        return static_cast<std::uint32_t>(i % across * up + j % up);
    };
    const auto uv = [&](std::size_t i, std::size_t j) {
        return static_cast<std::uint32_t>(i * (spansV + 1) + j);
    };
    for (std::size_t i = 0; i < spansU; ++i) {
        for (std::size_t j = 0; j < spansV; ++j) {
            faces.add({point(i, j), point(i + 1, j), point(i + 1, j + 1), point(i, j + 1)});
            uvs.insert(uvs.end(), {uv(i, j), uv(i + 1, j), uv(i + 1, j + 1), uv(i, j + 1)});
        }
    }
    builder.addFaces(faces, uvs, true);
    SolidPlacement placement;
    placement.uvSetName = uvSetName;
    return builder.finish(placement, 0);
}

} // namespace host::geometry
