#include "scene/Diffuse.h"

#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <cstdint>
#include <utility>

namespace orv {

namespace {

constexpr std::uint32_t kDiffuseFlags = 4096;
constexpr Float3 kVertexColorDefault{0.8F, 0.8F, 0.8F};

} // namespace

Diffuse::Diffuse(std::string name) : Material(std::move(name))
{
    setShaderType("orv_diffuse");
}

void Diffuse::setColor(float r, float g, float b)
{
    m_color = clamped(r, g, b);
}

void Diffuse::writeParameters(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    const Blob* shader = m_vertexColor ? writeVertexColorShader(oo) : writePlainShader(oo);
    api->shaderReference(kSurface, shader);
    oo.flags(kDiffuseFlags);
}

const Blob* Diffuse::writePlainShader(orvSceneapi_oo& oo) const
{
    orvScene_api* api = oo.sceneApi();
    api->beginShader(nullptr, getShaderType().c_str());
    oo.float3Parameter("diffuse", m_color);
    const Blob* shader = api->captureBuffer();
    oo.endShader();
    return shader;
}

const Blob* Diffuse::writeVertexColorShader(orvSceneapi_oo& oo) const
{
    orvScene_api* api = oo.sceneApi();
    api->pushCaptureBuffer();
    api->beginShader(nullptr, getShaderType().c_str());

    api->pushCaptureBuffer();
    api->beginShader(nullptr, "vertex_color");
    oo.float3Parameter("default_color", kVertexColorDefault);
    oo.endShader();
    const Blob* vertexColor = api->captureBuffer();
    api->popCaptureBuffer();

    oo.float3Parameter("diffuse", m_color);
    api->namedBlob("diffuse", vertexColor);
    oo.endShader();
    return api->captureBuffer();
}

} // namespace orv
