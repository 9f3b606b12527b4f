#include "scene/FBXAnimation.h"

#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <utility>

namespace orv {

FBXAnimation::FBXAnimation(std::string name, float startTime, float duration, bool interpolate)
    : m_name(std::move(name))
    , m_startTime(startTime)
    , m_duration(duration)
    , m_interpolate(interpolate)
{
}

void FBXAnimation::write(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    api->beginAnimation(m_name.c_str(), "fbx_animation");
    oo.floatParameter("start_time", m_startTime);
    oo.floatParameter("duration", m_duration);
    if (m_timeStamps.size() != m_matrices.size()) {
        const std::string text = "Number of timestamps(" + std::to_string(m_timeStamps.size()) +
                                 ") does not match number of matrices(" +
                                 std::to_string(m_matrices.size()) + ")";
        api->error(text.c_str());
    }
    oo.intListParameter("timestamps", {m_timeStamps.begin(), m_timeStamps.end()});
    oo.matrixListParameter("matrices", m_matrices);
    oo.boolParameter("interpolate", m_interpolate);
    oo.stringParameter("folder", m_folder);
    api->endAnimation();
}

void FBXAnimation::define(orvSceneapi_oo&) {}

bool FBXAnimation::isDefined() const
{
    return false;
}

void FBXAnimation::addKey(std::int64_t timeStamp, const Matrix4& matrix)
{
    addTimeStamp(timeStamp);
    addMatrix(matrix);
}

void FBXAnimation::addTimeStamp(std::int64_t timeStamp)
{
    m_timeStamps.push_back(static_cast<std::uint32_t>(timeStamp));
}

void FBXAnimation::addMatrix(const Matrix4& matrix)
{
    m_matrices.push_back(matrix);
}

} // namespace orv
