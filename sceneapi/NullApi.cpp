#include "sceneapi/NullApi.h"

void NullApi::noEffect() {}
bool NullApi::beginGroup(const char*, bool)
{
    return false;
}
bool NullApi::endGroup()
{
    return false;
}
bool NullApi::beginObject(const char*, bool)
{
    return false;
}
bool NullApi::endObject()
{
    return false;
}
bool NullApi::beginGeometry(const char*)
{
    return false;
}
bool NullApi::endGeometry()
{
    return false;
}
bool NullApi::beginAnimation(const char*, const char*)
{
    return false;
}
bool NullApi::endAnimation()
{
    return false;
}
bool NullApi::beginLoad(const char*)
{
    return false;
}
bool NullApi::endLoad()
{
    return false;
}
bool NullApi::beginOptions()
{
    return false;
}
bool NullApi::endOptions()
{
    return false;
}
bool NullApi::beginCamera(const char*)
{
    return false;
}
bool NullApi::endCamera()
{
    return false;
}
bool NullApi::beginImage()
{
    return false;
}
bool NullApi::endImage()
{
    return false;
}
bool NullApi::beginOutput(const char*, const char*, const char*)
{
    return false;
}
bool NullApi::endOutput()
{
    return false;
}
bool NullApi::beginLight(const char*)
{
    return false;
}
bool NullApi::endLight()
{
    return false;
}
bool NullApi::beginAccel(const char*)
{
    return false;
}
bool NullApi::endAccel()
{
    return false;
}
bool NullApi::transform(const double*)
{
    return false;
}
bool NullApi::setTransform(const double*)
{
    return false;
}
bool NullApi::scale(const double*, const double*, const double*)
{
    return false;
}
bool NullApi::rotate(const double*, const double*, const double*)
{
    return false;
}
bool NullApi::translate(const double*, const double*, const double*)
{
    return false;
}
bool NullApi::defineMatrix(const char*)
{
    return false;
}
bool NullApi::endMatrix()
{
    return false;
}
bool NullApi::beginMaterial(const char*, bool)
{
    return false;
}
bool NullApi::useMaterial(const char*)
{
    return false;
}
bool NullApi::endMaterial()
{
    return false;
}
bool NullApi::shaderReference(int, const orv::Blob*)
{
    return false;
}
bool NullApi::shaderById(int, int)
{
    return false;
}
bool NullApi::beginShader(const char*, const char*)
{
    return false;
}
bool NullApi::beginShaderById(const char*, int)
{
    return false;
}
bool NullApi::endShader()
{
    return false;
}
const orv::Blob* NullApi::captureBuffer()
{
    return nullptr;
}
bool NullApi::pushCaptureBuffer()
{
    return false;
}
bool NullApi::popCaptureBuffer()
{
    return false;
}
bool NullApi::parameter(const char*, std::uint32_t, const void*)
{
    return false;
}
bool NullApi::namedInt(const char*, int)
{
    return false;
}
bool NullApi::namedBlob(const char*, const orv::Blob*)
{
    return false;
}
bool NullApi::beginArray(const char*)
{
    return false;
}
bool NullApi::endArray()
{
    return false;
}
bool NullApi::arrayElement(std::uint32_t, const void*)
{
    return false;
}
int NullApi::firstCapability()
{
    return 0;
}
int NullApi::secondCapability()
{
    return 0;
}
int NullApi::thirdCapability()
{
    return 0;
}
bool NullApi::attribute(const char*, const char*)
{
    return false;
}
bool NullApi::printf(const char*, ...)
{
    return false;
}
bool NullApi::setFlags(std::uint32_t)
{
    return false;
}
bool NullApi::version(int)
{
    return false;
}
bool NullApi::reservedOperation()
{
    return false;
}
bool NullApi::progress(const char*, float)
{
    return false;
}
bool NullApi::icon(const orv::Blob*)
{
    return false;
}
bool NullApi::hexLine(const char*, const void*, std::size_t)
{
    return false;
}
bool NullApi::id(std::uint32_t)
{
    return false;
}
bool NullApi::flags(std::uint32_t)
{
    return false;
}
bool NullApi::reservedQuery()
{
    return false;
}
bool NullApi::render()
{
    return false;
}
bool NullApi::printMessage(const char*)
{
    return false;
}
bool NullApi::error(const char*)
{
    return false;
}
