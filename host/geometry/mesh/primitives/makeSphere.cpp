#include "host/geometry/mesh/primitives/lathe.h"
#include "host/geometry/mesh/primitives/roundSolids.h"

#include "host/math/angle.h"

#include <numbers>

namespace host::geometry {
namespace {

LatheUvRow ringRow(std::uint32_t sides, float v)
{
    LatheUvRow row;
    for (std::uint32_t k = 0; k <= sides; ++k) {
        row.points.push_back({static_cast<float>(static_cast<double>(k) / sides), v});
    }
    return row;
}

LatheUvRow poleRow(const SphereSettings& sphere, float v)
{
    LatheUvRow row;
    if (sphere.uvs == SphereUvs::Pinched) {
        row.points.push_back({0.5F, v});
        return row;
    }
    for (std::uint32_t k = 0; k < sphere.axisCells; ++k) {
        row.points.push_back({static_cast<float>((k + 0.5) / sphere.axisCells), v});
    }
    return row;
}

} // namespace

std::shared_ptr<const MeshData> makeSphere(const SphereSettings& settings,
                                           const SolidPlacement& placement)
{
    Lathe lathe;
    lathe.sides = settings.axisCells;
    const std::uint32_t cells = settings.heightCells;
    for (std::uint32_t i = 1; i < cells; ++i) {
        const SineCosine turn = sineCosine(std::numbers::pi * i / cells);
        const std::uint32_t row = i - 1;
        lathe.rings.push_back(
            {settings.radius * turn.sine, -settings.radius * turn.cosine, true, true, row, row});
        if (settings.uvs != SphereUvs::None) {
            lathe.uvRows.push_back(
                ringRow(lathe.sides, static_cast<float>(static_cast<double>(i) / cells)));
        }
    }
    lathe.bottomY = -settings.radius;
    lathe.topY = settings.radius;
    if (settings.uvs != SphereUvs::None) {
        lathe.bottomUv = cells - 1;
        lathe.topUv = cells;
        lathe.uvRows.push_back(poleRow(settings, 0));
        lathe.uvRows.push_back(poleRow(settings, 1));
    }
    SolidBuilder builder;
    addLathe(builder, lathe);
    return builder.finish(placement, -placement.heightBaseline * settings.radius);
}

} // namespace host::geometry
