#include "host/geometry/mesh/plainNormals.h"

#include "host/geometry/mesh/FaceBatch.h"
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/quadDiagonals.h"

#include <cmath>
#include <memory>

namespace host::geometry {
namespace {

/// What makes up the weight of a face at a corner.
struct Weights {
    bool haveAngles = false;
    bool haveAreas = false;

    explicit Weights(NormalWeighting weighting)
        : haveAngles(weighting == NormalWeighting::Angle ||
                     weighting == NormalWeighting::AngleAndArea)
        , haveAreas(weighting == NormalWeighting::Area ||
                    weighting == NormalWeighting::AngleAndArea)
    {
    }
    double of(double angle, double area) const
    {
        return (haveAngles ? angle : 1) * (haveAreas ? area : 1);
    }
};

/// Faces of as many corners that wait until there are enough of them to be worked on at once.
template<std::size_t kCorners, class Shapes>
struct WaitingFaces {
    FaceBatch<kCorners> faces;
    std::uint32_t numbers[kBatchFaces];
    Shapes shapes;
    std::size_t next = 0; ///< the first one that was not added to the sums yet
};

struct TriangleShapes {
    BatchVectors normals;
    BatchNumbers areas;
    BatchNumbers angles[3];
};

using WaitingTriangles = WaitingFaces<3, TriangleShapes>;
using WaitingQuads = WaitingFaces<4, QuadShapes>;

HOST_ALSO_FOR_WIDE_PROCESSORS void findAll(WaitingTriangles& triangles, WaitingQuads& quads)
{
    TriangleShapes& shapes = triangles.shapes;
    triangles.faces.findPlanes(shapes.normals, shapes.areas);
    for (std::size_t k = 0; k < 3; ++k) {
        triangles.faces.findAngles(k, shapes.normals, shapes.angles[k]);
    }
    findShapesOf(quads.faces, quads.shapes);
}

struct NormalSum {
    Vec3d vector;
    double length = 0; ///< of all terms
};

/// The normals of sums: of a vertex with a single corner the sum itself. False if a vertex that is
/// used has a sum without a direction.
HOST_ALSO_FOR_WIDE_PROCESSORS bool
normalizeAll(std::span<const NormalSum> sums, const PlainVertices& found, std::span<Vec3f> normals)
{
    const std::uint32_t* const places = found.places.data();
    const std::uint8_t* const isShared = found.isShared.data();
    bool isGood = true;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        const NormalSum& sum = sums[i];
        const double size = length(sum.vector);
        // "&" and "|", since branches would keep several sums from being worked on at once
        const bool isUnused = places[i] == PlainVertices::kUnused;
        isGood &= isUnused | hasDirection(size, sum.length);
        normals[i] = toFloat(sum.vector * (isShared[i] != 0 ? 1 / size : 1.0));
    }
    return isGood;
}

/// Adds faces to the sums in ascending order: sums depend on it.
class Shading {
public:
    Shading(const MeshData& mesh, PlainVertices& found)
        : m_topology(*mesh.topology)
        , m_found(found)
        , m_vertices(found.ofCorners.get(), m_topology.corners.size())
        , m_points(pointsOf(mesh))
        , m_weights(mesh.normalWeighting)
        , m_isBestCutWanted(mesh.quadSplit == QuadSplit::BestShape)
        , m_sums(m_topology.vertexCount)
    {
        m_isCutFromSecond.assign(m_topology.faceCount(), mesh.quadSplit == QuadSplit::Left ? 1 : 0);
    }

    std::optional<PlainShading> run()
    {
        for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
            const std::uint32_t first = m_topology.loopStart[face];
            if (m_topology.loopStart[face + 1] - first == 4) {
                wait(m_waiting->quads, face, first);
            } else {
                wait(m_waiting->triangles, face, first);
            }
        }
        addWaiting();
        m_found.ofCorners.reset(); // now is the peak of memory
        return finish();
    }

private:
    template<class Waiting>
    void wait(Waiting& waiting, std::uint32_t face, std::uint32_t firstCorner)
    {
        if (waiting.faces.isFull()) {
            addWaiting();
        }
        waiting.numbers[waiting.faces.size()] = face;
        waiting.faces.add(firstCorner, m_vertices, m_points);
    }

    void addWaiting()
    {
        WaitingTriangles& triangles = m_waiting->triangles;
        WaitingQuads& quads = m_waiting->quads;
        findAll(triangles, quads);
        while (triangles.next < triangles.faces.size() || quads.next < quads.faces.size()) {
            const bool isQuad = triangles.next == triangles.faces.size() ||
                                (quads.next < quads.faces.size() &&
                                 quads.numbers[quads.next] < triangles.numbers[triangles.next]);
            isQuad ? addNext(quads) : addNext(triangles);
        }
        for (std::size_t i = 0; m_isBestCutWanted && i < quads.faces.size(); ++i) {
            m_isCutFromSecond[quads.numbers[i]] =
                quads.shapes.diagonals.isSecondBetter(quads.faces, i) ? 1 : 0;
        }
        triangles.faces.clear();
        triangles.next = 0;
        quads.faces.clear();
        quads.next = 0;
    }

    template<std::size_t kCorners, class Shapes>
    void addNext(WaitingFaces<kCorners, Shapes>& waiting)
    {
        const std::size_t i = waiting.next++;
        const Shapes& shapes = waiting.shapes;
        const double area = shapes.areas.values[i];
        if (!(area > 0) || !std::isfinite(area)) {
            return;
        }
        const Vec3d normal = shapes.normals[i];
        for (std::uint32_t k = 0; k < kCorners; ++k) {
            const std::uint32_t vertex = m_vertices[waiting.faces.firstCorner(i) + k];
            NormalSum& sum = m_sums[vertex];
            if (m_found.isShared[vertex] != 0) {
                const double weight = m_weights.of(shapes.angles[k].values[i], area);
                sum.vector = sum.vector + normal * weight;
                sum.length += weight;
            } else { // the polygon's own, whatever the weight
                sum = {normal, 1};
            }
        }
    }

    std::optional<PlainShading> finish()
    {
        PlainShading result;
        result.normals.resize(m_sums.size());
        if (!normalizeAll(m_sums, m_found, result.normals)) {
            return std::nullopt;
        }
        result.isCutFromSecond = std::move(m_isCutFromSecond);
        return result;
    }

    const MeshTopology& m_topology;
    PlainVertices& m_found;
    std::span<const std::uint32_t> m_vertices;
    std::span<const Vec3f> m_points;
    Weights m_weights;
    bool m_isBestCutWanted;
    std::vector<NormalSum> m_sums; ///< by vertex
    std::vector<std::uint8_t> m_isCutFromSecond;
    struct Waiting {
        WaitingTriangles triangles;
        WaitingQuads quads;
    };
    std::unique_ptr<Waiting> m_waiting = std::make_unique<Waiting>();
};

} // namespace

std::optional<PlainShading> shadePlain(const MeshData& mesh, PlainVertices& found)
{
    return Shading(mesh, found).run();
}

} // namespace host::geometry
