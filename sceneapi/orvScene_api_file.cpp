#include "sceneapi/orvScene_api_file.h"

#include "sceneapi/numberText.h"
#include "sceneapi/valueText.h"

#include <algorithm>
#include <bit>
#include <clocale>
#include <cstdarg>
#include <cstring>

static_assert(std::endian::native == std::endian::little,
              "binary arrays are written as they lie in memory");

namespace {

constexpr std::size_t kStreamBuffer = std::size_t{1} << 20;
constexpr std::size_t kContextRoom = 32;
constexpr std::size_t kBufferGrowth = 65536; // words
constexpr char kHexDigits[] = "0123456789abcdef";

std::FILE* openOwned(const char* path)
{
    std::FILE* stream = path != nullptr ? std::fopen(path, "wb+") : nullptr;
    if (stream != nullptr) {
        std::setvbuf(stream, nullptr, _IOFBF, kStreamBuffer);
    }
    return stream;
}

std::string currentNumericLocale()
{
    const char* locale = std::setlocale(LC_NUMERIC, nullptr);
    return locale != nullptr ? locale : "C";
}

std::string_view view(const char* text)
{
    return text != nullptr ? std::string_view(text) : std::string_view();
}

bool isSafe(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char c) {
        return c == '\n' || c == '\r' || c == '"' || static_cast<unsigned char>(c) >= 0x80;
    });
}

/// A number as a piece of text of its own.
class NumberPiece {
public:
    static NumberPiece integer(std::int32_t n) { return NumberPiece(n, orv::writeInteger); }
    static NumberPiece natural(std::uint32_t n) { return NumberPiece(n, orv::writeUnsigned); }
    static NumberPiece general(double x) { return NumberPiece(x, orv::writeGeneral); }
    operator std::string_view() const { return {m_text, m_size}; }

private:
    template<typename T>
    NumberPiece(T number, char* (*write)(char*, T))
        : m_size(static_cast<std::size_t>(write(m_text, number) - m_text))
    {
    }

    char m_text[orv::kMaxGeneralText] = {};
    std::size_t m_size;
};

/// Another depth for the duration of a write.
class DepthScope {
public:
    DepthScope(int& depth, int during) : m_depth(depth), m_before(depth) { depth = during; }
    DepthScope(const DepthScope&) = delete;
    DepthScope& operator=(const DepthScope&) = delete;
    ~DepthScope() { m_depth = m_before; }

private:
    int& m_depth;
    int m_before;
};

} // namespace

orvScene_api_file::orvScene_api_file(const char* path, bool binaryArrays)
    : m_savedLocale(currentNumericLocale())
    , m_ownedStream(openOwned(path))
    , m_file(m_ownedStream != nullptr ? m_ownedStream : stdout)
    , m_binaryArrays(binaryArrays)
{
    m_contexts.reserve(kContextRoom);
    std::setlocale(LC_NUMERIC, "C");
}

orvScene_api_file::orvScene_api_file(std::FILE* stream, bool binaryArrays)
    : m_savedLocale(currentNumericLocale()), m_file(stream), m_binaryArrays(binaryArrays)
{
    m_contexts.reserve(kContextRoom);
    std::setlocale(LC_NUMERIC, "C");
}

orvScene_api_file::~orvScene_api_file()
{
    m_file.drain();
    if (m_ownedStream != nullptr) {
        std::fclose(m_ownedStream);
    }
    std::setlocale(LC_NUMERIC, m_savedLocale.c_str());
}

// Primitives

orv::TextTarget& orvScene_api_file::target()
{
    if (m_captures && m_captureTarget != nullptr) {
        return *m_captureTarget;
    }
    return m_file;
}

void orvScene_api_file::raw(std::string_view text)
{
    target().append(text);
}

void orvScene_api_file::rawBytes(const void* bytes, std::size_t size)
{
    if (m_captures && m_captureTarget != nullptr) {
        m_captureTarget->markBinary();
    }
    target().append({static_cast<const char*>(bytes), size});
}

/// Indentation stands before the first character and after every newline that more text of the
/// piece follows; an empty piece is indentation alone.
void orvScene_api_file::indented(std::initializer_list<std::string_view> piece)
{
    orv::TextTarget& out = target();
    const bool indents = (m_formatFlags & kNoIndentation) == 0 && m_depth > 0;
    if (indents) {
        indentation();
    }
    bool pending = false;
    std::size_t left = kMaxPiece;
    for (std::string_view part : piece) {
        part = part.substr(0, left);
        left -= part.size();
        if (!indents) {
            out.append(part);
            continue;
        }
        while (!part.empty()) {
            if (pending) {
                indentation();
            }
            const std::size_t newline = part.find('\n');
            pending = newline != std::string_view::npos;
            const std::size_t line = pending ? newline + 1 : part.size();
            out.append(part.substr(0, line));
            part.remove_prefix(line);
        }
    }
}

void orvScene_api_file::indentation()
{
    if ((m_formatFlags & kNoIndentation) == 0 && m_depth > 0) {
        target().appendBlanks(static_cast<std::size_t>(m_depth));
    }
}

void orvScene_api_file::name(const char* text)
{
    const std::string_view bytes = view(text);
    if (isSafe(bytes)) {
        indented({"\"", bytes, "\""});
    } else {
        hex("xX", bytes.data(), bytes.size());
    }
}

/// A name inside a line has no indentation before it.
void orvScene_api_file::operand(const char* text)
{
    const DepthScope scope(m_depth, 0);
    name(text);
}

void orvScene_api_file::hex(std::string_view mark, const void* bytes, std::size_t length)
{
    orv::TextTarget& out = target();
    out.append(mark);
    const auto* byte = static_cast<const unsigned char*>(bytes);
    for (std::size_t i = 0; i < length; ++i) {
        char* pair = out.reserve(2);
        pair[0] = kHexDigits[byte[i] >> 4];
        pair[1] = kHexDigits[byte[i] & 15];
        out.commit(pair + 2);
    }
}

void orvScene_api_file::blob(const orv::Blob& blob)
{
    for (const OpenShader& shader : m_shaders) {
        if (shader.own != nullptr) {
            shader.own->refreshBlob(); // its handle may have been taken before its end
        }
    }
    std::string own;
    const char* bytes = blob.bytes;
    if (m_captureTarget != nullptr && &blob == m_captureTarget->blob()) {
        own.assign(blob.bytes,
                   blob.length); // a text that takes itself in must not move under the copying
        bytes = own.c_str();
    }
    if (blob.binary == 0) {
        indented({view(bytes)});
    } else if (bytes != nullptr) {
        rawBytes(bytes, blob.length);
    }
}

// Blocks

void orvScene_api_file::pushContext(bool keywords)
{
    m_contexts.push_back(m_keywords);
    m_keywords = keywords;
}

void orvScene_api_file::popContext()
{
    m_keywords = !m_contexts.empty() && m_contexts.back();
    if (!m_contexts.empty()) {
        m_contexts.pop_back();
    }
}

bool orvScene_api_file::open(std::string_view word, const char* blockName)
{
    indented({word});
    operand(blockName);
    raw(" {\n");
    ++m_depth;
    return true;
}

bool orvScene_api_file::close()
{
    --m_depth;
    indented({"}\n"});
    return true;
}

bool orvScene_api_file::closeAndPop()
{
    close();
    popContext();
    return true;
}

void orvScene_api_file::openTopLevel(Block block)
{
    m_captures = false;
    m_keywords = true;
    m_block = block;
}

bool orvScene_api_file::closeTopLevel(Block block)
{
    const bool matches = m_block == block;
    if (matches) {
        close();
    }
    m_keywords = false;
    m_block = Block::None;
    return matches;
}

void orvScene_api_file::noEffect() {}

bool orvScene_api_file::beginGroup(const char* groupName, bool isInstance)
{
    raw("\n");
    if (!isInstance) {
        indented({"#define "});
    }
    open("group ", groupName);
    pushContext(true);
    return true;
}

bool orvScene_api_file::endGroup()
{
    return closeAndPop();
}

bool orvScene_api_file::beginObject(const char* objectName, bool isInstance)
{
    open(isInstance ? "object " : "#define object ", objectName);
    pushContext(true);
    m_block = Block::Object;
    m_objectFlags = 0;
    return true;
}

bool orvScene_api_file::endObject()
{
    if ((m_objectFlags & kInvisible) != 0) {
        indented({"invisible on\n"});
    }
    popContext();
    m_block = Block::None;
    return close();
}

bool orvScene_api_file::beginGeometry(const char* geometryName)
{
    if (m_insideGeometryDefinition) {
        return true; // the definition's block takes the statements; endGeometry closes it
    }
    open("geometry ", geometryName);
    pushContext(false);
    return true;
}

bool orvScene_api_file::endGeometry()
{
    m_insideGeometryDefinition = false;
    return closeAndPop();
}

bool orvScene_api_file::beginAnimation(const char* animationName, const char* type)
{
    indented({"animation "});
    operand(animationName);
    open(" ", type);
    pushContext(false);
    return true;
}

bool orvScene_api_file::endAnimation()
{
    return closeAndPop();
}

bool orvScene_api_file::beginLoad(const char* moduleName)
{
    return open("load ", moduleName);
}

bool orvScene_api_file::endLoad()
{
    return close();
}

bool orvScene_api_file::beginOptions()
{
    if (refuses()) {
        return false;
    }
    openTopLevel(Block::Options);
    indented({"\noptions {\n"});
    ++m_depth;
    return true;
}

bool orvScene_api_file::endOptions()
{
    return closeTopLevel(Block::Options);
}

bool orvScene_api_file::beginCamera(const char* cameraName)
{
    if (refuses()) {
        return false;
    }
    openTopLevel(Block::Camera);
    m_cameraMark = m_captureStore.size();
    if (cameraName != nullptr) {
        return open("\ncamera ", cameraName);
    }
    indented({"\ncamera {\n"});
    ++m_depth;
    return true;
}

bool orvScene_api_file::endCamera()
{
    const bool matches = closeTopLevel(Block::Camera);
    if (matches) {
        releaseCaptures(m_cameraMark);
    }
    return matches;
}

bool orvScene_api_file::beginImage()
{
    if (refuses()) {
        return false;
    }
    openTopLevel(Block::Image);
    indented({"\nimage {\n"});
    ++m_depth;
    return true;
}

bool orvScene_api_file::endImage()
{
    return closeTopLevel(Block::Image);
}

bool orvScene_api_file::beginOutput(const char* first, const char* second, const char* third)
{
    m_keywords = false;
    indented({"output "});
    operand(first);
    raw(" ");
    operand(second);
    raw(" ");
    operand(third);
    raw(" {\n");
    ++m_depth;
    return true;
}

bool orvScene_api_file::endOutput()
{
    m_keywords = true;
    return close();
}

bool orvScene_api_file::beginLight(const char* lightName)
{
    raw("\n");
    return open("light ", lightName);
}

bool orvScene_api_file::endLight()
{
    return close();
}

bool orvScene_api_file::beginAccel(const char* accelName)
{
    open("\naccel ", accelName);
    pushContext(false);
    return true;
}

bool orvScene_api_file::endAccel()
{
    return closeAndPop();
}

// Transforms

bool orvScene_api_file::numbersLine(std::string_view word,
                                    std::initializer_list<const double*> parts, int each)
{
    if (std::find(parts.begin(), parts.end(), nullptr) != parts.end()) {
        return false;
    }
    indented({word});
    for (const double* part : parts) {
        for (int i = 0; i < each; ++i) {
            orv::TextTarget& out = target();
            char* text = out.reserve(orv::kMaxGeneralText + 1);
            *text = ' ';
            out.commit(orv::writeGeneral(text + 1, part[i]));
        }
    }
    raw("\n");
    return true;
}

bool orvScene_api_file::transform(const double* matrix)
{
    return numbersLine("transform", {matrix}, 16);
}

bool orvScene_api_file::setTransform(const double* matrix)
{
    return numbersLine("set transform", {matrix}, 16);
}

bool orvScene_api_file::scale(const double* x, const double* y, const double* z)
{
    return numbersLine("scale", {x, y, z}, 1);
}

bool orvScene_api_file::rotate(const double* x, const double* y, const double* z)
{
    return numbersLine("rotate", {x, y, z}, 1);
}

bool orvScene_api_file::translate(const double* x, const double* y, const double* z)
{
    return numbersLine("translate", {x, y, z}, 1);
}

bool orvScene_api_file::defineMatrix(const char* matrixName)
{
    return open("#define matrix ", matrixName);
}

bool orvScene_api_file::endMatrix()
{
    return close();
}

// Materials and shaders

bool orvScene_api_file::beginMaterial(const char* materialName, bool isInstance)
{
    if (!isInstance) {
        indented({"\n#define "});
    }
    m_materialMarks.push_back(m_captureStore.size());
    return open("material ", materialName);
}

bool orvScene_api_file::useMaterial(const char* materialName)
{
    indented({"material "});
    operand(materialName);
    raw("\n");
    return true;
}

bool orvScene_api_file::endMaterial()
{
    close();
    if (!m_materialMarks.empty()) {
        releaseCaptures(m_materialMarks.back());
        m_materialMarks.pop_back();
    }
    return true;
}

/// Handles end with the block around their shaders, unless one of the shaders is still being
/// written.
void orvScene_api_file::releaseCaptures(std::size_t kept)
{
    const bool busy = std::any_of(m_shaders.begin(), m_shaders.end(),
                                  [](const OpenShader& shader) { return shader.own != nullptr; });
    if (!busy) {
        m_captureStore.release(kept);
    }
}

/// The word of a kind; an unknown one gets its remark first.
std::string_view orvScene_api_file::kindWord(int kind)
{
    static constexpr std::string_view kWords[] = {"surface", "shadow", "volume", "reflection map"};
    if (kind >= 0 && kind < static_cast<int>(std::size(kWords))) {
        return kWords[kind];
    }
    indented({"// assuming surface shader\n"});
    return kWords[orv::kSurface];
}

bool orvScene_api_file::shaderReference(int kind, const orv::Blob* shader)
{
    if (shader == nullptr) {
        return false;
    }
    const std::string_view word = kindWord(kind);
    indented({word, " "});
    blob(*shader);
    indented({"\n"});
    return true;
}

bool orvScene_api_file::shaderById(int kind, int shaderId)
{
    const std::string_view word = kindWord(kind);
    indented({word});
    raw(" ");
    raw(NumberPiece::integer(shaderId));
    raw("\n");
    return true;
}

/// Saves what endShader gives back. With `own` the text is captured there, else it goes to the
/// stream.
void orvScene_api_file::openShader(orv::CaptureTarget* own)
{
    m_shaders.push_back({own, m_captureTarget, m_captures, m_depth});
    pushContext(false);
    m_captures = own != nullptr;
    m_captureTarget = own;
}

bool orvScene_api_file::beginShader(const char* shaderName, const char* type)
{
    if (shaderName == nullptr) {
        openShader(m_captureStore.begin());
        m_depth = 0;
        return open("", type);
    }
    openShader(nullptr);
    indented({"#define shader "});
    operand(shaderName);
    raw(" ");
    operand(type);
    raw(" {\n");
    ++m_depth;
    return true;
}

bool orvScene_api_file::beginShaderById(const char* type, int shaderId)
{
    openShader(nullptr);
    indented({"#define shader ", NumberPiece::integer(shaderId), " ", view(type), " {\n"});
    ++m_depth;
    return true;
}

bool orvScene_api_file::endShader()
{
    --m_depth;
    indented({m_captures ? "}" : "}\n"});
    popContext();
    if (m_shaders.empty()) {
        return false;
    }
    const OpenShader shader = m_shaders.back();
    m_shaders.pop_back();
    m_depth = shader.depth;
    m_captures = shader.captures;
    m_captureTarget = shader.target;
    if (shader.own != nullptr) {
        shader.own->refreshBlob();
        m_captureStore.select(shader.own);
    }
    return true;
}

const orv::Blob* orvScene_api_file::captureBuffer()
{
    orv::CaptureTarget* current = m_captureStore.current();
    if (current == nullptr) {
        return nullptr;
    }
    current->refreshBlob();
    return current->blob();
}

bool orvScene_api_file::pushCaptureBuffer()
{
    m_captureStore.push();
    return true;
}

bool orvScene_api_file::popCaptureBuffer()
{
    return m_captureStore.pop();
}

// Parameters and arrays

bool orvScene_api_file::parameter(const char* parameterName, std::uint32_t type, const void* data)
{
    if (type == orv::kDoubledInt && data != nullptr) {
        // twice on purpose: readers expect both
        name(parameterName);
        raw(" ");
        value(type, data);
        raw(",\n");
    }
    if (m_keywords) {
        indented({view(parameterName), " "});
    } else {
        name(parameterName);
        raw(" ");
    }
    value(type, data);
    raw(m_keywords ? "\n" : ",\n");
    return true;
}

bool orvScene_api_file::namedInt(const char* valueName, int number)
{
    name(valueName);
    raw(" ! ");
    raw(NumberPiece::integer(number));
    raw(",\n");
    return true;
}

bool orvScene_api_file::namedBlob(const char* valueName, const orv::Blob* data)
{
    if (data == nullptr) {
        return false;
    }
    name(valueName);
    raw(" ! ");
    blob(*data);
    indented({",\n"});
    return true;
}

bool orvScene_api_file::beginArray(const char* arrayName)
{
    m_elementCount = 0;
    name(arrayName);
    raw(" [\n");
    ++m_depth;
    indented({""});
    m_buffer.clear();
    return true;
}

bool orvScene_api_file::endArray()
{
    if (m_binaryArrays && !m_buffer.empty()) {
        binaryArray(m_bufferLetter, m_buffer.size(), m_buffer.data(),
                    m_buffer.size() * sizeof(std::uint32_t));
        m_buffer.clear();
    }
    raw(" ],\n");
    --m_depth;
    return true;
}

bool orvScene_api_file::arrayElement(std::uint32_t type, const void* data)
{
    if (data == nullptr) {
        return false;
    }
    if (m_binaryArrays && bufferElement(type, data)) {
        return true;
    }
    if (m_elementCount > 0) {
        separateElement(type);
    }
    if (type == orv::kBlob) {
        data = *static_cast<const orv::Blob* const*>(data);
    }
    value(type, data);
    ++m_elementCount;
    return true;
}

/// Triples stand two on a line, everything else six.
void orvScene_api_file::separateElement(std::uint32_t type)
{
    const std::uint64_t onLine = type == orv::kFloat3 ? 2 : 6;
    if (m_elementCount % onLine != 0) {
        raw(", ");
        return;
    }
    raw(",\n");
    indentation();
}

/// Keeps the words of an element for endArray; false for a type that has no binary form here.
bool orvScene_api_file::bufferElement(std::uint32_t type, const void* data)
{
    const bool buffered = type == orv::kFloat3 || type == orv::kFloat || type == orv::kInt;
    if (!buffered) {
        return false;
    }
    m_bufferLetter = type == orv::kFloat3 ? 'c' : type == orv::kFloat ? 'f' : 'i';
    const std::size_t words = type == orv::kFloat3 ? 3 : 1;
    const std::size_t used = m_buffer.size();
    if (used + words > m_buffer.capacity()) {
        m_buffer.reserve(2 * m_buffer.capacity() + kBufferGrowth);
    }
    m_buffer.resize(used + words);
    std::memcpy(m_buffer.data() + used, data, words * sizeof(std::uint32_t));
    return true;
}

void orvScene_api_file::value(std::uint32_t type, const void* data)
{
    if (data == nullptr) {
        return;
    }
    if (const orv::ScalarLayout* layout = orv::findScalarLayout(type)) {
        orv::appendScalar(target(), *layout, data);
        return;
    }
    switch (type) {
    case orv::kFloat:
        orv::appendCheckedFloat(target(), *static_cast<const float*>(data));
        break;
    case orv::kBool:
        raw(*static_cast<const unsigned char*>(data) != 0 ? "on" : "off");
        break;
    case orv::kString:
    case orv::kName:
        operand(static_cast<const char*>(data));
        break;
    case orv::kBlob: {
        const DepthScope scope(m_depth, 2);
        blob(*static_cast<const orv::Blob*>(data));
        break;
    }
    default:
        list(type, data);
    }
}

void orvScene_api_file::list(std::uint32_t type, const void* data)
{
    const orv::ListLayout* layout = orv::findListLayout(type);
    if (layout == nullptr) {
        return;
    }
    const auto& record = *static_cast<const orv::List*>(data);
    raw("[ ");
    if (m_binaryArrays && layout->letter != 0) {
        const std::uint64_t count = record.elements != nullptr ? record.count : 0;
        binaryArray(layout->letter, count * layout->count, record.elements, count * layout->stride);
    } else {
        const bool indents = (m_formatFlags & kNoIndentation) == 0 && m_depth > 0;
        orv::appendList(target(), *layout, record, indents ? static_cast<std::size_t>(m_depth) : 0,
                        kMaxPiece);
    }
    raw("] ");
}

/// `count` numbers of the letter's type, `size` bytes; the header stands before no data as well.
void orvScene_api_file::binaryArray(char letter, std::uint64_t count, const void* data,
                                    std::size_t size)
{
    char header[8] = {1, 2, 3, letter};
    const auto words = static_cast<std::uint32_t>(count);
    std::memcpy(header + 4, &words, sizeof words);
    rawBytes(header, sizeof header);
    rawBytes(data, size);
}

// Statements

int orvScene_api_file::firstCapability()
{
    return 10;
}

int orvScene_api_file::secondCapability()
{
    return 10;
}

int orvScene_api_file::thirdCapability()
{
    return 0;
}

bool orvScene_api_file::attribute(const char* attributeName, const char* text)
{
    indented({"attribute "});
    operand(attributeName);
    raw(" ");
    operand(text);
    raw("\n");
    return true;
}

bool orvScene_api_file::printf(const char* format, ...)
{
    if (format == nullptr) {
        return false;
    }
    if (m_work == nullptr) {
        m_work = std::make_unique<char[]>(kMaxPiece + 1);
    }
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(m_work.get(), kMaxPiece + 1, format, arguments);
    va_end(arguments);
    if (length < 0) {
        return false;
    }
    indented(
        {std::string_view(m_work.get(), std::min(static_cast<std::size_t>(length), kMaxPiece))});
    return true;
}

bool orvScene_api_file::setFlags(std::uint32_t bits)
{
    m_formatFlags = bits;
    m_binaryArrays = (bits & kBinaryArrays) != 0;
    return m_binaryArrays;
}

bool orvScene_api_file::version(int number)
{
    indented({"version ", NumberPiece::integer(number == -1 ? 8 : number), "\n\n"});
    return true;
}

bool orvScene_api_file::reservedOperation()
{
    return false;
}

bool orvScene_api_file::progress(const char* what, float fraction)
{
    indented({"progress "});
    operand(what);
    raw(" ");
    orv::TextTarget& out = target();
    out.commit(orv::writeFixed(out.reserve(orv::kMaxFixedText), fraction, 3));
    raw("\n\n");
    m_file.flush(); // somebody may be watching
    return true;
}

bool orvScene_api_file::icon(const orv::Blob* data)
{
    if (data == nullptr) {
        return false;
    }
    indented({"icon "});
    blob(*data);
    indented({"\n"});
    return true;
}

bool orvScene_api_file::hexLine(const char* word, const void* bytes, std::size_t length)
{
    indented({view(word), " "});
    hex("bX", bytes, bytes != nullptr ? length : 0);
    indented({"\n"});
    return true;
}

bool orvScene_api_file::id(std::uint32_t number)
{
    indented({"id ", NumberPiece::natural(number), "\n"});
    return true;
}

bool orvScene_api_file::flags(std::uint32_t bits)
{
    indented({"flags ", NumberPiece::natural(bits), "\n"});
    return true;
}

bool orvScene_api_file::reservedQuery()
{
    return false;
}

bool orvScene_api_file::render()
{
    indented({"\nrender\n"});
    return true;
}

bool orvScene_api_file::printMessage(const char* text)
{
    indented({"#print \""});
    indented({view(text)});
    raw("\"\n");
    return true;
}

bool orvScene_api_file::error(const char* text)
{
    indented({"#error \""});
    indented({view(text)});
    raw("\"\n");
    return true;
}

bool orvScene_api_file::modifyCamera(const char* cameraName)
{
    if (refuses()) {
        return false;
    }
    indented({"#modify "});
    return beginCamera(cameraName);
}

// Beyond the scene API

bool orvScene_api_file::defineGeometry(const char* geometryName, const char* type)
{
    indented({"#define geometry "});
    operand(geometryName);
    raw(" ");
    operand(type);
    raw(" {\n");
    ++m_depth;
    pushContext(false);
    m_insideGeometryDefinition = true;
    return true;
}

bool orvScene_api_file::motion(double time, const float* matrix)
{
    indented({"motion ", NumberPiece::general(time), " {\n"});
    ++m_depth;
    indented({"transform "});
    value(orv::kFloatMatrix, matrix);
    indented({"\n"});
    return close();
}

bool orvScene_api_file::modifyMaterial(const char* materialName)
{
    m_materialMarks.push_back(m_captureStore.size());
    return open("#modify material ", materialName);
}

bool orvScene_api_file::frame(int number)
{
    indented({"frame ", NumberPiece::integer(number), " {\n"});
    ++m_depth;
    return true;
}

bool orvScene_api_file::instance(const char* definitionName)
{
    indented({"instance "});
    operand(definitionName);
    raw("\n");
    return true;
}
