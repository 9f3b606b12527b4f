// The triangles of a shape, made once for all the components that are asked for one after another.
#pragma once

#include "host/geometry/mesh/RenderStreams.h"
#include "host/support/Expected.h"

#include <maya/MDagPath.h>

#include <memory>
#include <string_view>

namespace host::api {

/// The evaluated mesh at the end of a path, cut and split, or what smooth-mesh preview shows of it
/// (unless the cage itself is asked for) with the triangles by the faces of the mesh; or the
/// tessellation of a surface, whose texture coordinates are its own whatever the set's name. The
/// last result of a mesh with face groups is kept, because its groups are asked for one by one;
/// nobody should give back what others hold.
/// Fails (NotFound, InvalidParameter) without such a shape, and (Failure) for one without faces.
Expected<std::shared_ptr<geometry::RenderStreams>>
renderMeshOf(const MDagPath& path, std::string_view uvSetName, bool isCage);

} // namespace host::api
