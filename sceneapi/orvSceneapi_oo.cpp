#include "sceneapi/orvSceneapi_oo.h"

#include "scene/LightNode.h"
#include "sceneapi/LightFactory.h"
#include "sceneapi/NullApi.h"

#include <stdexcept>

namespace orv {
namespace {

constexpr int kSceneVersion = 9;

// A fixed stamp of the layer's generation, not the time of this build: the same scene gives the
// same bytes.
constexpr const char kBanner[] = "Vistrel SceneApi oo 7.3.37  (built Fri Feb  2 07:20:39 2018)";

NullApi& nullApi()
{
    static NullApi api;
    return api;
}

} // namespace

orvSceneapi_oo::orvSceneapi_oo(LightFactory& factory) : m_factory(&factory)
{
    orvSceneapi_oo::attach(factory.sceneApi());
    if (m_api == nullptr) {
        return;
    }
    m_factory->writeHeader();
    m_api->printMessage(kBanner);
    m_api->version(kSceneVersion);
}

orvSceneapi_oo::~orvSceneapi_oo() = default;

void orvSceneapi_oo::attach(orvScene_api* api)
{
    m_api = api;
    m_sink = api != nullptr ? api : &nullApi();
    m_groupCounter = 0;
    m_idCounter = 0;
}

std::uint32_t orvSceneapi_oo::newId()
{
    ++m_idCounter;
    m_sink->id(m_idCounter);
    return m_idCounter;
}

void orvSceneapi_oo::writeNode(LightNode& node)
{
    node.write(*this);
}

void orvSceneapi_oo::progress(const std::string& name, float fraction)
{
    m_sink->progress(name.c_str(), fraction);
}

void orvSceneapi_oo::beginGroup(const std::string& name)
{
    m_sink->beginGroup(name.c_str(), true);
}

void orvSceneapi_oo::endGroup()
{
    m_sink->endGroup();
}

std::uint32_t orvSceneapi_oo::defineShader(const std::string& type)
{
    ++m_idCounter;
    m_sink->beginShaderById(type.c_str(), static_cast<int>(m_idCounter));
    return m_idCounter;
}

void orvSceneapi_oo::endShader()
{
    m_sink->endShader();
}

void orvSceneapi_oo::deprecatedStringParameter(const std::string&, const char*)
{
    throw std::invalid_argument("const char * are deprecated");
}

void orvSceneapi_oo::stringParameter(const std::string& name, const std::string& text)
{
    m_sink->parameter(name.c_str(), kString, text.c_str());
}

void orvSceneapi_oo::float3Parameter(const std::string& name, const Float3& value)
{
    m_sink->parameter(name.c_str(), kFloat3, value.data());
}

void orvSceneapi_oo::double3Parameter(const std::string& name, const Double3& value)
{
    m_sink->parameter(name.c_str(), kDouble3, value.data());
}

void orvSceneapi_oo::doubleParameter(const std::string& name, double value)
{
    m_sink->parameter(name.c_str(), kDouble, &value);
}

void orvSceneapi_oo::floatParameter(const std::string& name, float value)
{
    m_sink->parameter(name.c_str(), kFloat, &value);
}

void orvSceneapi_oo::intParameter(const std::string& name, std::int32_t value)
{
    m_sink->parameter(name.c_str(), kInt, &value);
}

void orvSceneapi_oo::boolParameter(const std::string& name, bool value)
{
    m_sink->parameter(name.c_str(), kBool, &value);
}

void orvSceneapi_oo::list(const std::string& name, std::uint32_t type, const void* elements,
                          std::size_t count)
{
    const List list{.elements = elements, .count = static_cast<std::uint32_t>(count)};
    m_sink->parameter(name.c_str(), type, &list);
}

void orvSceneapi_oo::matrixListParameter(const std::string& name,
                                         const std::vector<Matrix4>& values)
{
    list(name, kMatrixList, values.data(), values.size());
}

void orvSceneapi_oo::intListParameter(const std::string& name,
                                      const std::vector<std::int32_t>& values)
{
    list(name, kIntList, values.data(), values.size());
}

void orvSceneapi_oo::floatListParameter(const std::string& name, const std::vector<float>& values)
{
    list(name, kFloatList, values.data(), values.size());
}

void orvSceneapi_oo::doubleListParameter(const std::string& name, const std::vector<double>& values)
{
    list(name, kDoubleList, values.data(), values.size());
}

void orvSceneapi_oo::pointsParameter(const std::string& name, const std::vector<float>& values)
{
    list(name, kFloat3List, values.data(), values.size() / 3);
}

void orvSceneapi_oo::transform(const Matrix4& matrix)
{
    transform(matrix, false);
}

void orvSceneapi_oo::transform(const Matrix4& matrix, bool set)
{
    if (set) {
        m_sink->setTransform(matrix.data());
    } else {
        m_sink->transform(matrix.data());
    }
}

void orvSceneapi_oo::flags(std::uint32_t bits)
{
    m_sink->flags(bits);
}

orvScene_api* orvSceneapi_oo::sceneApi()
{
    return m_api;
}

} // namespace orv
