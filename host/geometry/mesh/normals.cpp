#include "host/geometry/mesh/normals.h"

#include "host/geometry/mesh/FaceBatch.h"
#include "host/geometry/mesh/polygon.h"

#include <bit>
#include <memory>

namespace host::geometry {
namespace {

constexpr float kUnlocked = 1e19F;

bool isLocked(const Vec3f& normal)
{
    const bool isGiven = std::fabs(normal.x) < kUnlocked && std::fabs(normal.y) < kUnlocked &&
                         std::fabs(normal.z) < kUnlocked;
    return isGiven && (normal.x != 0 || normal.y != 0 || normal.z != 0);
}

/// A set of numbers, and for each member how many are below it.
class RankedSet {
public:
    explicit RankedSet(std::size_t limit) : m_words(limit / 64 + 1) {}
    void add(std::uint32_t number) { m_words[number / 64] |= std::uint64_t(1) << (number % 64); }
    bool has(std::uint32_t number) const
    {
        return (m_words[number / 64] >> (number % 64) & 1) != 0;
    }
    /// To be called once, when all members are in; returns how many there are.
    std::uint32_t rank()
    {
        std::uint32_t total = 0;
        m_below.reserve(m_words.size());
        for (const std::uint64_t word : m_words) {
            m_below.push_back(total);
            total += static_cast<std::uint32_t>(std::popcount(word));
        }
        return total;
    }
    std::uint32_t rankOf(std::uint32_t number) const
    {
        const std::uint64_t below = (std::uint64_t(1) << (number % 64)) - 1;
        return m_below[number / 64] +
               static_cast<std::uint32_t>(std::popcount(m_words[number / 64] & below));
    }

private:
    std::vector<std::uint64_t> m_words;
    std::vector<std::uint32_t> m_below;
};

struct NormalSum {
    Vec3d vector;
    double length = 0; ///< of all terms
};

/// Faces of three or four corners that wait until there are enough of them to be worked on at once.
template<std::size_t kCorners>
struct WaitingFaces {
    FaceBatch<kCorners> faces;
    BatchVectors normals;
    BatchNumbers areas;
    BatchNumbers angles[kCorners];
    std::size_t next = 0; ///< the first one that was not added to the sums yet

    [[gnu::always_inline]] void find(bool needsAngles)
    {
        faces.findPlanes(normals, areas);
        for (std::size_t k = 0; needsAngles && k < kCorners; ++k) {
            faces.findAngles(k, normals, angles[k]);
        }
        next = 0;
    }
};

HOST_ALSO_FOR_WIDE_PROCESSORS void findAll(WaitingFaces<3>& triangles, WaitingFaces<4>& quads,
                                           bool needsAngles)
{
    triangles.find(needsAngles);
    quads.find(needsAngles);
}

/// Computes the normals that are not locked. Sums are kept only for fans of several corners: the
/// normal of a single one is its polygon's, whatever the weight. Faces are added to the sums in
/// ascending order: sums depend on it.
class FanNormals {
public:
    FanNormals(const MeshTopology& topology, std::span<const std::uint32_t> vertices,
               std::span<const Vec3f> points, NormalWeighting weighting, const NormalIds& ids,
               std::span<const Vec3f> locked)
        : m_topology(topology)
        , m_vertices(vertices)
        , m_points(points)
        , m_weighting(weighting)
        , m_ids(ids)
        , m_locked(locked)
        , m_shared(ids.count)
        , m_normals(ids.count, Vec3f{0, 0, 1})
        , m_hasNormal(ids.count)
    {
    }

    std::vector<Vec3f> compute();

private:
    bool isLockedId(std::uint32_t id) const
    {
        return id < m_locked.size() && isLocked(m_locked[id]);
    }
    std::uint32_t sumOf(std::uint32_t id) const { return m_hasSumPerId ? id : m_shared.rankOf(id); }
    bool usesAngles() const
    {
        return m_weighting == NormalWeighting::Angle ||
               m_weighting == NormalWeighting::AngleAndArea;
    }
    bool usesAreas() const
    {
        return m_weighting == NormalWeighting::Area || m_weighting == NormalWeighting::AngleAndArea;
    }
    void findShared();
    bool isNeeded(std::uint32_t face) const;
    void takeFace(std::uint32_t face);
    template<std::size_t kCorners>
    void wait(WaitingFaces<kCorners>& waiting, std::uint32_t face);
    template<std::size_t kCorners>
    void addNext(WaitingFaces<kCorners>& waiting);
    void addWaiting();
    void addPolygon(std::uint32_t face);
    void addCorner(std::uint32_t id, const PolygonPlane& plane, double angle);
    void gather(std::uint32_t face);
    void finish();

    const MeshTopology& m_topology;
    std::span<const std::uint32_t> m_vertices;
    std::span<const Vec3f> m_points;
    NormalWeighting m_weighting;
    const NormalIds& m_ids;
    std::span<const Vec3f> m_locked;
    RankedSet m_shared; ///< ids of fans with several corners, not locked
    std::vector<Vec3f> m_normals;
    std::vector<bool> m_hasNormal; ///< a polygon's normal stands in m_normals
    std::vector<NormalSum> m_sums; ///< by id, or by rank among the shared ones
    bool m_hasSumPerId = false;    ///< nearly all are shared: ranks would save nothing
    struct Waiting {
        WaitingFaces<3> triangles;
        WaitingFaces<4> quads;
        std::vector<bool> areQuads; ///< of all waiting faces in turn
    };
    std::unique_ptr<Waiting> m_waiting = std::make_unique<Waiting>();
    std::vector<Vec3d> m_face; ///< corners of the polygon at hand
    std::vector<std::uint32_t> m_loopEnds;
};

void FanNormals::findShared()
{
    std::uint32_t met = 0;
    for (const std::uint32_t id : m_ids.ofCorner) {
        if (id == met) {
            ++met;
        } else if (!isLockedId(id)) {
            m_shared.add(id);
        }
    }
    const std::uint32_t count = m_shared.rank();
    m_hasSumPerId = count > m_ids.count / 4 * 3;
    m_sums.resize(m_hasSumPerId ? m_ids.count : count);
}

/// Whether any corner of a face has a normal to compute.
bool FanNormals::isNeeded(std::uint32_t face) const
{
    const std::uint32_t end = m_topology.endCorner(face);
    for (std::uint32_t corner = m_topology.firstCorner(face); corner < end; ++corner) {
        if (!isLockedId(m_ids.ofCorner[corner])) {
            return true;
        }
    }
    return false;
}

void FanNormals::takeFace(std::uint32_t face)
{
    if (!m_locked.empty() && !isNeeded(face)) {
        return;
    }
    const std::uint32_t corners = m_topology.endCorner(face) - m_topology.firstCorner(face);
    const bool isOneLoop = m_topology.firstLoop(face + 1) - m_topology.firstLoop(face) == 1;
    if (isOneLoop && corners == 4) {
        wait(m_waiting->quads, face);
    } else if (isOneLoop && corners == 3) {
        wait(m_waiting->triangles, face);
    } else {
        addWaiting();
        addPolygon(face);
    }
}

template<std::size_t kCorners>
void FanNormals::wait(WaitingFaces<kCorners>& waiting, std::uint32_t face)
{
    if (waiting.faces.isFull()) {
        addWaiting();
    }
    waiting.faces.add(m_topology.firstCorner(face), m_vertices, m_points);
    m_waiting->areQuads.push_back(kCorners == 4);
}

void FanNormals::addWaiting()
{
    const bool needsAngles = usesAngles() && !m_sums.empty();
    findAll(m_waiting->triangles, m_waiting->quads, needsAngles);
    for (const bool isQuad : m_waiting->areQuads) {
        isQuad ? addNext(m_waiting->quads) : addNext(m_waiting->triangles);
    }
    m_waiting->triangles.faces.clear();
    m_waiting->quads.faces.clear();
    m_waiting->areQuads.clear();
}

template<std::size_t kCorners>
void FanNormals::addNext(WaitingFaces<kCorners>& waiting)
{
    const std::size_t i = waiting.next++;
    const PolygonPlane plane{waiting.normals[i], waiting.areas.values[i]};
    if (!(plane.area > 0) || !std::isfinite(plane.area)) {
        return;
    }
    for (std::uint32_t k = 0; k < kCorners; ++k) {
        const std::uint32_t id = m_ids.ofCorner[waiting.faces.firstCorner(i) + k];
        if (!isLockedId(id)) {
            addCorner(id, plane, waiting.angles[k].values[i]);
        }
    }
}

/// Collects the corners of a face.
void FanNormals::gather(std::uint32_t face)
{
    m_loopEnds.clear();
    const std::uint32_t first = m_topology.firstCorner(face);
    const std::uint32_t end = m_topology.endCorner(face);
    m_face.resize(end - first);
    for (std::uint32_t corner = first; corner < end; ++corner) {
        m_face[corner - first] = toDouble(m_points[m_vertices[corner]]);
    }
    for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
         ++loop) {
        m_loopEnds.push_back(m_topology.loopStart[loop + 1] - first);
    }
}

/// Adds a corner of a face that has an area.
void FanNormals::addCorner(std::uint32_t id, const PolygonPlane& plane, double angle)
{
    if (!m_hasNormal[id]) {
        m_normals[id] = toFloat(plane.normal);
        m_hasNormal[id] = true;
    }
    if (!m_shared.has(id)) {
        return;
    }
    const double weight = (usesAngles() ? angle : 1) * (usesAreas() ? plane.area : 1);
    NormalSum& sum = m_sums[sumOf(id)];
    sum.vector = sum.vector + plane.normal * weight;
    sum.length += weight;
}

void FanNormals::addPolygon(std::uint32_t face)
{
    gather(face);
    const PolygonPlane plane = polygonPlane(m_face, m_loopEnds);
    if (!(plane.area > 0)) {
        return;
    }
    const bool needsAngles = usesAngles() && !m_sums.empty();
    const std::uint32_t firstCorner = m_topology.firstCorner(face);
    std::size_t first = 0;
    for (const std::uint32_t end : m_loopEnds) {
        for (std::size_t i = first; i < end; ++i) {
            const std::uint32_t id = m_ids.ofCorner[firstCorner + i];
            if (isLockedId(id)) {
                continue;
            }
            const Vec3d& previous = m_face[i == first ? end - 1 : i - 1];
            const Vec3d& next = m_face[i + 1 == end ? first : i + 1];
            addCorner(id, plane,
                      needsAngles ? interiorAngle(previous, m_face[i], next, plane.normal) : 0);
        }
        first = end;
    }
}

void FanNormals::finish()
{
    for (std::uint32_t id = 0; id < m_ids.count; ++id) {
        if (isLockedId(id)) {
            m_normals[id] = toFloat(normalized(toDouble(m_locked[id])));
            continue;
        }
        if (!m_shared.has(id)) {
            continue;
        }
        const NormalSum& sum = m_sums[sumOf(id)];
        const double size = length(sum.vector);
        if (hasDirection(size, sum.length)) {
            m_normals[id] = toFloat(sum.vector * (1 / size));
        }
    }
}

std::vector<Vec3f> FanNormals::compute()
{
    findShared();
    for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
        takeFace(face);
    }
    addWaiting();
    finish();
    return std::move(m_normals);
}

} // namespace

std::vector<Vec3f> computeNormals(const MeshTopology& topology,
                                  std::span<const std::uint32_t> vertices,
                                  std::span<const Vec3f> points, NormalWeighting weighting,
                                  const NormalIds& ids, std::span<const Vec3f> locked)
{
    return FanNormals(topology, vertices, points, weighting, ids, locked).compute();
}

std::span<const Vec3f> pointsOf(const MeshData& mesh)
{
    return mesh.points ? std::span<const Vec3f>(*mesh.points) : std::span<const Vec3f>();
}

std::span<const Vec3f> lockedNormalsOf(const MeshData& mesh)
{
    return mesh.lockedNormals ? std::span<const Vec3f>(*mesh.lockedNormals)
                              : std::span<const Vec3f>();
}

} // namespace host::geometry
