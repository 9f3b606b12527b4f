// What a group or a camera holds when it moves; written in place of a fixed transform.
#pragma once

#include "scene/LightNode.h"

namespace orv {

/// Base of animation tracks: has no data and adds nothing to a node.
class Animation : public LightNode {
public:
    void write(orvSceneapi_oo& oo) override = 0;
};

} // namespace orv
