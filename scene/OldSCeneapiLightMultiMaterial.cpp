#include "scene/OldSCeneapiLightMultiMaterial.h"

#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <utility>

namespace orv {

namespace {

/// Wholly transparent surfaces would vanish from the renderer's view. Compared in double precision,
/// where the float next to 0.1 lies above it and stays.
constexpr double kLeastAlpha = 0.1;

} // namespace

OldSCeneapiLightMultiMaterial::OldSCeneapiLightMultiMaterial(std::string name)
    : Material(std::move(name))
{
    setShaderType("orv_advanced");
    reset();
}

void OldSCeneapiLightMultiMaterial::reset()
{
    m_angle = 0;
    m_scaleU = 1;
    m_scaleV = 1;
    m_projection = 3;
    m_shiftU = 0;
    m_shiftV = 0;
    m_specular = {0, 0, 0};
    m_alpha = 1;
    m_hasSpecular = false;
    m_hasAlpha = false;
    m_texture.clear();
}

void OldSCeneapiLightMultiMaterial::setDiffuse(float r, float g, float b)
{
    m_diffuse = clamped(r, g, b);
}

void OldSCeneapiLightMultiMaterial::setSpecular(float r, float g, float b)
{
    m_specular = clamped(r, g, b);
    m_hasSpecular = true;
}

void OldSCeneapiLightMultiMaterial::setAlpha(float alpha)
{
    m_alpha = alpha;
    m_hasAlpha = true;
}

void OldSCeneapiLightMultiMaterial::writeParameters(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    const Blob* texture = writeTexture(oo);
    if (!m_hasSpecular && !m_hasAlpha && texture == nullptr) {
        // the plain shader whatever type is stored: that names the advanced one
        api->beginShader(nullptr, "orv_diffuse");
        oo.float3Parameter("diffuse", m_diffuse);
    } else {
        api->beginShader(nullptr, getShaderType().c_str());
        writeAdvancedParameters(oo, texture);
    }
    const Blob* shader = api->captureBuffer();
    oo.endShader();
    api->shaderReference(kSurface, shader);
}

const Blob* OldSCeneapiLightMultiMaterial::writeTexture(orvSceneapi_oo& oo) const
{
    if (m_texture.empty()) {
        return nullptr;
    }
    oo.sceneApi()->beginShader(nullptr, "texture_rgb");
    oo.intParameter("project", static_cast<std::int32_t>(m_projection));
    oo.boolParameter("wrap", true);
    oo.stringParameter("texture", m_texture);
    oo.float3Parameter("default_color", m_diffuse);
    oo.floatParameter("angle", m_angle);
    oo.floatParameter("shift_u", m_shiftU);
    oo.floatParameter("shift_v", m_shiftV);
    oo.floatParameter("scale_u", m_scaleU);
    oo.floatParameter("scale_v", m_scaleV);
    oo.endShader();
    return oo.sceneApi()->captureBuffer();
}

void OldSCeneapiLightMultiMaterial::writeAdvancedParameters(orvSceneapi_oo& oo,
                                                            const Blob* texture) const
{
    oo.float3Parameter("diffuse", m_diffuse);
    oo.float3Parameter("specular", m_specular);
    oo.boolParameter("fresnel", true);
    oo.floatParameter("roughness", 0.0F);
    oo.floatParameter("ior", 1.5F);
    oo.boolParameter("glossy", true);
    oo.intParameter("glossy_samples", 9);
    oo.floatParameter("alpha", m_alpha < kLeastAlpha ? static_cast<float>(kLeastAlpha) : m_alpha);
    if (texture != nullptr) {
        oo.sceneApi()->namedBlob("diffuse", texture);
    }
}

} // namespace orv
