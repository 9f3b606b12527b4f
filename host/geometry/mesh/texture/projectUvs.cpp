#include "host/geometry/mesh/texture/projectUvs.h"

#include "host/geometry/mesh/texture/UvEditor.h"
#include "host/math/angle.h"
#include "host/math/rotation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host::geometry {
namespace {

constexpr double kTurn = 2 * std::numbers::pi;

struct ImagePlace {
    double u = 0;
    double v = 0;
};

/// Counter-clockwise seen against the y axis, from +z on; -pi..pi.
double longitude(const Vec3d& place)
{
    const double angle = angleOf(std::fabs(place.x), place.z);
    return place.x < 0 ? -angle : angle;
}

/// -pi/2..pi/2.
double latitude(const Vec3d& place)
{
    const double across = std::sqrt(place.x * place.x + place.z * place.z);
    const double angle = angleOf(std::fabs(place.y), across);
    return place.y < 0 ? -angle : angle;
}

class Projector {
public:
    explicit Projector(const UvProjection& projection)
        : m_projection(projection)
        , m_toProjector(projection.toSpace * translation(projection.center * -1.0) *
                        inverse(eulerRotation(projection.rotate, RotationOrder::Xyz)))
        , m_turn(sineCosine(projection.imageAngle))
    {
    }

    bool isRound() const { return m_projection.kind != UvProjectionKind::Planar; }
    /// Angles and lengths before they are laid on the image.
    ImagePlace place(const Vec3f& point) const
    {
        const Vec3d local = transformPoint(toDouble(point), m_toProjector);
        switch (m_projection.kind) {
        case UvProjectionKind::Cylindrical:
            return {longitude(local), local.y};
        case UvProjectionKind::Spherical:
            return {longitude(local), latitude(local)};
        default:
            return {local.x, local.y};
        }
    }
    Vec2f onImage(const ImagePlace& place) const
    {
        const double u = place.u / sizeOf(m_projection.width) * m_projection.imageScaleU;
        const double v = place.v / sizeOf(m_projection.height) * m_projection.imageScaleV;
        return {finite(u * m_turn.cosine - v * m_turn.sine + m_projection.imageCenter.x),
                finite(u * m_turn.sine + v * m_turn.cosine + m_projection.imageCenter.y)};
    }

private:
    static double sizeOf(double size) { return size == 0 ? 1 : size; }
    static float finite(double number)
    {
        const auto narrow = static_cast<float>(number);
        return std::isfinite(narrow) ? narrow : 0;
    }

    UvProjection m_projection;
    Matrix4 m_toProjector;
    SineCosine m_turn;
};

/// Gives the corners of faces their ids.
class Assignment {
public:
    Assignment(UvEditor& editor, const std::vector<Vec3f>& points, const Projector& projector)
        : m_editor(editor), m_points(points), m_projector(projector), m_ids(2 * points.size(), -1)
    {
    }

    /// Takes the ids away from the faces; those that no other face has come back into use.
    void release(std::span<const std::uint32_t> faces)
    {
        m_editor.clear(faces);
        std::vector<bool> isTaken(m_editor.points().size());
        for (const std::int32_t id : m_editor.corners()) {
            if (id >= 0) {
                isTaken[static_cast<std::size_t>(id)] = true;
            }
        }
        for (std::size_t id = 0; id < isTaken.size(); ++id) {
            if (!isTaken[id]) {
                m_free.push_back(static_cast<std::int32_t>(id));
            }
        }
    }

    void project(std::uint32_t face)
    {
        const MeshTopology& topology = m_editor.topology();
        const std::uint32_t first = topology.firstCorner(face);
        const std::uint32_t end = topology.endCorner(face);
        m_places.clear();
        double low = kTurn;
        double high = -kTurn;
        for (std::uint32_t corner = first; corner < end; ++corner) {
            const std::uint32_t vertex = topology.cornerVertex(corner);
            m_places.push_back(m_projector.place(m_points[vertex]));
            low = std::fmin(low, m_places.back().u);
            high = std::fmax(high, m_places.back().u);
        }
        const bool reachesOverBack = m_projector.isRound() && high - low > kTurn / 2;
        for (std::uint32_t corner = first; corner < end; ++corner) {
            ImagePlace place = m_places[corner - first];
            const bool isBeyond = reachesOverBack && place.u < 0;
            place.u += isBeyond ? kTurn : 0;
            m_editor.corners()[corner] = idOf(topology.cornerVertex(corner), isBeyond, place);
        }
    }

private:
    std::int32_t idOf(std::uint32_t vertex, bool isBeyond, const ImagePlace& place)
    {
        std::int32_t& id = m_ids[2 * std::size_t{vertex} + (isBeyond ? 1 : 0)];
        if (id < 0) {
            const Vec2f point = m_projector.onImage(place);
            if (m_nextFree < m_free.size()) {
                id = m_free[m_nextFree++];
                m_editor.points()[static_cast<std::size_t>(id)] = point;
            } else {
                id = m_editor.add(point);
            }
        }
        return id;
    }

    UvEditor& m_editor;
    const std::vector<Vec3f>& m_points;
    const Projector& m_projector;
    std::vector<std::int32_t> m_ids; ///< two for each vertex: as it is, and beyond the back
    std::vector<std::int32_t> m_free;
    std::size_t m_nextFree = 0;
    std::vector<ImagePlace> m_places;
};

} // namespace

std::shared_ptr<const MeshData> projectUvs(const MeshData& mesh, std::string_view setName,
                                           std::span<const std::uint32_t> faces,
                                           const UvProjection& projection)
{
    const std::size_t set = findUvSet(mesh, setName).value_or(mesh.uvSets.size());
    UvEditor editor(mesh, set, setName.empty() ? kUsualUvSetName : setName);
    const Projector projector(projection);
    Assignment assignment(editor, *mesh.points, projector);
    assignment.release(faces);
    for (const std::uint32_t face : faces) {
        assignment.project(face);
    }
    editor.removeUnused();
    return editor.finish();
}

} // namespace host::geometry
