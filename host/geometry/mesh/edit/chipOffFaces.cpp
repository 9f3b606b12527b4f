#include "host/geometry/mesh/edit/chipOffFaces.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/edit/insetLoop.h"

namespace host::geometry {
namespace {

using Numbers = std::vector<std::uint32_t>;

bool isMotion(const ComponentMotion& motion)
{
    const Vec3d none;
    const Vec3d ones{1, 1, 1};
    return motion.localScale != ones || motion.localRotate != none ||
           motion.localTranslate != none || motion.offset != 0 || motion.scale != ones ||
           motion.rotate != none || motion.translate != none;
}

class FaceChipper {
public:
    FaceChipper(const MeshData& mesh, std::span<const std::uint32_t> faces, const ChipOff& chipOff);

    std::shared_ptr<const MeshData> run();

private:
    void markTaken();
    void takeOff(std::uint32_t face);
    std::uint32_t vertexFor(std::uint32_t vertex);
    std::uint32_t edgeFor(std::uint32_t edge);
    std::int32_t uvFor(std::size_t set, std::uint32_t corner);
    void forget(std::uint32_t face);
    void writeFace(std::uint32_t face);
    void place();
    void placeFace(const ComponentMover& mover, std::uint32_t face);
    bool isOutline(std::uint32_t edge) const
    {
        return !m_chipOff.isTogether || m_chippedUses[edge] == 1;
    }

    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_faces;
    const ChipOff& m_chipOff;
    MeshRewriter m_rewriter;
    std::vector<bool> m_isChipped;
    Numbers m_chippedUses;             ///< of each edge, by faces that are taken off
    std::vector<bool> m_isVertexTaken; ///< by the rest, or by an earlier face
    std::vector<bool> m_isEdgeTaken;
    Numbers m_vertexNow; ///< of the face at hand, or of all of them; kNone
    Numbers m_edgeNow;
    std::vector<std::vector<std::int32_t>> m_uvCopy; ///< by set and id; -1
    std::vector<std::int32_t> m_cornerUvs;
    Numbers m_cornerVertex; ///< of the corners of faces that are taken off
    std::vector<std::int32_t> m_cornerReference;
    std::vector<Vec3d> m_points; ///< in the space of the motion
    struct Sum {
        Vec3d places;
        std::uint32_t count = 0;
    };
    std::vector<Sum> m_sums; ///< of the vertices of the result
};

FaceChipper::FaceChipper(const MeshData& mesh, std::span<const std::uint32_t> faces,
                         const ChipOff& chipOff)
    : m_topology(*mesh.topology)
    , m_faces(faces)
    , m_chipOff(chipOff)
    , m_rewriter(mesh)
    , m_isChipped(m_topology.faceCount())
    , m_chippedUses(m_topology.edges.size())
    , m_isVertexTaken(m_topology.vertexCount, chipOff.duplicates)
    , m_isEdgeTaken(m_topology.edges.size(), chipOff.duplicates)
    , m_vertexNow(m_topology.vertexCount, kNone)
    , m_edgeNow(m_topology.edges.size(), kNone)
    , m_cornerUvs(mesh.uvSets.size())
    , m_cornerVertex(m_topology.corners.size())
    , m_cornerReference(m_topology.corners.size())
{
    for (std::size_t set = 0; set < mesh.uvSets.size(); ++set) {
        m_uvCopy.emplace_back(m_rewriter.uvPoints(set).size(), -1);
    }
    markTaken();
}

void FaceChipper::markTaken()
{
    for (const std::uint32_t face : m_faces) {
        m_isChipped[face] = true;
    }
    for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
            if (m_isChipped[face]) {
                ++m_chippedUses[edge];
            } else {
                m_isEdgeTaken[edge] = true;
                m_isVertexTaken[m_topology.cornerVertex(corner)] = true;
            }
        }
    }
}

std::uint32_t FaceChipper::vertexFor(std::uint32_t vertex)
{
    std::uint32_t& now = m_vertexNow[vertex];
    if (now == kNone) {
        now = m_isVertexTaken[vertex]
                  ? m_rewriter.addPoint((*m_rewriter.before().points)[vertex], vertex)
                  : vertex;
        m_isVertexTaken[vertex] = true;
    }
    return now;
}

std::uint32_t FaceChipper::edgeFor(std::uint32_t edge)
{
    const MeshEdge ends = m_topology.edges[edge];
    const std::uint32_t start = vertexFor(ends.start);
    const std::uint32_t end = vertexFor(ends.end);
    std::uint32_t& now = m_edgeNow[edge];
    if (now == kNone) {
        if (m_isEdgeTaken[edge]) {
            now = m_rewriter.addEdge(start, end, m_rewriter.before().isSmooth(edge), edge);
        } else {
            m_rewriter.edges()[edge] = {start, end};
            now = edge;
        }
        m_isEdgeTaken[edge] = true;
    }
    return now;
}

void FaceChipper::forget(std::uint32_t face)
{
    for (std::uint32_t corner = m_topology.firstCorner(face); corner < m_topology.endCorner(face);
         ++corner) {
        m_vertexNow[m_topology.cornerVertex(corner)] = kNone;
        m_edgeNow[edgeOf(m_topology.corners[corner])] = kNone;
    }
}

void FaceChipper::takeOff(std::uint32_t face)
{
    for (std::uint32_t corner = m_topology.firstCorner(face); corner < m_topology.endCorner(face);
         ++corner) {
        const std::int32_t reference = m_topology.corners[corner];
        m_cornerReference[corner] = referenceTo(edgeFor(edgeOf(reference)), reference < 0);
        m_cornerVertex[corner] = vertexFor(m_topology.cornerVertex(corner));
    }
    if (!m_chipOff.isTogether) {
        forget(face);
    }
}

std::int32_t FaceChipper::uvFor(std::size_t set, std::uint32_t corner)
{
    const std::int32_t id = m_rewriter.uvId(set, corner);
    if (id < 0 || !m_chipOff.duplicates) {
        return id;
    }
    std::int32_t& copy = m_uvCopy[set][static_cast<std::size_t>(id)];
    if (copy < 0) {
        const Vec2f point = m_rewriter.uvPoints(set)[static_cast<std::size_t>(id)];
        copy = m_rewriter.addUv(set, point);
    }
    return copy;
}

void FaceChipper::writeFace(std::uint32_t face)
{
    m_rewriter.beginFace(face);
    for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
         ++loop) {
        for (std::uint32_t corner = m_topology.loopStart[loop];
             corner < m_topology.loopStart[loop + 1]; ++corner) {
            for (std::size_t set = 0; set < m_cornerUvs.size(); ++set) {
                m_cornerUvs[set] = uvFor(set, corner);
            }
            m_rewriter.addCorner(m_cornerReference[corner], m_cornerUvs);
        }
        m_rewriter.endLoop();
    }
    m_rewriter.endFace();
}

void FaceChipper::placeFace(const ComponentMover& mover, std::uint32_t face)
{
    const LocalFrame frame = faceFrame(m_topology, m_points, face);
    std::vector<Vec3d> places;
    std::vector<std::uint8_t> isSetIn;
    for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
         ++loop) {
        const std::uint32_t first = m_topology.loopStart[loop];
        const std::uint32_t end = m_topology.loopStart[loop + 1];
        places.clear();
        isSetIn.clear();
        for (std::uint32_t corner = first; corner < end; ++corner) {
            places.push_back(mover.scaled(frame, m_points[m_topology.cornerVertex(corner)]));
            isSetIn.push_back(isOutline(edgeOf(m_topology.corners[corner])) ? 1 : 0);
        }
        if (m_chipOff.motion.offset != 0) {
            std::vector<Vec3d> inset;
            insetLoop(places, isSetIn, frame.z, m_chipOff.motion.offset, inset);
            places = std::move(inset);
        }
        for (std::uint32_t corner = first; corner < end; ++corner) {
            Sum& sum = m_sums[m_cornerVertex[corner]];
            sum.places = sum.places + mover.placed(frame, places[corner - first]);
            ++sum.count;
        }
    }
}

void FaceChipper::place()
{
    const ComponentMotion& motion = m_chipOff.motion;
    m_points = pointsInSpace(m_rewriter.before(), motion.toSpace);
    const Matrix4 back = inverse(motion.toSpace);
    const ComponentMover mover(motion);
    m_sums.assign(m_rewriter.points().size(), {});
    for (const std::uint32_t face : m_faces) {
        placeFace(mover, face);
    }
    for (std::size_t vertex = 0; vertex < m_sums.size(); ++vertex) {
        if (m_sums[vertex].count > 0) {
            const Vec3d mean = m_sums[vertex].places * (1.0 / m_sums[vertex].count);
            m_rewriter.points()[vertex] = toFloat(transformPoint(mover.moved(mean), back));
        }
    }
}

std::shared_ptr<const MeshData> FaceChipper::run()
{
    for (const std::uint32_t face : m_faces) {
        takeOff(face);
    }
    if (m_rewriter.isFull()) {
        return nullptr;
    }
    if (isMotion(m_chipOff.motion)) {
        place();
    }
    for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
        if (m_isChipped[face] && !m_chipOff.duplicates) {
            writeFace(face);
        } else {
            m_rewriter.copyFace(face);
        }
    }
    for (const std::uint32_t face : m_faces) {
        if (m_chipOff.duplicates) {
            writeFace(face);
        }
    }
    return m_rewriter.finish();
}

} // namespace

std::shared_ptr<const MeshData>
chipOffFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const ChipOff& chipOff)
{
    return FaceChipper(mesh, faces, chipOff).run();
}

} // namespace host::geometry
