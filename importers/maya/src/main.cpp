// The importer: converts the Maya scene that its arguments name into a scene description.
//
// Standard output is reserved for the scene. Until Maya has started it leads to standard error, and
// it stays so if the run ends before.
#include "importers/maya/src/ImportArgs.h"
#include "importers/maya/src/Log.h"

#include "platform/descriptors.h"
#include "platform/dllFolder.h"
#include "platform/programMain.h"
#include "plugins/maya/src/maya2vistrel.h"
#include "sceneapi/LightFileFactory.h"
#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <maya/MLibrary.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

constexpr int kOldestCaller = 6; // major version
constexpr std::size_t kFolderBufferBytes = 1024;

/// Lets standard output lead to standard error. Returns a descriptor of what it led to.
int divertStandardOutput()
{
    const int saved = platform::duplicateDescriptor(platform::kStandardOutput);
    platform::closeDescriptor(platform::kStandardOutput);
    platform::replaceDescriptor(platform::kStandardError, platform::kStandardOutput);
    return saved;
}

void restoreStandardOutput(int saved)
{
    std::fflush(stdout); // what was printed meanwhile belongs to standard error
    platform::replaceDescriptor(saved, platform::kStandardOutput);
}

/// Lets the system look for Maya's libraries in Maya's own folder.
void addMayaToDllSearch()
{
    // never freed: the folder stays in use until the process ends
    static auto* const folder = static_cast<wchar_t*>(std::malloc(kFolderBufferBytes));
    if (folder != nullptr) {
        platform::formatDllFolder(folder, kFolderBufferBytes / sizeof(wchar_t),
                                  std::getenv("MAYA_LOCATION"));
    }
    if (folder == nullptr || !platform::setDllFolder(folder)) {
        // the line end of its own is kept: readers of the log look for it
        FILE_LOG(WARNING) << "Could not add maya bin dir to dll lookup path\n";
    }
}

/// Starts Maya, or ends the process with exit status 1.
void startMaya(const char* applicationName)
{
    constexpr bool kUseBatchLicense = false;
    if (!MLibrary::initialize(applicationName, kUseBatchLicense)) {
        FILE_LOG(ERROR) << "could not initialize MAYA ";
        MLibrary::cleanup(1, true); // ends the process
    }
    FILE_LOG(DEBUG4)
        << "could  initialize MAYA "; // spelling is kept: readers of the log look for it
}

/// Builds the output chain, exports through it and closes the output. Throws when the output cannot
/// be opened or is not complete.
void writeScene(const ImportArgs& arguments)
{
    orv::LightFileFactory factory(arguments.getString(OUTPUT_FILENAME, "-"));
    {
        orv::orvSceneapi_oo objectLayer(factory);
        if (arguments.getBool(DEBUGOBX, false)) {
            objectLayer.sceneApi()->setFlags(1);
        }
        Maya2Vistrel driver(&objectLayer, arguments);
        driver.openAndExport(); // a scene that cannot be read has been reported; the run goes on
    }
    factory.close();
}

/// The same, failures reported. Returns the exit status.
int tryToWriteScene(const ImportArgs& arguments)
{
    try {
        writeScene(arguments);
        return 0;
    } catch (const std::exception& failure) {
        FILE_LOG(ERROR) << failure.what();
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}

} // namespace

int programMain(int argc, char** argv)
{
    const int savedOutput = divertStandardOutput();
    FILE_LOG(INFO) << "Starting maya importer (built " __DATE__ " " __TIME__
                      ") for MAYA_API_VERSION:"
                   << MAYA_API_VERSION;
    addMayaToDllSearch();

    const ImportArgs arguments(argc, argv);
    FILELog::ReportingLevel() = FILELog::FromString(arguments.getString(LOGLEVEL, "INFO"));
    FILE_LOG(INFO) << "cnf parsed to:\n" << arguments;
    if (arguments.getInt(MAJOR_VERSION, -1) < kOldestCaller) {
        FILE_LOG(ERROR) << "trying to use old Vistrel Version";
        return 1;
    }

    startMaya(argv[0]);
    restoreStandardOutput(savedOutput);
    const int exitStatus = tryToWriteScene(arguments);
    MLibrary::cleanup(exitStatus, true); // ends the process
    return exitStatus;
}
