#include "host/geometry/mesh/primitives/closedRings.h"
#include "host/geometry/mesh/primitives/lathe.h"
#include "host/geometry/mesh/primitives/roundSolids.h"

#include "host/math/angle.h"

#include <numbers>

namespace host::geometry {
namespace {

class PipeMaker {
public:
    explicit PipeMaker(const PipeSettings& settings)
        : m_settings(settings)
        , m_circle(unitRing(settings.axisCells))
        , m_inner(settings.radius - settings.thickness)
        , m_top(settings.height / 4)
    {
    }

    void addTo(SolidBuilder& builder)
    {
        const std::uint32_t up = m_settings.heightCells;
        const std::uint32_t across = m_settings.capCells;
        for (std::uint32_t i = 0; i < up; ++i) {
            addRing(builder, m_inner, height(i), i > 0);
        }
        for (std::uint32_t i = 0; i < across; ++i) {
            addCapRing(builder, i, 1);
        }
        for (std::uint32_t i = 0; i < up; ++i) {
            addRing(builder, m_settings.radius, height(up - i), i > 0);
        }
        for (std::uint32_t i = 0; i < across; ++i) {
            addCapRing(builder, across - i, -1);
        }
        addClosedRings(builder, m_settings.axisCells, m_isSmooth, m_settings.hasUvs);
    }

private:
    double height(std::uint32_t i) const
    {
        return m_top * (2 * static_cast<double>(i) / m_settings.heightCells - 1);
    }
    /// Ring i of an end, counted from the inner side; `end`: -1 below, 1 above.
    void addCapRing(SolidBuilder& builder, std::uint32_t i, int end)
    {
        const double part = static_cast<double>(i) / m_settings.capCells;
        double radius = m_inner + m_settings.thickness * part;
        double y = end * m_top;
        if (m_settings.hasRoundCaps) {
            const SineCosine turn = sineCosine(std::numbers::pi * part);
            const double half = m_settings.thickness / 2;
            radius = m_inner + half - half * turn.cosine;
            y += end * half * turn.sine;
        }
        addRing(builder, radius, y, i > 0 && i < m_settings.capCells);
    }
    void addRing(SolidBuilder& builder, double radius, double y, bool isSmooth)
    {
        for (auto unit = m_circle.rbegin(); unit != m_circle.rend(); ++unit) {
            builder.addPoint({unit->x * radius, y, -unit->y * radius});
        }
        m_isSmooth.push_back(isSmooth ? 1 : 0);
    }

    const PipeSettings& m_settings;
    std::vector<Vec2f> m_circle;
    double m_inner;
    double m_top;
    std::vector<std::uint8_t> m_isSmooth;
};

} // namespace

std::shared_ptr<const MeshData> makePipe(const PipeSettings& settings,
                                         const SolidPlacement& placement)
{
    SolidBuilder builder;
    PipeMaker(settings).addTo(builder);
    return builder.finish(placement, -placement.heightBaseline * settings.height / 4);
}

} // namespace host::geometry
