#include "scene/LightCamera.h"

#include "scene/Animation.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <utility>

namespace orv {

LightCamera::LightCamera(std::string name) : m_name(std::move(name)) {}

LightCamera::~LightCamera() = default;

void LightCamera::write(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    api->beginCamera(m_name.c_str());
    writeProjection(oo);
    // the shader is written first: its text is the value of the parameter
    const Blob* environment = writeEnvironment(oo);
    api->parameter("reflection map", kBlob, environment);
    oo.double3Parameter("position", m_position);
    oo.double3Parameter("direction", m_direction);
    if (m_hasLookAt) {
        oo.double3Parameter("look_at", m_lookAt);
    }
    oo.double3Parameter("up", m_up);
    writeClipping(oo);
    if (m_animation) {
        oo.writeNode(*m_animation);
    } else if (m_hasTransform) {
        oo.transform(m_transform);
    }
    api->endCamera();
}

void LightCamera::define(orvSceneapi_oo&) {}

bool LightCamera::isDefined() const
{
    return false;
}

const Blob* LightCamera::writeEnvironment(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return nullptr;
    }
    api->beginShader(nullptr, "orv_envmap");
    oo.stringParameter("texture", "startup.hdr");
    oo.intParameter("format", 3);
    oo.floatParameter("radius", 25.0F);
    const Blob* handle = api->captureBuffer();
    oo.endShader();
    return handle;
}

void LightCamera::writeProjection(orvSceneapi_oo& oo) const
{
    if (m_projection == kOrthographic) {
        oo.stringParameter("projection", "orthographic");
        return;
    }
    oo.stringParameter("projection", "perspective");
    if (m_fovMode == kOneAngle) {
        oo.floatParameter("fov", m_fov);
    } else if (m_fovMode == kFourValues) {
        oo.sceneApi()->parameter("fov4", kColor4, m_fov4.data());
    }
}

void LightCamera::writeClipping(orvSceneapi_oo& oo) const
{
    if (m_nearClip > 0 && m_farClip > 0 && m_nearClip < m_farClip) {
        const std::array<float, 2> clipping{m_nearClip, m_farClip};
        oo.sceneApi()->parameter("clipping", kFloat2, clipping.data());
    }
}

void LightCamera::setPosition(float x, float y, float z)
{
    m_position = {x, y, z};
}

void LightCamera::setDirection(float x, float y, float z)
{
    m_direction = {x, y, z};
}

void LightCamera::setLookAt(float x, float y, float z)
{
    m_lookAt = {x, y, z};
    m_hasLookAt = true;
}

void LightCamera::setUp(float x, float y, float z)
{
    m_up = {x, y, z};
}

void LightCamera::setFov(float angleDegrees)
{
    m_fov = angleDegrees;
    m_fovMode = kOneAngle;
}

void LightCamera::setFov4(float a, float b, float c, float d)
{
    m_fov4 = {a, b, c, d};
    m_fovMode = kFourValues;
}

void LightCamera::setClipping(float nearClip, float farClip)
{
    m_nearClip = nearClip;
    m_farClip = farClip;
}

void LightCamera::setProjection(std::uint32_t projection)
{
    m_projection = projection;
}

void LightCamera::setTransform(const Matrix4& transform)
{
    m_transform = transform;
    m_hasTransform = true;
}

void LightCamera::setAnimation(std::shared_ptr<Animation> animation)
{
    m_animation = std::move(animation);
}

} // namespace orv
