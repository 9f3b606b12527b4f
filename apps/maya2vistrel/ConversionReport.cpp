#include "apps/maya2vistrel/ConversionReport.h"

#include "platform/executablePath.h"
#include "platform/files.h"
#include "platform/temporaryFolder.h"
#include "platform/wideText.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>

using nlohmann::json;

namespace {

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string readWhole(const std::string& path)
{
    const std::unique_ptr<std::FILE, Closer> file(platform::openUtf8(path, "rb"));
    std::string text;
    char piece[65536];
    while (file) {
        const std::size_t count = std::fread(piece, 1, sizeof piece, file.get());
        if (count == 0) {
            break;
        }
        text.append(piece, count);
    }
    return text;
}

} // namespace

std::string temporaryReportPath()
{
    std::random_device random;
    return platform::toUtf8(platform::temporaryFolder()) + "maya2vistrel-" +
           std::to_string(platform::processId()) + "-" + std::to_string(random()) + ".json";
}

json takeImporterReport(const std::string& path)
{
    json report = json::parse(readWhole(path), nullptr, false);
    std::error_code ignored;
    std::filesystem::remove(platform::nativePath(platform::toWide(path)), ignored);
    return report.is_object() ? report : json::object();
}

std::string summaryOf(const json& importerReport)
{
    // One row for each kind that costs the user something; the rest stands in the full report.
    struct Row {
        const char* kind;
        const char* one;
        const char* many;
    };
    constexpr Row kRows[] = {
        {"approximated shape", "shape approximated", "shapes approximated"},
        {"missing geometry", "shape without geometry", "shapes without geometry"},
        {"damaged geometry", "shape damaged", "shapes damaged"},
        {"unknown node type", "node of unknown type", "nodes of unknown types"},
        {"unknown statement", "unknown statement", "unknown statements"},
        {"bad statement", "bad statement", "bad statements"},
        {"reference left out", "reference left out", "references left out"},
    };
    std::string text;
    for (const Row& row : kRows) {
        std::size_t count = 0;
        for (const json& entry : importerReport.value("diagnostics", json::array())) {
            if (entry.value("kind", "") == row.kind) {
                count += entry.value("count", std::size_t{0});
            }
        }
        if (count > 0) {
            text += (text.empty() ? "; " : ", ") + std::to_string(count) + " " +
                    (count == 1 ? row.one : row.many);
        }
    }
    return text;
}
