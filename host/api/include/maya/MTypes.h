// The version of the API that these headers offer, and the types that several of them name.
#pragma once

#include <cstdint>

/// Version 2018 in the eight digits that this version began with.
#define MAYA_API_VERSION 20180000

using MInt64 = std::int64_t;
using MUint64 = std::uint64_t;

class MArgList;
class MDagPath;
class MObject;
class MPlug;
class MStatus;
class MString;

namespace host::api {
struct Inside; // the bodies' way into the handles
}
