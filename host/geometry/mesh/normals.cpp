#include "host/geometry/mesh/normals.h"

#include "host/geometry/mesh/polygon.h"

#include <bit>

namespace host::geometry {
namespace {

constexpr float kUnlocked = 1e19F;
/// A sum that is this much shorter than its terms is what rounding left of opposite normals.
constexpr double kVanishing = 1e-10;

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

/// Computes the normals that are not locked. Sums are kept only for fans of several corners: the
/// normal of a single one is its polygon's, whatever the weight.
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
    void findShared();
    void addFace(std::uint32_t face);
    void addCorner(std::size_t i, std::size_t loopFirst, std::size_t loopEnd, std::uint32_t id,
                   const PolygonPlane& plane);
    bool gather(std::uint32_t face);
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
    std::vector<Vec3d> m_face;     ///< corners of the face at hand
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

/// Collects the corners of a face; false when none of them needs a computed normal.
bool FanNormals::gather(std::uint32_t face)
{
    m_loopEnds.clear();
    const std::uint32_t first = m_topology.firstCorner(face);
    const std::uint32_t end = m_topology.endCorner(face);
    bool isNeeded = false;
    for (std::uint32_t corner = first; corner < end && !isNeeded; ++corner) {
        isNeeded = !isLockedId(m_ids.ofCorner[corner]);
    }
    if (!isNeeded) {
        return false;
    }
    m_face.resize(end - first);
    for (std::uint32_t corner = first; corner < end; ++corner) {
        m_face[corner - first] = toDouble(m_points[m_vertices[corner]]);
    }
    for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
         ++loop) {
        m_loopEnds.push_back(m_topology.loopStart[loop + 1] - first);
    }
    return true;
}

void FanNormals::addCorner(std::size_t i, std::size_t loopFirst, std::size_t loopEnd,
                           std::uint32_t id, const PolygonPlane& plane)
{
    if (!m_hasNormal[id]) {
        m_normals[id] = toFloat(plane.normal);
        m_hasNormal[id] = true;
    }
    if (!m_shared.has(id)) {
        return;
    }
    double weight = 1;
    if (m_weighting == NormalWeighting::Angle || m_weighting == NormalWeighting::AngleAndArea) {
        const std::size_t previous = i == loopFirst ? loopEnd - 1 : i - 1;
        const std::size_t next = i + 1 == loopEnd ? loopFirst : i + 1;
        weight = interiorAngle(m_face[previous], m_face[i], m_face[next], plane.normal);
    }
    if (m_weighting == NormalWeighting::Area || m_weighting == NormalWeighting::AngleAndArea) {
        weight *= plane.area;
    }
    NormalSum& sum = m_sums[sumOf(id)];
    sum.vector = sum.vector + plane.normal * weight;
    sum.length += weight;
}

void FanNormals::addFace(std::uint32_t face)
{
    if (!gather(face)) {
        return;
    }
    const PolygonPlane plane = polygonPlane(m_face, m_loopEnds);
    if (!(plane.area > 0)) {
        return;
    }
    const std::uint32_t firstCorner = m_topology.firstCorner(face);
    std::size_t first = 0;
    for (const std::uint32_t end : m_loopEnds) {
        for (std::size_t i = first; i < end; ++i) {
            const std::uint32_t id = m_ids.ofCorner[firstCorner + i];
            if (!isLockedId(id)) {
                addCorner(i, first, end, id, plane);
            }
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
        if (size > kVanishing * sum.length && std::isfinite(size)) {
            m_normals[id] = toFloat(sum.vector * (1 / size));
        }
    }
}

std::vector<Vec3f> FanNormals::compute()
{
    findShared();
    for (std::uint32_t face = 0; face < m_topology.faceCount(); ++face) {
        addFace(face);
    }
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
