#include "host/geometry/mesh/edit/uniteMeshes.h"

#include "host/geometry/mesh/edit/MeshLinks.h"
#include "host/geometry/mesh/edit/MeshRewriter.h"
#include "host/geometry/mesh/normals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <span>
#include <utility>

namespace host::geometry {
namespace {

struct Growing {
    MeshTopology topology;
    EdgeFlags edgeSmooth; ///< as far as needed, the rest is smooth
    std::vector<Vec3f> points;
    struct Uvs {
        std::string name;
        std::vector<Vec2f> points;
        std::vector<std::int32_t> corners; ///< filled up with -1 as far as needed
    };
    std::vector<Uvs> uvSets;
    struct Group {
        std::int32_t id = 0;
        std::vector<std::uint32_t> members;
    };
    std::vector<Group> groups;
    std::vector<Group> pointGroups;
    std::vector<std::uint32_t> invisibleFaces;
    MeshCreases creases;
    std::vector<Vec3f> lockedNormals;
    std::uint32_t normalCount = 0;
};

/// Appends numbers and passes those that are new to `move`, by reference. Copied in one piece, then
/// changed in place: both go many numbers at a time.
template<class T, class Move>
void append(std::vector<T>& to, std::span<const T> from, const Move& move)
{
    const std::size_t first = to.size();
    to.insert(to.end(), from.begin(), from.end());
    for (T& number : std::span(to).subspan(first)) {
        move(number);
    }
}

template<class T>
void appendMoved(std::vector<T>& to, const std::vector<T>& from, T offset)
{
    append<T>(to, from, [offset](T& number) { number += offset; });
}

void appendTopology(MeshTopology& to, const MeshTopology& from, bool hasHoles)
{
    const std::uint32_t firstVertex = to.vertexCount;
    const auto firstEdge = static_cast<std::int32_t>(to.edges.size());
    const auto firstCorner = static_cast<std::uint32_t>(to.corners.size());
    const std::uint32_t firstLoop = to.loopCount();
    to.vertexCount += from.vertexCount;
    append<MeshEdge>(to.edges, from.edges, [firstVertex](MeshEdge& edge) {
        edge = {edge.start + firstVertex, edge.end + firstVertex};
    });
    append<std::int32_t>(to.corners, from.corners, [firstEdge](std::int32_t& reference) {
        reference += reference >= 0 ? firstEdge : -firstEdge;
    });
    append<std::uint32_t>(to.loopStart,
                          std::span(from.loopStart).subspan(from.loopStart.empty() ? 0 : 1),
                          [firstCorner](std::uint32_t& start) { start += firstCorner; });
    for (std::uint32_t face = 0; hasHoles && face < from.faceCount(); ++face) {
        to.faceLoop.push_back(from.firstLoop(face + 1) + firstLoop);
    }
}

class Uniter {
public:
    explicit Uniter(UvSetMerging merging) : m_merging(merging)
    {
        m_result.topology.loopStart = {0};
    }

    /// Looks at the sizes of all parts before anything is made, and takes memory for them.
    bool isTooLarge(std::span<const UnitedMesh> parts);
    void add(const UnitedMesh& part);
    std::shared_ptr<const MeshData> finish(const MeshData& first);

private:
    void addPoints(const UnitedMesh& part);
    void addNormals(const UnitedMesh& part);
    void addUvs(const MeshData& mesh);
    Growing::Uvs& uvSetFor(const std::string& name);
    std::string freeName(const std::string& name);
    void addGroups(const MeshData& mesh);
    void addCreases(const MeshData& mesh);
    void addFlags(const MeshData& mesh);

    UvSetMerging m_merging;
    bool m_hasHoles = false;
    bool m_hasLockedNormals = false;
    Growing m_result;
    std::map<std::string, std::size_t> m_uvSetsByName;
    std::map<std::string, std::size_t> m_uvCounts;   ///< points of all sets of a name
    std::size_t m_cornerCount = 0;                   ///< of all parts
    std::map<std::string, std::size_t> m_nextNumber; ///< behind a name that is taken
    std::map<std::int32_t, std::size_t> m_groupsById;
    std::map<std::int32_t, std::size_t> m_pointGroupsById;
};

/// Each set has an entry for every corner of the whole mesh. Beyond this many sets are merged.
constexpr std::size_t kMostUvCorners = std::size_t{1} << 26;
constexpr std::size_t kCornerSum = 2;

bool Uniter::isTooLarge(std::span<const UnitedMesh> parts)
{
    std::size_t most = 0;
    std::array<std::size_t, 4> sums{};
    std::size_t setCount = 0;
    std::size_t loopCount = 0;
    for (const UnitedMesh& part : parts) {
        const MeshTopology& topology = *part.mesh->topology;
        std::size_t uvs = 0;
        for (const UvSet& set : part.mesh->uvSets) {
            const std::size_t count = set.points != nullptr ? set.points->size() : 0;
            uvs += count;
            m_uvCounts[set.name] += count;
        }
        const std::array<std::size_t, 4> sizes{topology.vertexCount, topology.edges.size(),
                                               topology.corners.size(), uvs};
        for (std::size_t i = 0; i < sums.size(); ++i) {
            sums[i] += sizes[i];
            most = std::max(most, sums[i]);
        }
        setCount += part.mesh->uvSets.size();
        loopCount += topology.loopCount();
        m_hasHoles = m_hasHoles || !topology.faceLoop.empty();
        m_hasLockedNormals = m_hasLockedNormals || !lockedNormalsOf(*part.mesh).empty();
    }
    if (m_hasHoles) {
        m_result.topology.faceLoop = {0};
    }
    if (setCount * sums[kCornerSum] > kMostUvCorners) {
        m_merging = UvSetMerging::ByName;
    }
    m_cornerCount = sums[kCornerSum];
    if (most > MeshRewriter::kMaxParts) {
        return true;
    }
    m_result.points.reserve(sums[0]);
    m_result.topology.edges.reserve(sums[1]);
    m_result.topology.corners.reserve(m_cornerCount);
    m_result.topology.loopStart.reserve(loopCount + 1);
    return false;
}

void Uniter::addPoints(const UnitedMesh& part)
{
    for (const Vec3f& point : pointsOf(*part.mesh)) {
        m_result.points.push_back(toFloat(transformPoint(toDouble(point), part.matrix)));
    }
}

/// Normals of the parts follow each other as their numbers do: they count along the faces.
void Uniter::addNormals(const UnitedMesh& part)
{
    constexpr float kUnlocked = 1e20F;
    if (!m_hasLockedNormals) {
        return;
    }
    const Matrix4 inverted = inverse(part.matrix);
    for (const Vec3f& normal : lockedNormalsOf(*part.mesh)) {
        const bool isLocked = std::fabs(normal.x) < kUnlocked / 10;
        const Vec3d n = toDouble(normal);
        const auto column = [&](std::size_t row) {
            return n.x * inverted.m[row][0] + n.y * inverted.m[row][1] + n.z * inverted.m[row][2];
        };
        m_result.lockedNormals.push_back(
            isLocked ? toFloat(normalized({column(0), column(1), column(2)})) : normal);
    }
    m_result.normalCount += computeNormalIds(*part.mesh).count;
    m_result.lockedNormals.resize(m_result.normalCount, {kUnlocked, kUnlocked, kUnlocked});
}

std::string Uniter::freeName(const std::string& name)
{
    std::string free = name;
    while (m_uvSetsByName.count(free) != 0) {
        free = name + std::to_string(++m_nextNumber[name]);
    }
    return free;
}

Growing::Uvs& Uniter::uvSetFor(const std::string& name)
{
    std::vector<Growing::Uvs>& sets = m_result.uvSets;
    const auto same = m_uvSetsByName.find(name);
    if (m_merging != UvSetMerging::None && same != m_uvSetsByName.end()) {
        return sets[same->second];
    }
    const std::string free = freeName(name);
    m_uvSetsByName[free] = sets.size();
    sets.push_back({free, {}, {}});
    return sets.back();
}

void Uniter::addUvs(const MeshData& mesh)
{
    const std::size_t firstCorner = m_result.topology.corners.size();
    for (const UvSet& set : mesh.uvSets) {
        Growing::Uvs& to = uvSetFor(set.name);
        const auto firstUv = static_cast<std::int32_t>(to.points.size());
        if (set.points != nullptr) {
            to.points.reserve(m_merging == UvSetMerging::None ? 0 : m_uvCounts[set.name]);
            to.points.insert(to.points.end(), set.points->begin(), set.points->end());
        }
        if (set.corners != nullptr && !set.corners->empty()) {
            to.corners.reserve(m_cornerCount);
            to.corners.resize(firstCorner, -1);
            append<std::int32_t>(to.corners, *set.corners,
                                 [firstUv](std::int32_t& id) { id = id < 0 ? -1 : id + firstUv; });
        }
    }
}

/// The members of the group of that number, which may be new.
std::vector<std::uint32_t>& membersOf(std::int32_t id, std::vector<Growing::Group>& groups,
                                      std::map<std::int32_t, std::size_t>& byId)
{
    const auto [entry, isNew] = byId.try_emplace(id, groups.size());
    if (isNew) {
        groups.push_back({id, {}});
    }
    return groups[entry->second].members;
}

void Uniter::addGroups(const MeshData& mesh)
{
    const std::uint32_t firstFace = m_result.topology.faceCount();
    for (const FaceGroup& group : mesh.groups) {
        auto& members = membersOf(group.id, m_result.groups, m_groupsById);
        if (group.faces != nullptr) {
            appendMoved(members, *group.faces, firstFace);
        }
    }
    for (const PointGroup& group : mesh.pointGroups) {
        auto& members = membersOf(group.id, m_result.pointGroups, m_pointGroupsById);
        if (group.points != nullptr) {
            appendMoved(members, *group.points, m_result.topology.vertexCount);
        }
    }
    if (mesh.invisibleFaces != nullptr) {
        appendMoved(m_result.invisibleFaces, *mesh.invisibleFaces, firstFace);
    }
}

void Uniter::addCreases(const MeshData& mesh)
{
    if (mesh.creases == nullptr) {
        return;
    }
    MeshCreases& to = m_result.creases;
    const MeshCreases& from = *mesh.creases;
    appendMoved(to.edges, from.edges, static_cast<std::uint32_t>(m_result.topology.edges.size()));
    appendMoved(to.vertices, from.vertices, m_result.topology.vertexCount);
    to.edgeValues.insert(to.edgeValues.end(), from.edgeValues.begin(), from.edgeValues.end());
    to.vertexValues.insert(to.vertexValues.end(), from.vertexValues.begin(),
                           from.vertexValues.end());
}

/// Comes before the edges themselves.
void Uniter::addFlags(const MeshData& mesh)
{
    if (mesh.edgeSmooth != nullptr) {
        EdgeFlags& to = m_result.edgeSmooth;
        to.resize(m_result.topology.edges.size(), 1);
        to.insert(to.end(), mesh.edgeSmooth->begin(), mesh.edgeSmooth->end());
    }
}

void Uniter::add(const UnitedMesh& part)
{
    addPoints(part);
    addNormals(part);
    addUvs(*part.mesh);
    addGroups(*part.mesh);
    addCreases(*part.mesh);
    addFlags(*part.mesh);
    appendTopology(m_result.topology, *part.mesh->topology, m_hasHoles);
}

template<class T>
std::shared_ptr<const std::vector<T>> share(std::vector<T>&& values)
{
    return std::make_shared<const std::vector<T>>(std::move(values));
}

std::shared_ptr<const MeshData> Uniter::finish(const MeshData& first)
{
    auto mesh = std::make_shared<MeshData>();
    const std::size_t cornerCount = m_result.topology.corners.size();
    for (Growing::Uvs& set : m_result.uvSets) {
        if (!set.corners.empty()) {
            set.corners.resize(cornerCount, -1);
        }
        mesh->uvSets.push_back(
            {set.name, share(std::move(set.points)), share(std::move(set.corners))});
    }
    for (Growing::Group& group : m_result.groups) {
        mesh->groups.push_back({group.id, share(std::move(group.members))});
    }
    for (Growing::Group& group : m_result.pointGroups) {
        mesh->pointGroups.push_back({group.id, share(std::move(group.members))});
    }
    if (!m_result.edgeSmooth.empty()) {
        m_result.edgeSmooth.resize(m_result.topology.edges.size(), 1);
        mesh->edgeSmooth = shareEdgeFlags(std::move(m_result.edgeSmooth));
    }
    mesh->topology = std::make_shared<const MeshTopology>(std::move(m_result.topology));
    mesh->points = share(std::move(m_result.points));
    mesh->currentUvSet = first.currentUvSet;
    mesh->normalWeighting = first.normalWeighting;
    mesh->quadSplit = first.quadSplit;
    if (!m_result.invisibleFaces.empty()) {
        mesh->invisibleFaces = share(std::move(m_result.invisibleFaces));
    }
    if (!m_result.creases.edges.empty() || !m_result.creases.vertices.empty()) {
        mesh->creases = std::make_shared<const MeshCreases>(std::move(m_result.creases));
    }
    if (m_hasLockedNormals) {
        mesh->lockedNormals = share(std::move(m_result.lockedNormals));
    }
    return isConsistent(*mesh) ? mesh : nullptr;
}

} // namespace

std::shared_ptr<const MeshData> uniteMeshes(std::span<const UnitedMesh> parts, UvSetMerging merging)
{
    Uniter uniter(merging);
    if (parts.empty() || uniter.isTooLarge(parts)) {
        return nullptr;
    }
    for (const UnitedMesh& part : parts) {
        uniter.add(part);
    }
    return uniter.finish(*parts.front().mesh);
}

} // namespace host::geometry
