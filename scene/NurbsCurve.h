// The trim curves of one NURBS surface: loops made of edges, each a rational B-spline in the
// surface's parameter plane.
#pragma once

#include "scene/LightNode.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orv {

/// Flat arrays, filled edge by edge and loop by loop; nothing is checked.
class NurbsCurve final : public LightNode {
public:
    NurbsCurve() = default;
    NurbsCurve(const NurbsCurve&) = delete;
    NurbsCurve& operator=(const NurbsCurve&) = delete;

    /// Writes eight arrays into the open block, empty ones too.
    void write(orvSceneapi_oo& oo) override;
    /// Trims have no definition form: does nothing.
    void define(orvSceneapi_oo& oo) override;
    bool isDefined() const override;
    ~NurbsCurve() override;

    /// One loop: its number of edges; `inside` is 1 for the outer boundary of a region, 0 for a
    /// hole.
    void addTrim(std::int32_t edgeCount, std::int32_t inside);
    void addEdgeOrder(std::int32_t order);
    void addEdgeKnotCount(std::int32_t count);
    void addEdgeKnot(double knot);
    /// The part of the edge's parameter that is used.
    void addEdgeRange(double minimum, double maximum);
    /// One control point: parameters multiplied by the weight, then the weight.
    void addEdgeUVW(double u, double v, double w);
    /// Knots of all edges so far; where the next edge's begin.
    std::size_t edgeKnotCount() const { return m_edgeKnots.size(); }
    /// Completes the knots of the last edge, which begin at `position` with a placeholder.
    void extendEdgeKnots(std::size_t position);

    const std::vector<std::int32_t>& trimEdgeCounts() const { return m_trimEdgeCounts; }
    const std::vector<std::int32_t>& trimInsideFlags() const { return m_trimInside; }
    const std::vector<std::int32_t>& edgeOrders() const { return m_edgeOrders; }
    const std::vector<std::int32_t>& edgeKnotCounts() const { return m_edgeKnotCounts; }
    const std::vector<double>& edgeKnots() const { return m_edgeKnots; }
    const std::vector<double>& edgeMinima() const { return m_edgeMinima; }
    const std::vector<double>& edgeMaxima() const { return m_edgeMaxima; }
    const std::vector<double>& edgeUVWs() const { return m_edgeUVWs; }

    void clearData();
    /// Bytes of the eight arrays.
    std::size_t memorySize() const;

private:
    std::vector<std::int32_t> m_trimEdgeCounts;
    std::vector<std::int32_t> m_edgeOrders;
    std::vector<std::int32_t> m_edgeKnotCounts;
    std::vector<std::int32_t> m_trimInside;
    std::vector<double> m_edgeKnots;
    std::vector<double> m_edgeMinima;
    std::vector<double> m_edgeMaxima;
    std::vector<double> m_edgeUVWs;
};

} // namespace orv
