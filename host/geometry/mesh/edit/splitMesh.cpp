#include "host/geometry/mesh/edit/splitMesh.h"

#include "host/geometry/mesh/edit/DisjointSets.h"
#include "host/geometry/mesh/edit/MeshLinks.h"

#include <algorithm>
#include <utility>

namespace host::geometry {
namespace {

using Numbers = std::vector<std::uint32_t>;

/// What of a kind of parts is used, ascending, and its new numbers.
class Renumbering {
public:
    explicit Renumbering(std::size_t count) : m_number(count) {}

    void begin() { m_used.clear(); }
    void use(std::uint32_t old) { m_used.push_back(old); }
    void number()
    {
        std::sort(m_used.begin(), m_used.end());
        m_used.erase(std::unique(m_used.begin(), m_used.end()), m_used.end());
        for (std::uint32_t i = 0; i < m_used.size(); ++i) {
            m_number[m_used[i]] = i;
        }
    }
    const Numbers& used() const { return m_used; }
    /// Only of what is used.
    std::uint32_t operator()(std::uint32_t old) const { return m_number[old]; }

private:
    Numbers m_used;
    Numbers m_number;
};

class MeshSplitter {
public:
    explicit MeshSplitter(const MeshData& mesh);

    /// All but groups and invisible faces.
    std::shared_ptr<MeshData> part(std::span<const std::uint32_t> faces);

private:
    MeshTopology takeTopology(std::span<const std::uint32_t> faces);
    std::shared_ptr<const EdgeFlags> takeFlags() const;
    void takeUvs(MeshData& to, std::span<const std::uint32_t> faces);
    void takeCreases(MeshData& to) const;
    void takePointGroups(MeshData& to);
    void listPointGroups();

    const MeshData& m_mesh;
    const MeshTopology& m_topology;
    Renumbering m_vertices;
    Renumbering m_edges;
    std::vector<Renumbering> m_uvs;
    std::vector<float> m_edgeCrease; ///< of all edges; empty without creases
    std::vector<float> m_vertexCrease;
    NumberLists m_memberships;      ///< of each vertex; empty without groups of points
    Numbers m_groupOfMembership;    ///< which group, group after group
    std::vector<Numbers> m_members; ///< of each group in the part that is being made
};

void spread(std::vector<float>& values, std::size_t count, const Numbers& where,
            const std::vector<float>& what)
{
    values.assign(count, 0);
    for (std::size_t i = 0; i < where.size(); ++i) {
        values[where[i]] = what[i];
    }
}

MeshSplitter::MeshSplitter(const MeshData& mesh)
    : m_mesh(mesh)
    , m_topology(*mesh.topology)
    , m_vertices(m_topology.vertexCount)
    , m_edges(m_topology.edges.size())
{
    for (const UvSet& set : mesh.uvSets) {
        m_uvs.emplace_back(set.points != nullptr ? set.points->size() : 0);
    }
    if (mesh.creases != nullptr) {
        spread(m_edgeCrease, m_topology.edges.size(), mesh.creases->edges,
               mesh.creases->edgeValues);
        spread(m_vertexCrease, m_topology.vertexCount, mesh.creases->vertices,
               mesh.creases->vertexValues);
    }
    listPointGroups();
}

void MeshSplitter::listPointGroups()
{
    Numbers members;
    for (std::uint32_t group = 0; group < m_mesh.pointGroups.size(); ++group) {
        if (const auto& points = m_mesh.pointGroups[group].points; points != nullptr) {
            members.insert(members.end(), points->begin(), points->end());
            m_groupOfMembership.resize(members.size(), group);
        }
    }
    m_members.resize(m_mesh.pointGroups.size());
    if (!members.empty()) {
        m_memberships = NumberLists(members, m_topology.vertexCount);
    }
}

MeshTopology MeshSplitter::takeTopology(std::span<const std::uint32_t> faces)
{
    MeshTopology to;
    m_edges.begin();
    m_vertices.begin();
    for (const std::uint32_t face : faces) {
        for (std::uint32_t corner = m_topology.firstCorner(face);
             corner < m_topology.endCorner(face); ++corner) {
            m_edges.use(edgeOf(m_topology.corners[corner]));
            m_vertices.use(m_topology.cornerVertex(corner));
        }
    }
    m_edges.number();
    m_vertices.number();
    to.vertexCount = static_cast<std::uint32_t>(m_vertices.used().size());
    for (const std::uint32_t edge : m_edges.used()) {
        const MeshEdge& from = m_topology.edges[edge];
        to.edges.push_back({m_vertices(from.start), m_vertices(from.end)});
    }
    to.loopStart.push_back(0);
    to.faceLoop.push_back(0);
    for (const std::uint32_t face : faces) {
        for (std::uint32_t loop = m_topology.firstLoop(face); loop < m_topology.firstLoop(face + 1);
             ++loop) {
            for (std::uint32_t corner = m_topology.loopStart[loop];
                 corner < m_topology.loopStart[loop + 1]; ++corner) {
                const std::int32_t reference = m_topology.corners[corner];
                to.corners.push_back(referenceTo(m_edges(edgeOf(reference)), reference < 0));
            }
            to.loopStart.push_back(static_cast<std::uint32_t>(to.corners.size()));
        }
        to.faceLoop.push_back(to.loopCount());
    }
    if (to.faceLoop.back() + 1 == to.faceLoop.size()) {
        to.faceLoop.clear(); // every face is one loop
    }
    return to;
}

void MeshSplitter::takeUvs(MeshData& to, std::span<const std::uint32_t> faces)
{
    for (std::size_t set = 0; set < m_uvs.size(); ++set) {
        const UvSet& from = m_mesh.uvSets[set];
        std::vector<Vec2f> points;
        std::vector<std::int32_t> ids;
        if (from.corners != nullptr && !from.corners->empty()) {
            m_uvs[set].begin();
            for (const std::uint32_t face : faces) {
                for (std::uint32_t corner = m_topology.firstCorner(face);
                     corner < m_topology.endCorner(face); ++corner) {
                    ids.push_back((*from.corners)[corner]);
                    if (ids.back() >= 0) {
                        m_uvs[set].use(static_cast<std::uint32_t>(ids.back()));
                    }
                }
            }
            m_uvs[set].number();
            for (const std::uint32_t uv : m_uvs[set].used()) {
                points.push_back((*from.points)[uv]);
            }
            for (std::int32_t& id : ids) {
                id = id < 0 ? id
                            : static_cast<std::int32_t>(m_uvs[set](static_cast<std::uint32_t>(id)));
            }
        }
        to.uvSets.push_back({from.name,
                             std::make_shared<const std::vector<Vec2f>>(std::move(points)),
                             std::make_shared<const std::vector<std::int32_t>>(std::move(ids))});
    }
}

void collectCreases(const Numbers& used, const std::vector<float>& values, Numbers& where,
                    std::vector<float>& what)
{
    for (std::uint32_t i = 0; i < used.size(); ++i) {
        if (values[used[i]] != 0) {
            where.push_back(i);
            what.push_back(values[used[i]]);
        }
    }
}

void MeshSplitter::takeCreases(MeshData& to) const
{
    if (m_mesh.creases == nullptr) {
        return;
    }
    MeshCreases creases;
    collectCreases(m_edges.used(), m_edgeCrease, creases.edges, creases.edgeValues);
    collectCreases(m_vertices.used(), m_vertexCrease, creases.vertices, creases.vertexValues);
    to.creases = std::make_shared<const MeshCreases>(std::move(creases));
}

/// The groups that have any of the part's vertices.
void MeshSplitter::takePointGroups(MeshData& to)
{
    if (m_groupOfMembership.empty()) {
        return;
    }
    Numbers met;
    const Numbers& used = m_vertices.used();
    for (std::uint32_t vertex = 0; vertex < used.size(); ++vertex) {
        for (const std::uint32_t membership : m_memberships.of(used[vertex])) {
            const std::uint32_t group = m_groupOfMembership[membership];
            if (m_members[group].empty()) {
                met.push_back(group);
            }
            m_members[group].push_back(vertex);
        }
    }
    std::sort(met.begin(), met.end());
    for (const std::uint32_t group : met) {
        to.pointGroups.push_back(
            {m_mesh.pointGroups[group].id,
             std::make_shared<const Numbers>(std::exchange(m_members[group], {}))});
    }
}

std::shared_ptr<const EdgeFlags> MeshSplitter::takeFlags() const
{
    if (m_mesh.edgeSmooth == nullptr) {
        return nullptr;
    }
    EdgeFlags flags;
    for (const std::uint32_t edge : m_edges.used()) {
        flags.push_back((*m_mesh.edgeSmooth)[edge]);
    }
    return shareEdgeFlags(std::move(flags));
}

std::shared_ptr<MeshData> MeshSplitter::part(std::span<const std::uint32_t> faces)
{
    auto part = std::make_shared<MeshData>();
    part->currentUvSet = m_mesh.currentUvSet;
    part->normalWeighting = m_mesh.normalWeighting;
    part->quadSplit = m_mesh.quadSplit;
    part->topology = std::make_shared<const MeshTopology>(takeTopology(faces));
    part->edgeSmooth = takeFlags();
    std::vector<Vec3f> points;
    for (const std::uint32_t vertex : m_vertices.used()) {
        points.push_back((*m_mesh.points)[vertex]);
    }
    part->points = std::make_shared<const std::vector<Vec3f>>(std::move(points));
    takeUvs(*part, faces);
    takeCreases(*part);
    takePointGroups(*part);
    return part;
}

/// Where a list of faces has its members: the faces of each part, in new numbers.
class FaceDealer {
public:
    explicit FaceDealer(const MeshParts& parts) : m_parts(parts), m_number(parts.ofFace.size())
    {
        Numbers next(parts.count);
        for (std::size_t face = 0; face < m_number.size(); ++face) {
            m_number[face] = next[parts.ofFace[face]]++;
        }
    }

    /// Calls `give` with each part that has any of the faces, and with its faces.
    template<class Give>
    void deal(const Numbers& faces, const Give& give)
    {
        m_dealt = faces;
        std::stable_sort(m_dealt.begin(), m_dealt.end(), [this](std::uint32_t a, std::uint32_t b) {
            return m_parts.ofFace[a] < m_parts.ofFace[b];
        });
        for (std::size_t first = 0; first < m_dealt.size();) {
            const std::uint32_t part = m_parts.ofFace[m_dealt[first]];
            Numbers numbers;
            for (; first < m_dealt.size() && m_parts.ofFace[m_dealt[first]] == part; ++first) {
                numbers.push_back(m_number[m_dealt[first]]);
            }
            give(part, std::make_shared<const Numbers>(std::move(numbers)));
        }
    }

private:
    const MeshParts& m_parts;
    Numbers m_number;
    Numbers m_dealt;
};

} // namespace

MeshParts shellsOf(const MeshTopology& topology)
{
    DisjointSets sets(topology.faceCount());
    std::vector<std::uint32_t> faceOfVertex(topology.vertexCount, kNone);
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        for (std::uint32_t corner = topology.firstCorner(face); corner < topology.endCorner(face);
             ++corner) {
            std::uint32_t& known = faceOfVertex[topology.cornerVertex(corner)];
            if (known == kNone) {
                known = face;
            }
            sets.join(known, face);
        }
    }
    MeshParts parts;
    parts.ofFace.resize(topology.faceCount());
    for (std::uint32_t face = 0; face < topology.faceCount(); ++face) {
        const std::uint32_t lowest = sets.lowest(face);
        parts.ofFace[face] = lowest == face ? parts.count++ : parts.ofFace[lowest];
    }
    return parts;
}

std::vector<std::shared_ptr<const MeshData>> splitMesh(const MeshData& mesh, const MeshParts& parts)
{
    MeshSplitter splitter(mesh);
    const NumberLists faces(parts.ofFace, parts.count);
    std::vector<std::shared_ptr<MeshData>> meshes;
    for (std::uint32_t part = 0; part < parts.count; ++part) {
        meshes.push_back(splitter.part(faces.of(part)));
    }
    FaceDealer dealer(parts);
    for (const FaceGroup& group : mesh.groups) {
        if (group.faces != nullptr) {
            dealer.deal(*group.faces, [&](std::uint32_t part, auto members) {
                meshes[part]->groups.push_back({group.id, std::move(members)});
            });
        }
    }
    if (mesh.invisibleFaces != nullptr) {
        dealer.deal(*mesh.invisibleFaces, [&](std::uint32_t part, auto members) {
            meshes[part]->invisibleFaces = std::move(members);
        });
    }
    return {meshes.begin(), meshes.end()};
}

} // namespace host::geometry
