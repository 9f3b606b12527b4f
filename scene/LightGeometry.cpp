#include "scene/LightGeometry.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include "scene/Material.h"

#include <utility>

namespace orv {

LightGeometry::LightGeometry(std::string name) : m_name(std::move(name)) {}

LightGeometry::~LightGeometry() = default;

bool LightGeometry::isDefined() const
{
    return m_defined;
}

void LightGeometry::setMaterial(std::shared_ptr<Material> material)
{
    m_material = std::move(material);
}

std::shared_ptr<Material> LightGeometry::getMaterial() const
{
    return m_material;
}

void LightGeometry::setName(const std::string& name)
{
    if (&name != &m_name) {
        m_name = name;
    }
}

std::string LightGeometry::getName() const
{
    return m_name;
}

void LightGeometry::setDefinitionId(std::uint64_t id)
{
    m_defined = true;
    m_definitionId = id;
}

std::uint64_t LightGeometry::definitionId() const
{
    return m_definitionId;
}

void LightGeometry::writeInstance(orvSceneapi_oo& oo) const
{
    oo.sceneApi()->beginGeometry("instance");
    // ids are counted in 32 bits; the file shows them as a signed number
    oo.intParameter("id", static_cast<std::int32_t>(static_cast<std::uint32_t>(m_definitionId)));
    oo.sceneApi()->endGeometry();
}

} // namespace orv
