// matrix: sixteen numbers row by row, or the parts of a pose. Centimetres and radians whatever the
// current units are.
#include "host/file/ascii/payloads/Cursor.h"
#include "host/file/ascii/payloads/payloads.h"

#include "host/math/transform.h"

namespace host::file::ascii {
namespace {

Vec3d takeVector(Cursor& cursor)
{
    const double x = cursor.number();
    const double y = cursor.number();
    return {x, y, cursor.number()};
}

Quaternion takeQuaternion(Cursor& cursor)
{
    const double x = cursor.number();
    const double y = cursor.number();
    const double z = cursor.number();
    return {x, y, z, cursor.number()};
}

Matrix4 takePose(Cursor& cursor)
{
    PoseParts pose;
    pose.parts.scale = takeVector(cursor);
    pose.parts.rotate = takeVector(cursor);
    pose.parts.order = rotationOrderFromNumber(cursor.number());
    pose.parts.translate = takeVector(cursor);
    pose.parts.shear = takeVector(cursor);
    pose.parts.scalePivot = takeVector(cursor);
    pose.parts.scalePivotTranslate = takeVector(cursor);
    pose.parts.rotatePivot = takeVector(cursor);
    pose.parts.rotatePivotTranslate = takeVector(cursor);
    pose.rotateOrient = takeQuaternion(cursor);
    pose.jointOrient = takeQuaternion(cursor);
    pose.inverseScale = takeVector(cursor);
    pose.segmentScaleCompensate = cursor.boolean();
    return composePose(pose);
}

} // namespace

Expected<Value> readMatrix(Reader& reader)
{
    Cursor cursor(reader);
    Matrix4 matrix;
    if (cursor.takeIf("xform")) {
        matrix = takePose(cursor);
    } else {
        for (auto& row : matrix.m) {
            for (double& number : row) {
                number = cursor.number();
            }
        }
    }
    if (cursor.hasFailed()) {
        return cursor.error();
    }
    return Value::of(matrix);
}

} // namespace host::file::ascii
