// Matrices: sixteen numbers row by row, or the parts of a pose.
#include "host/file/binary/values/eachElement.h"

#include "host/math/transform.h"

namespace host::file::binary {
namespace {

constexpr std::size_t kMatrixBytes = 16 * sizeof(double);
/// A pose as programs of 32 bits write it, whose doubles stand at multiples of 4.
constexpr std::size_t kTightPoseBytes = 320;
constexpr std::size_t kPoseBytes = 328;

Vec3d takeVector(Cursor& cursor)
{
    const double x = cursor.f64();
    const double y = cursor.f64();
    return {x, y, cursor.f64()};
}

Quaternion takeQuaternion(Cursor& cursor)
{
    const double x = cursor.f64();
    const double y = cursor.f64();
    const double z = cursor.f64();
    return {x, y, z, cursor.f64()};
}

Matrix4 takePose(Cursor& cursor, bool isTight)
{
    const std::size_t padding = isTight ? 0 : 4;
    PoseParts pose;
    pose.parts.scale = takeVector(cursor);
    pose.parts.rotate = takeVector(cursor);
    pose.parts.order = rotationOrderFromNumber(cursor.u32());
    cursor.take(padding);
    pose.parts.translate = takeVector(cursor);
    pose.parts.shear = takeVector(cursor);
    pose.parts.scalePivot = takeVector(cursor);
    pose.parts.scalePivotTranslate = takeVector(cursor);
    pose.parts.rotatePivot = takeVector(cursor);
    pose.parts.rotatePivotTranslate = takeVector(cursor);
    pose.rotateOrient = takeQuaternion(cursor);
    pose.jointOrient = takeQuaternion(cursor);
    pose.inverseScale = takeVector(cursor);
    takeQuaternion(cursor); // the text form does not have it
    cursor.u8();
    // A byte that is neither 0 nor 1 is what the memory held before.
    pose.segmentScaleCompensate = cursor.u8() == 1;
    cursor.take(2 + padding);
    return composePose(pose);
}

Matrix4 takeMatrix(Cursor& cursor)
{
    Matrix4 matrix;
    for (auto& row : matrix.m) {
        for (double& number : row) {
            number = cursor.f64();
        }
    }
    return matrix;
}

} // namespace

void readMatrix(Reader& reader, ValueTask& task)
{
    const std::size_t bytes = task.cursor.left() / task.count;
    sendEachElement(reader, task, [&](Cursor& cursor) {
        switch (bytes) {
        case kMatrixBytes:
            return takeMatrix(cursor);
        case kTightPoseBytes:
            return takePose(cursor, true);
        case kPoseBytes:
            return takePose(cursor, false);
        default:
            cursor.fail("a matrix of " + std::to_string(bytes) + " bytes");
            return Matrix4{};
        }
    });
}

} // namespace host::file::binary
