#include "host/geometry/mesh/edit/cutFaces.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/deleteFaces.h"
#include "host/geometry/mesh/edit/insertVertices.h"

#include <algorithm>
#include <cmath>

namespace host::geometry {
namespace {

using Numbers = std::vector<std::uint32_t>;

std::vector<double> distancesTo(const CutPlane& plane, const MeshData& mesh)
{
    std::vector<double> distances;
    distances.reserve(mesh.points->size());
    for (const Vec3f& point : *mesh.points) {
        distances.push_back(
            dot(transformPoint(toDouble(point), plane.toSpace) - plane.point, plane.normal));
    }
    return distances;
}

/// 1 before the plane, -1 behind it, 0 in it, also where there is no distance.
int sideOf(double distance)
{
    return distance > kCutTolerance ? 1 : distance < -kCutTolerance ? -1 : 0;
}

std::vector<EdgePoint> crossings(const MeshTopology& topology, const std::vector<bool>& isNamed,
                                 std::span<const double> distances)
{
    std::vector<bool> isOfNamed(topology.edges.size());
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        for (std::uint32_t corner = topology.firstCorner(face);
             isNamed[face] && corner < topology.endCorner(face); ++corner) {
            isOfNamed[edgeOf(topology.corners[corner])] = true;
        }
    }
    std::vector<EdgePoint> points;
    for (std::uint32_t edge = 0; edge < topology.edges.size(); ++edge) {
        const double start = distances[topology.edges[edge].start];
        const double end = distances[topology.edges[edge].end];
        if (isOfNamed[edge] && sideOf(start) * sideOf(end) < 0) {
            points.push_back({edge, start / (start - end)});
        }
    }
    return points;
}

/// Cuts faces whose loops have a vertex wherever they pass through the plane.
class FaceCutter {
public:
    /// Vertices from `firstInPlane` on were put into the plane, wherever they came to stand in
    /// single precision.
    FaceCutter(const MeshData& mesh, const CutPlane& plane, std::size_t firstInPlane)
        : m_mesh(mesh), m_topology(*mesh.topology), m_plane(plane), m_rewriter(mesh)
    {
        for (const double distance : distancesTo(plane, mesh)) {
            m_sides.push_back(m_sides.size() < firstInPlane ? sideOf(distance) : 0);
        }
    }

    void add(std::uint32_t face, bool isNamed);
    CutMesh finish();

private:
    struct Passage {
        std::uint32_t corner = 0; ///< of the face, from 0
        double along = 0;         ///< where on the line of the cut
    };
    struct Chord {
        std::uint32_t partner = kNone; ///< the corner at its other end
        std::int32_t reference = 0;    ///< to there
    };
    struct Part {
        std::uint32_t face = 0;
        bool isBefore = false;
        std::vector<std::pair<std::int32_t, std::uint32_t>> corners; ///< references and sources
    };

    std::uint32_t vertex(std::uint32_t corner) const
    {
        return m_topology.cornerVertex(m_first + corner);
    }
    int side(std::uint32_t corner) const { return m_sides[vertex(corner)]; }
    std::uint32_t next(std::uint32_t corner) const { return corner + 1 < m_size ? corner + 1 : 0; }
    Vec3d place(std::uint32_t corner) const
    {
        return transformPoint(toDouble((*m_mesh.points)[vertex(corner)]), m_plane.toSpace);
    }
    std::uint32_t firstOffPlane() const;
    void findPassages(std::uint32_t start);
    void sortPassages();
    void makeChords();
    Part trace(std::uint32_t face, std::uint32_t start);
    void write(const Part& part);

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    CutPlane m_plane;
    MeshRewriter m_rewriter;
    std::vector<int> m_sides;  ///< of all vertices
    std::uint32_t m_first = 0; ///< corner of the face at hand
    std::uint32_t m_size = 0;  ///< its corners
    std::vector<Passage> m_passages;
    std::vector<Chord> m_chords; ///< of each corner
    std::vector<bool> m_isTraced;
    std::vector<Part> m_laterParts;
    std::vector<int> m_faceSides;
};

std::uint32_t FaceCutter::firstOffPlane() const
{
    for (std::uint32_t corner = 0; corner < m_size; ++corner) {
        if (side(corner) != 0) {
            return corner;
        }
    }
    return kNone;
}

/// Where the loop passes from one side to the other. Of a run of corners in the plane the first is
/// taken.
void FaceCutter::findPassages(std::uint32_t start)
{
    m_passages.clear();
    int lastSide = side(start);
    std::uint32_t inPlane = kNone;
    std::uint32_t corner = start;
    do {
        corner = next(corner);
        if (side(corner) == 0) {
            inPlane = inPlane == kNone ? corner : inPlane;
            continue;
        }
        if (side(corner) != lastSide && inPlane != kNone) {
            m_passages.push_back({inPlane, 0});
        }
        lastSide = side(corner);
        inPlane = kNone;
    } while (corner != start);
}

/// Along the line in which face and plane meet: between the first and the second passage lies the
/// face, between the second and the third what is outside of it, and so on.
void FaceCutter::sortPassages()
{
    const Vec3d from = place(m_passages.front().corner);
    Vec3d way;
    for (const Passage& passage : m_passages) {
        const Vec3d there = place(passage.corner) - from;
        way = dot(there, there) > dot(way, way) ? there : way;
    }
    for (Passage& passage : m_passages) {
        const double along = dot(place(passage.corner) - from, way);
        passage.along = std::isfinite(along) ? along : 0;
    }
    std::stable_sort(m_passages.begin(), m_passages.end(),
                     [](const Passage& a, const Passage& b) { return a.along < b.along; });
}

void FaceCutter::makeChords()
{
    m_chords.assign(m_size, {});
    for (std::size_t i = 0; i + 1 < m_passages.size(); i += 2) {
        m_chords[m_passages[i].corner].partner = m_passages[i + 1].corner;
        m_chords[m_passages[i + 1].corner].partner = m_passages[i].corner;
    }
    for (std::uint32_t corner = 0; corner < m_size; ++corner) {
        Chord& chord = m_chords[corner];
        if (chord.partner != kNone && corner < chord.partner) {
            const std::uint32_t edge =
                m_rewriter.addEdge(vertex(corner), vertex(chord.partner), true);
            chord.reference = referenceTo(edge, false);
            m_chords[chord.partner].reference = referenceTo(edge, true);
        }
    }
}

/// The part with a corner off the plane: along the loop, and wherever a cut begins, along it.
FaceCutter::Part FaceCutter::trace(std::uint32_t face, std::uint32_t start)
{
    Part part{face, side(start) > 0, {}};
    std::uint32_t corner = start;
    do {
        m_isTraced[corner] = true;
        if (m_chords[corner].partner != kNone) {
            part.corners.emplace_back(m_chords[corner].reference, m_first + corner);
            corner = m_chords[corner].partner;
        }
        part.corners.emplace_back(m_topology.corners[m_first + corner], m_first + corner);
        corner = next(corner);
    } while (corner != start && part.corners.size() <= std::size_t{2} * m_size);
    return part;
}

void FaceCutter::write(const Part& part)
{
    m_faceSides.push_back(part.isBefore ? 1 : -1);
    m_rewriter.beginFace(part.face);
    for (const auto& [reference, source] : part.corners) {
        m_rewriter.addCorner(reference, source);
    }
    m_rewriter.endFace();
}

void FaceCutter::add(std::uint32_t face, bool isNamed)
{
    m_first = m_topology.firstCorner(face);
    m_size = m_topology.endCorner(face) - m_first;
    const std::uint32_t start = firstOffPlane();
    const bool hasHoles = m_topology.firstLoop(face) + 1 != m_topology.firstLoop(face + 1);
    m_passages.clear();
    if (isNamed && !hasHoles && start != kNone) {
        findPassages(start);
    }
    if (m_passages.size() < 2) {
        m_faceSides.push_back(!isNamed ? 0 : start != kNone && side(start) > 0 ? 1 : -1);
        m_rewriter.copyFace(face);
        return;
    }
    sortPassages();
    makeChords();
    m_isTraced.assign(m_size, false);
    write(trace(face, start));
    for (std::uint32_t corner = start; corner < m_size; ++corner) {
        if (!m_isTraced[corner] && side(corner) != 0) {
            m_laterParts.push_back(trace(face, corner));
        }
    }
}

CutMesh FaceCutter::finish()
{
    for (const Part& part : m_laterParts) {
        write(part);
    }
    return {m_rewriter.finish(), std::move(m_faceSides)};
}

} // namespace

CutMesh cutFaces(const MeshData& mesh, std::span<const std::uint32_t> faces, const CutPlane& plane)
{
    std::vector<bool> isNamed(mesh.topology->faceCount());
    for (const std::uint32_t face : faces) {
        if (face < isNamed.size()) {
            isNamed[face] = true;
        }
    }
    const auto split =
        insertVertices(mesh, crossings(*mesh.topology, isNamed, distancesTo(plane, mesh)));
    if (split == nullptr) {
        return {};
    }
    FaceCutter cutter(*split, plane, mesh.points->size());
    for (std::uint32_t face = 0; face < isNamed.size(); ++face) {
        cutter.add(face, isNamed[face]);
    }
    return cutter.finish();
}

KeptBehind keepBehind(const MeshData& mesh, std::span<const std::uint32_t> faces,
                      const CutPlane& plane)
{
    const CutMesh cut = cutFaces(mesh, faces, plane);
    if (cut.mesh == nullptr) {
        return {};
    }
    Numbers gone;
    KeptBehind kept;
    for (std::uint32_t face = 0; face < cut.sides.size(); ++face) {
        if (cut.sides[face] > 0) {
            gone.push_back(face);
        } else if (cut.sides[face] < 0) {
            kept.faces.push_back(face - static_cast<std::uint32_t>(gone.size()));
        }
    }
    kept.mesh = gone.empty() ? cut.mesh : deleteFaces(*cut.mesh, gone, kCleanAll);
    return kept;
}

} // namespace host::geometry
