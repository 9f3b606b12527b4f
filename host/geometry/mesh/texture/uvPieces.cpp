#include "host/geometry/mesh/texture/uvPieces.h"

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/edit/MeshLinks.h"

namespace host::geometry {
namespace {

/// The first corner of a face that has a coordinate, else its end.
std::uint32_t firstMapped(const MeshTopology& topology, std::span<const std::int32_t> corners,
                          std::uint32_t face)
{
    const std::uint32_t end = topology.endCorner(face);
    std::uint32_t corner = topology.firstCorner(face);
    while (corner < end && corners[corner] < 0) {
        ++corner;
    }
    return corner;
}

/// All coordinates of a face come together.
void joinFace(const MeshTopology& topology, std::span<const std::int32_t> corners,
              std::uint32_t face, DisjointSets& sets)
{
    const std::uint32_t end = topology.endCorner(face);
    const std::uint32_t first = firstMapped(topology, corners, face);
    for (std::uint32_t corner = first; corner < end; ++corner) {
        if (corners[corner] >= 0) {
            sets.join(static_cast<std::uint32_t>(corners[first]),
                      static_cast<std::uint32_t>(corners[corner]));
        }
    }
}

} // namespace

UvPieces uvPieces(const MeshTopology& topology, std::span<const std::int32_t> corners,
                  std::size_t idCount)
{
    const std::uint32_t faceCount = topology.faceCount();
    DisjointSets sets(idCount);
    for (std::uint32_t face = 0; face < faceCount; ++face) {
        joinFace(topology, corners, face, sets);
    }
    UvPieces pieces;
    pieces.ofId.assign(idCount, kNone);
    pieces.ofFace.assign(faceCount, kNone);
    for (std::uint32_t face = 0; face < faceCount; ++face) {
        const std::uint32_t corner = firstMapped(topology, corners, face);
        if (corner < topology.endCorner(face)) {
            std::uint32_t& piece =
                pieces.ofId[sets.lowest(static_cast<std::uint32_t>(corners[corner]))];
            piece = piece == kNone ? pieces.count++ : piece;
            pieces.ofFace[face] = piece;
        }
    }
    for (std::uint32_t id = 0; id < idCount; ++id) {
        pieces.ofId[id] = pieces.ofId[sets.lowest(id)];
    }
    return pieces;
}

std::vector<double> pieceAreas(const MeshTopology& topology, std::span<const std::int32_t> corners,
                               std::span<const Vec2f> points, const UvPieces& pieces)
{
    std::vector<double> areas(pieces.count);
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        if (pieces.ofFace[face] == kNone) {
            continue;
        }
        const std::uint32_t first = topology.firstCorner(face);
        const std::uint32_t end = topology.loopStart[topology.firstLoop(face) + 1]; // no holes
        for (std::uint32_t corner = first; corner < end; ++corner) {
            const std::int32_t id = corners[corner];
            const std::int32_t next = corners[corner + 1 < end ? corner + 1 : first];
            if (id >= 0 && next >= 0) {
                const Vec2f& a = points[static_cast<std::size_t>(id)];
                const Vec2f& b = points[static_cast<std::size_t>(next)];
                areas[pieces.ofFace[face]] += double{a.x} * b.y - double{b.x} * a.y;
            }
        }
    }
    return areas;
}

} // namespace host::geometry
