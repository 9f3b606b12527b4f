// The animation half of the driver: tracks of matrices, read frame by frame.
#include "plugins/maya/src/maya2vistrel.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "plugins/maya/src/mayautil.h"
#include "scene/FBXAnimation.h"

#include <maya/MAnimControl.h>
#include <maya/MAnimUtil.h>
#include <maya/MFnDagNode.h>
#include <maya/MGlobal.h>
#include <maya/MString.h>
#include <maya/MTime.h>

#include <ostream>
#include <string>

namespace {

/// Bounds on what a playback range may ask for: a scene may claim any. Hours of one node, or some
/// minutes of thousands; fewer keys where each is read through a deep hierarchy.
constexpr std::size_t kMaxKeysOfTrack = 200'000;
constexpr std::size_t kMaxKeysOfScene = 4'000'000;
constexpr std::size_t kLevelsForAKey = 16;

/// How many keys of a shallow node one key of a path costs.
std::size_t costOfKey(const MDagPath& path, bool useWorldMatrix)
{
    return useWorldMatrix ? 1 + path.length() / kLevelsForAKey : 1;
}

void warn(const std::string& text)
{
    FILE_LOG(WARNING) << text;
    MGlobal::displayWarning(text.c_str());
}

/// The pose of a path at the scene's time; fails with a record of its own.
bool readPose(const MDagPath& path, bool useWorldMatrix, orv::Matrix4& pose)
{
    if (!useWorldMatrix) {
        return TRACE_REPORT(getTransformation(path.node(), pose), "getting transform from frame");
    }
    MStatus status;
    pose = convertMatrix(path.inclusiveMatrix(&status));
    return TRACE_REPORT(status, "inclusiveMatrix");
}

struct MatrixText {
    const orv::Matrix4& matrix;
};

std::ostream& operator<<(std::ostream& stream, const MatrixText& text)
{
    const char* separator = "";
    for (const double value : text.matrix) {
        stream << separator << value;
        separator = " ";
    }
    return stream;
}

} // namespace

bool Maya2Vistrel::isAnimationWanted() const
{
    return m_args.getInt(FRAME, -1) == -1;
}

std::shared_ptr<orv::FBXAnimation> Maya2Vistrel::sampleAnimation(const MDagPath& path,
                                                                 bool useWorldMatrix)
{
    if (m_sampledKeys >= kMaxKeysOfScene) {
        warn(std::string("too many keys in this scene: no animation of ") +
             path.fullPathName().asUTF8());
        return {};
    }
    const MTime begin = MAnimControl::minTime() - 1.0;
    const MTime end = MAnimControl::maxTime();
    const MTime length = end - begin;
    const double start = begin.as(MTime::kSeconds);
    const double duration = length.as(MTime::kSeconds);
    MObject node = path.node();
    auto track = std::make_shared<orv::FBXAnimation>(MFnDagNode(node).name().asUTF8(),
                                                     static_cast<float>(start),
                                                     static_cast<float>(duration), true);
    FILE_LOG(DEBUG3) << "animation: start=" << start << ", duration=" << duration
                     << ", frames=" << length.as(MTime::uiUnit());
    addKeys(path, useWorldMatrix, begin, end, *track);
    m_sampledKeys += track->matrices().size() * costOfKey(path, useWorldMatrix);
    return track;
}

void Maya2Vistrel::addKeys(const MDagPath& path, bool useWorldMatrix, const MTime& begin,
                           const MTime& end, orv::FBXAnimation& track)
{
    std::size_t record = 0;
    const std::size_t most = kMaxKeysOfTrack / costOfKey(path, useWorldMatrix);
    MTime time = begin;
    while (time < end) {
        if (track.matrices().size() == most) {
            warn(std::string("animation of ") + path.fullPathName().asUTF8() + " ends after " +
                 std::to_string(most) + " keys");
            return;
        }
        // a key carries the pose one unit later: so the renderer expects it
        MAnimControl::setCurrentTime(time + 1.0);
        orv::Matrix4 pose{};
        if (!readPose(path, useWorldMatrix, pose)) {
            return;
        }
        const double milliseconds = time.as(MTime::kMilliseconds);
        track.addKey(static_cast<std::int64_t>(milliseconds), pose);
        FILE_LOG(DEBUG3) << "Adding KeyFrame: " << record++ << " @ " << milliseconds
                         << " Matrix: " << MatrixText{pose};
        const MTime next = time + 1.0;
        if (!(time < next)) {
            return; // the end of all time, or a unit that measures nothing
        }
        time = next;
    }
}
