// The spaces that coordinates may be asked in.
#pragma once

class MSpace {
public:
    enum Space {
        kInvalid = 0,
        kTransform = 1,
        kPreTransform = 2,
        kObject = 2,
        kPostTransform = 3,
        kWorld = 4,
        kLast = 5
    };
};
