#include "plugins/maya/src/maya2vistrel.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/DirtyChecker.h"
#include "plugins/maya/src/MaterialManager.h"
#include "plugins/maya/src/mayautil.h"
#include "scene/DefaultRTModule.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <maya/MFileIO.h>
#include <maya/MGlobal.h>
#include <maya/MString.h>
#include <maya/MTime.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

/// Without the quotes around it, whatever the last character is, and with forward slashes.
std::wstring cleanFileName(std::wstring name)
{
    if (!name.empty() && name.front() == L'"') {
        name.erase(0, 1);
        if (!name.empty()) {
            name.pop_back();
        }
    }
    std::replace(name.begin(), name.end(), L'\\', L'/');
    return name;
}

} // namespace

Maya2Vistrel::Maya2Vistrel(orv::orvSceneapi_oo* objectLayer, const ImportArgs& args)
    : m_objectLayer(objectLayer), m_args(args)
{
    FILE_LOG(DEBUG2) << "Creating a Maya2Vistrel Instance, with ImportArgs: " << m_args;
}

Maya2Vistrel::~Maya2Vistrel() = default;

MStatus Maya2Vistrel::openAndExport()
{
    const std::unique_ptr<char, decltype(&std::free)> argument(
        m_args.getCString(IMPORT_FILENAME, "-"), &std::free);
    MString fileName;
    MStatus status = fileName.setUTF8(argument.get());
    TRACE_CHECK(status, "could not Convert filename to UTF-8");
    fileName.setWChar(cleanFileName(fileName.asWChar()).c_str());
    // spelling is kept: readers of the log look for it
    FILE_LOG(INFO) << "Openining: " << argument.get() << "  as  " << fileName;

    status = MFileIO::open(fileName, nullptr, true, MFileIO::kLoadNoReferences, true);
    TRACE_CHECK(status, "could not open Maya file");
    writeModule();
    AlwaysDirty everything;
    return exportFullScene(everything);
}

void Maya2Vistrel::writeModule()
{
    orv::DefaultRTModule module;
    module.setUpVector(static_cast<std::uint32_t>(getUpAxis()));
    module.setMeterScale(getMeterScale());
    module.setCenterGeometry(false);
    module.setSnapToGround(false);
    module.setAdjustCamera(false);
    module.setKeepOriginal(true);
    m_objectLayer->writeNode(module);
}

MStatus Maya2Vistrel::exportFullScene(IDirtyChecker& dirtyChecker)
{
    FILE_LOG(DEBUG2) << "exportFullScene using args: " << m_args;
    showFrame();
    MStatus status = exportCameras();
    TRACE_CHECK(status, "could not export cameras ");
    status = exportGeometry(dirtyChecker);
    TRACE_CHECK(status, "could not export geometry ");
    return MStatus();
}

void Maya2Vistrel::showFrame()
{
    if (m_args.getInt(FRAME, -1) == -1) {
        return;
    }
    const int frame = m_args.getInt(FRAME, 0);
    const MTime time(static_cast<double>(frame), MTime::uiUnit());
    FILE_LOG(INFO) << "importing frame: " << frame << "@" << time.as(MTime::kSeconds)
                   << " second mark";
    MGlobal::viewFrame(time);
}

std::uint32_t Maya2Vistrel::groupType() const
{
    constexpr std::uint32_t kCollapsed = 0x8000;
    constexpr std::uint32_t kKept = 0x8001;
    return m_args.getBool(COLLAPSE_HIERARCHY, true) ? kCollapsed : kKept;
}
