#include "plugins/maya/src/mayautil.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"

#include <maya/MFnDagNode.h>
#include <maya/MFnTransform.h>
#include <maya/MGlobal.h>
#include <maya/MStringArray.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <string_view>

namespace {

struct UnitScale {
    std::string_view shortName;
    std::string_view longName;
    float unitsPerMeter;
};

// The floats nearest to the number of units in a metre (1/0.0254, 1/0.3048, 1/0.9144, 1/1609.344
// for the imperial ones).
constexpr UnitScale kUnitScales[] = {
    {"mm", "millimeter", 1000.0f}, {"cm", "centimeter", 100.0f},  {"m", "meter", 1.0f},
    {"km", "kilometer", 0.001f},   {"in", "inch", 39.37008f},     {"ft", "foot", 3.28084f},
    {"yd", "yard", 1.0936133f},    {"mi", "mile", 0.0006213712f},
};

float scaleOfUnit(std::string_view unit)
{
    for (const UnitScale& row : kUnitScales) {
        if (unit == row.shortName || unit == row.longName) {
            return row.unitsPerMeter;
        }
    }
    FILE_LOG(ERROR) << "unkown unit in scene"; // spelling is kept: readers of the log look for it
    return 0.0f;
}

bool endsWith(const std::string& text, std::string_view end)
{
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

} // namespace

int getUpAxis()
{
    const MVector up = MGlobal::upAxis();
    const MVector axes[] = {MVector::xAxis,    MVector::yAxis,    MVector::zAxis,
                            MVector::xNegAxis, MVector::yNegAxis, MVector::zNegAxis};
    int code = 0;
    for (const MVector& axis : axes) {
        if (up == axis) {
            return code;
        }
        ++code;
    }
    MGlobal::displayWarning("unknown up axis");
    return -1;
}

float getMeterScale()
{
    constexpr float kCentimeterScale = 100.0f;
    MStringArray result;
    const MStatus status =
        MGlobal::executeCommand("currentUnit -query -linear", result, false, false);
    TRACE_CHECK_RETURN(status, "getting current unit", kCentimeterScale);
    const std::string unit = result.length() > 0 ? result[0].asUTF8() : "";
    const float scale = scaleOfUnit(unit);
    FILE_LOG(DEBUG) << "file unit is " << unit << " setting vistrel meter scale as " << scale;
    return scale;
}

MString expandScenePath(const MString& path)
{
    MStatus status;
    const MString expanded = path.expandEnvironmentVariablesAndTilde(&status);
    TRACE_REPORT(status, "expanding path");
    std::string text = expanded.asUTF8();
    if (endsWith(text, ".mb")) {
        text.resize(text.size() - 3);
    }
    if (!endsWith(text, ".obx")) {
        text += ".obx";
    }
    MString result;
    result.setUTF8(text.c_str());
    return result;
}

MStatus getTransformation(const MObject& node, orv::Matrix4& matrix)
{
    MStatus status;
    const MFnTransform transform(node, &status);
    TRACE_CHECK(status, "transformation");
    matrix = convertMatrix(transform.transformation().asMatrix());
    return status;
}

orv::Matrix4 getMatrix(const MObject& node)
{
    const MFnTransform transform(node);
    return convertMatrix(transform.transformation().asMatrix());
}

orv::Matrix4 convertMatrix(const MMatrix& matrix)
{
    orv::Matrix4 result{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 3; ++column) {
            result[row * 4 + column] = matrix[row][column];
        }
    }
    return result;
}

std::string nodeName(const MObject& node)
{
    MStatus status;
    const MFnDagNode dagNode(node, &status);
    TRACE_CHECK_RETURN(status, "casting to dagnode", std::string("unknown object"));
    return dagNode.name().asUTF8();
}

bool isSupportedGeometry(const MDagPath& path)
{
    MStatus status;
    const MFnDagNode dagNode(path, &status);
    TRACE_CHECK_RETURN(status, "MFnDagNode constructor", false);
    const MString type = dagNode.typeName();
    return type == "mesh" || type == "nurbsSurface";
}

float toleranceFromQuality(float quality)
{
    const float rest = 1.0f - quality;
    return rest * 0.001f * rest * rest * rest + 0.0001f;
}
