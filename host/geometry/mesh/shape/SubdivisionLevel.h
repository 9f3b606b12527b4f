// A mesh between two steps of subdivision.
#pragma once

#include "host/geometry/mesh/MeshData.h"

#include <cstdint>
#include <vector>

namespace host::geometry {

/// Sharpness of edges and vertices that never wears off.
inline constexpr float kInfinitelySharp = 10;

/// Faces of one loop each, in the form of `MeshTopology`; what keeps shapes sharp.
struct SubdivisionLevel {
    std::uint32_t vertexCount = 0;
    std::vector<MeshEdge> edges;
    std::vector<std::int32_t> corners;    ///< edge references, face after face
    std::vector<std::uint32_t> faceStart; ///< first corner of each face, and the number of corners
    std::vector<std::uint8_t> isPinned;   ///< per edge: it and its vertices stay where they are
    std::vector<float> edgeSharpness;     ///< per edge; empty: none
    std::vector<float> vertexSharpness;   ///< per vertex; empty: none

    std::uint32_t faceCount() const { return static_cast<std::uint32_t>(faceStart.size() - 1); }
    std::uint32_t cornerCount() const { return static_cast<std::uint32_t>(corners.size()); }
    std::uint32_t cornerVertex(std::uint32_t corner) const
    {
        const std::int32_t reference = corners[corner];
        return reference >= 0 ? edges[static_cast<std::uint32_t>(reference)].start
                              : edges[static_cast<std::uint32_t>(-(reference + 1))].end;
    }
};

/// What becomes of borders.
enum class BorderRule : std::uint8_t {
    Fixed,           ///< their vertices stay
    EdgesAndCorners, ///< they become smooth curves, but vertices of a single face stay
    Edges            ///< they become smooth curves
};

/// What becomes of the borders of texture coordinates.
enum class UvRule : std::uint8_t {
    Linear,       ///< no texture coordinates move at all
    FixedBorders, ///< those inside move
    Edges         ///< borders become smooth curves
};

/// How sharpness goes down from step to step.
enum class CreaseRule : std::uint8_t {
    Uniform = 0, ///< by one
    Chaikin = 1  ///< by one, after it is evened out along the creases
};

struct SmoothingRules {
    BorderRule border = BorderRule::EdgesAndCorners;
    /// The same for borders between faces that are smoothed and such that are not.
    bool isSelectionBorderFixed = true;
    UvRule uvs = UvRule::FixedBorders;
    CreaseRule creases = CreaseRule::Uniform;
    double continuity = 1; ///< 0 leaves all points where plain division puts them
    /// Faces of three weigh more in the points on their edges.
    bool hasSmoothTriangles = false;
    bool keepsHardEdges = false;      ///< vertices of hard edges stay
    bool propagatesHardEdges = false; ///< pieces of hard edges are hard, else all edges are soft
};

} // namespace host::geometry
