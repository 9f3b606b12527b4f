#include "host/geometry/mesh/primitives/lathe.h"
#include "host/geometry/mesh/primitives/roundSolids.h"

#include "host/math/angle.h"

#include <numbers>

namespace host::geometry {
namespace {

/// The caps lie below and above the sides, which are unrolled to a rectangle.
struct CylinderLayout {
    double bottomCenterV;
    double topCenterV;
    double sidesTop;
};
constexpr CylinderLayout kEven{0.15625, 0.84375, 0.6875};
/// The rings of the caps lay about the same middle as in the even layout.
constexpr CylinderLayout kFormer{0.15, 0.8375, 0.68843985};
constexpr double kCapRadius = 0.15625;
constexpr double kBottomRingV = 0.15625;
constexpr double kTopRingV = 0.84375;
constexpr double kSidesBottom = 0.3125;
constexpr double kSidesLeft = 0.375;
constexpr double kSidesWidth = 0.25;

class CylinderMaker {
public:
    explicit CylinderMaker(const CylinderSettings& settings)
        : m_settings(settings), m_layout(settings.hasFormerUvs ? kFormer : kEven)
    {
        m_lathe.sides = settings.axisCells;
        m_lathe.bottom = settings.capCells > 0 ? LatheEnd::Fan : LatheEnd::Face;
        m_lathe.top = m_lathe.bottom;
    }

    const Lathe& make()
    {
        const std::uint32_t inner = m_settings.capCells > 0 ? m_settings.capCells - 1 : 0;
        for (std::uint32_t i = 1; i <= inner; ++i) {
            addCapRing(i, -1);
        }
        addSideRings();
        for (std::uint32_t i = inner; i > 0; --i) {
            addCapRing(i, 1);
        }
        const double dome = m_settings.hasRoundCaps ? m_settings.radius : 0;
        m_lathe.bottomY = -m_settings.height / 2 - dome;
        m_lathe.topY = m_settings.height / 2 + dome;
        addCenters();
        return m_lathe;
    }

private:
    /// Ring i of a cap, counted from its middle; `end`: -1 below, 1 above.
    void addCapRing(std::uint32_t i, int end)
    {
        const double part = static_cast<double>(i) / m_settings.capCells;
        LatheRing ring{m_settings.radius * part, end * m_settings.height / 2, true};
        if (m_settings.hasRoundCaps) {
            const SineCosine turn = sineCosine(std::numbers::pi / 2 * part);
            ring.radius = m_settings.radius * turn.sine;
            ring.y = end * (m_settings.height / 2 + m_settings.radius * turn.cosine);
        }
        ring.uvBelow = addCapRow(part, end);
        ring.uvAbove = ring.uvBelow;
        m_lathe.rings.push_back(ring);
    }

    void addSideRings()
    {
        const std::uint32_t bottomRow = addCapRow(1, -1);
        const std::uint32_t cells = m_settings.heightCells;
        for (std::uint32_t i = 0; i <= cells; ++i) {
            const double part = static_cast<double>(i) / cells;
            const bool isRim = i == 0 || i == cells;
            const std::uint32_t row = addSideRow(part);
            m_lathe.rings.push_back({m_settings.radius, (part - 0.5) * m_settings.height,
                                     !isRim || m_settings.hasRoundCaps, !m_settings.hasHardSides,
                                     row, row});
        }
        m_lathe.rings[m_lathe.rings.size() - cells - 1].uvBelow = bottomRow;
        m_lathe.rings.back().uvAbove = addCapRow(1, 1);
    }

    std::uint32_t addRow(LatheUvRow row)
    {
        if (m_settings.hasUvs) {
            m_lathe.uvRows.push_back(std::move(row));
        }
        return m_rowCount++;
    }
    std::uint32_t addCapRow(double part, int end)
    {
        LatheUvRow row;
        row.isMirrored = end > 0;
        for (const Vec2f& unit : unitRing(m_lathe.sides)) {
            const double v = end > 0 ? kTopRingV : kBottomRingV;
            row.points.push_back({static_cast<float>(0.5 + kCapRadius * part * unit.x),
                                  static_cast<float>(v + kCapRadius * part * unit.y)});
        }
        return addRow(std::move(row));
    }
    std::uint32_t addSideRow(double part)
    {
        LatheUvRow row;
        const double v = kSidesBottom + part * (m_layout.sidesTop - kSidesBottom);
        for (std::uint32_t k = 0; k <= m_lathe.sides; ++k) {
            const double u = kSidesLeft + kSidesWidth * k / m_lathe.sides;
            row.points.push_back({static_cast<float>(u), static_cast<float>(v)});
        }
        return addRow(std::move(row));
    }
    void addCenters()
    {
        if (m_lathe.bottom != LatheEnd::Fan) {
            return;
        }
        m_lathe.bottomUv = addRow({{{0.5F, static_cast<float>(m_layout.bottomCenterV)}}, false});
        m_lathe.topUv = addRow({{{0.5F, static_cast<float>(m_layout.topCenterV)}}, false});
    }

    const CylinderSettings& m_settings;
    CylinderLayout m_layout;
    Lathe m_lathe;
    std::uint32_t m_rowCount = 0;
};

} // namespace

void addCylinder(SolidBuilder& builder, const CylinderSettings& settings)
{
    CylinderMaker maker(settings);
    addLathe(builder, maker.make());
}

std::shared_ptr<const MeshData> makeCylinder(const CylinderSettings& settings,
                                             const SolidPlacement& placement)
{
    SolidBuilder builder;
    addCylinder(builder, settings);
    return builder.finish(placement, -placement.heightBaseline * settings.height / 2);
}

} // namespace host::geometry
