#include "host/geometry/mesh/edit/MeshCutter.h"

#include "host/geometry/mesh/edit/edgeSmoothness.h"

#include <algorithm>

namespace host::geometry {
namespace {

float between(float a, float b, double part)
{
    return static_cast<float>(a + (static_cast<double>(b) - a) * part);
}

/// The pair of ids in either order, and whether it was turned round.
std::uint64_t pairKey(std::int32_t a, std::int32_t b)
{
    const auto low = static_cast<std::uint32_t>(std::min(a, b));
    const auto high = static_cast<std::uint32_t>(std::max(a, b));
    return std::uint64_t{high} << 32U | low;
}

} // namespace

MeshCutter::MeshCutter(const MeshData& before)
    : m_rewriter(before)
    , m_links(*before.topology)
    , m_cornersOfEdges(cornersOfEdges(*before.topology))
    , m_faceCount(before.topology->faceCount())
    , m_mixed(before.uvSets.size())
{
}

std::uint32_t MeshCutter::addUvs(std::span<const std::int32_t> ids)
{
    const std::size_t sets = m_mixed.size();
    if (sets == 0) {
        return 0;
    }
    m_uvPool.insert(m_uvPool.end(), ids.begin(), ids.end());
    return static_cast<std::uint32_t>(m_uvPool.size() / sets - 1);
}

std::span<const std::int32_t> MeshCutter::uvsAt(std::uint32_t place) const
{
    return std::span(m_uvPool).subspan(place * m_mixed.size(), m_mixed.size());
}

MeshCutter::Face& MeshCutter::editable(std::uint32_t face)
{
    const auto [entry, isNew] = m_faces.try_emplace(face);
    Face& made = entry->second;
    const MeshTopology& topology = *m_rewriter.before().topology;
    if (!isNew || face >= topology.faceCount()) {
        return made;
    }
    made.source = face;
    std::vector<std::int32_t> ids(m_mixed.size());
    for (std::uint32_t loop = topology.firstLoop(face); loop < topology.firstLoop(face + 1);
         ++loop) {
        for (std::uint32_t corner = topology.loopStart[loop]; corner < topology.loopStart[loop + 1];
             ++corner) {
            for (std::size_t set = 0; set < ids.size(); ++set) {
                ids[set] = m_rewriter.uvId(set, corner);
            }
            made.corners.push_back({topology.corners[corner], addUvs(ids)});
        }
        made.loopEnds.push_back(static_cast<std::uint32_t>(made.corners.size()));
    }
    return made;
}

std::vector<std::uint32_t> MeshCutter::facesOf(std::uint32_t edge)
{
    const auto [entry, isNew] = m_users.try_emplace(edge);
    if (isNew && edge < m_rewriter.before().topology->edges.size()) {
        for (const std::uint32_t corner : m_cornersOfEdges.of(edge)) {
            entry->second.push_back(m_links.face(corner));
        }
    }
    return entry->second;
}

void MeshCutter::replaceUser(std::uint32_t edge, std::uint32_t before, std::uint32_t now)
{
    facesOf(edge);
    for (std::uint32_t& user : m_users[edge]) {
        if (user == before) {
            user = now;
            return;
        }
    }
}

std::uint32_t MeshCutter::mixUvs(std::uint32_t from, std::uint32_t to, double part)
{
    std::vector<std::int32_t> ids(m_mixed.size(), -1);
    for (std::size_t set = 0; set < ids.size(); ++set) {
        const std::int32_t a = uvsAt(from)[set];
        const std::int32_t b = uvsAt(to)[set];
        if (a < 0 || b < 0) {
            continue;
        }
        const auto [entry, isNew] = m_mixed[set].try_emplace(pairKey(a, b), 0);
        if (isNew) {
            const Vec2f start = m_rewriter.uvPoints(set)[static_cast<std::size_t>(a)];
            const Vec2f end = m_rewriter.uvPoints(set)[static_cast<std::size_t>(b)];
            entry->second = m_rewriter.addUv(
                set, {between(start.x, end.x, part), between(start.y, end.y, part)});
        }
        ids[set] = entry->second;
    }
    return addUvs(ids);
}

/// Puts the second half of an edge into a loop of which the whole was a part.
void MeshCutter::splitCorners(std::uint32_t face, std::uint32_t edge, std::uint32_t half,
                              double part)
{
    Face& made = editable(face);
    if (isTired(made.corners.size())) {
        return;
    }
    std::uint32_t first = 0;
    for (std::size_t loop = 0; loop < made.loopEnds.size(); ++loop) {
        for (std::uint32_t i = first; i < made.loopEnds[loop]; ++i) {
            const Corner corner = made.corners[i];
            if (edgeOf(corner.reference) != edge) {
                continue;
            }
            const bool isForward = corner.reference >= 0;
            const Corner next = made.corners[i + 1 < made.loopEnds[loop] ? i + 1 : first];
            const std::uint32_t uvs =
                m_mixed.empty() ? 0 : mixUvs(corner.uvs, next.uvs, isForward ? part : 1 - part);
            made.corners[i].reference = isForward ? corner.reference : referenceTo(half, true);
            made.corners.insert(made.corners.begin() + i + 1,
                                {referenceTo(isForward ? half : edge, !isForward), uvs});
            for (std::size_t later = loop; later < made.loopEnds.size(); ++later) {
                ++made.loopEnds[later];
            }
            ++i;
        }
        first = made.loopEnds[loop];
    }
}

std::uint32_t MeshCutter::splitEdge(std::uint32_t edge, double part)
{
    const MeshEdge ends = m_rewriter.edges()[edge];
    const Vec3d start = toDouble(m_rewriter.points()[ends.start]);
    const Vec3d end = toDouble(m_rewriter.points()[ends.end]);
    const std::uint32_t vertex = m_rewriter.addPoint(toFloat(start + (end - start) * part));
    const std::vector<std::uint32_t> users = facesOf(edge);
    const std::uint32_t source =
        edge < m_rewriter.before().topology->edges.size() ? edge : kNoSource;
    const std::uint32_t half = m_rewriter.addEdge(vertex, ends.end, false, source);
    if (m_rewriter.isFull() || isTired(users.size())) {
        return ends.end;
    }
    m_rewriter.edgeSmooth()[half] = m_rewriter.edgeSmooth()[edge];
    m_rewriter.edges()[edge].end = vertex;
    m_users[half] = users;
    for (auto& mixed : m_mixed) {
        mixed.clear();
    }
    std::uint32_t last = kNone;
    for (const std::uint32_t face : users) {
        if (face != last) {
            splitCorners(face, edge, half, part);
        }
        last = face;
    }
    return vertex;
}

bool MeshCutter::hasVertex(std::uint32_t face, std::uint32_t vertex)
{
    const std::span<const Corner> loop = loopOf(face);
    return !isTired(loop.size()) &&
           std::any_of(loop.begin(), loop.end(),
                       [&](const Corner& corner) { return vertexAt(corner) == vertex; });
}

std::span<const MeshCutter::Corner> MeshCutter::loopOf(std::uint32_t face)
{
    const Face& made = editable(face);
    return made.loopEnds.size() == 1 ? std::span<const Corner>(made.corners)
                                     : std::span<const Corner>();
}

/// Texture coordinates at a vertex inside a face, from its corners by their nearness.
std::uint32_t MeshCutter::uvsInside(std::span<const Corner> loop, std::uint32_t vertex)
{
    const auto& points = m_rewriter.points();
    std::vector<std::int32_t> ids(m_mixed.size(), -1);
    for (std::size_t set = 0; set < ids.size(); ++set) {
        double x = 0;
        double y = 0;
        double sum = 0;
        bool hasAll = true;
        for (const Corner& corner : loop) {
            const std::int32_t id = uvsAt(corner.uvs)[set];
            hasAll = hasAll && id >= 0;
            if (hasAll) {
                constexpr double kNearest = 1e-12;
                const Vec3d away = toDouble(points[vertexAt(corner)]) - toDouble(points[vertex]);
                const double weight = 1 / std::max(dot(away, away), kNearest);
                const Vec2f place = m_rewriter.uvPoints(set)[static_cast<std::size_t>(id)];
                x += weight * place.x;
                y += weight * place.y;
                sum += weight;
            }
        }
        if (hasAll && sum > 0) {
            ids[set] =
                m_rewriter.addUv(set, {static_cast<float>(x / sum), static_cast<float>(y / sum)});
        }
    }
    return addUvs(ids);
}

bool MeshCutter::cutFace(std::uint32_t face, std::uint32_t from, std::uint32_t to,
                         std::span<const std::uint32_t> inner)
{
    const std::span<const Corner> loop = loopOf(face);
    const std::size_t size = loop.size();
    if (isTired(size)) {
        return false;
    }
    std::size_t i = size;
    std::size_t j = size;
    for (std::size_t place = 0; place < size; ++place) {
        i = i == size && vertexAt(loop[place]) == from ? place : i;
        j = j == size && vertexAt(loop[place]) == to ? place : j;
    }
    if (i == size || j == size || i == j) {
        return false;
    }
    if (inner.empty() && ((i + 1) % size == j || (j + 1) % size == i)) {
        return false;
    }
    // On the left from `from` over the line to `to` and on; on the right back again.
    Face left;
    Face right;
    std::vector<Corner> back;
    std::uint32_t uvs = loop[i].uvs;
    const auto firstEdge = static_cast<std::uint32_t>(m_rewriter.edges().size());
    for (std::size_t step = 0; step <= inner.size(); ++step) {
        const std::uint32_t start = step == 0 ? from : inner[step - 1];
        const std::uint32_t end = step < inner.size() ? inner[step] : to;
        const std::uint32_t edge = m_rewriter.addEdge(start, end, false);
        markSmoothByAngle(m_rewriter, edge);
        left.corners.push_back({referenceTo(edge, false), uvs});
        uvs = step < inner.size() ? uvsInside(loop, end) : loop[j].uvs;
        back.push_back({referenceTo(edge, true), uvs});
    }
    if (m_rewriter.isFull()) {
        return false;
    }
    right.corners.assign(back.rbegin(), back.rend());
    for (std::size_t place = j; place != i; place = (place + 1) % size) {
        left.corners.push_back(loop[place]);
    }
    for (std::size_t place = i; place != j; place = (place + 1) % size) {
        right.corners.push_back(loop[place]);
    }
    left.source = right.source = m_faces[face].source;
    left.loopEnds = {static_cast<std::uint32_t>(left.corners.size())};
    right.loopEnds = {static_cast<std::uint32_t>(right.corners.size())};
    const std::uint32_t number = m_faceCount++;
    for (std::size_t step = 0; step <= inner.size(); ++step) {
        m_users[firstEdge + static_cast<std::uint32_t>(step)] = {face, number};
    }
    for (std::size_t place = back.size(); place < right.corners.size(); ++place) {
        replaceUser(edgeOf(right.corners[place].reference), face, number);
    }
    m_faces[number] = std::move(right);
    m_faces[face] = std::move(left);
    return true;
}

void MeshCutter::setLoop(std::uint32_t face, std::span<const Corner> loop)
{
    Face& made = editable(face);
    made.corners.assign(loop.begin(), loop.end());
    made.loopEnds = {static_cast<std::uint32_t>(loop.size())};
}

std::uint32_t MeshCutter::addFace(std::uint32_t like, std::span<const Corner> loop)
{
    const std::uint32_t source = editable(like).source;
    const std::uint32_t number = m_faceCount++;
    m_faces[number].source = source;
    setLoop(number, loop);
    return number;
}

void MeshCutter::writeFace(const Face& face)
{
    m_rewriter.beginFace(face.source);
    std::uint32_t i = 0;
    for (const std::uint32_t end : face.loopEnds) {
        for (; i < end; ++i) {
            const Corner& corner = face.corners[i];
            m_rewriter.addCorner(corner.reference, m_mixed.empty() ? std::span<const std::int32_t>()
                                                                   : uvsAt(corner.uvs));
        }
        m_rewriter.endLoop();
    }
    m_rewriter.endFace();
}

std::shared_ptr<const MeshData> MeshCutter::finish(double smoothingAngle)
{
    if (isTired()) {
        return nullptr;
    }
    for (std::uint32_t face = 0; face < m_faceCount; ++face) {
        const auto found = m_faces.find(face);
        found == m_faces.end() ? m_rewriter.copyFace(face) : writeFace(found->second);
    }
    return withSmoothEdges(m_rewriter.finish(), smoothingAngle);
}

} // namespace host::geometry
