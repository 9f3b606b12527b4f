#include "host/geometry/mesh/buildTopology.h"

#include "host/support/wideProcessors.h"

#include <algorithm>
#include <utility>

namespace host::geometry {
namespace {

constexpr std::size_t kMaxCorners = 0x7ffffffe;

/// The edge of a reference, e or -1 - e.
std::uint32_t edgeOf(std::int32_t reference)
{
    return static_cast<std::uint32_t>(reference ^ reference >> 31);
}

/// The highest edge of some references; 0 of none.
HOST_ALSO_FOR_WIDE_PROCESSORS std::uint32_t highestEdge(std::span<const std::int32_t> references)
{
    std::uint32_t highest = 0;
    for (const std::int32_t reference : references) {
        highest = std::max(highest, edgeOf(reference));
    }
    return highest;
}

/// The highest vertex of some edges; 0 of none.
HOST_ALSO_FOR_WIDE_PROCESSORS std::uint32_t highestVertex(std::span<const MeshEdge> edges)
{
    std::uint32_t highest = 0;
    for (const MeshEdge& edge : edges) {
        highest = std::max(highest, std::max(edge.start, edge.end));
    }
    return highest;
}

/// Whether each run of `kSize` corners is closed; all their edges are there.
template<std::size_t kSize>
bool areClosed(std::span<const std::int32_t> corners, const MeshEdge* edges)
{
    std::uint32_t gaps = 0; // without a branch: nearly always there are none
    for (std::size_t first = 0; first < corners.size(); first += kSize) {
        std::uint32_t starts[kSize];
        std::uint32_t ends[kSize];
        for (std::size_t k = 0; k < kSize; ++k) {
            const std::int32_t reference = corners[first + k];
            const MeshEdge& edge = edges[edgeOf(reference)];
            starts[k] = reference >= 0 ? edge.start : edge.end;
            ends[k] = edge.start ^ edge.end ^ starts[k]; // the other one
        }
        for (std::size_t k = 0; k < kSize; ++k) {
            gaps |= ends[k] ^ starts[(k + 1) % kSize];
        }
    }
    return gaps == 0;
}

/// Compacts the corners of the usable loops to the front of their own list.
class TopologyBuilder {
public:
    TopologyBuilder(std::uint32_t vertexCount, EdgeLists edges, FaceLists faces)
        : m_lists(std::move(faces)), m_cornerCount(std::min(m_lists.corners.size(), kMaxCorners))
    {
        m_built.topology.vertexCount = vertexCount;
        takeEdges(std::move(edges));
    }

    BuiltTopology build();

private:
    void takeEdges(EdgeLists edges);
    void markBadEdges();
    /// Whether all edges of a run of corners are there, with vertices that are there.
    bool hasGoodEdges(std::size_t first, std::size_t count) const;
    bool isClosed(std::size_t first, std::size_t count) const;
    /// Takes all faces at once if each is one loop of `kSize` corners and nothing is damaged; else
    /// false, and nothing is done.
    template<std::size_t kSize>
    bool takeUniformFaces();
    void takeFaces();
    void addFace(std::uint32_t loopCount);
    /// Takes the next given loop; keeps it when it is usable and wanted.
    bool takeLoop(bool isWanted);
    void endLoop();
    void drop(std::size_t first, std::size_t end);

    FaceLists m_lists;
    std::size_t m_cornerCount;
    std::size_t m_loop = 0; ///< next given loop
    std::size_t m_read = 0; ///< next given corner
    std::size_t m_kept = 0;
    std::vector<bool> m_isBadEdge; ///< empty when there is none
    BuiltTopology m_built;
};

void TopologyBuilder::takeEdges(EdgeLists edges)
{
    MeshTopology& topology = m_built.topology;
    topology.edges = std::move(edges.edges);
    m_built.edgeSmooth = std::move(edges.smooth);
    if (topology.edges.size() > kMaxCorners) {
        topology.edges.resize(kMaxCorners);
        m_built.edgeSmooth.resize(std::min(m_built.edgeSmooth.size(), kMaxCorners));
    }
    if (highestVertex(topology.edges) >= topology.vertexCount) {
        markBadEdges();
    }
    if (topology.vertexCount == 0) { // not even (0, 0) would be a valid edge
        topology.edges.clear();
        m_built.edgeSmooth.clear();
    }
}

/// Edges with a vertex that is not there keep nothing but their number.
void TopologyBuilder::markBadEdges()
{
    MeshTopology& topology = m_built.topology;
    m_isBadEdge.resize(topology.edges.size());
    m_built.edgeSmooth.resize(topology.edges.size(), 1); // now they are told one by one
    for (std::size_t edge = 0; edge < topology.edges.size(); ++edge) {
        const MeshEdge& ends = topology.edges[edge];
        if (ends.start >= topology.vertexCount || ends.end >= topology.vertexCount) {
            topology.edges[edge] = {};
            m_built.edgeSmooth[edge] = 0;
            m_isBadEdge[edge] = true;
            ++m_built.damage.badEdges;
        }
    }
}

bool TopologyBuilder::hasGoodEdges(std::size_t first, std::size_t count) const
{
    const auto edgeCount = static_cast<std::uint32_t>(m_built.topology.edges.size());
    bool isGood = true;
    for (std::size_t i = first; i < first + count; ++i) {
        const std::uint32_t edge = edgeOf(m_lists.corners[i]);
        isGood &= edge < edgeCount;
        if (isGood && !m_isBadEdge.empty()) {
            isGood = !m_isBadEdge[edge];
        }
    }
    return isGood;
}

bool TopologyBuilder::isClosed(std::size_t first, std::size_t count) const
{
    if (count == 0 || !hasGoodEdges(first, count)) {
        return false;
    }
    const MeshEdge* const edges = m_built.topology.edges.data();
    const std::int32_t* const corners = m_lists.corners.data() + first;
    const auto reachedBy = [edges](std::int32_t reference) {
        const MeshEdge& edge = edges[edgeOf(reference)];
        return reference >= 0 ? edge.end : edge.start;
    };
    std::uint32_t reached = reachedBy(corners[count - 1]);
    bool isClosed = true;
    for (std::size_t i = 0; i < count; ++i) {
        const MeshEdge& edge = edges[edgeOf(corners[i])];
        isClosed &= reached == (corners[i] >= 0 ? edge.start : edge.end);
        reached = corners[i] >= 0 ? edge.end : edge.start;
    }
    return isClosed;
}

void TopologyBuilder::drop(std::size_t first, std::size_t end)
{
    if (first == end) {
        return;
    }
    auto& runs = m_built.damage.droppedCorners;
    if (!runs.empty() && runs.back().end == first) {
        runs.back().end = static_cast<std::uint32_t>(end);
        return;
    }
    runs.push_back({static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(end)});
}

void TopologyBuilder::endLoop()
{
    m_built.topology.loopStart.push_back(static_cast<std::uint32_t>(m_kept));
}

bool TopologyBuilder::takeLoop(bool isWanted)
{
    if (m_loop >= m_lists.loopSizes.size()) {
        return false;
    }
    const std::size_t size = m_lists.loopSizes[m_loop++];
    const std::size_t first = m_read;
    const std::size_t left = m_cornerCount - first;
    m_read += std::min(size, left);
    if (!isWanted || size > left || !isClosed(first, size)) {
        drop(first, m_read);
        return false;
    }
    if (m_kept != first) {
        std::copy_n(m_lists.corners.begin() + static_cast<std::ptrdiff_t>(first), size,
                    m_lists.corners.begin() + static_cast<std::ptrdiff_t>(m_kept));
    }
    m_kept += size;
    endLoop();
    return true;
}

void TopologyBuilder::addFace(std::uint32_t loopCount)
{
    const bool isGood = loopCount > 0 && takeLoop(true);
    if (!isGood) {
        ++m_built.damage.badFaces;
        endLoop();
    }
    for (std::uint32_t hole = 1; hole < loopCount && m_loop < m_lists.loopSizes.size(); ++hole) {
        if (!takeLoop(isGood) && isGood) {
            ++m_built.damage.badHoles;
        }
    }
}

void TopologyBuilder::takeFaces()
{
    MeshTopology& topology = m_built.topology;
    const auto& counts = m_lists.faceLoopCounts;
    const bool hasHoles =
        std::any_of(counts.begin(), counts.end(), [](std::uint32_t count) { return count != 1; });
    const std::size_t faceCount = counts.empty() ? m_lists.loopSizes.size() : counts.size();
    topology.loopStart.reserve(std::max(faceCount, m_lists.loopSizes.size()) + 1);
    topology.loopStart.push_back(0);
    if (hasHoles) {
        topology.faceLoop.reserve(faceCount + 1);
        topology.faceLoop.push_back(0);
    }
    for (std::size_t face = 0; face < faceCount; ++face) {
        addFace(hasHoles ? counts[face] : 1);
        if (hasHoles) {
            topology.faceLoop.push_back(topology.loopCount());
        }
    }
    m_built.damage.looseLoops = m_lists.loopSizes.size() - m_loop;
    drop(m_read, m_lists.corners.size());
    m_lists.corners.resize(m_kept);
    topology.corners = std::move(m_lists.corners);
}

template<std::size_t kSize>
bool TopologyBuilder::takeUniformFaces()
{
    constexpr std::size_t kPiece = 1024 * kSize; // corners that stay in the processor's cache
    MeshTopology& topology = m_built.topology;
    const auto& sizes = m_lists.loopSizes;
    const auto& counts = m_lists.faceLoopCounts;
    const auto areAll = [](std::span<const std::uint32_t> list, std::uint32_t wanted) {
        std::uint32_t others = 0;
        for (const std::uint32_t number : list) {
            others |= number ^ wanted;
        }
        return others == 0;
    };
    if (sizes.empty() || m_cornerCount != m_lists.corners.size() ||
        m_cornerCount != kSize * sizes.size() || !m_isBadEdge.empty() ||
        (!counts.empty() && counts.size() != sizes.size()) || !areAll(sizes, kSize) ||
        !areAll(counts, 1)) {
        return false;
    }
    const std::span<const std::int32_t> corners = m_lists.corners;
    for (std::size_t first = 0; first < corners.size(); first += kPiece) {
        const auto piece = corners.subspan(first, std::min(kPiece, corners.size() - first));
        if (highestEdge(piece) >= topology.edges.size() ||
            !areClosed<kSize>(piece, topology.edges.data())) {
            return false;
        }
    }
    topology.loopStart.resize(sizes.size() + 1);
    for (std::size_t loop = 0; loop <= sizes.size(); ++loop) {
        topology.loopStart[loop] = static_cast<std::uint32_t>(kSize * loop);
    }
    topology.corners = std::move(m_lists.corners);
    return true;
}

BuiltTopology TopologyBuilder::build()
{
    if (!takeUniformFaces<4>() && !takeUniformFaces<3>()) {
        takeFaces();
    }
    return std::move(m_built);
}

} // namespace

BuiltTopology buildTopology(std::uint32_t vertexCount, EdgeLists edges, FaceLists faces)
{
    return TopologyBuilder(vertexCount, std::move(edges), std::move(faces)).build();
}

BuiltTopology buildTopology(std::uint32_t vertexCount, std::span<const std::int32_t> edgeTriples,
                            FaceLists faces)
{
    EdgeLists edges;
    edges.append(edgeTriples);
    return buildTopology(vertexCount, std::move(edges), std::move(faces));
}

void removeCorners(std::vector<std::int32_t>& perCorner, std::span<const CornerRun> dropped,
                   std::size_t cornerCount)
{
    std::size_t kept = dropped.empty() ? perCorner.size() : 0;
    std::size_t read = 0;
    const auto keepUntil = [&](std::size_t end) {
        for (; read < std::min(end, perCorner.size()); ++read) {
            perCorner[kept++] = perCorner[read];
        }
    };
    for (const CornerRun& run : dropped) {
        keepUntil(run.first);
        read = run.end;
    }
    if (!dropped.empty()) {
        keepUntil(perCorner.size());
    }
    perCorner.resize(kept);
    perCorner.resize(cornerCount, -1);
}

} // namespace host::geometry
