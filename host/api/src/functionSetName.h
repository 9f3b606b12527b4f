// The names of the kinds of objects.
#pragma once

#include <maya/MFn.h>

namespace host::api {

/// "kMesh" for MFn::kMesh; "kInvalid" for a number that has no name here.
const char* functionSetName(MFn::Type type);

} // namespace host::api
