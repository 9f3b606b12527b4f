#include "host/geometry/mesh/shape/creaseLevels.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace host::geometry {
namespace {

float usable(float sharpness)
{
    return sharpness > 0 ? std::min(sharpness, kInfinitelySharp) : 0; // not a number: none
}

float worn(float sharpness)
{
    return sharpness >= kInfinitelySharp ? sharpness : std::max(sharpness - 1, 0.0F);
}

/// The creases at each vertex.
struct CreaseSums {
    explicit CreaseSums(const SubdivisionLevel& level)
        : sums(level.vertexCount), counts(level.vertexCount)
    {
        for (std::size_t edge = 0; edge < level.edges.size(); ++edge) {
            if (level.edgeSharpness[edge] > 0) {
                add(level.edges[edge].start, level.edgeSharpness[edge]);
                add(level.edges[edge].end, level.edgeSharpness[edge]);
            }
        }
    }
    void add(std::uint32_t vertex, float sharpness)
    {
        sums[vertex] += sharpness;
        ++counts[vertex];
    }
    /// Three quarters of its own and one of the mean of the others at the vertex (G. M. Chaikin's
    /// corner cutting, as DeRose, Kass and Truong use it).
    float evened(std::uint32_t vertex, float own) const
    {
        if (counts[vertex] < 2) {
            return own;
        }
        const float others = (sums[vertex] - own) / static_cast<float>(counts[vertex] - 1);
        return 0.75F * own + 0.25F * others;
    }

    std::vector<float> sums;
    std::vector<std::uint32_t> counts;
};

} // namespace

void applyCreases(const MeshData& mesh, std::span<const std::uint32_t> placeOf,
                  SubdivisionLevel& level)
{
    if (mesh.creases == nullptr) {
        return;
    }
    const MeshCreases& creases = *mesh.creases;
    if (!creases.edges.empty()) {
        level.edgeSharpness.resize(level.edges.size());
    }
    for (std::size_t i = 0; i < std::min(creases.edges.size(), creases.edgeValues.size()); ++i) {
        if (creases.edges[i] < placeOf.size()) {
            level.edgeSharpness[placeOf[creases.edges[i]]] = usable(creases.edgeValues[i]);
        }
    }
    if (!creases.vertices.empty()) {
        level.vertexSharpness.resize(level.vertexCount);
    }
    for (std::size_t i = 0; i < std::min(creases.vertices.size(), creases.vertexValues.size());
         ++i) {
        if (creases.vertices[i] < level.vertexSharpness.size()) {
            level.vertexSharpness[creases.vertices[i]] = usable(creases.vertexValues[i]);
        }
    }
}

void divideCreases(const SubdivisionLevel& level, CreaseRule rule, std::uint32_t firstHalf,
                   SubdivisionLevel& next)
{
    if (!level.vertexSharpness.empty()) {
        next.vertexSharpness.resize(next.vertexCount);
        std::transform(level.vertexSharpness.begin(), level.vertexSharpness.end(),
                       next.vertexSharpness.begin(), worn);
    }
    if (level.edgeSharpness.empty()) {
        return;
    }
    const CreaseSums sums(level);
    next.edgeSharpness.resize(next.edges.size());
    for (std::size_t edge = 0; edge < level.edges.size(); ++edge) {
        const float own = level.edgeSharpness[edge];
        if (!(own > 0)) {
            continue;
        }
        const bool isEvened = rule == CreaseRule::Chaikin && own < kInfinitelySharp;
        const MeshEdge& ends = level.edges[edge];
        const std::size_t half = firstHalf + 2 * edge;
        next.edgeSharpness[half] = worn(isEvened ? sums.evened(ends.start, own) : own);
        next.edgeSharpness[half + 1] = worn(isEvened ? sums.evened(ends.end, own) : own);
    }
}

} // namespace host::geometry
