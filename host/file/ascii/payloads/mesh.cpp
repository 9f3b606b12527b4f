// mesh: a whole mesh as data, in the dialect of old files ("v" "e" "face") or of newer ones
// ("verts" "edges" "faces"). Normals of the old one ("vn") are left out: the mesh computes its own.
#include "host/file/ascii/payloads/Cursor.h"
#include "host/file/ascii/payloads/payloads.h"

#include "host/geometry/mesh/MeshData.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace host::file::ascii {
namespace {

using geometry::MeshTopology;
using geometry::UvSet;

/// A mesh while its parts are read; every index is checked as it comes.
class MeshBuilder {
public:
    explicit MeshBuilder(Cursor& cursor) : m_cursor(cursor) {}

    void takeOldDialect()
    {
        takePoints();
        if (m_cursor.takeIf("vn")) {
            m_cursor.numbers(3 * m_cursor.count(3));
        }
        if (m_cursor.takeIf("vt")) {
            takeUvPoints(m_uvPoints);
        }
        m_cursor.expect("e");
        takeEdges();
        while (m_cursor.takeIf("face")) {
            takeOldFace();
        }
    }

    void takeNewDialect()
    {
        takePoints();
        m_cursor.expect("edges");
        takeEdges();
        m_cursor.expect("faces");
        const std::size_t count = m_cursor.count(1);
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            beginFace();
            takeLoop();
        }
        if (m_cursor.takeIf("uvMaps")) {
            takeUvMaps();
        }
    }

    geometry::MeshData finish()
    {
        geometry::MeshData mesh;
        m_topology.loopStart.push_back(cornerCount());
        const bool hasHoles = m_topology.loopStart.size() - 1 != m_faceLoop.size();
        if (hasHoles) {
            m_faceLoop.push_back(m_topology.loopCount());
            m_topology.faceLoop = std::move(m_faceLoop);
        }
        m_topology.vertexCount = static_cast<std::uint32_t>(m_points.size());
        if (!m_uvPoints.empty()) {
            m_uvCorners.resize(m_topology.corners.size(), -1);
            m_uvSets.push_back(
                {"map1", share(std::move(m_uvPoints)), share(std::move(m_uvCorners))});
        }
        mesh.edgeSmooth = geometry::shareEdgeFlags(std::move(m_edgeSmooth));
        mesh.topology = share(std::move(m_topology));
        mesh.points = share(std::move(m_points));
        mesh.uvSets = std::move(m_uvSets);
        mesh.currentUvSet = mesh.uvSets.empty() ? std::string() : mesh.uvSets.front().name;
        return mesh;
    }

private:
    template<class T>
    static std::shared_ptr<const T> share(T data)
    {
        return std::make_shared<const T>(std::move(data));
    }

    std::uint32_t cornerCount() const
    {
        return static_cast<std::uint32_t>(m_topology.corners.size());
    }

    float coordinate(double factor) { return static_cast<float>(m_cursor.number() * factor); }

    void takePoints()
    {
        const std::size_t count = m_cursor.count(3);
        const double factor = m_cursor.reader().scales.linear;
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            const float x = coordinate(factor);
            const float y = coordinate(factor);
            m_points.push_back({x, y, coordinate(factor)});
        }
    }

    void takeUvPoints(std::vector<Vec2f>& points)
    {
        const std::size_t count = m_cursor.count(2);
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            const float u = coordinate(1);
            points.push_back({u, coordinate(1)});
        }
    }

    /// A whole number below `size`.
    std::uint32_t index(std::size_t size)
    {
        if (size == 0) {
            m_cursor.fail("an index into an empty list");
            return 0;
        }
        return static_cast<std::uint32_t>(m_cursor.integer(0, static_cast<std::int64_t>(size) - 1));
    }

    void takeEdges()
    {
        const std::size_t count = m_cursor.count(3);
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            const std::uint32_t start = index(m_points.size());
            m_topology.edges.push_back({start, index(m_points.size())});
            const bool isSmooth = m_cursor.takeIf("smooth");
            const bool isHard = !isSmooth && m_cursor.takeIf("hard");
            const bool isNumber = !isSmooth && !isHard;
            m_edgeSmooth.push_back(isSmooth || (isNumber && m_cursor.number() != 0));
        }
    }

    void beginFace()
    {
        m_faceLoop.push_back(static_cast<std::uint32_t>(m_topology.loopStart.size()));
    }

    /// One loop of edge references behind its count.
    std::size_t takeLoop()
    {
        m_topology.loopStart.push_back(cornerCount());
        const std::size_t count = m_cursor.count(1);
        const std::int64_t edges = static_cast<std::int64_t>(m_topology.edges.size());
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            const std::int64_t reference = m_cursor.integer(-edges, edges - 1);
            m_topology.corners.push_back(static_cast<std::int32_t>(reference));
        }
        return count;
    }

    void takeOldFace()
    {
        beginFace();
        m_cursor.expect("l");
        bool hasLoop = !m_cursor.hasFailed();
        while (hasLoop) {
            const std::size_t firstCorner = m_topology.corners.size();
            takeLoop();
            if (m_cursor.takeIf("lt")) {
                takeUvIds(firstCorner);
            }
            hasLoop = m_cursor.takeIf("l");
        }
    }

    void takeUvIds(std::size_t firstCorner)
    {
        const std::size_t count = m_cursor.count(1);
        if (count > m_topology.corners.size() - firstCorner) {
            m_cursor.fail("a loop has more texture coordinates than corners");
            return;
        }
        m_uvCorners.resize(firstCorner, -1);
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            m_uvCorners.push_back(static_cast<std::int32_t>(index(m_uvPoints.size())));
        }
    }

    /// Names and points of sets. How faces refer to them is written nowhere that we know of: what
    /// follows is left out, and no corner has coordinates.
    void takeUvMaps()
    {
        constexpr std::size_t kShortestMap = 5; // tokens
        const std::size_t count = m_cursor.count(kShortestMap);
        for (std::size_t i = 0; i < count && !m_cursor.hasFailed(); ++i) {
            m_cursor.int32();
            m_cursor.expect("mi");
            UvSet set;
            set.name = m_cursor.text();
            m_cursor.expect("uv");
            std::vector<Vec2f> points;
            takeUvPoints(points);
            set.points = share(std::move(points));
            set.corners = share(std::vector<std::int32_t>());
            m_uvSets.push_back(std::move(set));
        }
        while (!m_cursor.hasFailed() && !m_cursor.isAtEnd()) {
            m_cursor.text();
        }
    }

    Cursor& m_cursor;
    MeshTopology m_topology;
    geometry::EdgeFlags m_edgeSmooth;
    std::vector<std::uint32_t> m_faceLoop;
    std::vector<Vec3f> m_points;
    std::vector<Vec2f> m_uvPoints;
    std::vector<std::int32_t> m_uvCorners;
    std::vector<UvSet> m_uvSets;
};

} // namespace

Expected<Value> readMesh(Reader& reader)
{
    Cursor cursor(reader);
    MeshBuilder builder(cursor);
    if (cursor.takeIf("verts")) {
        builder.takeNewDialect();
    } else {
        cursor.expect("v");
        builder.takeOldDialect();
    }
    if (cursor.hasFailed()) {
        return cursor.error();
    }
    return Value::of(builder.finish());
}

} // namespace host::file::ascii
