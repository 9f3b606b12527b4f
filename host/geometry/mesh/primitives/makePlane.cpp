#include "host/geometry/mesh/primitives/boxes.h"

#include <algorithm>

namespace host::geometry {
namespace {

float place(std::uint32_t i, double size, std::uint32_t cells)
{
    const float step = static_cast<float>(size / cells);
    return static_cast<float>(i) * step;
}

void addPoints(SolidBuilder& builder, const PlaneSettings& plane)
{
    const auto left = static_cast<float>(plane.width / 2);
    const auto low = static_cast<float>(plane.height / 2);
    for (std::uint32_t row = 0; row <= plane.heightCells; ++row) {
        for (std::uint32_t i = 0; i <= plane.widthCells; ++i) {
            const float x = place(i, plane.width, plane.widthCells) - left;
            const float y = place(row, plane.height, plane.heightCells) - low;
            builder.addPoint({x, y, 0});
        }
    }
}

void addUvs(SolidBuilder& builder, const PlaneSettings& plane)
{
    const double longer = std::max(plane.width, plane.height);
    const bool isUneven = plane.keepsAspect && longer > 0 && std::isfinite(longer);
    const double u = isUneven ? plane.width / longer : 1;
    const double v = isUneven ? plane.height / longer : 1;
    for (std::uint32_t row = 0; row <= plane.heightCells; ++row) {
        for (std::uint32_t i = 0; i <= plane.widthCells; ++i) {
            builder.addUv(place(i, u, plane.widthCells), place(row, v, plane.heightCells));
        }
    }
}

} // namespace

std::shared_ptr<const MeshData> makePlane(const PlaneSettings& settings,
                                          const SolidPlacement& placement)
{
    const std::uint32_t across = settings.widthCells;
    const std::uint32_t up = settings.heightCells;
    const std::uint32_t row = across + 1;
    SolidBuilder builder;
    addPoints(builder, settings);
    if (settings.hasUvs) {
        addUvs(builder, settings);
    }
    for (std::uint32_t j = 0; j <= up; ++j) {
        for (std::uint32_t i = 0; i <= across; ++i) {
            const std::uint32_t point = j * row + i;
            if (i < across) {
                builder.addEdge(point, point + 1, j > 0 && j < up);
            }
            if (j < up) {
                builder.addEdge(point, point + row, i > 0 && i < across);
            }
        }
    }
    // A row below the last has an edge along the row and one up for each point but its last, which
    // has only the one up.
    const std::uint32_t rowEdges = 2 * across + 1;
    const auto along = [=](std::uint32_t i, std::uint32_t j) {
        return j * rowEdges + (j < up ? 2 * i : i);
    };
    const auto upwards = [=](std::uint32_t i, std::uint32_t j) {
        return j * rowEdges + (i < across ? 2 * i + 1 : 2 * i);
    };
    for (std::uint32_t j = 0; j < up; ++j) {
        for (std::uint32_t i = 0; i < across; ++i) {
            const std::uint32_t point = j * row + i;
            builder.addForward(along(i, j), point);
            builder.addForward(upwards(i + 1, j), point + 1);
            builder.addBackward(along(i, j + 1), point + row + 1);
            builder.addBackward(upwards(i, j), point + row);
            builder.endFace();
        }
    }
    return builder.finish(placement, 0, SolidUp::Z);
}

} // namespace host::geometry
