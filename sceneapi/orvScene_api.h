// The scene description interface: one call for every statement of a scene. Blocks are opened and
// closed by paired calls in strict nesting; inside a block parameters, arrays and transforms are
// emitted one call at a time. orvScene_api_file turns the calls into text, NullApi discards them.
#pragma once

#include "sceneapi/orvSceneValues.h"

#include <cstddef>
#include <cstdint>

// Lets the compiler check the arguments against the format.
#if defined(__MINGW32__) && !defined(__clang__)
#define ORV_PRINTF(text, first) __attribute__((format(gnu_printf, text, first)))
#elif defined(__GNUC__)
#define ORV_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define ORV_PRINTF(text, first)
#endif

/// The order of the virtual operations is part of the contract (the number before each is its
/// slot): renderers bind to the table. Never reorder, add only at the end.
///
/// Results   true = accepted, unless said otherwise.
/// Names     zero-terminated bytes, UTF-8; a null name counts as empty where it is not allowed
/// explicitly. Matrices  16 doubles in storage order; x, y and z are passed by pointer.
class orvScene_api {
public:
    /* 0 */ virtual ~orvScene_api() = default;
    /* 1 */ virtual void noEffect() = 0;
    /* 2 */ virtual bool firstFeature() { return false; }
    /* 3 */ virtual bool secondFeature() { return false; }
    /* 4 */ virtual bool thirdFeature() { return false; }

    /* 5 */ virtual bool beginGroup(const char* name, bool isInstance) = 0;
    /* 6 */ virtual bool endGroup() = 0;
    /* 7 */ virtual bool beginObject(const char* name, bool isInstance) = 0;
    /* 8 */ virtual bool endObject() = 0;
    /* 9 */ virtual bool beginGeometry(const char* name) = 0;
    /* 10 */ virtual bool endGeometry() = 0;
    /* 11 */ virtual bool beginAnimation(const char* name, const char* type) = 0;
    /* 12 */ virtual bool endAnimation() = 0;
    /* 13 */ virtual bool beginLoad(const char* name) = 0;
    /* 14 */ virtual bool endLoad() = 0;

    /// Options, camera and image are top-level blocks: refused (false) while one of them or an
    /// object is open.
    /* 15 */ virtual bool beginOptions() = 0;
    /* 16 */ virtual bool endOptions() = 0;
    /// `name` may be null.
    /* 17 */ virtual bool beginCamera(const char* name) = 0;
    /* 18 */ virtual bool endCamera() = 0;
    /* 19 */ virtual bool beginImage() = 0;
    /* 20 */ virtual bool endImage() = 0;

    /* 21 */ virtual bool beginOutput(const char* first, const char* second, const char* third) = 0;
    /* 22 */ virtual bool endOutput() = 0;
    /* 23 */ virtual bool beginLight(const char* name) = 0;
    /* 24 */ virtual bool endLight() = 0;
    /* 25 */ virtual bool beginAccel(const char* name) = 0;
    /* 26 */ virtual bool endAccel() = 0;

    /* 27 */ virtual bool transform(const double* matrix) = 0;
    /* 28 */ virtual bool setTransform(const double* matrix) = 0;
    /* 29 */ virtual bool scale(const double* x, const double* y, const double* z) = 0;
    /* 30 */ virtual bool rotate(const double* x, const double* y, const double* z) = 0;
    /* 31 */ virtual bool translate(const double* x, const double* y, const double* z) = 0;
    /* 32 */ virtual bool defineMatrix(const char* name) = 0;
    /* 33 */ virtual bool endMatrix() = 0;

    /// `isInstance` writes the block in place, otherwise as a definition.
    /* 34 */ virtual bool beginMaterial(const char* name, bool isInstance) = 0;
    /* 35 */ virtual bool useMaterial(const char* name) = 0;
    /* 36 */ virtual bool endMaterial() = 0;

    /// `kind` is an orv::ShaderKind; another number counts as surface, with a remark in the file.
    /* 37 */ virtual bool shaderReference(int kind, const orv::Blob* shader) = 0;
    /* 38 */ virtual bool shaderById(int kind, int id) = 0;
    /// Without a name (null) the shader is anonymous: its text is captured, not written; see
    /// captureBuffer.
    /* 39 */ virtual bool beginShader(const char* name, const char* type) = 0;
    /* 40 */ virtual bool beginShaderById(const char* type, int id) = 0;
    /* 41 */ virtual bool endShader() = 0;

    /// The handle of the anonymous shader begun or ended last; null when there is none. Taken
    /// before or after endShader it names the shader's finished text, and it stays valid until the
    /// material or camera block around the shader is closed. Pass it to namedBlob, shaderReference,
    /// or to parameter as orv::kBlob.
    /* 42 */ virtual const orv::Blob* captureBuffer() = 0;
    /// Keep the handle aside while another anonymous shader is begun inside this one, and make it
    /// current again.
    /* 43 */ virtual bool pushCaptureBuffer() = 0;
    /* 44 */ virtual bool popCaptureBuffer() = 0;

    /// `type` is an orv::ValueType or an orv::ListType, `value` the data that it announces.
    /* 45 */ virtual bool parameter(const char* name, std::uint32_t type, const void* value) = 0;
    /* 46 */ virtual bool namedInt(const char* name, int value) = 0;
    /* 47 */ virtual bool namedBlob(const char* name, const orv::Blob* blob) = 0;
    /* 48 */ virtual bool beginArray(const char* name) = 0;
    /* 49 */ virtual bool endArray() = 0;
    /// `type` is an orv::ValueType; for orv::kBlob the value is a pointer to the Blob's pointer.
    /* 50 */ virtual bool arrayElement(std::uint32_t type, const void* value) = 0;

    /* 51 */ virtual int firstCapability() = 0;
    /* 52 */ virtual int secondCapability() = 0;
    /* 53 */ virtual int thirdCapability() = 0;

    /* 54 */ virtual bool attribute(const char* name, const char* value) = 0;
    /// Writes formatted text, by the rules of C's printf in the "C" locale.
    /* 55 */ virtual bool printf(const char* format, ...) ORV_PRINTF(2, 3) = 0;
    /// Returns whether binary arrays are now on, not whether the call was accepted.
    /* 56 */ virtual bool setFlags(std::uint32_t formatFlags) = 0;
    /* 57 */ virtual bool version(int number) = 0;
    /* 58 */ virtual bool reservedOperation() = 0;
    /// `fraction` from 0 to 1.
    /* 59 */ virtual bool progress(const char* name, float fraction) = 0;
    /* 60 */ virtual bool icon(const orv::Blob* blob) = 0;
    /* 61 */ virtual bool hexLine(const char* word, const void* bytes, std::size_t length) = 0;
    /* 62 */ virtual bool id(std::uint32_t number) = 0;
    /* 63 */ virtual bool flags(std::uint32_t bits) = 0;
    /* 64 */ virtual bool reservedQuery() = 0;
    /* 65 */ virtual bool render() = 0;
    /* 66 */ virtual bool printMessage(const char* text) = 0;
    /* 67 */ virtual bool error(const char* text) = 0;
};
