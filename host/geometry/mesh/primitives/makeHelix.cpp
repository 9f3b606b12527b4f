#include "host/geometry/mesh/primitives/roundSolids.h"

#include "host/math/angle.h"

#include <algorithm>
#include <numbers>

namespace host::geometry {
namespace {

/// Bends the axis of a cylinder of height 1 about the origin to a helix.
class Winding {
public:
    explicit Winding(const HelixSettings& helix)
        : m_helix(helix), m_turn(2 * std::numbers::pi * helix.coils * (helix.isClockwise ? -1 : 1))
    {
    }

    /// What is beyond the ends goes straight on.
    Vec3d operator()(const Vec3d& point) const
    {
        const double part = std::clamp(point.y + 0.5, 0.0, 1.0);
        const double beyond = point.y + 0.5 - part;
        const double radius = m_helix.width / 2;
        const SineCosine at = sineCosine(m_turn * part);
        const Vec3d outwards{at.cosine, 0, -at.sine};
        const Vec3d along =
            normalized({-at.sine * radius * m_turn, m_helix.height, -at.cosine * radius * m_turn});
        const Vec3d across = cross(outwards, along);
        const Vec3d middle = outwards * radius + Vec3d{0, (part - 0.5) * m_helix.height, 0};
        return middle + outwards * point.x + across * point.z + along * beyond;
    }

private:
    const HelixSettings& m_helix;
    double m_turn;
};

} // namespace

std::shared_ptr<const MeshData> makeHelix(const HelixSettings& settings,
                                          const SolidPlacement& placement)
{
    CylinderSettings wire;
    wire.radius = settings.radius;
    wire.height = 1;
    wire.axisCells = settings.axisCells;
    wire.heightCells = settings.coilCells;
    wire.capCells = settings.capCells;
    wire.hasRoundCaps = settings.hasRoundCaps;
    wire.hasUvs = settings.hasUvs;
    wire.hasFormerUvs = settings.hasFormerUvs;
    SolidBuilder builder;
    addCylinder(builder, wire);
    const Winding wind(settings);
    for (Vec3d& point : builder.points()) {
        point = wind(point);
    }
    return builder.finish(placement, -placement.heightBaseline * settings.height / 2);
}

} // namespace host::geometry
