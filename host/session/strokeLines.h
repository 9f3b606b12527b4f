// The lines of Paint Effects strokes.
#pragma once

#include "host/geometry/hair/RenderLines.h"
#include "host/session/Session.h"

#include <memory>

namespace host::session {

/// One line along each path curve of a stroke without tubes, in world space: as wide as the brush,
/// in its first colour. Null for a stroke whose brush grows tubes, which nothing here computes, and
/// for one without a brush or a path.
std::shared_ptr<geometry::RenderLines> strokeLines(Session& session, NodeId stroke);

} // namespace host::session
