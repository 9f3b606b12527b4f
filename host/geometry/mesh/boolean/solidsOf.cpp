#include "host/geometry/mesh/boolean/solidsOf.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <cstddef>
#include <utility>

namespace host::geometry {
namespace {

void turnOutwards(Solid& solid)
{
    if (volumeOf(solid) < 0) {
        for (SolidTriangle& triangle : solid.triangles) {
            std::swap(triangle.corners[1], triangle.corners[2]);
        }
    }
}

} // namespace

std::vector<Solid> solidsOf(const MeshData& mesh, const Triangulation& triangles,
                            std::span<const std::uint32_t> firstFaces, const SolidGrid& grid)
{
    std::vector<Solid> solids(firstFaces.size());
    std::vector<std::uint32_t> numbers(mesh.topology->vertexCount, kNone);
    for (std::size_t part = 0; part < solids.size(); ++part) {
        Solid& solid = solids[part];
        const std::uint32_t endFace =
            part + 1 < solids.size() ? firstFaces[part + 1] : mesh.topology->faceCount();
        const std::uint32_t end = triangles.faceFirstTriangle[endFace];
        for (std::uint32_t source = triangles.faceFirstTriangle[firstFaces[part]]; source < end;
             ++source) {
            SolidTriangle triangle{{}, source};
            for (std::size_t i = 0; i < triangle.corners.size(); ++i) {
                const std::uint32_t corner = triangles.corners[3 * std::size_t{source} + i];
                std::uint32_t& number = numbers[mesh.topology->cornerVertex(corner)];
                if (number == kNone) {
                    number = static_cast<std::uint32_t>(solid.points.size());
                    solid.points.push_back(
                        grid.place((*mesh.points)[mesh.topology->cornerVertex(corner)]));
                }
                triangle.corners[i] = number;
            }
            solid.triangles.push_back(triangle);
        }
        turnOutwards(solid);
    }
    return solids;
}

} // namespace host::geometry
