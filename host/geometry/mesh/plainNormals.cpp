#include "host/geometry/mesh/plainNormals.h"

#include "host/geometry/mesh/FaceBatch.h"
#include "host/geometry/mesh/normals.h"
#include "host/geometry/mesh/quadDiagonals.h"

#include <cmath>
#include <memory>

namespace host::geometry {
namespace {

/// What is wanted of the faces.
struct Wanted {
    bool usesAngles = false;
    bool usesAreas = false;
    bool usesDiagonals = false;
};

/// Faces of as many corners that wait until there are enough of them to be worked on at once.
template<std::size_t kCorners>
struct WaitingFaces {
    FaceBatch<kCorners> faces;
    std::uint32_t numbers[kBatchFaces];
    BatchVectors normals;
    BatchNumbers areas;
    BatchNumbers weights[kCorners];
    std::size_t next = 0; ///< the first one that was not added to the sums yet

    [[gnu::always_inline]] void find(const Wanted& wanted)
    {
        faces.findPlanes(normals, areas);
        for (std::size_t k = 0; k < kCorners; ++k) {
            if (wanted.usesAngles) {
                faces.findAngles(k, normals, weights[k]);
            }
            for (std::size_t i = 0; i < faces.size(); ++i) {
                weights[k].values[i] = (wanted.usesAngles ? weights[k].values[i] : 1) *
                                       (wanted.usesAreas ? areas.values[i] : 1);
            }
        }
        next = 0;
    }
};

HOST_ALSO_FOR_WIDE_PROCESSORS void findAll(WaitingFaces<3>& __restrict triangles,
                                           WaitingFaces<4>& __restrict quads,
                                           Diagonals& __restrict diagonals, const Wanted& wanted)
{
    triangles.find(wanted);
    quads.find(wanted);
    if (wanted.usesDiagonals) {
        findDiagonalsOf(quads.faces, diagonals);
    }
}

struct NormalSum {
    Vec3d vector;
    double length = 0; ///< of all terms
};

/// Adds faces to the sums in ascending order: sums depend on it.
class Shading {
public:
    Shading(const MeshData& mesh, const PlainVertices& found,
            std::span<const std::uint32_t> vertices)
        : m_topology(*mesh.topology)
        , m_found(found)
        , m_vertices(vertices)
        , m_points(pointsOf(mesh))
        , m_sums(m_topology.vertexCount)
    {
        const NormalWeighting weighting = mesh.normalWeighting;
        const bool usesBoth = weighting == NormalWeighting::AngleAndArea;
        m_wanted.usesAngles = usesBoth || weighting == NormalWeighting::Angle;
        m_wanted.usesAreas = usesBoth || weighting == NormalWeighting::Area;
        m_wanted.usesDiagonals = mesh.quadSplit == QuadSplit::BestShape;
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
        return finish();
    }

private:
    template<std::size_t kCorners>
    void wait(WaitingFaces<kCorners>& waiting, std::uint32_t face, std::uint32_t firstCorner)
    {
        if (waiting.faces.isFull()) {
            addWaiting();
        }
        waiting.numbers[waiting.faces.size()] = face;
        waiting.faces.add(firstCorner, m_vertices, m_points);
    }

    void addWaiting()
    {
        WaitingFaces<3>& triangles = m_waiting->triangles;
        WaitingFaces<4>& quads = m_waiting->quads;
        findAll(triangles, quads, m_waiting->diagonals, m_wanted);
        while (triangles.next < triangles.faces.size() || quads.next < quads.faces.size()) {
            const bool isQuad = triangles.next == triangles.faces.size() ||
                                (quads.next < quads.faces.size() &&
                                 quads.numbers[quads.next] < triangles.numbers[triangles.next]);
            isQuad ? addNext(quads) : addNext(triangles);
        }
        for (std::size_t i = 0; m_wanted.usesDiagonals && i < quads.faces.size(); ++i) {
            m_isCutFromSecond[quads.numbers[i]] =
                m_waiting->diagonals.isSecondBetter(quads.faces, i) ? 1 : 0;
        }
        triangles.faces.clear();
        quads.faces.clear();
    }

    template<std::size_t kCorners>
    void addNext(WaitingFaces<kCorners>& waiting)
    {
        const std::size_t i = waiting.next++;
        const double area = waiting.areas.values[i];
        if (!(area > 0) || !std::isfinite(area)) {
            return;
        }
        const Vec3d normal = waiting.normals[i];
        for (std::uint32_t k = 0; k < kCorners; ++k) {
            const std::uint32_t vertex = m_vertices[waiting.faces.firstCorner(i) + k];
            const double weight = waiting.weights[k].values[i];
            NormalSum& sum = m_sums[vertex];
            if (m_found.isShared[vertex]) {
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
        for (std::size_t vertex = 0; vertex < m_sums.size(); ++vertex) {
            const NormalSum& sum = m_sums[vertex];
            if (m_found.places[vertex] == PlainVertices::kUnused) {
                continue;
            }
            if (!m_found.isShared[vertex]) {
                result.normals[vertex] = toFloat(sum.vector);
                if (sum.length == 0) {
                    return std::nullopt;
                }
                continue;
            }
            const double size = length(sum.vector);
            if (!hasDirection(size, sum.length)) {
                return std::nullopt;
            }
            result.normals[vertex] = toFloat(sum.vector * (1 / size));
        }
        result.isCutFromSecond = std::move(m_isCutFromSecond);
        return result;
    }

    const MeshTopology& m_topology;
    const PlainVertices& m_found;
    std::span<const std::uint32_t> m_vertices;
    std::span<const Vec3f> m_points;
    Wanted m_wanted;
    std::vector<NormalSum> m_sums; ///< by vertex
    std::vector<std::uint8_t> m_isCutFromSecond;
    struct Waiting {
        WaitingFaces<3> triangles;
        WaitingFaces<4> quads;
        Diagonals diagonals;
    };
    std::unique_ptr<Waiting> m_waiting = std::make_unique<Waiting>();
};

} // namespace

std::optional<PlainShading> shadePlain(const MeshData& mesh, const PlainVertices& found,
                                       std::span<const std::uint32_t> vertices)
{
    return Shading(mesh, found, vertices).run();
}

} // namespace host::geometry
