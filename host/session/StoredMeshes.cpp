#include "host/session/StoredMeshes.h"

#include "host/geometry/mesh/MeshData.h"
#include "host/geometry/mesh/buildTopology.h"
#include "host/session/plugLookup.h"
#include "host/support/wideProcessors.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

namespace host::session {
namespace {

using geometry::MeshData;
using graph::Graph;
using graph::kNoSlot;
using graph::NodeId;
using graph::Plug;

constexpr std::string_view kFirstUvSetName = "map1";
constexpr std::size_t kMaxUvSets = 64; ///< as many as faces can refer to
constexpr std::string_view kMesh = "cachedInMesh";
constexpr std::string_view kPoints = "vrts";
constexpr std::string_view kEdges = "edge";
constexpr std::size_t kMostHeld = 0x7ffffffe; ///< points or edges

/// Appends vectors that stand as plain numbers.
template<class Vector>
void appendVectors(std::vector<Vector>& vectors, std::span<const float> numbers)
{
    static_assert(sizeof(Vector) % sizeof(float) == 0);
    const std::size_t before = vectors.size();
    const std::size_t count = numbers.size_bytes() / sizeof(Vector);
    if (count > 0) {
        vectors.resize(before + count);
        std::memcpy(static_cast<void*>(vectors.data() + before), numbers.data(),
                    count * sizeof(Vector));
    }
}

/// Memory for what comes, where that is known and is not less than there is.
template<class T>
void reserveAhead(std::vector<T>& list, std::size_t ahead)
{
    if (ahead >= list.size()) {
        list.reserve(list.size() + ahead);
    }
}

/// A list that grew by itself without the room that is left over.
template<class T>
void fit(std::vector<T>& list)
{
    if (list.capacity() - list.size() > list.size() / 8) {
        list.shrink_to_fit();
    }
}

struct IdRange {
    std::int32_t lowest = 0; ///< or the lowest below 0
    std::int32_t highest = -1;
};

HOST_ALSO_FOR_WIDE_PROCESSORS IdRange rangeOf(std::span<const std::int32_t> ids)
{
    IdRange range;
    for (const std::int32_t id : ids) { // without a branch: nearly always all are good
        range.lowest = std::min(range.lowest, id);
        range.highest = std::max(range.highest, id);
    }
    return range;
}

template<class T>
void appendTo(std::vector<T>& list, std::vector<T>&& more)
{
    if (list.capacity() == 0) {
        list = std::move(more);
    } else {
        list.insert(list.end(), more.begin(), more.end());
    }
}

/// The ids of a uv set, filled up with "none" to `count` corners; made in its place if need be.
std::vector<std::int32_t>& idsOf(PolyFaces& faces, std::int32_t set, std::size_t count)
{
    auto at = std::lower_bound(
        faces.uvSets.begin(), faces.uvSets.end(), set,
        [](const PolyFaces::UvIds& ids, std::int32_t wanted) { return ids.set < wanted; });
    if (at == faces.uvSets.end() || at->set != set) {
        at = faces.uvSets.insert(at, {set, {}});
    }
    at->ids.resize(count, -1);
    return at->ids;
}

void appendFaces(PolyFaces& faces, PolyFaces&& more)
{
    if (faces.faceLoopCounts.empty() && faces.corners.capacity() == 0) {
        faces = std::move(more);
        return;
    }
    const std::size_t before = faces.corners.size();
    for (PolyFaces::UvIds& ids : more.uvSets) {
        appendTo(idsOf(faces, ids.set, before), std::move(ids.ids));
    }
    appendTo(faces.corners, std::move(more.corners));
    appendTo(faces.loopSizes, std::move(more.loopSizes));
    appendTo(faces.faceLoopCounts, std::move(more.faceLoopCounts));
    for (PolyFaces::UvIds& ids : faces.uvSets) {
        ids.ids.resize(faces.corners.size(), -1);
    }
}

/// Memory for all faces of a list when its first ones come. Faces and loops are reckoned from
/// those, and are not more than the corners.
void reserveFaces(PolyFaces& faces, const PolyFaces& first, std::size_t cornersAhead)
{
    const std::size_t corners = first.corners.size();
    if (!faces.corners.empty() || cornersAhead <= corners || corners == 0) {
        return;
    }
    const auto share = [&](std::size_t count) {
        const double wanted = 1.02 * static_cast<double>(count) *
                              static_cast<double>(cornersAhead) / static_cast<double>(corners);
        return std::min(static_cast<std::size_t>(wanted), cornersAhead);
    };
    faces.corners.reserve(cornersAhead);
    faces.loopSizes.reserve(share(first.loopSizes.size()));
    faces.faceLoopCounts.reserve(share(first.faceLoopCounts.size()));
    for (const PolyFaces::UvIds& ids : first.uvSets) {
        idsOf(faces, ids.set, 0).reserve(cornersAhead);
    }
}

/// Takes a mesh's raw numbers out of the graph and joins them.
class MeshAssembly {
public:
    MeshAssembly(Graph& graph, NodeId node) : m_graph(graph), m_node(node) {}

    std::shared_ptr<const MeshData> build(PolyFaces&& faces, std::vector<Vec3f>&& points,
                                          geometry::EdgeLists&& edges);
    /// What was damaged, as one sentence; empty if nothing was.
    const std::string& damage() const { return m_damage; }

private:
    Plug plug(std::string_view name) const { return topPlug(m_graph, m_node, name); }
    /// The numbers of a multi as one block, `width` for each element, and the multi emptied.
    template<class T>
    std::vector<T> take(const Plug& from, std::size_t width, T fallback);
    std::vector<Vec3f> takeVectors(std::string_view name, float fallback);
    void takeUvSets(PolyFaces& faces, const geometry::TopologyDamage& damage,
                    std::size_t cornerCount);
    geometry::UvSet takeUvSet(const Plug& element);
    void takeUvIds(geometry::UvSet& set, std::vector<std::int32_t>&& ids,
                   const geometry::TopologyDamage& damage, std::size_t cornerCount);
    void takeInvisibleFaces(std::uint32_t faceCount);
    void takeCreases();
    void takeCreases(std::string_view name, PolyComponentData::Domain domain, std::size_t count,
                     std::vector<std::uint32_t>& parts, std::vector<float>& values);
    void report(std::size_t count, std::string_view what);

    Graph& m_graph;
    NodeId m_node;
    MeshData m_mesh;
    std::string m_damage;
};

template<class T>
std::vector<T> MeshAssembly::take(const Plug& from, std::size_t width, T fallback)
{
    const NumericArray* found = from ? m_graph.findNumericArray(from) : nullptr;
    if (found == nullptr || found->width() != width) {
        return {};
    }
    NumericArray& held = m_graph.numericArray(from, found->storage(), width);
    // A lone high index must not make a block of billions.
    const std::uint64_t limit = std::uint64_t{held.elementCount()} * 4 + 1024;
    return held.takeDense<T>(static_cast<std::size_t>(std::min(held.endIndex(), limit)), fallback);
}

std::vector<Vec3f> MeshAssembly::takeVectors(std::string_view name, float fallback)
{
    const std::vector<float> numbers = take<float>(plug(name), 3, fallback);
    std::vector<Vec3f> vectors;
    appendVectors(vectors, numbers);
    return vectors;
}

/// Points and edges that are not given lie in the graph.
std::shared_ptr<const MeshData> MeshAssembly::build(PolyFaces&& faces, std::vector<Vec3f>&& points,
                                                    geometry::EdgeLists&& edges)
{
    if (points.empty()) {
        points = takeVectors(kPoints, 0.0F);
    }
    if (edges.edges.empty()) {
        edges.append(take<std::int32_t>(plug(kEdges), 3, 0));
    }
    fit(points);
    fit(edges.edges);
    fit(edges.smooth);
    const auto pointCount = static_cast<std::uint32_t>(
        std::min<std::size_t>(points.size(), std::numeric_limits<std::int32_t>::max()));
    geometry::FaceLists lists;
    lists.corners = std::move(faces.corners);
    lists.loopSizes = faces.loopSizes;
    lists.faceLoopCounts = faces.faceLoopCounts;
    geometry::BuiltTopology built =
        geometry::buildTopology(pointCount, std::move(edges), std::move(lists));
    report(built.damage.badEdges, "edges");
    report(built.damage.badFaces, "faces");
    report(built.damage.badHoles, "holes");
    report(built.damage.looseLoops, "loose loops");

    m_mesh.topology = std::make_shared<const geometry::MeshTopology>(std::move(built.topology));
    m_mesh.edgeSmooth = geometry::shareEdgeFlags(std::move(built.edgeSmooth));
    m_mesh.points = std::make_shared<const std::vector<Vec3f>>(std::move(points));
    takeUvSets(faces, built.damage, m_mesh.topology->corners.size());
    auto normals = takeVectors("normals", 1e20F);
    if (!normals.empty()) {
        m_mesh.lockedNormals = std::make_shared<const std::vector<Vec3f>>(std::move(normals));
    }
    takeInvisibleFaces(m_mesh.topology->faceCount());
    takeCreases();
    return std::make_shared<const MeshData>(std::move(m_mesh));
}

void MeshAssembly::takeUvSets(PolyFaces& faces, const geometry::TopologyDamage& damage,
                              std::size_t cornerCount)
{
    const Plug sets = plug("uvSet");
    if (!sets) {
        return;
    }
    std::vector<std::int32_t> indices = m_graph.elementIndices(sets);
    indices.resize(std::min(indices.size(), kMaxUvSets));
    for (const std::int32_t index : indices) {
        geometry::UvSet set = takeUvSet(m_graph.element(sets, index));
        const auto ids = std::find_if(
            faces.uvSets.begin(), faces.uvSets.end(),
            [index](const PolyFaces::UvIds& candidate) { return candidate.set == index; });
        if (ids != faces.uvSets.end()) {
            takeUvIds(set, std::move(ids->ids), damage, cornerCount);
        }
        if (set.name.empty() && m_mesh.uvSets.empty()) {
            set.name = kFirstUvSetName;
        }
        m_mesh.uvSets.push_back(std::move(set));
    }
    const auto current = m_graph.storedValue(plug("currentUVSet")).data<std::string>();
    if (current != nullptr && !current->empty()) {
        m_mesh.currentUvSet = *current;
    } else if (!m_mesh.uvSets.empty()) {
        m_mesh.currentUvSet = m_mesh.uvSets.front().name;
    }
}

geometry::UvSet MeshAssembly::takeUvSet(const Plug& element)
{
    geometry::UvSet set;
    const AttributeIndex name = m_graph.findAttribute(m_node, "uvSetName");
    const AttributeIndex points = m_graph.findAttribute(m_node, "uvSetPoints");
    if (name != kNoAttribute) {
        const auto text = m_graph.storedValue(m_graph.child(element, name)).data<std::string>();
        set.name = text != nullptr ? *text : std::string();
    }
    if (points != kNoAttribute) {
        const std::vector<float> numbers = take<float>(m_graph.child(element, points), 2, 0.0F);
        std::vector<Vec2f> pairs;
        appendVectors(pairs, numbers);
        set.points = std::make_shared<const std::vector<Vec2f>>(std::move(pairs));
    }
    return set;
}

void MeshAssembly::takeUvIds(geometry::UvSet& set, std::vector<std::int32_t>&& ids,
                             const geometry::TopologyDamage& damage, std::size_t cornerCount)
{
    geometry::removeCorners(ids, damage.droppedCorners, cornerCount);
    const auto pointCount =
        static_cast<std::int64_t>(set.points != nullptr ? set.points->size() : 0);
    auto [lowest, highest] = rangeOf(ids);
    std::size_t bad = 0;
    if (lowest < -1 || highest >= pointCount) {
        highest = -1;
        for (std::int32_t& id : ids) {
            const bool isBad = id < -1 || id >= pointCount;
            bad += isBad ? 1 : 0;
            id = isBad ? -1 : id;
            highest = std::max(highest, id);
        }
    }
    report(bad, "texture coordinate numbers");
    if (highest >= 0) {
        set.corners = std::make_shared<const std::vector<std::int32_t>>(std::move(ids));
    }
}

void MeshAssembly::takeInvisibleFaces(std::uint32_t faceCount)
{
    const auto held = m_graph.storedValue(plug("holeFaceData")).data<PolyComponentData>();
    if (held == nullptr || held->domain != PolyComponentData::Domain::Face) {
        return;
    }
    std::vector<std::uint32_t> faces = held->indices;
    std::sort(faces.begin(), faces.end());
    faces.erase(std::unique(faces.begin(), faces.end()), faces.end());
    faces.erase(std::lower_bound(faces.begin(), faces.end(), faceCount), faces.end());
    if (!faces.empty()) {
        m_mesh.invisibleFaces =
            std::make_shared<const std::vector<std::uint32_t>>(std::move(faces));
    }
}

void MeshAssembly::takeCreases()
{
    using Domain = PolyComponentData::Domain;
    geometry::MeshCreases creases;
    takeCreases("creaseData", Domain::Edge, m_mesh.topology->edges.size(), creases.edges,
                creases.edgeValues);
    takeCreases("creaseVertexData", Domain::Vertex, m_mesh.topology->vertexCount, creases.vertices,
                creases.vertexValues);
    if (!creases.edges.empty() || !creases.vertices.empty()) {
        m_mesh.creases = std::make_shared<const geometry::MeshCreases>(std::move(creases));
    }
}

/// Parts that are there and sharp, ascending; of one that is listed twice the first value.
void MeshAssembly::takeCreases(std::string_view name, PolyComponentData::Domain domain,
                               std::size_t count, std::vector<std::uint32_t>& parts,
                               std::vector<float>& values)
{
    const auto held = m_graph.storedValue(plug(name)).data<PolyComponentData>();
    if (held == nullptr || held->domain != domain) {
        return;
    }
    std::vector<std::pair<std::uint32_t, float>> sharp;
    for (std::size_t i = 0; i < std::min(held->indices.size(), held->values.size()); ++i) {
        if (held->indices[i] < count && held->values[i] > 0) {
            sharp.emplace_back(held->indices[i], static_cast<float>(held->values[i]));
        }
    }
    const auto byPart = [](const auto& a, const auto& b) { return a.first < b.first; };
    std::stable_sort(sharp.begin(), sharp.end(), byPart);
    for (const auto& [part, value] : sharp) {
        if (parts.empty() || parts.back() != part) {
            parts.push_back(part);
            values.push_back(value);
        }
    }
}

void MeshAssembly::report(std::size_t count, std::string_view what)
{
    if (count == 0) {
        return;
    }
    m_damage +=
        (m_damage.empty() ? "" : ", ") + std::to_string(count) + " bad " + std::string(what);
}

} // namespace

bool StoredMeshes::append(NodeId mesh, std::uint32_t first, PolyFaces&& faces,
                          std::size_t cornersAhead)
{
    PolyFaces& held = m_lists[mesh].faces;
    addMesh(mesh);
    const bool follows = held.faceLoopCounts.size() == first;
    reserveFaces(held, faces, cornersAhead);
    appendFaces(held, std::move(faces));
    return follows;
}

bool StoredMeshes::mayTake(std::string_view attribute)
{
    return attribute == kPoints || attribute == kEdges;
}

bool StoredMeshes::append(Graph& graph, const Plug& array, std::uint32_t first,
                          const file::NumberBlock& numbers, std::size_t elementsAhead)
{
    const bool arePoints = array == topPlug(graph, array.node, kPoints);
    if (!arePoints && array != topPlug(graph, array.node, kEdges)) {
        return false;
    }
    const NumberStorage storage = arePoints ? NumberStorage::Float : NumberStorage::Int32;
    const bool fits = numbers.storage == storage && numbers.width == 3 && numbers.count() > 0 &&
                      graph.findAttribute(array.node, kMesh) != kNoAttribute;
    const NumericArray* const inGraph = graph.findNumericArray(array);
    if (!fits || (inGraph != nullptr && !inGraph->empty())) {
        putInGraph(graph, array);
        return false;
    }
    Lists& lists = m_lists[array.node];
    const std::size_t before = arePoints ? lists.points.size() : lists.edges.edges.size();
    if (first != before || numbers.count() > kMostHeld - before) {
        putInGraph(graph, array);
        return false;
    }
    if (inGraph == nullptr) { // there it is one that was set
        graph.numericArray(array, storage, 3);
    }
    if (arePoints) {
        reserveAhead(lists.points, elementsAhead);
        appendVectors(lists.points, numbers.floats);
    } else {
        reserveAhead(lists.edges.edges, elementsAhead);
        lists.edges.append(numbers.integers);
    }
    return true;
}

void StoredMeshes::putPointsInGraph(Graph& graph, const Plug& array, Lists& lists)
{
    std::vector<float> numbers;
    numbers.reserve(3 * lists.points.size());
    for (const Vec3f& point : lists.points) {
        numbers.insert(numbers.end(), {point.x, point.y, point.z});
    }
    lists.points = {};
    graph.numericArray(array, NumberStorage::Float, 3).store<float>(0, numbers);
}

void StoredMeshes::putEdgesInGraph(Graph& graph, const Plug& array, Lists& lists)
{
    const std::vector<std::int32_t> numbers = lists.edges.triples();
    lists.edges = {};
    graph.numericArray(array, NumberStorage::Int32, 3).store<std::int32_t>(0, numbers);
}

void StoredMeshes::putAllInGraph(Graph& graph, NodeId mesh, Lists& lists)
{
    if (!lists.points.empty()) {
        putPointsInGraph(graph, topPlug(graph, mesh, kPoints), lists);
    }
    if (!lists.edges.edges.empty()) {
        putEdgesInGraph(graph, topPlug(graph, mesh, kEdges), lists);
    }
}

void StoredMeshes::putInGraph(Graph& graph, const Plug& plug)
{
    const auto found = m_lists.find(plug.node);
    if (found == m_lists.end() || !plug) {
        return;
    }
    AttributeIndex root = plug.attribute;
    for (AttributeIndex parent = root; parent != kNoAttribute;
         parent = graph.attribute(plug.node, root).parent) {
        root = parent;
    }
    Lists& lists = found->second;
    if (!lists.points.empty() && root == graph.findAttribute(plug.node, kPoints)) {
        putPointsInGraph(graph, topPlug(graph, plug.node, kPoints), lists);
    } else if (!lists.edges.edges.empty() && root == graph.findAttribute(plug.node, kEdges)) {
        putEdgesInGraph(graph, topPlug(graph, plug.node, kEdges), lists);
    }
}

void StoredMeshes::addMesh(NodeId mesh)
{
    if (m_inOrder.empty() || m_inOrder.back() != mesh) {
        m_inOrder.push_back(mesh);
    }
}

void StoredMeshes::build(Graph& graph, Diagnostics& diagnostics)
{
    std::sort(m_inOrder.begin(), m_inOrder.end());
    m_inOrder.erase(std::unique(m_inOrder.begin(), m_inOrder.end()), m_inOrder.end());
    for (const NodeId node : m_inOrder) {
        const AttributeIndex stored = graph.findAttribute(node, kMesh);
        if (stored == kNoAttribute) {
            continue;
        }
        MeshAssembly assembly(graph, node);
        const auto found = m_lists.find(node);
        Lists lists;
        if (found != m_lists.end()) {
            lists = std::move(found->second);
            m_lists.erase(found);
        }
        const auto mesh =
            assembly.build(std::move(lists.faces), std::move(lists.points), std::move(lists.edges));
        if (!assembly.damage().empty()) {
            diagnostics.note(DiagnosticKind::DamagedGeometry, "mesh",
                             graph.node(node).name + ": " + assembly.damage());
        }
        graph.setValue({node, stored, kNoSlot, -1}, Value(mesh));
    }
    m_inOrder.clear();
    for (auto& [node, lists] : m_lists) { // of no mesh
        putAllInGraph(graph, node, lists);
    }
    m_lists.clear();
}

} // namespace host::session
