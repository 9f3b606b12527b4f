#include "host/geometry/mesh/primitives/lathe.h"

#include "host/math/angle.h"

#include <array>
#include <numbers>

namespace host::geometry {
namespace {

/// Numbers of the parts of a lathe while it is built.
class LatheWriter {
public:
    LatheWriter(SolidBuilder& builder, const Lathe& lathe) : m_builder(builder), m_lathe(lathe) {}

    void write()
    {
        addPoints();
        addUvs();
        addEdges();
        addBands();
        addBottom();
        addTop();
    }

private:
    std::uint32_t sides() const { return m_lathe.sides; }
    std::uint32_t ringCount() const { return static_cast<std::uint32_t>(m_lathe.rings.size()); }
    std::uint32_t next(std::uint32_t k) const { return k + 1 == sides() ? 0 : k + 1; }
    std::uint32_t point(std::uint32_t ring, std::uint32_t k) const
    {
        return m_firstPoint + ring * sides() + k;
    }
    std::uint32_t ringEdge(std::uint32_t ring, std::uint32_t k) const
    {
        return m_firstEdge + ring * sides() + k;
    }
    std::uint32_t upEdge(std::uint32_t ring, std::uint32_t k) const
    {
        return m_firstEdge + (ringCount() + ring) * sides() + k;
    }
    /// The id at place k of a row; at the end of a turn k is `sides`.
    std::uint32_t uv(std::uint32_t row, std::uint32_t k) const
    {
        if (m_uvStart.empty()) {
            return 0;
        }
        const LatheUvRow& coordinates = m_lathe.uvRows[row];
        const auto size = static_cast<std::uint32_t>(coordinates.points.size());
        const std::uint32_t place =
            coordinates.isMirrored ? (2 * sides() - 2 - k % sides()) % sides() : k;
        return m_uvStart[row] + (size > 1 ? place % size : 0);
    }

    void addPoints()
    {
        m_firstPoint = m_builder.pointCount();
        const std::vector<Vec2f> circle = unitRing(sides());
        for (const LatheRing& ring : m_lathe.rings) {
            for (const Vec2f& unit : circle) {
                m_builder.addPoint({unit.x * ring.radius, ring.y, unit.y * ring.radius});
            }
        }
        if (m_lathe.bottom == LatheEnd::Fan) {
            m_bottomPoint = m_builder.addPoint({0, m_lathe.bottomY, 0});
        }
        if (m_lathe.top == LatheEnd::Fan) {
            m_topPoint = m_builder.addPoint({0, m_lathe.topY, 0});
        }
    }

    void addUvs()
    {
        for (const LatheUvRow& row : m_lathe.uvRows) {
            m_uvStart.push_back(m_builder.uvCount());
            for (const Vec2f& point : row.points) {
                m_builder.addUv(point.x, point.y);
            }
        }
    }

    void addEdges()
    {
        m_firstEdge = static_cast<std::uint32_t>(m_builder.topology().edges.size());
        for (std::uint32_t ring = 0; ring < ringCount(); ++ring) {
            for (std::uint32_t k = 0; k < sides(); ++k) {
                m_builder.addEdge(point(ring, k), point(ring, next(k)),
                                  m_lathe.rings[ring].isSmooth);
            }
        }
        for (std::uint32_t ring = 0; ring + 1 < ringCount(); ++ring) {
            for (std::uint32_t k = 0; k < sides(); ++k) {
                m_builder.addEdge(point(ring, k), point(ring + 1, k),
                                  m_lathe.rings[ring].isSmoothAbove);
            }
        }
        m_bottomEdge = m_firstEdge + (2 * ringCount() - 1) * sides();
        for (std::uint32_t k = 0; k < sides() && m_lathe.bottom == LatheEnd::Fan; ++k) {
            m_builder.addEdge(m_bottomPoint, point(0, k), m_lathe.isBottomSmooth);
        }
        m_topEdge = m_bottomEdge + (m_lathe.bottom == LatheEnd::Fan ? sides() : 0);
        for (std::uint32_t k = 0; k < sides() && m_lathe.top == LatheEnd::Fan; ++k) {
            m_builder.addEdge(point(ringCount() - 1, k), m_topPoint, m_lathe.isTopSmooth);
        }
    }

    void addBands()
    {
        for (std::uint32_t ring = 0; ring + 1 < ringCount(); ++ring) {
            const std::uint32_t low = m_lathe.rings[ring].uvAbove;
            const std::uint32_t high = m_lathe.rings[ring + 1].uvBelow;
            for (std::uint32_t k = 0; k < sides(); ++k) {
                m_builder.addForward(ringEdge(ring, k), uv(low, k));
                m_builder.addForward(upEdge(ring, next(k)), uv(low, k + 1));
                m_builder.addBackward(ringEdge(ring + 1, k), uv(high, k + 1));
                m_builder.addBackward(upEdge(ring, k), uv(high, k));
                m_builder.endFace();
            }
        }
    }

    void addBottom()
    {
        const std::uint32_t row = m_lathe.rings.front().uvBelow;
        if (m_lathe.bottom == LatheEnd::Face) {
            for (std::uint32_t k = sides(); k-- > 0;) {
                m_builder.addBackward(ringEdge(0, k), uv(row, k + 1 == sides() ? 0 : k + 1));
            }
            m_builder.endFace();
        }
        for (std::uint32_t k = 0; k < sides() && m_lathe.bottom == LatheEnd::Fan; ++k) {
            m_builder.addBackward(ringEdge(0, k), uv(row, k + 1));
            m_builder.addBackward(m_bottomEdge + k, uv(row, k));
            m_builder.addForward(m_bottomEdge + next(k), uv(m_lathe.bottomUv, k));
            m_builder.endFace();
        }
    }

    void addTop()
    {
        const std::uint32_t last = ringCount() - 1;
        const std::uint32_t row = m_lathe.rings.back().uvAbove;
        if (m_lathe.top == LatheEnd::Face) {
            for (std::uint32_t k = 0; k < sides(); ++k) {
                m_builder.addForward(ringEdge(last, k), uv(row, k));
            }
            m_builder.endFace();
        }
        for (std::uint32_t k = 0; k < sides() && m_lathe.top == LatheEnd::Fan; ++k) {
            m_builder.addForward(ringEdge(last, k), uv(row, k));
            m_builder.addForward(m_topEdge + next(k), uv(row, k + 1));
            m_builder.addBackward(m_topEdge + k, uv(m_lathe.topUv, k));
            m_builder.endFace();
        }
    }

    SolidBuilder& m_builder;
    const Lathe& m_lathe;
    std::vector<std::uint32_t> m_uvStart;
    std::uint32_t m_firstPoint = 0;
    std::uint32_t m_bottomPoint = 0;
    std::uint32_t m_topPoint = 0;
    std::uint32_t m_firstEdge = 0;
    std::uint32_t m_bottomEdge = 0;
    std::uint32_t m_topEdge = 0;
};

} // namespace

void addLathe(SolidBuilder& builder, const Lathe& lathe)
{
    LatheWriter(builder, lathe).write();
}

std::vector<Vec2f> unitRing(std::uint32_t sides)
{
    const SineCosine step = sineCosine(2 * std::numbers::pi / sides);
    const auto sine = static_cast<float>(step.sine);
    const auto cosine = static_cast<float>(step.cosine);
    std::vector<Vec2f> ring(sides);
    Vec2f unit{1, 0};
    for (std::uint32_t k = sides; k-- > 0;) {
        ring[k] = unit;
        const std::array<float, 4> products{unit.x * cosine, unit.y * sine, unit.x * sine,
                                            unit.y * cosine};
        unit = {products[0] - products[1], products[2] + products[3]};
    }
    return ring;
}

} // namespace host::geometry
