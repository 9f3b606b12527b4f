// Which faces named edges or vertices belong to, without links of the whole mesh.
#pragma once

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace host::geometry {

/// The faces at each of some numbered parts, in one light pass over the corners.
class FaceUses {
public:
    /// `numbers` (ascending) are of the parts that `partOf(corner)` gives.
    template<class PartOf>
    FaceUses(const MeshTopology& topology, std::span<const std::uint32_t> numbers,
             const PartOf& partOf)
    {
        if (numbers.empty()) {
            return;
        }
        const std::uint32_t first = numbers.front();
        std::vector<std::uint32_t> places(std::size_t{numbers.back()} - first + 1, kNone);
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            places[numbers[i] - first] = static_cast<std::uint32_t>(i);
        }
        // below the first number the difference is larger than any place
        const auto range = static_cast<std::uint32_t>(places.size());
        const auto count = static_cast<std::uint32_t>(topology.corners.size());
        std::vector<std::uint32_t> owners;
        std::uint32_t face = 0;
        for (std::uint32_t block = 0; block < count; block += kBlock) {
            const std::uint32_t end = block + std::min(kBlock, count - block);
            std::uint32_t hits = 0;
            for (std::uint32_t corner = block; corner < end; ++corner) {
                hits += partOf(corner) - first < range ? 1U : 0U;
            }
            for (std::uint32_t corner = block; hits > 0 && corner < end; ++corner) {
                const std::uint32_t part = partOf(corner) - first;
                if (part < range && places[part] != kNone) {
                    face = faceFrom(topology, face, corner);
                    owners.push_back(places[part]);
                    m_faces.push_back(face);
                }
            }
        }
        m_uses = NumberLists(owners, static_cast<std::uint32_t>(numbers.size()));
    }

    /// How many corners the part at a place of the list has.
    std::size_t count(std::uint32_t place) const { return m_uses.of(place).size(); }
    /// The face of one of them; they are in the order of the corners.
    std::uint32_t face(std::uint32_t place, std::size_t use) const
    {
        return m_faces[m_uses.of(place)[use]];
    }

private:
    /// Corners that are looked at together: most blocks have none of the parts.
    static constexpr std::uint32_t kBlock = 256;

    /// The face of a corner, from one on that is not behind it: often the next ones, else far off.
    static std::uint32_t faceFrom(const MeshTopology& topology, std::uint32_t face,
                                  std::uint32_t corner)
    {
        constexpr int kSteps = 8;
        for (int step = 0; step < kSteps; ++step, ++face) {
            if (corner < topology.endCorner(face)) {
                return face;
            }
        }
        std::uint32_t last = topology.faceCount() - 1; // it ends behind every corner
        while (face < last) {
            const std::uint32_t middle = face + (last - face) / 2;
            if (corner < topology.endCorner(middle)) {
                last = middle;
            } else {
                face = middle + 1;
            }
        }
        return face;
    }

    std::vector<std::uint32_t> m_faces; ///< by use
    NumberLists m_uses;
};

/// The faces that given edges bound; a face that goes along an edge twice is there twice.
inline FaceUses facesOfEdges(const MeshTopology& topology, std::span<const std::uint32_t> edges)
{
    const std::int32_t* corners = topology.corners.data();
    return {topology, edges, [corners](std::uint32_t corner) { return edgeOf(corners[corner]); }};
}

/// The faces that have a corner at given vertices.
inline FaceUses facesOfVertices(const MeshTopology& topology,
                                std::span<const std::uint32_t> vertices)
{
    return {topology, vertices,
            [&topology](std::uint32_t corner) { return topology.cornerVertex(corner); }};
}

} // namespace host::geometry
