#include "scene/BezierCurves.h"

#include "scene/Material.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <memory>
#include <utility>

namespace orv {

BezierCurves::BezierCurves(std::string name) : LightGeometry(std::move(name)) {}

BezierCurves::~BezierCurves() = default;

void BezierCurves::write(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    api->beginObject(name().c_str(), true);
    writeGeometry(oo);
    if (const std::shared_ptr<Material> material = getMaterial()) {
        material->write(oo);
    }
    api->endObject();
}

void BezierCurves::writeGeometry(orvSceneapi_oo& oo) const
{
    oo.sceneApi()->beginGeometry("orv_curves");
    oo.floatParameter("radius", m_radius);
    if (m_order > 0) {
        oo.intParameter("order", m_order);
    }
    oo.boolParameter("fitToCubic", m_fitToCubic);
    oo.pointsParameter("p", m_points);
    oo.intListParameter("nvertices", m_pointCounts);
    if (!m_pointRadii.empty()) {
        oo.floatListParameter("pr", m_pointRadii);
    }
    if (!m_pointColors.empty()) {
        oo.pointsParameter("pcol", m_pointColors);
    }
    oo.sceneApi()->endGeometry();
}

void BezierCurves::define(orvSceneapi_oo&) {}

bool BezierCurves::isDefined() const
{
    return false;
}

std::size_t BezierCurves::memorySize() const
{
    static_assert(sizeof(float) == 4 && sizeof(std::int32_t) == 4);
    return 4 *
           (m_points.size() + m_pointRadii.size() + m_pointCounts.size() + m_pointColors.size());
}

void BezierCurves::addPoint(float x, float y, float z)
{
    m_points.insert(m_points.end(), {x, y, z});
}

void BezierCurves::addPointRadius(float radius)
{
    m_pointRadii.push_back(radius);
}

void BezierCurves::addPointColor(float r, float g, float b)
{
    m_pointColors.insert(m_pointColors.end(), {r, g, b});
}

void BezierCurves::addCurve(std::int32_t pointCount)
{
    m_pointCounts.push_back(pointCount);
}

} // namespace orv
