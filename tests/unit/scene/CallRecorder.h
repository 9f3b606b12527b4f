// A scene API that notes the calls whose order the file does not show.
#pragma once

#include "sceneapi/NullApi.h"
#include "sceneapi/PassThroughFactory.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <string>
#include <vector>

namespace orv::test {

class CallRecorder : public NullApi {
public:
    bool beginShader(const char* name, const char* type) override
    {
        return note(std::string("beginShader ") + (name == nullptr ? "-" : name) + " " + type);
    }
    bool endShader() override { return note("endShader"); }
    const Blob* captureBuffer() override
    {
        note("captureBuffer");
        return &m_blob;
    }
    bool pushCaptureBuffer() override { return note("push"); }
    bool popCaptureBuffer() override { return note("pop"); }
    bool parameter(const char* name, std::uint32_t type, const void*) override
    {
        return note(std::string("parameter ") + name + " " + std::to_string(type));
    }
    bool namedBlob(const char* name, const Blob* blob) override
    {
        return note(std::string("namedBlob ") + name + (blob == &m_blob ? "" : " unknown"));
    }
    bool shaderReference(int kind, const Blob* blob) override
    {
        return note("shaderReference " + std::to_string(kind) +
                    (blob == &m_blob ? "" : " unknown"));
    }
    bool flags(std::uint32_t bits) override { return note("flags " + std::to_string(bits)); }
    bool transform(const double*) override { return note("transform"); }
    bool setTransform(const double*) override { return note("setTransform"); }

    const std::vector<std::string>& calls() const { return m_calls; }

private:
    bool note(std::string call)
    {
        m_calls.push_back(std::move(call));
        return true;
    }

    Blob m_blob{"shader", 6, 0};
    std::vector<std::string> m_calls;
};

} // namespace orv::test
