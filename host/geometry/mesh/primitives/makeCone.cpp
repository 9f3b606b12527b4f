#include "host/geometry/mesh/primitives/lathe.h"
#include "host/geometry/mesh/primitives/roundSolids.h"

#include "host/math/angle.h"

#include <numbers>

namespace host::geometry {
namespace {

// The base is a circle below, the sides a triangle above it.
constexpr double kBaseRadius = 0.25;
constexpr double kBaseV = 0.25;
constexpr double kSidesBottom = 0.5;
constexpr double kSidesWidth = 0.5;

class ConeMaker {
public:
    explicit ConeMaker(const ConeSettings& settings) : m_settings(settings)
    {
        m_lathe.sides = settings.axisCells;
        m_lathe.bottom = settings.capCells > 0 ? LatheEnd::Fan : LatheEnd::Face;
        m_lathe.isTopSmooth = !settings.hasHardSides;
    }

    const Lathe& make()
    {
        for (std::uint32_t i = 1; i < m_settings.capCells; ++i) {
            addBaseRing(i);
        }
        const std::uint32_t rim = addBaseRow(1);
        const auto first = m_lathe.rings.size();
        for (std::uint32_t i = 0; i < m_settings.heightCells; ++i) {
            const double part = static_cast<double>(i) / m_settings.heightCells;
            const std::uint32_t row = addSideRow(part);
            m_lathe.rings.push_back(
                {m_settings.radius * (1 - part), (part - 0.5) * m_settings.height,
                 i > 0 || m_settings.hasRoundCap, !m_settings.hasHardSides, row, row});
        }
        m_lathe.rings[first].uvBelow = rim;
        m_lathe.bottomY = -m_settings.height / 2 - (m_settings.hasRoundCap ? m_settings.radius : 0);
        m_lathe.topY = m_settings.height / 2;
        if (m_lathe.bottom == LatheEnd::Fan) {
            m_lathe.bottomUv = addRow({{{0.5F, static_cast<float>(kBaseV)}}, false});
        }
        m_lathe.topUv = addRow({{{0.5F, 1.0F}}, false});
        return m_lathe;
    }

private:
    void addBaseRing(std::uint32_t i)
    {
        const double part = static_cast<double>(i) / m_settings.capCells;
        LatheRing ring{m_settings.radius * part, -m_settings.height / 2};
        if (m_settings.hasRoundCap) {
            const SineCosine turn = sineCosine(std::numbers::pi / 2 * part);
            ring.radius = m_settings.radius * turn.sine;
            ring.y -= m_settings.radius * turn.cosine;
        }
        ring.uvBelow = addBaseRow(part);
        ring.uvAbove = ring.uvBelow;
        m_lathe.rings.push_back(ring);
    }
    std::uint32_t addRow(LatheUvRow row)
    {
        if (m_settings.hasUvs) {
            m_lathe.uvRows.push_back(std::move(row));
        }
        return m_rowCount++;
    }
    std::uint32_t addBaseRow(double part)
    {
        LatheUvRow row;
        for (const Vec2f& unit : unitRing(m_lathe.sides)) {
            row.points.push_back({static_cast<float>(0.5 + kBaseRadius * part * unit.x),
                                  static_cast<float>(kBaseV + kBaseRadius * part * unit.y)});
        }
        return addRow(std::move(row));
    }
    /// Each row is as much narrower as it is higher.
    std::uint32_t addSideRow(double part)
    {
        LatheUvRow row;
        const double width = kSidesWidth * (1 - part);
        const auto v = static_cast<float>(kSidesBottom + part * (1 - kSidesBottom));
        for (std::uint32_t k = 0; k <= m_lathe.sides; ++k) {
            const double u = 0.5 - width / 2 + width * k / m_lathe.sides;
            row.points.push_back({static_cast<float>(u), v});
        }
        return addRow(std::move(row));
    }

    const ConeSettings& m_settings;
    Lathe m_lathe;
    std::uint32_t m_rowCount = 0;
};

} // namespace

std::shared_ptr<const MeshData> makeCone(const ConeSettings& settings,
                                         const SolidPlacement& placement)
{
    ConeMaker maker(settings);
    SolidBuilder builder;
    addLathe(builder, maker.make());
    return builder.finish(placement, -placement.heightBaseline * settings.height / 2);
}

} // namespace host::geometry
