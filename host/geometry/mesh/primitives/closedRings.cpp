#include "host/geometry/mesh/primitives/closedRings.h"

namespace host::geometry {
namespace {

void addUvs(SolidBuilder& builder, std::uint32_t sides, std::uint32_t rings)
{
    for (std::uint32_t ring = 0; ring <= rings; ++ring) {
        const auto v = static_cast<float>(1 - static_cast<double>(ring) / rings);
        for (std::uint32_t k = 0; k <= sides; ++k) {
            builder.addUv(static_cast<float>(static_cast<double>(k) / sides), v);
        }
    }
}

} // namespace

void addClosedRings(SolidBuilder& builder, std::uint32_t sides,
                    std::span<const std::uint8_t> isRingSmooth, bool hasUvs)
{
    const auto rings = static_cast<std::uint32_t>(isRingSmooth.size());
    const auto next = [](std::uint32_t i, std::uint32_t count) {
        return i + 1 == count ? 0 : i + 1;
    };
    if (hasUvs) {
        addUvs(builder, sides, rings);
    }
    for (std::uint32_t ring = 0; ring < rings; ++ring) {
        for (std::uint32_t k = 0; k < sides; ++k) {
            builder.addEdge(ring * sides + k, ring * sides + next(k, sides),
                            isRingSmooth[ring] != 0);
        }
    }
    for (std::uint32_t ring = 0; ring < rings; ++ring) {
        for (std::uint32_t k = 0; k < sides; ++k) {
            builder.addEdge(ring * sides + k, next(ring, rings) * sides + k, true);
        }
    }
    for (std::uint32_t ring = 0; ring < rings; ++ring) {
        for (std::uint32_t k = 0; k < sides; ++k) {
            const std::uint32_t across = (rings + ring) * sides;
            const std::uint32_t uv = hasUvs ? ring * (sides + 1) + k : 0;
            const std::uint32_t uvNext = hasUvs ? uv + sides + 1 : 0;
            builder.addBackward(ring * sides + k, hasUvs ? uv + 1 : 0);
            builder.addForward(across + k, uv);
            builder.addForward(next(ring, rings) * sides + k, uvNext);
            builder.addBackward(across + next(k, sides), hasUvs ? uvNext + 1 : 0);
            builder.endFace();
        }
    }
}

} // namespace host::geometry
