#include "host/geometry/mesh/edit/deleteFaces.h"

#include "host/geometry/mesh/edit/Gaps.h"

#include <algorithm>
#include <utility>

namespace host::geometry {
namespace {

template<class T>
std::shared_ptr<const std::vector<T>> share(std::vector<T>&& values)
{
    return std::make_shared<const std::vector<T>>(std::move(values));
}

/// A list with one entry a part, closed up; the very same where nothing is taken out.
template<class T>
std::shared_ptr<const std::vector<T>> closed(const std::shared_ptr<const std::vector<T>>& parts,
                                             const Gaps& gaps)
{
    return gaps.isEmpty() || parts == nullptr ? parts : share(gaps.closed(*parts));
}

/// What goes together with the faces, and the mesh without it. Everything that stays is copied in
/// runs, and shared where nothing of its kind goes.
class FaceRemoval {
public:
    FaceRemoval(const MeshData& mesh, std::span<const std::uint32_t> faces,
                const MeshRewriter::Cleaning& cleaning);

    std::shared_ptr<const MeshData> run();

private:
    void closeCorners();
    void closeEdges();
    void closePoints();
    void closeUvs(UvSet& set) const;
    void closeGroups();
    void closeCreases();

    const MeshTopology& m_before;
    const MeshRewriter::Cleaning& m_cleaning;
    Gaps m_faces;
    Gaps m_loops;
    Gaps m_corners;
    Gaps m_edges;
    Gaps m_points;
    std::shared_ptr<MeshData> m_mesh;
    MeshTopology m_topology;
};

FaceRemoval::FaceRemoval(const MeshData& mesh, std::span<const std::uint32_t> faces,
                         const MeshRewriter::Cleaning& cleaning)
    : m_before(*mesh.topology)
    , m_cleaning(cleaning)
    , m_faces(m_before.faceCount())
    , m_loops(m_before.loopCount())
    , m_corners(static_cast<std::uint32_t>(m_before.corners.size()))
    , m_edges(static_cast<std::uint32_t>(m_before.edges.size()))
    , m_points(m_before.vertexCount)
    , m_mesh(std::make_shared<MeshData>(mesh))
{
    std::uint32_t next = 0;
    for (const std::uint32_t face : faces) {
        if (face >= next && face < m_before.faceCount()) {
            next = face + 1;
            m_faces.add(face, next);
            m_loops.add(m_before.firstLoop(face), m_before.firstLoop(next));
            m_corners.add(m_before.firstCorner(face), m_before.endCorner(face));
        }
    }
}

void FaceRemoval::closeCorners()
{
    m_topology.corners = m_corners.closed(m_before.corners);
    m_topology.loopStart = m_loops.closed(m_before.loopStart);
    if (m_topology.loopStart.empty()) {
        m_topology.loopStart.push_back(0);
    }
    m_corners.renumber(m_topology.loopStart);
    if (!m_before.faceLoop.empty()) {
        m_topology.faceLoop = m_faces.closed(m_before.faceLoop);
        m_loops.renumber(m_topology.faceLoop);
    }
}

void FaceRemoval::closeEdges()
{
    if (m_cleaning.edges) {
        std::vector<std::uint8_t> isKept(m_before.edges.size());
        std::uint8_t* const marks = isKept.data(); // bytes: the compiler takes them for anything
        for (const std::int32_t reference : std::span(m_topology.corners)) {
            marks[edgeOf(reference)] = 1;
        }
        m_edges = Gaps(isKept);
    }
    m_topology.edges = m_edges.closed(m_before.edges);
    m_mesh->edgeSmooth = closed(m_mesh->edgeSmooth, m_edges);
    m_edges.renumberReferences(m_topology.corners);
}

void FaceRemoval::closePoints()
{
    if (m_cleaning.points) {
        std::vector<std::uint8_t> isKept(m_before.vertexCount);
        std::uint8_t* const marks = isKept.data();
        for (const MeshEdge& edge : std::span(m_topology.edges)) {
            marks[edge.start] = 1;
            marks[edge.end] = 1;
        }
        m_points = Gaps(isKept);
    }
    m_topology.vertexCount = m_points.keptCount();
    m_mesh->points = closed(m_mesh->points, m_points);
    m_points.renumberEnds(m_topology.edges);
}

void FaceRemoval::closeUvs(UvSet& set) const
{
    const bool hasIds = set.corners != nullptr && set.corners->size() == m_before.corners.size();
    std::vector<std::int32_t> ids = hasIds
                                        ? m_corners.closed(*set.corners)
                                        : std::vector<std::int32_t>(m_topology.corners.size(), -1);
    if (set.points == nullptr) {
        set.points = share(std::vector<Vec2f>());
    }
    if (m_cleaning.uvs) {
        std::vector<std::uint8_t> isKept(set.points->size());
        std::uint8_t* const marks = isKept.data();
        for (const std::int32_t id : std::span(ids)) {
            if (id >= 0) {
                marks[static_cast<std::size_t>(id)] = 1;
            }
        }
        const Gaps gaps(isKept);
        set.points = closed(set.points, gaps);
        gaps.renumberIds(ids);
    }
    set.corners = share(std::move(ids));
}

void FaceRemoval::closeGroups()
{
    const auto close = [](auto& list, const Gaps& gaps) {
        if (list != nullptr && !gaps.isEmpty()) {
            list = share(gaps.kept(*list));
        }
    };
    for (FaceGroup& group : m_mesh->groups) {
        close(group.faces, m_faces);
    }
    for (PointGroup& group : m_mesh->pointGroups) {
        close(group.points, m_points);
    }
    close(m_mesh->invisibleFaces, m_faces);
}

void FaceRemoval::closeCreases()
{
    if (m_mesh->creases == nullptr || (m_edges.isEmpty() && m_points.isEmpty())) {
        return;
    }
    const MeshCreases& before = *m_mesh->creases;
    MeshCreases creases;
    const auto take = [](const Gaps& gaps, const auto& parts, const auto& values, auto& keptParts,
                         auto& keptValues) {
        for (std::size_t i = 0; i < parts.size(); ++i) {
            if (const std::uint32_t number = gaps.numberOf(parts[i]); number != kNone) {
                keptParts.push_back(number);
                keptValues.push_back(values[i]);
            }
        }
    };
    take(m_edges, before.edges, before.edgeValues, creases.edges, creases.edgeValues);
    take(m_points, before.vertices, before.vertexValues, creases.vertices, creases.vertexValues);
    m_mesh->creases = std::make_shared<const MeshCreases>(std::move(creases));
}

std::shared_ptr<const MeshData> FaceRemoval::run()
{
    closeCorners();
    closeEdges();
    closePoints();
    for (UvSet& set : m_mesh->uvSets) {
        closeUvs(set);
    }
    closeGroups();
    closeCreases();
    m_mesh->lockedNormals = nullptr; // they go by fans
    m_mesh->topology = std::make_shared<const MeshTopology>(std::move(m_topology));
    return std::move(m_mesh);
}

} // namespace

std::shared_ptr<const MeshData> deleteFaces(const MeshData& mesh,
                                            std::span<const std::uint32_t> faces,
                                            const MeshRewriter::Cleaning& cleaning)
{
    if (mesh.topology->corners.size() >= MeshRewriter::kMaxParts) {
        return nullptr;
    }
    return FaceRemoval(mesh, faces, cleaning).run();
}

std::shared_ptr<const MeshData> withoutLooseParts(const MeshData& mesh)
{
    return deleteFaces(mesh, {}, kCleanAll);
}

} // namespace host::geometry
