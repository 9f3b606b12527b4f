#include "host/geometry/mesh/EdgeLists.h"

#include "host/support/wideProcessors.h"

namespace host::geometry {
namespace {

/// Takes the vertices of `count` edges; whether all edges are smooth.
HOST_ALSO_FOR_WIDE_PROCESSORS bool takeVertices(const std::int32_t* triples, std::size_t count,
                                                MeshEdge* edges)
{
    std::uint32_t hard = 0; // without a branch: mostly there are none
    for (std::size_t edge = 0; edge < count; ++edge) {
        edges[edge] = {static_cast<std::uint32_t>(triples[3 * edge]),
                       static_cast<std::uint32_t>(triples[3 * edge + 1])};
        hard |= triples[3 * edge + 2] == 0 ? 1U : 0U;
    }
    return hard == 0;
}

} // namespace

void EdgeLists::append(std::span<const std::int32_t> triples)
{
    const std::size_t before = edges.size();
    const std::size_t count = triples.size() / 3;
    edges.resize(before + count);
    const bool areSmooth = takeVertices(triples.data(), count, edges.data() + before);
    if (areSmooth && smooth.empty()) {
        return;
    }
    smooth.reserve(edges.capacity());
    smooth.resize(before, 1);
    for (std::size_t edge = 0; edge < count; ++edge) {
        smooth.push_back(triples[3 * edge + 2] != 0 ? 1 : 0);
    }
}

std::vector<std::int32_t> EdgeLists::triples() const
{
    std::vector<std::int32_t> numbers;
    numbers.reserve(3 * edges.size());
    for (std::size_t edge = 0; edge < edges.size(); ++edge) {
        numbers.push_back(static_cast<std::int32_t>(edges[edge].start));
        numbers.push_back(static_cast<std::int32_t>(edges[edge].end));
        numbers.push_back(smooth.empty() ? 1 : smooth[edge]);
    }
    return numbers;
}

} // namespace host::geometry
