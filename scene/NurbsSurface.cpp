#include "scene/NurbsSurface.h"

#include "scene/Diffuse.h"
#include "scene/NurbsCurve.h"
#include "scene/extendKnots.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <utility>

namespace orv {

NurbsSurface::NurbsSurface(std::string name) : LightGeometry(std::move(name))
{
    LightGeometry::setMaterial(std::make_shared<Diffuse>("default"));
}

NurbsSurface::~NurbsSurface() = default;

void NurbsSurface::write(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    const std::shared_ptr<Material> material = getMaterial();
    oo.beginGroup(name());
    oo.flags(kGroupFlags);
    if (m_mesh) {
        m_mesh->setMaterial(material);
        m_mesh->write(oo);
    }
    api->beginObject(name().c_str(), true);
    writeGeometry(oo);
    if (material) {
        material->write(oo);
    }
    api->endObject();
    oo.endGroup();
}

void NurbsSurface::define(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    api->beginObject(name().c_str(), false);
    const std::uint32_t id = oo.newId();
    // Always in full, as if nothing was defined before: a second call writes empty arrays.
    writeArrays(oo);
    api->endObject();
    if (m_mesh) {
        m_mesh->define(oo);
    }
    clearData();
    releaseStorage();
    if (m_trims) {
        m_trims->clearData();
    }
    setDefinitionId(id);
}

std::size_t NurbsSurface::memorySize() const
{
    const std::size_t count = m_uKnots.size() + m_vKnots.size() + m_controlPoints.size();
    return sizeof(double) * count + (m_trims ? m_trims->memorySize() : 0);
}

void NurbsSurface::setRange(double uMin, double uMax, double vMin, double vMax)
{
    m_uMin = uMin;
    m_uMax = uMax;
    m_vMin = vMin;
    m_vMax = vMax;
}

void NurbsSurface::setOrder(std::int32_t uOrder, std::int32_t vOrder)
{
    m_uOrder = uOrder;
    m_vOrder = vOrder;
}

void NurbsSurface::addUKnot(double knot)
{
    m_uKnots.push_back(knot);
}

void NurbsSurface::addVKnot(double knot)
{
    m_vKnots.push_back(knot);
}

void NurbsSurface::addControlPoint(double x, double y, double z, double w)
{
    m_controlPoints.insert(m_controlPoints.end(), {x, y, z, w});
}

void NurbsSurface::padKnots()
{
    m_vKnots.insert(m_vKnots.begin(), kPlaceholderKnot);
    m_uKnots.insert(m_uKnots.begin(), kPlaceholderKnot);
}

void NurbsSurface::extendKnots()
{
    orv::extendKnots(m_uKnots, 0);
    orv::extendKnots(m_vKnots, 0);
}

void NurbsSurface::setTrims(std::shared_ptr<NurbsCurve> trims)
{
    m_trims = std::move(trims);
}

void NurbsSurface::setMesh(std::shared_ptr<LightGeometry> mesh)
{
    m_mesh = std::move(mesh);
    if (m_mesh) {
        m_mesh->setName(name());
    }
}

void NurbsSurface::clearData()
{
    m_uKnots.clear();
    m_vKnots.clear();
    m_controlPoints.clear();
}

void NurbsSurface::releaseStorage()
{
    m_uKnots.shrink_to_fit();
    m_vKnots.shrink_to_fit();
    m_controlPoints.shrink_to_fit();
}

void NurbsSurface::writeGeometry(orvSceneapi_oo& oo) const
{
    if (isDefined()) {
        writeInstance(oo);
    } else {
        writeArrays(oo);
    }
}

void NurbsSurface::writeArrays(orvSceneapi_oo& oo) const
{
    oo.sceneApi()->beginGeometry("nurbs");
    oo.doubleParameter("umin", m_uMin);
    oo.doubleParameter("umax", m_uMax);
    oo.doubleParameter("vmin", m_vMin);
    oo.doubleParameter("vmax", m_vMax);
    oo.intParameter("uorder", m_uOrder);
    oo.intParameter("vorder", m_vOrder);
    oo.doubleListParameter("uknot", m_uKnots);
    oo.doubleListParameter("vknot", m_vKnots);
    oo.doubleListParameter("Pw", m_controlPoints);
    if (m_trims) {
        oo.writeNode(*m_trims);
    }
    oo.sceneApi()->endGeometry();
}

} // namespace orv
