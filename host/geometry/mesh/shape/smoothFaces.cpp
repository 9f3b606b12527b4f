#include "host/geometry/mesh/shape/smoothFaces.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/shape/catmullClark.h"
#include "host/geometry/mesh/shape/creaseLevels.h"
#include "host/geometry/mesh/shape/facePlanes.h"
#include "host/geometry/mesh/shape/smoothMesh.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace host::geometry {
namespace {

/// One step for some faces.
class FaceStep {
public:
    FaceStep(const MeshData& mesh, std::span<const std::uint32_t> faces,
             const SmoothingRules& rules)
        : m_mesh(mesh)
        , m_topology(*mesh.topology)
        , m_faces(faces)
        , m_rewriter(mesh)
        , m_links(m_topology)
        , m_cornersOf(cornersOfEdges(m_topology))
        , m_isDivided(m_topology.faceCount())
        , m_middle(m_topology.faceCount())
        , m_cutPoint(m_topology.edges.size(), kNone)
        , m_secondHalf(m_topology.edges.size(), kNone)
        , m_spoke(m_topology.corners.size(), kNone)
    {
        for (const std::uint32_t face : faces) {
            m_isDivided[face] = 1;
        }
        takeLevel(rules.keepsHardEdges);
        m_points = catmullClark(m_level, doublePoints(mesh), m_isDivided, rules);
        takeUvs(rules.uvs);
    }

    std::shared_ptr<const MeshData> run()
    {
        movePoints();
        for (const std::uint32_t face : m_faces) {
            cut(face);
        }
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            writeFace(face);
        }
        for (const std::uint32_t face : m_faces) {
            for (std::uint32_t corner = m_topology.firstCorner(face) + 1;
                 corner < m_topology.endCorner(face); ++corner) {
                writePart(face, corner);
            }
        }
        return m_rewriter.finish();
    }

private:
    void takeLevel(bool keepsHardEdges)
    {
        m_level.vertexCount = m_topology.vertexCount;
        m_level.edges = m_topology.edges;
        m_level.corners = m_topology.corners;
        for (std::size_t edge = 0; keepsHardEdges && edge < m_level.edges.size(); ++edge) {
            m_level.isPinned.push_back(m_mesh.isSmooth(static_cast<std::uint32_t>(edge)) ? 0 : 1);
        }
        m_level.faceStart.reserve(m_topology.faceCount() + std::size_t{1});
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            m_level.faceStart.push_back(m_topology.firstCorner(face));
        }
        m_level.faceStart.push_back(static_cast<std::uint32_t>(m_topology.corners.size()));
        std::vector<std::uint32_t> same(m_topology.edges.size());
        std::iota(same.begin(), same.end(), 0U);
        applyCreases(m_mesh, same, m_level);
    }

    void takeUvs(UvRule rule)
    {
        for (const UvSet& set : m_mesh.uvSets) {
            const bool has =
                set.points != nullptr && set.corners != nullptr && !set.corners->empty();
            m_uvs.push_back(
                has ? subdividedUvs(m_level, *set.points, *set.corners, m_isDivided, rule)
                    : SubdividedUvs());
            m_sideIds.emplace_back(has ? m_topology.corners.size() : 0, -1);
            m_middleIds.emplace_back(has ? m_topology.faceCount() : 0, -1);
        }
    }

    void movePoints()
    {
        std::transform(m_points.points.begin(),
                       m_points.points.begin() + std::ptrdiff_t{m_topology.vertexCount},
                       m_rewriter.points().begin(), toFloat);
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            if (!m_uvs[set].points.empty()) {
                m_rewriter.uvPoints(set) = m_uvs[set].points;
            }
        }
    }

    void cut(std::uint32_t face)
    {
        m_middle[face] = m_rewriter.addPoint(toFloat(m_points.ofFace(face)));
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            if (!m_middleIds[set].empty() &&
                hasAllUvs(m_level, face, *m_mesh.uvSets[set].corners)) {
                m_middleIds[set][face] = m_rewriter.addUv(set, m_uvs[set].faces[face]);
            }
        }
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
            if (m_cutPoint[edge] == kNone) {
                cutEdge(edge, corner);
            }
        }
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
            m_spoke[corner] = m_rewriter.addEdge(m_cutPoint[edge], m_middle[face], true);
        }
    }

    void cutEdge(std::uint32_t edge, std::uint32_t corner)
    {
        m_cutPoint[edge] = m_rewriter.addPoint(toFloat(m_points.ofEdge(edge)));
        const std::uint32_t end = m_topology.edges[edge].end;
        m_secondHalf[edge] = m_rewriter.addEdge(m_cutPoint[edge], end, m_mesh.isSmooth(edge), edge);
        if (edge < m_rewriter.edges().size()) {
            m_rewriter.edges()[edge].end = m_cutPoint[edge];
        }
        addSide(corner);
        for (const std::uint32_t other : m_cornersOf.of(edge)) {
            addSide(other);
        }
    }

    void addSide(std::uint32_t corner)
    {
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            if (m_sideIds[set].empty()) {
                continue;
            }
            const auto& ids = *m_mesh.uvSets[set].corners;
            const std::uint32_t side = m_uvs[set].side[corner];
            const bool has = ids[corner] >= 0 && ids[m_links.next(corner)] >= 0;
            if (has && m_sideIds[set][side] < 0) {
                m_sideIds[set][side] = m_rewriter.addUv(set, m_uvs[set].sides[side]);
            }
        }
    }

    std::int32_t half(std::int32_t reference, bool isSecond) const
    {
        const std::uint32_t edge = edgeOf(reference);
        const bool isBackwards = reference < 0;
        return referenceTo(isSecond != isBackwards ? m_secondHalf[edge] : edge, isBackwards);
    }

    // --- writing

    enum class At { Corner, Side, Middle };

    void addCorner(std::int32_t reference, At place, std::uint32_t face, std::uint32_t corner)
    {
        m_ids.assign(m_uvs.size(), -1);
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            if (m_sideIds[set].empty()) {
                continue;
            }
            const bool isWhole = m_isDivided[face] == 0 || m_middleIds[set][face] >= 0;
            const std::int32_t id = place == At::Corner ? m_rewriter.uvId(set, corner)
                                    : place == At::Side ? m_sideIds[set][m_uvs[set].side[corner]]
                                                        : m_middleIds[set][face];
            m_ids[set] = isWhole ? id : -1;
        }
        m_rewriter.addCorner(reference, m_ids);
    }

    /// The face as it is, with the new vertices on its edges; or its first part.
    void writeFace(std::uint32_t face)
    {
        if (m_isDivided[face] != 0) {
            writePart(face, m_topology.firstCorner(face));
            return;
        }
        m_rewriter.beginFace(face);
        for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
             ++loop) {
            for (std::uint32_t corner = m_topology.loopStart[loop];
                 corner < m_topology.loopStart[loop + 1]; ++corner) {
                const std::int32_t reference = m_topology.corners[corner];
                if (m_cutPoint[edgeOf(reference)] == kNone) {
                    addCorner(reference, At::Corner, face, corner);
                    continue;
                }
                addCorner(half(reference, false), At::Corner, face, corner);
                addCorner(half(reference, true), At::Side, face, corner);
            }
            m_rewriter.endLoop();
        }
        m_rewriter.endFace();
    }

    /// From the vertex on the edge before the corner.
    void writePart(std::uint32_t face, std::uint32_t corner)
    {
        if (m_topology.firstCorner(face) == m_topology.endCorner(face)) {
            m_rewriter.copyFace(face);
            return;
        }
        const std::uint32_t last = m_links.previous(corner);
        m_rewriter.beginFace(face);
        addCorner(half(m_topology.corners[last], true), At::Side, face, last);
        addCorner(half(m_topology.corners[corner], false), At::Corner, face, corner);
        addCorner(referenceTo(m_spoke[corner], false), At::Side, face, corner);
        addCorner(referenceTo(m_spoke[last], true), At::Middle, face, corner);
        m_rewriter.endFace();
    }

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_faces;
    MeshRewriter m_rewriter;
    CornerLinks m_links;
    NumberLists m_cornersOf;
    std::vector<std::uint8_t> m_isDivided;
    SubdivisionLevel m_level;
    SubdividedPoints m_points;
    std::vector<SubdividedUvs> m_uvs;
    std::vector<std::uint32_t> m_middle;                ///< vertex of each divided face
    std::vector<std::uint32_t> m_cutPoint;              ///< vertex of each edge that is cut
    std::vector<std::uint32_t> m_secondHalf;            ///< edge from there on
    std::vector<std::uint32_t> m_spoke;                 ///< by corner, from the vertex on its edge
    std::vector<std::vector<std::int32_t>> m_sideIds;   ///< by the first corner of a side
    std::vector<std::vector<std::int32_t>> m_middleIds; ///< by face
    std::vector<std::int32_t> m_ids;
};

/// Creases after a step: those of edges wear off, wherever they went.
void wearCreases(MeshData& mesh)
{
    if (mesh.creases == nullptr) {
        return;
    }
    MeshCreases creases = *mesh.creases;
    for (std::vector<float>* values : {&creases.edgeValues, &creases.vertexValues}) {
        for (float& value : *values) {
            value = value >= kInfinitelySharp ? value : std::max(value - 1, 0.0F);
        }
    }
    mesh.creases = std::make_shared<const MeshCreases>(std::move(creases));
}

std::size_t cornersOf(const MeshTopology& topology, std::span<const std::uint32_t> faces)
{
    return std::accumulate(faces.begin(), faces.end(), std::size_t{0},
                           [&topology](std::size_t sum, std::uint32_t face) {
                               return sum + topology.endCorner(face) - topology.firstCorner(face);
                           });
}

bool hasHoles(const MeshTopology& topology, std::span<const std::uint32_t> faces)
{
    return std::any_of(faces.begin(), faces.end(), [&topology](std::uint32_t face) {
        return topology.firstLoop(face + 1) - topology.firstLoop(face) != 1;
    });
}

/// Hard edges of the given faces turn soft unless their pieces are to be hard.
void softenDivided(MeshData& mesh, std::span<const std::uint32_t> faces)
{
    if (mesh.edgeSmooth == nullptr) {
        return;
    }
    const MeshTopology& topology = *mesh.topology;
    EdgeFlags flags = *mesh.edgeSmooth;
    for (const std::uint32_t face : faces) {
        for (std::uint32_t corner = topology.firstCorner(face); corner < topology.endCorner(face);
             ++corner) {
            flags[edgeOf(topology.corners[corner])] = 1;
        }
    }
    mesh.edgeSmooth = shareEdgeFlags(std::move(flags));
}

} // namespace

/// Every step makes a face of each corner, of four corners.
std::uint32_t possibleDivisions(const MeshData& mesh, std::span<const std::uint32_t> faces,
                                std::uint32_t divisions)
{
    std::size_t made = cornersOf(*mesh.topology, faces);
    std::uint32_t possible = 0;
    while (possible < std::min(divisions, kMostDivisions) && made <= kMostSmoothedFaces) {
        ++possible;
        made *= 4;
    }
    return possible;
}

std::shared_ptr<const MeshData> smoothFaces(const MeshData& mesh,
                                            std::span<const std::uint32_t> faces,
                                            std::uint32_t divisions, const SmoothingRules& rules)
{
    if (hasHoles(*mesh.topology, faces) || mesh.points == nullptr ||
        possibleDivisions(mesh, faces, divisions) != divisions) {
        return nullptr;
    }
    std::vector<std::uint32_t> divided(faces.begin(), faces.end());
    auto result = std::make_shared<MeshData>(mesh);
    for (std::uint32_t step = 0; step < divisions; ++step) {
        const std::uint32_t count = result->topology->faceCount();
        const auto next = FaceStep(*result, divided, rules).run();
        if (next == nullptr) {
            return nullptr;
        }
        result = std::make_shared<MeshData>(*next);
        wearCreases(*result);
        for (std::uint32_t face = count; face < result->topology->faceCount(); ++face) {
            divided.push_back(face);
        }
    }
    if (!rules.propagatesHardEdges && divisions > 0) {
        softenDivided(*result, divided);
    }
    return result;
}

} // namespace host::geometry
