#include "apps/maya2vistrel/ConversionReport.h"

#include "platform/executablePath.h"
#include "platform/files.h"
#include "platform/temporaryFolder.h"
#include "platform/wideText.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <string_view>

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

/// The sum of the counts of a list's entries; an entry without a count, and a list of node types,
/// counts as one.
std::size_t countOf(const json& report, const char* list)
{
    std::size_t total = 0;
    for (const json& entry : report.value(list, json::array())) {
        const bool isCounted = entry.is_object() && std::string_view(list) != "uncomputedNodeTypes";
        total += isCounted ? entry.value("count", std::size_t{1}) : 1;
    }
    return total;
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
        const char* list;
        const char* one;
        const char* many;
    };
    constexpr Row kRows[] = {
        {"approximatedBy", "shape approximated", "shapes approximated"},
        {"missingBecauseOf", "shape without geometry", "shapes without geometry"},
        {"damagedGeometry", "flaw in geometry", "flaws in geometry"},
        {"unknownNodeTypes", "node of unknown type", "nodes of unknown types"},
        {"uncomputedNodeTypes", "node type not computed", "node types not computed"},
        {"unknownStatements", "unknown statement", "unknown statements"},
        {"badStatements", "bad statement", "bad statements"},
        {"limits", "limit met", "limits met"},
        {"referencesLeftOut", "reference left out", "references left out"},
    };
    std::string text;
    for (const Row& row : kRows) {
        const std::size_t count = countOf(importerReport, row.list);
        if (count > 0) {
            text += (text.empty() ? "; " : ", ") + std::to_string(count) + " " +
                    (count == 1 ? row.one : row.many);
        }
    }
    return text;
}
