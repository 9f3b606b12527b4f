#include "host/geometry/mesh/edit/extrudeFaces.h"

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/edit/edgeSmoothness.h"
#include "host/geometry/mesh/edit/insetLoop.h"

#include <algorithm>
#include <utility>

namespace host::geometry {
namespace {

/// A vertex that was made anew: one point for each layer, or the last layer's only.
struct Copy {
    std::uint32_t firstPoint = 0;
    std::uint32_t firstUpright = kNone; ///< kNone where no wall stands
    Vec3d sum;
    Vec3d normals;
    std::uint32_t uses = 0;
};

/// A wall over the edge that a corner leaves along.
struct Wall {
    std::uint32_t corner = 0;
    std::uint32_t firstRail = 0; ///< the edge along the top of the lowest face
};

constexpr std::int32_t kNoUv = -1;

/// The texture coordinates of one set that were made anew: the first of a run of layers.
struct UvCopies {
    std::vector<std::int32_t> copy;     ///< of an id
    std::vector<std::int32_t> ofCorner; ///< of the id at a corner
};

class FaceExtruder {
public:
    FaceExtruder(const MeshData& mesh, std::span<const std::uint32_t> faces,
                 const FaceExtrusion& extrusion)
        : m_topology(*mesh.topology)
        , m_faces(faces)
        , m_extrusion(extrusion)
        , m_layers(extrusion.divisions)
        , m_rewriter(mesh)
        , m_links(m_topology)
        , m_isDrawn(m_topology.faceCount())
        , m_drawnUses(m_topology.edges.size())
        , m_otherUses(m_topology.edges.size())
        , m_hasWall(m_topology.vertexCount)
        , m_vertexCopy(m_topology.vertexCount, kNone)
        , m_edgeCopy(m_topology.edges.size(), kNone)
        , m_cornerCopy(m_topology.corners.size(), kNone)
        , m_cornerTop(m_topology.corners.size(), kNone)
        , m_uvs(mesh.uvSets.size())
        , m_uvIds(mesh.uvSets.size())
    {
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            m_uvs[set].copy.resize(m_rewriter.uvPoints(set).size(), kNoUv);
            m_uvs[set].ofCorner.resize(m_topology.corners.size(), kNoUv);
        }
    }

    std::shared_ptr<const MeshData> run()
    {
        if (!countUses()) {
            return nullptr;
        }
        reserve();
        for (const std::uint32_t face : m_faces) {
            copyParts(face);
        }
        placePoints();
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            m_isDrawn[face] ? writeTop(face) : m_rewriter.copyFace(face);
        }
        writeBottoms();
        for (const Wall& wall : m_walls) {
            writeWall(wall);
        }
        forgetParts();
        return m_rewriter.finish({.edges = true, .points = true});
    }

private:
    /// False where there would be too many walls.
    bool countUses()
    {
        for (const std::uint32_t face : m_faces) {
            m_isDrawn[face] = true;
        }
        for (std::uint32_t corner = 0; corner < m_topology.corners.size(); ++corner) {
            const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
            ++(m_isDrawn[m_links.face(corner)] ? m_drawnUses : m_otherUses)[edge];
        }
        std::size_t walls = 0;
        for (std::uint32_t corner = 0; corner < m_topology.corners.size(); ++corner) {
            const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
            if (m_isDrawn[m_links.face(corner)] && isOutline(edge)) {
                walls += m_layers;
                ++m_wallCount;
                m_hasWall[m_topology.edges[edge].start] = true;
                m_hasWall[m_topology.edges[edge].end] = true;
            }
        }
        return walls <= kMaxExtrudedFaces;
    }

    /// Memory for what there will be, as far as it is known before the faces are walked.
    void reserve()
    {
        std::size_t corners = 0;
        for (const std::uint32_t face : m_faces) {
            corners += m_topology.endCorner(face) - m_topology.firstCorner(face);
        }
        std::size_t edges = corners;
        std::size_t vertices = corners;
        if (m_extrusion.isTogether) {
            edges = static_cast<std::size_t>(
                std::count_if(m_drawnUses.begin(), m_drawnUses.end(),
                              [](std::uint32_t uses) { return uses > 0; }));
            vertices = std::min<std::size_t>(corners, m_topology.vertexCount);
        }
        const std::size_t inner = edges - std::min(edges, m_wallCount);
        const std::size_t uprights = std::min(m_wallCount, vertices);
        const std::size_t walls = m_wallCount * m_layers;
        m_copies.reserve(vertices);
        m_walls.reserve(m_wallCount);
        m_rewriter.reserve(m_topology.vertexCount + vertices + uprights * (m_layers - 1),
                           m_topology.edges.size() + inner + walls + uprights * m_layers,
                           m_topology.faceCount() + walls, m_topology.corners.size() + 4 * walls);
        m_rewriter.reserveUvs(uprights * m_layers);
    }

    /// What was needed to write the faces: the mesh is put together of what they are made of.
    void forgetParts()
    {
        m_points = {};
        m_copies = {};
        m_walls = {};
        m_uvs = {};
        m_cornerCopy = {};
        m_cornerTop = {};
        m_vertexCopy = {};
        m_edgeCopy = {};
        m_drawnUses = {};
        m_otherUses = {};
    }

    /// True for an edge of a face that is drawn out, where it gets a wall.
    bool isOutline(std::uint32_t edge) const
    {
        return !m_extrusion.isTogether || m_drawnUses[edge] == 1;
    }

    // --- new vertices and edges

    void copyParts(std::uint32_t face)
    {
        const std::uint32_t first = m_topology.firstCorner(face);
        const std::uint32_t end = m_topology.endCorner(face);
        for (std::uint32_t corner = first; corner < end; ++corner) {
            copyEdge(corner);
        }
        for (std::uint32_t corner = first; corner < end; ++corner) {
            m_cornerCopy[corner] = m_vertexCopy[m_topology.cornerVertex(corner)];
        }
        for (std::size_t set = 0; set < m_uvs.size(); ++set) {
            copyUvs(set, first, end);
        }
        for (std::uint32_t corner = first; corner < end && !m_extrusion.isTogether; ++corner) {
            m_vertexCopy[m_topology.cornerVertex(corner)] = kNone;
            m_edgeCopy[edgeOf(m_topology.corners[corner])] = kNone;
        }
    }

    /// Texture coordinates for the layers over the corners where walls stand.
    void copyUvs(std::size_t set, std::uint32_t first, std::uint32_t end)
    {
        UvCopies& uvs = m_uvs[set];
        for (std::uint32_t corner = first; corner < end; ++corner) {
            const std::int32_t id = m_rewriter.uvId(set, corner);
            if (id < 0 || !m_hasWall[m_topology.cornerVertex(corner)]) {
                continue;
            }
            std::int32_t& copy = uvs.copy[static_cast<std::size_t>(id)];
            if (copy == kNoUv) {
                copy = static_cast<std::int32_t>(m_rewriter.uvPoints(set).size());
                const Vec2f place = m_rewriter.uvPoints(set)[static_cast<std::size_t>(id)];
                for (std::uint32_t layer = 0; layer < m_layers; ++layer) {
                    m_rewriter.addUv(set, place);
                }
            }
            uvs.ofCorner[corner] = copy;
        }
        for (std::uint32_t corner = first; corner < end && !m_extrusion.isTogether; ++corner) {
            const std::int32_t id = m_rewriter.uvId(set, corner);
            if (id >= 0) {
                uvs.copy[static_cast<std::size_t>(id)] = kNoUv;
            }
        }
    }

    void copyEdge(std::uint32_t corner)
    {
        const std::uint32_t edge = edgeOf(m_topology.corners[corner]);
        const MeshEdge ends = m_topology.edges[edge];
        const std::uint32_t start = copyVertex(ends.start);
        const std::uint32_t end = copyVertex(ends.end);
        const bool hasWall = isOutline(edge);
        if (m_edgeCopy[edge] == kNone) {
            m_edgeCopy[edge] = static_cast<std::uint32_t>(m_rewriter.edges().size());
            for (std::uint32_t layer = hasWall ? 1 : m_layers; layer <= m_layers; ++layer) {
                const bool isSmooth = m_rewriter.before().isSmooth(edge);
                const std::uint32_t rail =
                    m_rewriter.addEdge(pointOf(start, layer), pointOf(end, layer), isSmooth,
                                       layer == m_layers ? edge : kNoSource);
                if (hasWall) {
                    markSmoothByAngle(m_rewriter, rail);
                }
            }
        }
        m_cornerTop[corner] = m_edgeCopy[edge] + (hasWall ? m_layers - 1 : 0);
        if (hasWall) {
            markSmoothByAngle(m_rewriter, edge);
            m_walls.push_back({corner, m_edgeCopy[edge]});
        }
    }

    std::uint32_t copyVertex(std::uint32_t vertex)
    {
        if (m_vertexCopy[vertex] != kNone) {
            return m_vertexCopy[vertex];
        }
        Copy copy;
        copy.firstPoint = static_cast<std::uint32_t>(m_rewriter.points().size());
        if (m_hasWall[vertex]) {
            copy.firstUpright = static_cast<std::uint32_t>(m_rewriter.edges().size());
            std::uint32_t below = vertex;
            for (std::uint32_t layer = 1; layer <= m_layers; ++layer) {
                const std::uint32_t point = m_rewriter.addPoint({});
                markSmoothByAngle(m_rewriter, m_rewriter.addEdge(below, point, false));
                below = point;
            }
        } else {
            m_rewriter.addPoint({});
        }
        m_copies.push_back(copy);
        return m_vertexCopy[vertex] = static_cast<std::uint32_t>(m_copies.size() - 1);
    }

    /// The point of a copy in a layer (1 the lowest, 0 where it comes from).
    std::uint32_t pointOf(std::uint32_t copy, std::uint32_t layer) const
    {
        const Copy& made = m_copies[copy];
        return made.firstUpright == kNone ? made.firstPoint : made.firstPoint + layer - 1;
    }

    // --- places

    void placePoints()
    {
        const ComponentMotion& motion = m_extrusion.motion;
        m_points = pointsInSpace(m_rewriter.before(), motion.toSpace);
        const Matrix4 back = inverse(motion.toSpace);
        for (std::uint32_t layer = 1; layer <= m_layers && !m_rewriter.isFull(); ++layer) {
            const ComponentMotion part =
                layer == m_layers ? motion
                                  : atFraction(motion, static_cast<double>(layer) / m_layers);
            placeLayer(part, layer, back);
        }
    }

    void placeLayer(const ComponentMotion& motion, std::uint32_t layer, const Matrix4& back)
    {
        const ComponentMover mover(motion);
        for (Copy& copy : m_copies) {
            copy.sum = {};
            copy.normals = {};
            copy.uses = 0;
        }
        for (const std::uint32_t face : m_faces) {
            moveFace(mover, motion.offset, face);
        }
        for (const Copy& copy : m_copies) {
            if (copy.uses > 0 && (copy.firstUpright != kNone || layer == m_layers)) {
                const Vec3d normal = copy.normals * (1.0 / copy.uses);
                const Vec3d place =
                    copy.sum * (1.0 / copy.uses) + thicknessAlong(normal, motion.thickness);
                const std::uint32_t point =
                    copy.firstPoint + (copy.firstUpright == kNone ? 0 : layer - 1);
                m_rewriter.points()[point] = toFloat(transformPoint(mover.moved(place), back));
            }
        }
    }

    /// So far along the mean of unit normals that each plane moves by the thickness.
    static Vec3d thicknessAlong(const Vec3d& meanNormal, double thickness)
    {
        constexpr double kSharpest = 0.01; // where faces nearly touch back to back
        return meanNormal * (thickness / std::max(dot(meanNormal, meanNormal), kSharpest));
    }

    void moveFace(const ComponentMover& mover, double offset, std::uint32_t face)
    {
        const LocalFrame frame = faceFrame(m_topology, m_points, face);
        const Vec3d normal = faceNormal(m_topology, m_points, face);
        for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
             ++loop) {
            const std::uint32_t first = m_topology.loopStart[loop];
            const std::uint32_t end = m_topology.loopStart[loop + 1];
            m_loop.clear();
            m_isSetIn.clear();
            for (std::uint32_t corner = first; corner < end; ++corner) {
                m_loop.push_back(mover.scaled(frame, m_points[m_topology.cornerVertex(corner)]));
                m_isSetIn.push_back(isOutline(edgeOf(m_topology.corners[corner])) ? 1 : 0);
            }
            if (offset != 0) {
                insetLoop(m_loop, m_isSetIn, frame.z, offset, m_inset);
                m_loop.swap(m_inset);
            }
            for (std::uint32_t corner = first; corner < end; ++corner) {
                Copy& copy = m_copies[m_cornerCopy[corner]];
                copy.sum = copy.sum + mover.placed(frame, m_loop[corner - first]);
                copy.normals = copy.normals + normal;
                ++copy.uses;
            }
        }
    }

    // --- faces

    void writeTop(std::uint32_t face)
    {
        m_rewriter.beginFace(face);
        for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
             ++loop) {
            for (std::uint32_t corner = m_topology.loopStart[loop];
                 corner < m_topology.loopStart[loop + 1]; ++corner) {
                for (std::size_t set = 0; set < m_uvIds.size(); ++set) {
                    m_uvIds[set] = uvOf(set, corner, m_layers);
                }
                m_rewriter.addCorner(
                    referenceTo(m_cornerTop[corner], m_topology.corners[corner] < 0), m_uvIds);
            }
            m_rewriter.endLoop();
        }
        m_rewriter.endFace();
    }

    /// The uv id over a corner in a layer.
    std::int32_t uvOf(std::size_t set, std::uint32_t corner, std::uint32_t layer) const
    {
        const std::int32_t copy = m_uvs[set].ofCorner[corner];
        return layer == 0 || copy == kNoUv ? m_rewriter.uvId(set, corner)
                                           : copy + static_cast<std::int32_t>(layer) - 1;
    }

    /// Copies that look the other way, of faces all of whose neighbours are drawn out too.
    void writeBottoms()
    {
        if (!m_extrusion.isTogether) {
            return;
        }
        DisjointSets shells(m_topology.faceCount());
        std::vector<std::uint32_t> faceOfEdge(m_topology.edges.size(), kNone);
        std::vector<bool> isOpen(m_topology.faceCount());
        eachDrawnCorner([&](std::uint32_t face, std::uint32_t corner) {
            std::uint32_t& last = faceOfEdge[edgeOf(m_topology.corners[corner])];
            if (last != kNone) {
                shells.join(last, face);
            }
            last = face;
        });
        eachDrawnCorner([&](std::uint32_t face, std::uint32_t corner) {
            if (m_otherUses[edgeOf(m_topology.corners[corner])] > 0) {
                isOpen[shells.lowest(face)] = true;
            }
        });
        for (const std::uint32_t face : m_faces) {
            if (!isOpen[shells.lowest(face)]) {
                writeBottom(face);
            }
        }
    }

    template<class Visit>
    void eachDrawnCorner(const Visit& visit) const
    {
        for (const std::uint32_t face : m_faces) {
            for (std::uint32_t corner = m_topology.firstCorner(face);
                 corner < m_topology.endCorner(face); ++corner) {
                visit(face, corner);
            }
        }
    }

    void writeBottom(std::uint32_t face)
    {
        m_rewriter.beginFace(face);
        for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
             ++loop) {
            std::uint32_t corner = m_topology.loopStart[loop];
            for (std::uint32_t i = corner; i < m_topology.loopStart[loop + 1]; ++i) {
                const std::uint32_t previous = m_links.previous(corner);
                m_rewriter.addCorner(reversed(m_topology.corners[previous]), corner);
                corner = previous;
            }
            m_rewriter.endLoop();
        }
        m_rewriter.endFace();
    }

    void writeWall(const Wall& wall)
    {
        const std::uint32_t next = m_links.next(wall.corner);
        const std::int32_t reference = m_topology.corners[wall.corner];
        const Copy& here = m_copies[m_cornerCopy[wall.corner]];
        const Copy& there = m_copies[m_cornerCopy[next]];
        const std::uint32_t face = m_links.face(wall.corner);
        for (std::uint32_t layer = 0; layer < m_layers; ++layer) {
            const std::int32_t bottom =
                layer == 0 ? reference : referenceTo(wall.firstRail + layer - 1, reference < 0);
            m_rewriter.beginFace(face);
            addWallCorner(bottom, wall.corner, layer);
            addWallCorner(referenceTo(there.firstUpright + layer, false), next, layer);
            addWallCorner(referenceTo(wall.firstRail + layer, reference >= 0), next, layer + 1);
            addWallCorner(referenceTo(here.firstUpright + layer, true), wall.corner, layer + 1);
            m_rewriter.endFace();
        }
    }

    void addWallCorner(std::int32_t reference, std::uint32_t uvCorner, std::uint32_t layer)
    {
        for (std::size_t set = 0; set < m_uvIds.size(); ++set) {
            m_uvIds[set] = uvOf(set, uvCorner, layer);
        }
        m_rewriter.addCorner(reference, m_uvIds);
    }

    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_faces;
    const FaceExtrusion& m_extrusion;
    std::uint32_t m_layers = 1;
    std::size_t m_wallCount = 0; ///< each of as many faces as there are layers
    MeshRewriter m_rewriter;
    CornerLinks m_links;
    std::vector<bool> m_isDrawn;
    std::vector<std::uint32_t> m_drawnUses; ///< of each edge, by faces that are drawn out
    std::vector<std::uint32_t> m_otherUses; ///< by others
    std::vector<bool> m_hasWall;            ///< of each vertex
    std::vector<std::uint32_t> m_vertexCopy;
    std::vector<std::uint32_t> m_edgeCopy;   ///< first of the run along the tops
    std::vector<std::uint32_t> m_cornerCopy; ///< of the vertex at a corner
    std::vector<std::uint32_t> m_cornerTop;  ///< new edge of a corner
    std::vector<Copy> m_copies;
    std::vector<Wall> m_walls;
    std::vector<UvCopies> m_uvs;
    std::vector<std::int32_t> m_uvIds;
    std::vector<Vec3d> m_points;
    std::vector<Vec3d> m_loop;
    std::vector<Vec3d> m_inset;
    std::vector<std::uint8_t> m_isSetIn;
};

} // namespace

std::shared_ptr<const MeshData> extrudeFaces(const MeshData& mesh,
                                             std::span<const std::uint32_t> faces,
                                             const FaceExtrusion& extrusion)
{
    auto extruded = FaceExtruder(mesh, faces, extrusion).run();
    return withSmoothEdges(std::move(extruded), extrusion.smoothingAngle);
}

} // namespace host::geometry
