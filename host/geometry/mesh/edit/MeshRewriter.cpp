#include "host/geometry/mesh/edit/MeshRewriter.h"

#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace host::geometry {
namespace {

/// 1 for what is kept, 0 for the rest.
using KeptParts = std::vector<std::uint8_t>;

std::shared_ptr<const std::vector<std::uint32_t>> share(std::vector<std::uint32_t>&& numbers)
{
    return std::make_shared<const std::vector<std::uint32_t>>(std::move(numbers));
}

/// What any of the owners own, ascending.
std::vector<std::uint32_t> ownedBy(const std::vector<std::uint32_t>& owners,
                                   const NumberLists& lists)
{
    std::vector<std::uint32_t> owned;
    for (const std::uint32_t owner : owners) {
        const auto list = lists.of(owner);
        owned.insert(owned.end(), list.begin(), list.end());
    }
    if (!std::is_sorted(owned.begin(), owned.end())) {
        std::sort(owned.begin(), owned.end());
    }
    return owned;
}

} // namespace

MeshRewriter::MeshRewriter(const MeshData& before)
    : m_before(before)
    , m_keepsSources(!before.groups.empty() || before.invisibleFaces != nullptr)
    , m_edges(before.topology->edges)
    , m_edgeSmooth(before.edgeFlags())
{
    if (before.creases != nullptr) {
        m_edgeSource.resize(before.topology->edges.size());
        std::iota(m_edgeSource.begin(), m_edgeSource.end(), 0U);
    }
    if (before.points != nullptr) {
        m_points = *before.points;
    }
    for (const UvSet& set : before.uvSets) {
        WrittenUvs written;
        if (set.points != nullptr) {
            written.points = *set.points;
        }
        written.before = set.corners.get();
        m_uvSets.push_back(std::move(written));
    }
}

bool MeshRewriter::hasRoom(std::size_t size)
{
    m_isFull = m_isFull || size >= kMaxParts;
    return !m_isFull;
}

void MeshRewriter::reserve(std::size_t points, std::size_t edges, std::size_t faces,
                           std::size_t corners)
{
    m_points.reserve(std::min(points, kMaxParts));
    m_edges.reserve(std::min(edges, kMaxParts));
    m_edgeSmooth.reserve(std::min(edges, kMaxParts));
    if (m_keepsSources) {
        m_faceSource.reserve(std::min(faces, kMaxParts));
    }
    m_loopStart.reserve(std::min(faces, kMaxParts) + 1);
    m_corners.reserve(std::min(corners, kMaxParts));
    for (WrittenUvs& set : m_uvSets) {
        set.corners.reserve(std::min(corners, kMaxParts));
    }
}

void MeshRewriter::reserveUvs(std::size_t added)
{
    for (WrittenUvs& set : m_uvSets) {
        if (set.before != nullptr && !set.before->empty()) {
            set.points.reserve(std::min(set.points.size() + added, kMaxParts));
        }
    }
}

std::uint32_t MeshRewriter::addPoint(const Vec3f& point, std::uint32_t source)
{
    if (hasRoom(m_points.size())) {
        if (source != kNoSource && !m_before.pointGroups.empty()) {
            m_copies.push_back(static_cast<std::uint32_t>(m_points.size()));
            m_copySource.push_back(source);
        }
        m_points.push_back(point);
    }
    return static_cast<std::uint32_t>(m_points.size() - 1);
}

std::uint32_t MeshRewriter::addEdge(std::uint32_t start, std::uint32_t end, bool isSmooth,
                                    std::uint32_t source)
{
    if (hasRoom(m_edges.size())) {
        m_edges.push_back({start, end});
        m_edgeSmooth.push_back(isSmooth ? 1 : 0);
        if (m_before.creases != nullptr) {
            m_edgeSource.push_back(source);
        }
    }
    return static_cast<std::uint32_t>(m_edges.size() - 1);
}

std::int32_t MeshRewriter::addUv(std::size_t set, const Vec2f& point)
{
    std::vector<Vec2f>& points = m_uvSets[set].points;
    if (hasRoom(points.size())) {
        points.push_back(point);
    }
    return static_cast<std::int32_t>(points.size()) - 1;
}

void MeshRewriter::beginFace(std::uint32_t source)
{
    if (m_keepsSources) {
        m_faceSource.push_back(source);
    }
}

std::int32_t MeshRewriter::uvId(std::size_t set, std::uint32_t sourceCorner) const
{
    const auto* const before = m_uvSets[set].before;
    return before != nullptr && sourceCorner < before->size() ? (*before)[sourceCorner] : -1;
}

void MeshRewriter::addCorner(std::int32_t edgeReference, std::uint32_t sourceCorner)
{
    if (!hasRoom(m_corners.size())) {
        return;
    }
    m_corners.push_back(edgeReference);
    for (std::size_t set = 0; set < m_uvSets.size(); ++set) {
        m_uvSets[set].corners.push_back(uvId(set, sourceCorner));
    }
}

void MeshRewriter::addCorner(std::int32_t edgeReference, std::span<const std::int32_t> uvIds)
{
    if (!hasRoom(m_corners.size())) {
        return;
    }
    m_corners.push_back(edgeReference);
    for (std::size_t set = 0; set < m_uvSets.size(); ++set) {
        m_uvSets[set].corners.push_back(set < uvIds.size() ? uvIds[set] : -1);
    }
}

void MeshRewriter::endLoop()
{
    m_loopStart.push_back(static_cast<std::uint32_t>(m_corners.size()));
}

void MeshRewriter::endFace()
{
    if (m_loopStart.back() != m_corners.size() || m_endedLoops + 1 == m_loopStart.size()) {
        endLoop();
    }
    const auto loops = static_cast<std::uint32_t>(m_loopStart.size() - 1);
    if (m_faceLoop.empty() && loops - m_endedLoops > 1) {
        m_faceLoop.resize(std::size_t{m_endedLoops} + 1); // each face so far is one loop
        std::iota(m_faceLoop.begin(), m_faceLoop.end(), 0U);
    }
    if (!m_faceLoop.empty()) {
        m_faceLoop.push_back(loops);
    }
    m_endedLoops = loops;
}

void MeshRewriter::copyFace(std::uint32_t face)
{
    const MeshTopology& topology = *m_before.topology;
    beginFace(face);
    for (std::uint32_t loop = topology.firstLoop(face); loop < topology.firstLoop(face + 1);
         ++loop) {
        for (std::uint32_t corner = topology.loopStart[loop]; corner < topology.loopStart[loop + 1];
             ++corner) {
            addCorner(topology.corners[corner], corner);
        }
        endLoop();
    }
    endFace();
}

void MeshRewriter::copyFaces(std::uint32_t first, std::uint32_t end)
{
    if (m_before.topology->faceLoop.empty() && first < end) {
        copySimpleFaces(first, end);
        return;
    }
    for (std::uint32_t face = first; face < end; ++face) {
        copyFace(face);
    }
}

/// A run of faces without holes, array by array.
void MeshRewriter::copySimpleFaces(std::uint32_t first, std::uint32_t end)
{
    const MeshTopology& topology = *m_before.topology;
    const std::uint32_t from = topology.loopStart[first];
    const std::uint32_t to = topology.loopStart[end];
    if (!hasRoom(m_corners.size() + (to - from))) {
        return;
    }
    const auto offset = static_cast<std::uint32_t>(m_corners.size()) - from;
    const auto takeRun = [from, to](std::vector<std::int32_t>& run,
                                    const std::vector<std::int32_t>& before) {
        run.insert(run.end(), before.begin() + from, before.begin() + to);
    };
    takeRun(m_corners, topology.corners);
    for (WrittenUvs& set : m_uvSets) {
        if (set.before != nullptr && set.before->size() >= to) {
            takeRun(set.corners, *set.before);
        } else {
            set.corners.resize(m_corners.size(), -1);
        }
    }
    for (std::uint32_t face = first; face < end; ++face) {
        beginFace(face);
        m_loopStart.push_back(topology.loopStart[face + 1] + offset);
        if (!m_faceLoop.empty()) {
            m_faceLoop.push_back(static_cast<std::uint32_t>(m_loopStart.size() - 1));
        }
    }
    m_endedLoops = static_cast<std::uint32_t>(m_loopStart.size() - 1);
}

void MeshRewriter::removeEdges()
{
    KeptParts isKept(m_edges.size());
    for (const std::int32_t reference : m_corners) {
        if (edgeOf(reference) < isKept.size()) {
            isKept[edgeOf(reference)] = 1;
        }
    }
    const Gaps gaps(isKept);
    if (gaps.isEmpty()) {
        return;
    }
    gaps.close(m_edges);
    gaps.close(m_edgeSmooth);
    if (!m_edgeSource.empty()) {
        gaps.close(m_edgeSource);
    }
    gaps.renumberReferences(m_corners);
}

void MeshRewriter::removePoints()
{
    KeptParts isKept(m_points.size());
    for (const MeshEdge& edge : m_edges) {
        for (const std::uint32_t end : {edge.start, edge.end}) {
            if (end < isKept.size()) {
                isKept[end] = 1;
            }
        }
    }
    m_pointGaps = Gaps(isKept);
    m_pointGaps.renumberEnds(m_edges);
    m_pointGaps.close(m_points);
}

void MeshRewriter::removeUvs(WrittenUvs& set)
{
    KeptParts isKept(set.points.size());
    for (const std::int32_t id : set.corners) {
        if (id >= 0 && static_cast<std::size_t>(id) < isKept.size()) {
            isKept[static_cast<std::size_t>(id)] = 1;
        }
    }
    const Gaps gaps(isKept);
    if (!gaps.isEmpty()) {
        gaps.close(set.points);
        gaps.renumberIds(set.corners);
    }
}

void MeshRewriter::carryGroups(MeshData& mesh) const
{
    if (mesh.groups.empty() && mesh.invisibleFaces == nullptr) {
        return;
    }
    const NumberLists written(m_faceSource, m_before.topology->faceCount());
    for (FaceGroup& group : mesh.groups) {
        if (group.faces != nullptr) {
            group.faces = share(ownedBy(*group.faces, written));
        }
    }
    if (mesh.invisibleFaces != nullptr) {
        mesh.invisibleFaces = share(ownedBy(*mesh.invisibleFaces, written));
    }
}

/// Points stay in their groups, and so do those that became parts of them; others are in none.
void MeshRewriter::carryPointGroups(MeshData& mesh) const
{
    if (mesh.pointGroups.empty() || (m_pointGaps.isEmpty() && m_copies.empty())) {
        return;
    }
    const NumberLists copiesOf(m_copySource, m_before.topology->vertexCount);
    for (PointGroup& group : mesh.pointGroups) {
        if (group.points == nullptr) {
            continue;
        }
        std::vector<std::uint32_t> carried;
        const auto carry = [&](std::uint32_t point) {
            if (const std::uint32_t number = m_pointGaps.numberOf(point); number != kNone) {
                carried.push_back(number);
            }
        };
        std::for_each(group.points->begin(), group.points->end(), carry);
        for (const std::uint32_t place : ownedBy(*group.points, copiesOf)) {
            carry(m_copies[place]);
        }
        group.points = share(std::move(carried));
    }
}

/// Edges keep the crease of the edge that they come from, vertices their own.
void MeshRewriter::carryCreases(MeshData& mesh) const
{
    if (mesh.creases == nullptr) {
        return;
    }
    const MeshCreases& before = *mesh.creases;
    MeshCreases carried;
    for (std::size_t edge = 0; edge < m_edgeSource.size(); ++edge) {
        const auto found =
            std::lower_bound(before.edges.begin(), before.edges.end(), m_edgeSource[edge]);
        if (found != before.edges.end() && *found == m_edgeSource[edge]) {
            const auto position = static_cast<std::size_t>(found - before.edges.begin());
            carried.edges.push_back(static_cast<std::uint32_t>(edge));
            carried.edgeValues.push_back(before.edgeValues[position]);
        }
    }
    for (std::size_t i = 0; i < before.vertices.size(); ++i) {
        const std::uint32_t vertex = before.vertices[i];
        if (const std::uint32_t number = m_pointGaps.numberOf(vertex); number != kNone) {
            carried.vertices.push_back(number);
            carried.vertexValues.push_back(before.vertexValues[i]);
        }
    }
    mesh.creases = std::make_shared<const MeshCreases>(std::move(carried));
}

MeshTopology MeshRewriter::takeTopology()
{
    MeshTopology topology;
    topology.vertexCount = static_cast<std::uint32_t>(m_points.size());
    topology.edges = std::move(m_edges);
    topology.corners = std::move(m_corners);
    topology.loopStart = std::move(m_loopStart);
    topology.faceLoop = std::move(m_faceLoop);
    return topology;
}

std::shared_ptr<const MeshData> MeshRewriter::finish(const Cleaning& cleaning)
{
    if (m_isFull) {
        return nullptr;
    }
    if (cleaning.edges) {
        removeEdges();
    }
    if (cleaning.points) {
        removePoints();
    }
    auto mesh = std::make_shared<MeshData>(m_before);
    mesh->lockedNormals = nullptr;
    carryGroups(*mesh);
    carryPointGroups(*mesh);
    carryCreases(*mesh);
    for (std::size_t set = 0; set < m_uvSets.size(); ++set) {
        if (cleaning.uvs) {
            removeUvs(m_uvSets[set]);
        }
        using Points = std::vector<Vec2f>;
        using Ids = std::vector<std::int32_t>;
        mesh->uvSets[set].points = std::make_shared<const Points>(std::move(m_uvSets[set].points));
        mesh->uvSets[set].corners = std::make_shared<const Ids>(std::move(m_uvSets[set].corners));
    }
    mesh->topology = std::make_shared<const MeshTopology>(takeTopology());
    mesh->edgeSmooth = shareEdgeFlags(std::move(m_edgeSmooth));
    mesh->points = std::make_shared<const std::vector<Vec3f>>(std::move(m_points));
    return isConsistent(*mesh) ? mesh : nullptr;
}

} // namespace host::geometry
