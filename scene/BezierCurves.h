// A batch of curves rendered as tubes, such as the strands of hair: one array of points for all of
// them, cut by the number of points of each.
#pragma once

#include "scene/LightGeometry.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orv {

/// Always written in full and in place; the lengths of the arrays are not compared.
class BezierCurves final : public LightGeometry {
public:
    /// An empty batch of radius 1 without order and, unlike other geometry, without a material.
    explicit BezierCurves(std::string name);
    ~BezierCurves() override;

    void write(orvSceneapi_oo& oo) override;
    /// Curves have no definition form: does nothing, and they stay undefined.
    void define(orvSceneapi_oo& oo) override;
    bool isDefined() const override;
    /// Bytes of the four arrays.
    std::size_t memorySize() const override;

    void addPoint(float x, float y, float z);
    void addPointRadius(float radius);
    void addPointColor(float r, float g, float b);
    /// The next `pointCount` points are one curve.
    void addCurve(std::int32_t pointCount);

    /// Written when above 0.
    void setOrder(std::int32_t order) { m_order = order; }
    /// Of points without a radius of their own.
    void setRadius(float radius) { m_radius = radius; }
    void enableFitToCubic() { m_fitToCubic = true; }
    void disableFitToCubic() { m_fitToCubic = false; }

    const std::vector<float>& points() const { return m_points; }
    const std::vector<std::int32_t>& pointCounts() const { return m_pointCounts; }

private:
    void writeGeometry(orvSceneapi_oo& oo) const;

    std::int32_t m_order = -1;
    float m_radius = 1.0F;
    bool m_fitToCubic = false;
    std::vector<float> m_points;
    std::vector<float> m_pointRadii;
    std::vector<std::int32_t> m_pointCounts;
    std::vector<float> m_pointColors;
};

} // namespace orv
