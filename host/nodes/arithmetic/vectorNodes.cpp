// Nodes of vectors and points: distanceBetween, pointMatrixMult, vectorProduct.
#include "host/nodes/arithmetic/arithmeticNodes.h"
#include "host/nodes/matrixValue.h"
#include "host/nodes/wholeNumber.h"

#include <array>

namespace host::nodes {
namespace {

Vec3d vectorAt(ComputeContext& context, std::size_t first)
{
    return {context.number(first, 0), context.number(first + 1, 0), context.number(first + 2, 0)};
}

Value partOf(const Vec3d& vector, std::size_t part)
{
    return Value(part == 0 ? vector.x : part == 1 ? vector.y : vector.z);
}

constexpr std::array<std::string_view, 8> kDistanceInputs{
    "point1X", "point1Y", "point1Z", "point2X", "point2Y", "point2Z", "inMatrix1", "inMatrix2"};
constexpr std::array<std::string_view, 1> kDistanceOutputs{"distance"};

Expected<Value> distanceBetween(ComputeContext& context)
{
    const Vec3d first = vectorAt(context, 0);
    const Vec3d second = vectorAt(context, 3);
    const Matrix4 firstPlace = matrixOf(context.input(6));
    const Matrix4 secondPlace = matrixOf(context.input(7));
    return Value(length(transformPoint(first, firstPlace) - transformPoint(second, secondPlace)));
}

constexpr std::array<std::string_view, 5> kPointInputs{"inPointX", "inPointY", "inPointZ",
                                                       "inMatrix", "vectorMultiply"};
constexpr std::array<std::string_view, 3> kOutputs{"outputX", "outputY", "outputZ"};

Expected<Value> pointMatrixMult(ComputeContext& context)
{
    const Vec3d point = vectorAt(context, 0);
    const Matrix4 matrix = matrixOf(context.input(3));
    const bool isVector = context.number(4, 0) != 0;
    return partOf(isVector ? transformVector(point, matrix) : transformPoint(point, matrix),
                  context.output());
}

constexpr std::array<std::string_view, 9> kProductInputs{"input1X", "input1Y",   "input1Z",
                                                         "input2X", "input2Y",   "input2Z",
                                                         "matrix",  "operation", "normalizeOutput"};

/// Operations 0 none, 1 dot, 2 cross, 3 vector * matrix, 4 point * matrix.
Expected<Value> vectorProduct(ComputeContext& context)
{
    Vec3d first = vectorAt(context, 0);
    Vec3d second = vectorAt(context, 3);
    const Matrix4 matrix = matrixOf(context.input(6));
    const bool isUnit = context.number(8, 0) != 0;
    Vec3d result = first;
    switch (wholeNumber(context.number(7, 1), 1)) {
    case 1: {
        if (isUnit) {
            first = normalized(first);
            second = normalized(second);
        }
        const double product = dot(first, second);
        return Value(product);
    }
    case 2:
        result = cross(first, second);
        break;
    case 3:
        result = transformVector(first, matrix);
        break;
    case 4:
        result = transformPoint(first, matrix);
        break;
    default:
        return partOf(first, context.output());
    }
    return partOf(isUnit ? normalized(result) : result, context.output());
}

constinit const std::array<NodeCompute, 3> kRows{{
    {"distanceBetween", kDistanceInputs, kDistanceOutputs, distanceBetween},
    {"pointMatrixMult", kPointInputs, kOutputs, pointMatrixMult},
    {"vectorProduct", kProductInputs, kOutputs, vectorProduct},
}};

} // namespace

std::span<const NodeCompute> vectorNodes()
{
    return kRows;
}

} // namespace host::nodes
