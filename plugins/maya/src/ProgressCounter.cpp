#include "plugins/maya/src/ProgressCounter.h"

#include "sceneapi/orvSceneapi_oo.h"

void ProgressCounter::step(const std::string& itemName)
{
    constexpr double kSmallestStep = 0.01;
    ++done;
    const float fraction = total > 0 ? static_cast<float>(done) / static_cast<float>(total) : 1.0f;
    if (static_cast<double>(fraction) - static_cast<double>(lastReported) < kSmallestStep) {
        return;
    }
    lastReported = fraction;
    if (reporter != nullptr) {
        reporter->progress(itemName, fraction);
    }
}
