#include "scene/NurbsCurve.h"

#include "scene/extendKnots.h"
#include "sceneapi/orvSceneapi_oo.h"

namespace orv {

NurbsCurve::~NurbsCurve() = default;

void NurbsCurve::write(orvSceneapi_oo& oo)
{
    oo.intListParameter("trim_nedges", m_trimEdgeCounts);
    oo.intListParameter("trim_inside", m_trimInside);
    oo.intListParameter("edge_order", m_edgeOrders);
    oo.intListParameter("edge_nknots", m_edgeKnotCounts);
    oo.doubleListParameter("edge_min", m_edgeMinima);
    oo.doubleListParameter("edge_max", m_edgeMaxima);
    oo.doubleListParameter("edge_knot", m_edgeKnots);
    oo.doubleListParameter("edge_uvw", m_edgeUVWs);
}

void NurbsCurve::define(orvSceneapi_oo&) {}

bool NurbsCurve::isDefined() const
{
    return false;
}

void NurbsCurve::addTrim(std::int32_t edgeCount, std::int32_t inside)
{
    m_trimEdgeCounts.push_back(edgeCount);
    m_trimInside.push_back(inside);
}

void NurbsCurve::addEdgeOrder(std::int32_t order)
{
    m_edgeOrders.push_back(order);
}

void NurbsCurve::addEdgeKnotCount(std::int32_t count)
{
    m_edgeKnotCounts.push_back(count);
}

void NurbsCurve::addEdgeKnot(double knot)
{
    m_edgeKnots.push_back(knot);
}

void NurbsCurve::addEdgeRange(double minimum, double maximum)
{
    m_edgeMinima.push_back(minimum);
    m_edgeMaxima.push_back(maximum);
}

void NurbsCurve::addEdgeUVW(double u, double v, double w)
{
    m_edgeUVWs.insert(m_edgeUVWs.end(), {u, v, w});
}

void NurbsCurve::extendEdgeKnots(std::size_t position)
{
    extendKnots(m_edgeKnots, position);
}

void NurbsCurve::clearData()
{
    m_trimEdgeCounts.clear();
    m_edgeOrders.clear();
    m_edgeKnotCounts.clear();
    m_trimInside.clear();
    m_edgeKnots.clear();
    m_edgeMinima.clear();
    m_edgeMaxima.clear();
    m_edgeUVWs.clear();
}

std::size_t NurbsCurve::memorySize() const
{
    const std::size_t integers = m_trimEdgeCounts.size() + m_edgeOrders.size() +
                                 m_edgeKnotCounts.size() + m_trimInside.size();
    const std::size_t floats =
        m_edgeKnots.size() + m_edgeMinima.size() + m_edgeMaxima.size() + m_edgeUVWs.size();
    return 4 * integers + 8 * floats;
}

} // namespace orv
