// The scene API that discards everything: each call does nothing and returns false, 0 or nothing.
#pragma once

#include "sceneapi/orvScene_api.h"

class NullApi : public orvScene_api {
public:
    void noEffect() override;
    bool beginGroup(const char* name, bool isInstance) override;
    bool endGroup() override;
    bool beginObject(const char* name, bool isInstance) override;
    bool endObject() override;
    bool beginGeometry(const char* name) override;
    bool endGeometry() override;
    bool beginAnimation(const char* name, const char* type) override;
    bool endAnimation() override;
    bool beginLoad(const char* name) override;
    bool endLoad() override;
    bool beginOptions() override;
    bool endOptions() override;
    bool beginCamera(const char* name) override;
    bool endCamera() override;
    bool beginImage() override;
    bool endImage() override;
    bool beginOutput(const char* first, const char* second, const char* third) override;
    bool endOutput() override;
    bool beginLight(const char* name) override;
    bool endLight() override;
    bool beginAccel(const char* name) override;
    bool endAccel() override;
    bool transform(const double* matrix) override;
    bool setTransform(const double* matrix) override;
    bool scale(const double* x, const double* y, const double* z) override;
    bool rotate(const double* x, const double* y, const double* z) override;
    bool translate(const double* x, const double* y, const double* z) override;
    bool defineMatrix(const char* name) override;
    bool endMatrix() override;
    bool beginMaterial(const char* name, bool isInstance) override;
    bool useMaterial(const char* name) override;
    bool endMaterial() override;
    bool shaderReference(int kind, const orv::Blob* shader) override;
    bool shaderById(int kind, int id) override;
    bool beginShader(const char* name, const char* type) override;
    bool beginShaderById(const char* type, int id) override;
    bool endShader() override;
    const orv::Blob* captureBuffer() override;
    bool pushCaptureBuffer() override;
    bool popCaptureBuffer() override;
    bool parameter(const char* name, std::uint32_t type, const void* value) override;
    bool namedInt(const char* name, int value) override;
    bool namedBlob(const char* name, const orv::Blob* blob) override;
    bool beginArray(const char* name) override;
    bool endArray() override;
    bool arrayElement(std::uint32_t type, const void* value) override;
    int firstCapability() override;
    int secondCapability() override;
    int thirdCapability() override;
    bool attribute(const char* name, const char* value) override;
    bool printf(const char* format, ...) override;
    bool setFlags(std::uint32_t formatFlags) override;
    bool version(int number) override;
    bool reservedOperation() override;
    bool progress(const char* name, float fraction) override;
    bool icon(const orv::Blob* blob) override;
    bool hexLine(const char* word, const void* bytes, std::size_t length) override;
    bool id(std::uint32_t number) override;
    bool flags(std::uint32_t bits) override;
    bool reservedQuery() override;
    bool render() override;
    bool printMessage(const char* text) override;
    bool error(const char* text) override;
};
