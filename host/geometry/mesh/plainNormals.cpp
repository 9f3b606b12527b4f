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
};

struct TriangleShapes {
    BatchVectors normals;
    BatchNumbers areas;
    BatchNumbers angles[3];
};

using WaitingTriangles = WaitingFaces<3, TriangleShapes>;
using WaitingQuads = WaitingFaces<4, QuadShapes>;

/// Angles become weights.
template<std::size_t kCorners>
[[gnu::always_inline]] inline void weigh(const Weights& weights, std::size_t faces,
                                         const BatchNumbers& areas,
                                         BatchNumbers (&angles)[kCorners])
{
    for (BatchNumbers& ofCorner : angles) {
        for (std::size_t i = 0; i < faces; ++i) {
            ofCorner.values[i] = weights.of(ofCorner.values[i], areas.values[i]);
        }
    }
}

/// What there is to know of waiting faces; their weights stand where the angles were.
HOST_ALSO_FOR_WIDE_PROCESSORS void findAll(const Weights& weights, WaitingTriangles& triangles,
                                           WaitingQuads& quads)
{
    TriangleShapes& shapes = triangles.shapes;
    triangles.faces.findPlanes(shapes.normals, shapes.areas);
    for (std::size_t k = 0; k < 3; ++k) {
        triangles.faces.findAngles(k, shapes.normals, shapes.angles[k]);
    }
    weigh(weights, triangles.faces.size(), shapes.areas, shapes.angles);
    findShapesOf(quads.faces, quads.shapes);
    weigh(weights, quads.faces.size(), quads.shapes.areas, quads.shapes.angles);
}

/// A sum of vectors and, as the fourth number, of their lengths: four numbers that a processor adds
/// at once.
struct NormalSum {
    double numbers[4] = {0, 0, 0, 0};

    Vec3d vector() const { return {numbers[0], numbers[1], numbers[2]}; }
    double length() const { return numbers[3]; }
};

/// Where faces are added; all by vertex of the mesh but the first.
struct SumLists {
    const std::uint32_t* vertexOfCorner;
    const std::uint8_t* isShared;
    NormalSum* sums;
};

/// Adds faces `begin`..end-1 of those that wait. Those without an area add nothing.
template<std::size_t kCorners, class Shapes>
[[gnu::always_inline]] inline void addFaces(const WaitingFaces<kCorners, Shapes>& waiting,
                                            std::size_t begin, std::size_t end,
                                            const SumLists& lists)
{
    const Shapes& shapes = waiting.shapes;
    for (std::size_t i = begin; i < end; ++i) {
        const double area = shapes.areas.values[i];
        if (!(area > 0) || !std::isfinite(area)) {
            continue;
        }
        const NormalSum normal{
            {shapes.normals.x[i], shapes.normals.y[i], shapes.normals.z[i], 1.0}};
        const std::uint32_t* const vertices = lists.vertexOfCorner + waiting.faces.firstCorner(i);
        for (std::size_t k = 0; k < kCorners; ++k) {
            NormalSum& sum = lists.sums[vertices[k]];
            if (lists.isShared[vertices[k]] != 0) {
                const double weight = shapes.angles[k].values[i];
                for (std::size_t n = 0; n < 4; ++n) {
                    sum.numbers[n] += normal.numbers[n] * weight;
                }
            } else { // the polygon's own, whatever the weight
                sum = normal;
            }
        }
    }
}

HOST_ALSO_FOR_WIDE_PROCESSORS void addTriangles(const WaitingTriangles& waiting, std::size_t begin,
                                                std::size_t end, const SumLists& lists)
{
    addFaces(waiting, begin, end, lists);
}

HOST_ALSO_FOR_WIDE_PROCESSORS void addQuads(const WaitingQuads& waiting, std::size_t begin,
                                            std::size_t end, const SumLists& lists)
{
    addFaces(waiting, begin, end, lists);
}

/// Where the faces before a face number end, from the next one on.
template<class Waiting>
std::size_t endBefore(const Waiting& waiting, std::size_t begin, std::uint32_t face)
{
    std::size_t end = begin;
    while (end < waiting.faces.size() && waiting.numbers[end] < face) {
        ++end;
    }
    return end;
}

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
        const Vec3d vector = sum.vector();
        const double size = length(vector);
        // "&" and "|", since branches would keep several sums from being worked on at once
        const bool isUnused = places[i] == PlainVertices::kUnused;
        isGood &= isUnused | hasDirection(size, sum.length());
        normals[i] = toFloat(vector * (isShared[i] != 0 ? 1 / size : 1.0));
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
        findAll(m_weights, triangles, quads);
        const SumLists lists{m_vertices.data(), m_found.isShared.data(), m_sums.data()};
        std::size_t triangle = 0;
        std::size_t quad = 0;
        while (quad < quads.faces.size()) {
            const std::size_t triangleEnd = endBefore(triangles, triangle, quads.numbers[quad]);
            addTriangles(triangles, triangle, triangleEnd, lists);
            triangle = triangleEnd;
            const bool isLastRun = triangle == triangles.faces.size();
            const std::size_t quadEnd = isLastRun
                                            ? quads.faces.size()
                                            : endBefore(quads, quad, triangles.numbers[triangle]);
            addQuads(quads, quad, quadEnd, lists);
            quad = quadEnd;
        }
        addTriangles(triangles, triangle, triangles.faces.size(), lists);
        for (std::size_t i = 0; m_isBestCutWanted && i < quads.faces.size(); ++i) {
            m_isCutFromSecond[quads.numbers[i]] =
                quads.shapes.diagonals.isSecondBetter(quads.faces, i) ? 1 : 0;
        }
        triangles.faces.clear();
        quads.faces.clear();
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
