#include "sceneapi/LightFileFactory.h"

#include "platform/descriptors.h"
#include "platform/files.h"
#include "sceneapi/orvScene_api_file.h"

#include <cerrno>
#include <stdexcept>

namespace orv {
namespace {

constexpr std::size_t kStreamBuffer = std::size_t{1} << 20;

// What readers of scene files recognise them by.
constexpr const char* kHeader[] = {"//---orvane:dal:7---\n", "//---import:dal:1---\n",
                                   "//---id:1---\n", "// This is a Vistrel scene file\n\n"};

/// The scene gets the real standard output for itself; everything else printed there goes to
/// standard error.
std::FILE* takeStandardOutput()
{
    const int copy = platform::duplicateDescriptor(platform::kStandardOutput);
    if (copy < 0) {
        return nullptr;
    }
    std::FILE* stream = platform::openDescriptor(copy, "wb");
    if (stream == nullptr) {
        const int reason = errno;
        platform::closeDescriptor(copy);
        errno = reason;
        return nullptr;
    }
    platform::replaceDescriptor(platform::kStandardError, platform::kStandardOutput);
    platform::setBinaryMode(copy);
    return stream;
}

std::FILE* openOutput(const std::string& path)
{
    return path == "-" ? takeStandardOutput() : platform::openUtf8(path, "wb+");
}

} // namespace

LightFileFactory::LightFileFactory(const std::string& path) : m_stream(openOutput(path))
{
    if (m_stream == nullptr) {
        std::perror("opening file");
        throw std::runtime_error("could not open file: \"" + path + "\"");
    }
    std::setvbuf(m_stream, nullptr, _IOFBF, kStreamBuffer);
    m_api = std::make_unique<orvScene_api_file>(m_stream, true);
}

LightFileFactory::~LightFileFactory()
{
    finish();
}

orvScene_api* LightFileFactory::sceneApi()
{
    return m_api.get();
}

void LightFileFactory::writeHeader()
{
    if (m_api == nullptr) {
        return;
    }
    for (const char* line : kHeader) {
        m_api->printf("%s", line);
    }
}

void LightFileFactory::close()
{
    if (!finish()) {
        throw std::runtime_error("could not close file");
    }
}

/// True when everything that was ever written has reached the system, or there is nothing open.
bool LightFileFactory::finish()
{
    if (m_stream == nullptr) {
        return true;
    }
    m_api->flush();
    int reason = m_api->writeError();
    m_api.reset();
    if (std::fclose(m_stream) != 0 && reason == 0) {
        reason = errno != 0 ? errno : EIO;
    }
    m_stream = nullptr;
    if (reason == 0) {
        return true;
    }
    errno = reason;
    std::perror("closing file");
    return false;
}

} // namespace orv
