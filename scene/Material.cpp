#include "scene/Material.h"

#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <utility>

namespace orv {

namespace {

float clampedComponent(float value)
{
    if (value > 1.0F) {
        return 1.0F;
    }
    return value >= 0.0F ? value : 0.0F;
}

} // namespace

Material::Material(std::string name) : m_name(std::move(name)) {}

Material::~Material() = default;

void Material::write(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    if (m_defined) {
        api->useMaterial(m_name.c_str());
        return;
    }
    api->beginMaterial(m_name.c_str(), true);
    writeParameters(oo);
    api->endMaterial();
}

void Material::define(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    api->beginMaterial(m_name.c_str(), false);
    writeParameters(oo);
    api->endMaterial();
    m_defined = true;
}

bool Material::isDefined() const
{
    return m_defined;
}

void Material::setName(const std::string& name)
{
    if (&name != &m_name) {
        m_name = name;
    }
}

void Material::setShaderType(const std::string& type)
{
    m_shaderType = type;
}

Float3 Material::clamped(float r, float g, float b)
{
    return {clampedComponent(r), clampedComponent(g), clampedComponent(b)};
}

} // namespace orv
