// The scene API that writes the renderer's text scene file: every call becomes its lines of text,
// byte for byte the same on every system.
#pragma once

#include "sceneapi/CaptureStore.h"
#include "sceneapi/FileTarget.h"
#include "sceneapi/orvScene_api.h"

#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// While a writer lives, LC_NUMERIC of the process is "C". The overridden operations keep the slots
/// of orvScene_api; modifyCamera follows as slot 68. Writes are not checked one by one: see
/// writeError.
class orvScene_api_file : public orvScene_api {
public:
    /// Bits of setFlags; the others are kept and never looked at.
    enum FormatFlag : std::uint32_t { kBinaryArrays = 0x2, kNoIndentation = 0x400000 };
    static constexpr std::uint32_t kInitialFormatFlags = 0x400001;
    /// Bit of setObjectFlags: the object is written with "invisible on".
    static constexpr std::uint32_t kInvisible = 0x4000;
    /// A formatted piece of text longer than this is cut.
    static constexpr std::size_t kMaxPiece = (std::size_t{1} << 20) - 1;

    /// Opens `path` with fopen; standard output, silently, when that fails.
    orvScene_api_file(const char* path, bool binaryArrays);
    /// Writes to a stream that stays the caller's. It has everything only after this writer is
    /// destroyed or flushed.
    orvScene_api_file(std::FILE* stream, bool binaryArrays);
    orvScene_api_file(const orvScene_api_file&) = delete;
    orvScene_api_file& operator=(const orvScene_api_file&) = delete;
    ~orvScene_api_file() override;

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
    /// The camera block as a change of a camera that exists.
    virtual bool modifyCamera(const char* name);

    // Operations beyond the scene API.
    bool defineGeometry(const char* name, const char* type);
    /// `matrix` is 16 floats.
    bool motion(double time, const float* matrix);
    bool modifyMaterial(const char* name);
    bool frame(int number);
    bool instance(const char* name);
    /// Flags of the open object; beginObject clears them.
    void setObjectFlags(std::uint32_t bits) { m_objectFlags = bits; }
    std::uint32_t formatFlags() const { return m_formatFlags; }

    /// Hands everything written so far to the system.
    void flush() { m_file.flush(); }
    /// 0, or the errno of the first write that fell short.
    int writeError() const { return m_file.errorNumber(); }

private:
    enum class Block { None, Options, Camera, Image, Object };
    struct OpenShader {
        orv::CaptureTarget* own;    // null for a named or numbered shader
        orv::CaptureTarget* target; // what was in force before it
        bool captures;
        int depth;
    };

    // Primitives. A piece is one formatted text: cut at kMaxPiece, indented as a whole.
    orv::TextTarget& target();
    void raw(std::string_view text);
    void rawBytes(const void* bytes, std::size_t size);
    void indented(std::initializer_list<std::string_view> piece);
    void indentation();
    void name(const char* text);
    void operand(const char* text);
    void hex(std::string_view mark, const void* bytes, std::size_t length);
    void blob(const orv::Blob& blob);

    // Blocks.
    bool open(std::string_view word, const char* name);
    bool close();
    bool closeAndPop();
    void pushContext(bool keywords);
    void popContext();
    bool refuses() const { return m_block != Block::None; }
    void openTopLevel(Block block);
    bool closeTopLevel(Block block);
    void openShader(orv::CaptureTarget* own);
    void releaseCaptures(std::size_t kept);
    std::string_view kindWord(int kind);

    // Values.
    void value(std::uint32_t type, const void* data);
    void list(std::uint32_t type, const void* data);
    void binaryArray(char letter, std::uint64_t count, const void* data, std::size_t size);
    bool bufferElement(std::uint32_t type, const void* data);
    void separateElement(std::uint32_t type);
    bool numbersLine(std::string_view word, std::initializer_list<const double*> parts, int each);

    std::string m_savedLocale;
    std::FILE* m_ownedStream = nullptr;
    orv::FileTarget m_file;
    std::unique_ptr<char[]> m_work; // of printf, kMaxPiece + 1 bytes, made when first needed

    int m_depth = 0;
    std::uint32_t m_formatFlags = kInitialFormatFlags;
    bool m_binaryArrays;
    bool m_keywords = false; // bare keywords; otherwise quoted names and commas
    std::vector<bool> m_contexts;
    Block m_block = Block::None;
    bool m_insideGeometryDefinition = false;
    std::uint32_t m_objectFlags = 0;

    bool m_captures = false;
    orv::CaptureTarget* m_captureTarget = nullptr;
    orv::CaptureStore m_captureStore;
    std::vector<OpenShader> m_shaders;
    std::vector<std::size_t>
        m_materialMarks; // captures that existed when each open material block began
    std::size_t m_cameraMark = 0;

    std::uint64_t m_elementCount = 0;
    char m_bufferLetter = 'f';
    std::vector<std::uint32_t> m_buffer; // words of a binary element stream
};
