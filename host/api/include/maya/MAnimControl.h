// The scene's time and its playback range, in the working unit.
#pragma once

#include <maya/MStatus.h>
#include <maya/MTime.h>

class MAnimControl {
public:
    /// The playback range, not the animation range around it.
    static MTime minTime();
    static MTime maxTime();
    static MTime currentTime();
    static MStatus setCurrentTime(const MTime& time);
};
