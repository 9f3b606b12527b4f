#include "host/eval/outputNames.h"

#include <algorithm>
#include <array>
#include <span>

namespace host::eval {
namespace {

/// Results of nearly all node types begin with one of these words.
constexpr std::array<std::string_view, 4> kResultPrefixes{
    "constraint",
    "out",
    "result",
    "worldSpace",
};

/// Types whose unset attributes are results whatever their names.
constexpr std::array<std::string_view, 11> kResultTypes{
    "angleBetween",        "arcLengthDimension", "closestPointOnMesh", "closestPointOnSurface",
    "curveInfo",           "distanceBetween",    "lightInfo",          "motionPath",
    "nearestPointOnCurve", "pointOnCurveInfo",   "samplerInfo",
};

constexpr std::array<std::string_view, 8> kGeometryInputs{
    "inMesh",    "inputCurve",    "inputGeometry", "inputMesh",
    "inputPoly", "inputPolymesh", "inputSurface",  "undeformedGeometry",
};

bool contains(std::span<const std::string_view> names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

bool isResult(NodeType type, std::string_view longName)
{
    // curves and surfaces give what they are in the world; operations on meshes have a switch of
    // that name
    if (longName == "worldSpace" && type.isA("polyBase")) {
        return false;
    }
    const auto begins = [&](std::string_view prefix) { return longName.starts_with(prefix); };
    return std::any_of(kResultPrefixes.begin(), kResultPrefixes.end(), begins) ||
           contains(kResultTypes, type.name());
}

bool isGeometryInput(std::string_view longName)
{
    return contains(kGeometryInputs, longName);
}

} // namespace host::eval
