#include "host/geometry/mesh/primitives/closedRings.h"
#include "host/geometry/mesh/primitives/lathe.h"
#include "host/geometry/mesh/primitives/roundSolids.h"

#include "host/math/angle.h"

#include <numbers>

namespace host::geometry {

std::shared_ptr<const MeshData> makeTorus(const TorusSettings& settings,
                                          const SolidPlacement& placement)
{
    SolidBuilder builder;
    const std::vector<Vec2f> circle = unitRing(settings.axisCells);
    for (std::uint32_t i = 0; i < settings.tubeCells; ++i) {
        const SineCosine turn =
            sineCosine(2 * std::numbers::pi * i / settings.tubeCells + settings.twist);
        const double radius = settings.radius - settings.sectionRadius * turn.cosine;
        const double y = settings.sectionRadius * turn.sine;
        for (const Vec2f& unit : circle) {
            builder.addPoint({unit.x * radius, y, unit.y * radius});
        }
    }
    const std::vector<std::uint8_t> isSmooth(settings.tubeCells, 1);
    addClosedRings(builder, settings.axisCells, isSmooth, settings.hasUvs);
    return builder.finish(placement, -placement.heightBaseline * settings.sectionRadius);
}

} // namespace host::geometry
