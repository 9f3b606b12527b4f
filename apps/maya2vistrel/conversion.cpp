#include "apps/maya2vistrel/conversion.h"

#include "apps/maya2vistrel/ConversionReport.h"
#include "apps/maya2vistrel/OutputTarget.h"
#include "apps/maya2vistrel/ProgressBar.h"
#include "apps/maya2vistrel/SceneStream.h"
#include "apps/maya2vistrel/exitStatus.h"
#include "apps/maya2vistrel/sceneFile.h"
#include "platform/AtomicFile.h"
#include "platform/ChildProcess.h"
#include "platform/executablePath.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 18;

int fail(int exitStatus, const std::string& message)
{
    std::fprintf(stderr, "maya2vistrel: %s\n", message.c_str());
    return exitStatus;
}

std::string toUtf8(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

std::filesystem::path toPath(const std::string& utf8)
{
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

/// The importer beside this program.
std::string importerPath()
{
    const std::filesystem::path folder = toPath(platform::executablePath()).parent_path();
#ifdef _WIN32
    return toUtf8(folder / "maya_importer.exe");
#else
    return toUtf8(folder / "maya_importer");
#endif
}

bool isSameFile(const std::string& a, const std::string& b)
{
    std::error_code error;
    return std::filesystem::equivalent(toPath(a), toPath(b), error) && !error;
}

platform::ChildProcessSettings importerSettings(const Options& options, const std::string& report)
{
    ImportArgs settings = options.settings;
    settings.setString(IMPORT_FILENAME, options.scene);
    settings.setString(OUTPUT_FILENAME, "-");
    platform::ChildProcessSettings child;
    child.program = options.importer.empty() ? importerPath() : options.importer;
    child.arguments = settings.toArgumentStrings();
    child.environment = {{"ORV_HOST_REPORT", report}};
    child.standardError = platform::ChildProcessSettings::StandardError::Collect;
    return child;
}

/// What the importer wrote to standard error, indented, if it wrote anything.
std::string lastWords(const platform::ChildProcess& importer)
{
    constexpr std::size_t kLongest = 2000;
    std::string text = importer.errorText();
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.pop_back();
    }
    if (text.size() > kLongest) {
        text = "..." + text.substr(text.size() - kLongest);
    }
    return text.empty() ? text : "\n  the importer said: " + text;
}

std::string sizeText(std::uint64_t bytes)
{
    char text[32];
    const double size = static_cast<double>(bytes);
    if (bytes < 1000) {
        std::snprintf(text, sizeof text, "%d bytes", static_cast<int>(bytes));
    } else if (bytes < 1000000) {
        std::snprintf(text, sizeof text, "%.1f kB", size / 1e3);
    } else {
        std::snprintf(text, sizeof text, "%.1f MB", size / 1e6);
    }
    return text;
}

std::string plural(std::size_t count, const char* noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// ", 3 animations"; nothing where there are none.
std::string mentioned(std::size_t count, const char* noun)
{
    return count > 0 ? ", " + plural(count, noun) : std::string();
}

void printSummary(const Options& options, const SceneStream& stream, double seconds,
                  const nlohmann::json& report)
{
    const std::string summary = summaryOf(report);
    std::fprintf(stderr, "wrote %s: %s, %s, %s%s%s, %s in %.0f ms%s\n",
                 options.output == "-" ? "standard output" : options.output.c_str(),
                 plural(stream.meshCount(), "mesh part").c_str(),
                 plural(stream.materialCount(), "material").c_str(),
                 plural(stream.cameraCount(), "camera").c_str(),
                 mentioned(stream.trackCount(), "animation").c_str(),
                 mentioned(stream.hairCount(), "hair shape").c_str(),
                 sizeText(stream.byteCount()).c_str(), seconds * 1e3, summary.c_str());
}

/// Writes the full report; true when it stands.
bool writeReport(const Options& options, const SceneStream& stream, double seconds,
                 const nlohmann::json& importerReport, std::string& error)
{
    const nlohmann::ordered_json report = {
        {"scene", options.scene},           {"output", options.output},
        {"bytes", stream.byteCount()},      {"milliseconds", seconds * 1e3},
        {"meshParts", stream.meshCount()},  {"materials", stream.materialCount()},
        {"cameras", stream.cameraCount()},  {"animations", stream.trackCount()},
        {"hairShapes", stream.hairCount()}, {"importer", importerReport}};
    auto file = platform::AtomicFile::create(options.reportFile, error);
    const auto text =
        report.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
    if (!file) {
        return false;
    }
    if (!file->write(text) || !file->commit()) {
        error = file->error();
        return false;
    }
    return true;
}

/// Copies the importer's output until it ends; false when the target refuses.
bool pump(platform::ChildProcess& importer, SceneStream& stream, OutputTarget& target)
{
    std::vector<char> piece(kPieceSize);
    for (;;) {
        const std::optional<std::size_t> count = importer.read(piece.data(), piece.size());
        if (!count || *count == 0) {
            return true;
        }
        const std::string_view bytes(piece.data(), *count);
        stream.feed(bytes);
        if (!target.write(bytes)) {
            importer.terminate();
            return false;
        }
    }
}

int run(const Options& options, OutputTarget& target)
{
    const auto start = std::chrono::steady_clock::now();
    const std::string reportPath = temporaryReportPath();
    std::string error;
    const auto settings = importerSettings(options, reportPath);
    auto importer = platform::ChildProcess::start(settings, error);
    if (!importer) {
        return fail(kExitImporter,
                    "the importer " + settings.program + " could not be started: " + error +
                        "\n  it belongs beside maya2vistrel; --importer names another one");
    }
    ProgressBar bar(!options.quiet);
    SceneStream stream([&](std::string_view name, double share) { bar.show(name, share); });
    const bool isWritten = pump(*importer, stream, target);
    const platform::ExitStatus status = importer->wait();
    bar.clear();
    const nlohmann::json report = takeImporterReport(reportPath);
    if (!isWritten) {
        return fail(kExitOutput, target.error() + "\n  is there room, and may you write there?");
    }
    if (!status.isSuccess()) {
        return fail(kExitImporter, "the importer died (" + status.text() +
                                       "); nothing was written" + lastWords(*importer));
    }
    if (!stream.hasScene()) {
        return fail(kExitScene, "the scene " + options.scene +
                                    " could not be opened; is it complete, and saved by Maya?" +
                                    lastWords(*importer));
    }
    if (!target.commit()) {
        return fail(kExitOutput, target.error() + "\n  is there room, and may you write there?");
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    if (!options.quiet) {
        printSummary(options, stream, elapsed.count(), report);
    }
    if (!options.reportFile.empty() &&
        !writeReport(options, stream, elapsed.count(), report, error)) {
        return fail(kExitOutput, "the report could not be written: " + error);
    }
    return kExitDone;
}

} // namespace

int convert(const Options& options)
{
    std::string error;
    if (const int status = checkScene(options.scene, error); status != kExitDone) {
        return fail(status, error);
    }
    for (const std::string& file : {options.output, options.reportFile}) {
        if (isSameFile(options.scene, file)) {
            return fail(kExitUsage, file + " is the scene itself; choose another name");
        }
    }
    auto target = OutputTarget::open(options.output, error);
    if (!target) {
        return fail(kExitOutput, error + "\n  does its folder exist, and may you write there?");
    }
    return run(options, *target);
}
