#include "importers/maya/src/ImportArgs.h"

#include "importers/maya/src/base64.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <iterator>
#include <limits>
#include <locale>
#include <new>
#include <sstream>
#include <utility>

namespace {

struct NamedKey {
    std::int32_t key;
    const char* upperName;
    const char* lowerName;
};

constexpr NamedKey kKeys[] = {
    {MAJOR_VERSION, "MAJOR_VERSION", "major_version"},
    {MINOR_VERSION, "MINOR_VERSION", "minor_version"},
    {COMMAND, "COMMAND", "command"},
    {TESSELLATION_QUALITY, "TESSELLATION_QUALITY", "tessellation_quality"},
    {LOGLEVEL, "LOGLEVEL", "loglevel"},
    {CURVERADIUS, "CURVERADIUS", "curveradius"},
    {SMOOTH_CURVES, "SMOOTH_CURVES", "smooth_curves"},
    {INCLUDE_NURBS, "INCLUDE_NURBS", "include_nurbs"},
    {COLLAPSE_HIERARCHY, "COLLAPSE_HIERARCHY", "collapse_hierarchy"},
    {SPLIT_LAYERS, "SPLIT_LAYERS", "split_layers"},
    {FRAME, "FRAME", "frame"},
    {IMPORT_FILENAME, "IMPORT_FILENAME", "import_filename"},
    {OUTPUT_FILENAME, "OUTPUT_FILENAME", "output_filename"},
    {DEBUGOBX, "DEBUGOBX", "debugobx"},
    {TESSELLATE, "TESSELLATE", "tessellate"},
    {TEXTURE_FOLDER, "TEXTURE_FOLDER", "texture_folder"},
    {COMPUTE_NORMALS, "COMPUTE_NORMALS", "compute_normals"},
    {SEPARATE_PARTS, "SEPARATE_PARTS", "separate_parts"},
    {UNIQUE_MATERIALS, "UNIQUE_MATERIALS", "unique_materials"},
    {EXPERIMENTAL, "EXPERIMENTAL", "experimental"},
    {GROUP_TYPE, "GROUP_TYPE", "group_type"},
    {ALT_TESSELLATION, "ALT_TESSELLATION", "alt_tessellation"},
    {DESIRED_UNIT, "DESIRED_UNIT", "desired_unit"},
    {DEFORMABLE_MESHES, "DEFORMABLE_MESHES", "deformable_meshes"},
    {MAYA_VERSION, "MAYA_VERSION", "maya_version"},
    {LAST, "LAST", "last"},
};

constexpr std::size_t kArgvRoom = 128;

/// atoi, with one answer on every system for numbers beyond 32 bits.
std::int32_t numberAtBegin(const std::string& text)
{
    const long long number = std::strtoll(text.c_str(), nullptr, 10);
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<long long>(number, Limits::min(), Limits::max()));
}

/// The value as a stream in its default state writes it.
template<typename Value>
std::string streamed(Value value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

char* heapCopy(const char* text)
{
    const std::size_t size = std::strlen(text) + 1;
    auto* copy = static_cast<char*>(std::malloc(size));
    if (copy != nullptr) {
        std::memcpy(copy, text, size);
    }
    return copy;
}

char lowered(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

} // namespace

ImportArgs::ImportArgs()
{
    m_values = {{MAJOR_VERSION, "7"}, {MINOR_VERSION, "3"}};
}

ImportArgs::ImportArgs(int argc, const char* const* argv)
{
    for (int i = 1; i < argc && argv[i] != nullptr; ++i) {
        insertArgument(argv[i]);
    }
}

void ImportArgs::insertArgument(std::string argument)
{
    if (!argument.empty() && argument.front() == '"') {
        argument.erase(0, 1);
        if (!argument.empty()) {
            argument.pop_back();
        }
    }
    const std::string decoded = base64_decode(argument);
    const std::size_t blank = decoded.find(' ');
    const bool hasBlank = blank != std::string::npos;
    const std::int32_t key = numberAtBegin(decoded.substr(0, blank));
    m_values[key] = hasBlank ? decoded.substr(blank + 1) : decoded;
}

bool ImportArgs::has(std::int32_t key) const
{
    return m_values.count(key) != 0;
}

void ImportArgs::setString(std::int32_t key, std::string text)
{
    m_values[key] = std::move(text);
}

std::string ImportArgs::getString(std::int32_t key, std::string defaultText) const
{
    return has(key) ? valueOf(key) : defaultText;
}

char* ImportArgs::getCString(std::int32_t key, const char* defaultText) const
{
    return heapCopy(has(key) ? valueOf(key).c_str() : defaultText);
}

std::int32_t ImportArgs::getInt(std::int32_t key, std::int32_t defaultValue) const
{
    return has(key) ? numberAtBegin(valueOf(key)) : defaultValue;
}

void ImportArgs::setInt(std::int32_t key, std::int32_t value)
{
    m_values[key] = streamed(value);
}

bool ImportArgs::getBool(std::int32_t key, bool defaultValue) const
{
    if (!has(key)) {
        return defaultValue;
    }
    return valueOf(key) != "0" && valueOf(key) != "false";
}

void ImportArgs::setBool(std::int32_t key, bool value)
{
    m_values[key] = value ? "true" : "false";
}

double ImportArgs::getDouble(std::int32_t key, double defaultValue) const
{
    return has(key) ? std::atof(valueOf(key).c_str()) : defaultValue;
}

void ImportArgs::setDouble(std::int32_t key, double value)
{
    m_values[key] = streamed(value);
}

const std::string& ImportArgs::valueOf(std::int32_t key) const
{
    static const std::string empty;
    const auto found = m_values.find(key);
    return found != m_values.end() ? found->second : empty;
}

const char* ImportArgs::keyName(std::int32_t key)
{
    const auto isBefore = [](const NamedKey& row, std::int32_t wanted) { return row.key < wanted; };
    const auto* row = std::lower_bound(std::begin(kKeys), std::end(kKeys), key, isBefore);
    if (row == std::end(kKeys) || row->key != key) {
        return "could not find string for import key!";
    }
    return row->upperName;
}

std::int32_t ImportArgs::keyFromName(const std::string& name)
{
    std::string lowerName = name;
    std::transform(lowerName.begin(), lowerName.end(), lowerName.begin(), lowered);
    for (const NamedKey& row : kKeys) {
        if (lowerName == row.lowerName) {
            return row.key;
        }
    }
    std::cout << "I could not find a key for: " << lowerName << std::endl;
    return -1;
}

void ImportArgs::print(std::ostream& stream) const
{
    for (const auto& [key, value] : m_values) {
        stream << keyName(key) << ": " << value << std::endl;
    }
}

std::vector<std::string> ImportArgs::toArgumentStrings() const
{
    std::vector<std::string> texts;
    for (const auto& [key, value] : m_values) {
        texts.push_back(base64_encode(streamed(key) + " " + value));
    }
    return texts;
}

char** ImportArgs::toArgv(const char* programPath) const
{
    const std::vector<std::string> texts = toArgumentStrings();
    const std::size_t room = std::max(kArgvRoom, texts.size() + 2);
    auto** pointers = static_cast<char**>(std::calloc(room, sizeof(char*))); // the rest stays null
    if (pointers == nullptr) {
        throw std::bad_alloc();
    }
    pointers[0] = heapCopy(programPath);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        pointers[i + 1] = heapCopy(texts[i].c_str());
    }
    return pointers;
}

std::ostream& operator<<(std::ostream& stream, const ImportArgs& arguments)
{
    arguments.print(stream);
    return stream;
}
