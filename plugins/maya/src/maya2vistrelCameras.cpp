// The camera half of the driver.
#include "plugins/maya/src/maya2vistrel.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/MaterialManager.h"
#include "plugins/maya/src/mayautil.h"
#include "scene/FBXAnimation.h"
#include "scene/LightCamera.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <maya/MAnimUtil.h>
#include <maya/MFnCamera.h>
#include <maya/MFnDagNode.h>
#include <maya/MItDag.h>
#include <maya/MPoint.h>
#include <maya/MString.h>
#include <maya/MVector.h>

#include <vector>

namespace {

/// The shape's name without its last "Shape", unless that begins the name or stands at its second
/// character.
std::string cameraName(std::string name)
{
    constexpr std::string_view kSuffix = "Shape";
    constexpr std::size_t kFirstPosition = 2;
    const std::size_t found = name.rfind(kSuffix);
    if (found != std::string::npos && found >= kFirstPosition) {
        name.erase(found, kSuffix.size());
    }
    return name;
}

bool isDefaultView(const std::string& name)
{
    return name == "top" || name == "front" || name == "side";
}

float narrow(double value)
{
    return static_cast<float>(value);
}

} // namespace

MStatus Maya2Vistrel::exportCameras()
{
    FILE_LOG(DEBUG4) << "export cameras";
    std::vector<std::shared_ptr<orv::LightCamera>> cameras;
    for (MItDag walker(MItDag::kDepthFirst, MFn::kCamera); !walker.isDone(); walker.next()) {
        MDagPath path;
        const MStatus status = walker.getPath(path);
        TRACE_CHECK(status, "MItDag::getPath");
        cameras.push_back(constructCamera(path));
        TRACE_CHECK(status, "convert camera");
    }
    for (const std::shared_ptr<orv::LightCamera>& camera : cameras) {
        if (!isDefaultView(camera->getName())) {
            m_objectLayer->writeNode(*camera);
        }
    }
    return MStatus();
}

std::shared_ptr<orv::LightCamera> Maya2Vistrel::constructCamera(const MDagPath& path)
{
    MStatus status;
    const MFnDagNode dagNode(path, &status);
    TRACE_REPORT(status, "MFnDagNode constructor");
    const MFnCamera maya(path, &status);
    TRACE_REPORT(status, "camera construct");

    auto camera = std::make_shared<orv::LightCamera>(cameraName(maya.name().asUTF8()));
    const double nearClip = maya.nearClippingPlane();
    const double farClip = maya.farClippingPlane();
    const MPoint eye = maya.eyePoint(MSpace::kWorld);
    const MVector view = maya.viewDirection(MSpace::kWorld);
    const MVector up = maya.upDirection(MSpace::kWorld);
    camera->setPosition(narrow(eye.x), narrow(eye.y), narrow(eye.z));
    camera->setDirection(narrow(view.x), narrow(view.y), narrow(view.z));
    camera->setUp(narrow(up.x), narrow(up.y), narrow(up.z));
    camera->setFov(narrow(maya.horizontalFieldOfView() * 180.0 / 3.141592653589793));
    camera->setClipping(narrow(nearClip), narrow(farClip));

    if (isAnimationWanted() && MAnimUtil::isAnimated(path, true)) {
        FILE_LOG(DEBUG) << path.fullPathName() << " is animated camera";
        if (const std::shared_ptr<orv::FBXAnimation> track = sampleAnimation(path, true)) {
            camera->setAnimation(track);
            return camera;
        }
    }
    const MMatrix world = path.inclusiveMatrix(&status);
    TRACE_REPORT(status, "xform");
    camera->setTransform(convertMatrix(world));
    return camera;
}
