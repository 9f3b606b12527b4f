// Nodes of matrices: sums, products, inverses, and the parts of transforms.
#include "host/math/decompose.h"
#include "host/math/transform.h"
#include "host/nodes/arithmetic/arithmeticNodes.h"
#include "host/nodes/matrixValue.h"

#include <algorithm>
#include <array>

namespace host::nodes {
namespace {

constexpr std::array<std::string_view, 1> kListInputs{"matrixIn"};
constexpr std::array<std::string_view, 1> kSumOutputs{"matrixSum"};

void addScaled(Matrix4& sum, const Matrix4& matrix, double factor)
{
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            sum.m[row][column] += matrix.m[row][column] * factor;
        }
    }
}

Expected<Value> addMatrix(ComputeContext& context)
{
    Matrix4 sum{};
    sum.m = {};
    for (const std::int32_t index : context.elementIndices(0)) {
        addScaled(sum, matrixOf(context.element(0, index)), 1);
    }
    return context.isComplete() ? matrixValue(sum) : Value();
}

Expected<Value> multMatrix(ComputeContext& context)
{
    Matrix4 product;
    for (const std::int32_t index : context.elementIndices(0)) {
        product = product * matrixOf(context.element(0, index));
    }
    return context.isComplete() ? matrixValue(product) : Value();
}

constexpr std::array<std::string_view, 2> kWeightedInputs{"matrixIn", "weightIn"};

Expected<Value> wtAddMatrix(ComputeContext& context)
{
    Matrix4 sum{};
    sum.m = {};
    for (const std::int32_t index : context.elementIndices(0)) {
        addScaled(sum, matrixOf(context.element(0, index)), context.element(1, index).number());
    }
    return context.isComplete() ? matrixValue(sum) : Value();
}

constexpr std::array<std::string_view, 1> kInverseInputs{"inputMatrix"};
constexpr std::array<std::string_view, 1> kMatrixOutputs{"outputMatrix"};

Expected<Value> inverseMatrix(ComputeContext& context)
{
    const Matrix4 matrix = matrixOf(context.input(0));
    return context.isComplete() ? matrixValue(inverse(matrix)) : Value();
}

constexpr std::array<std::string_view, 1> kPassInputs{"inMatrix"};
constexpr std::array<std::string_view, 1> kPassOutputs{"outMatrix"};

Expected<Value> passMatrix(ComputeContext& context)
{
    const Value matrix = context.input(0);
    return matrix.isEmpty() ? matrixValue({}) : matrix;
}

constexpr std::array<std::string_view, 16> kCellInputs{
    "in00", "in01", "in02", "in03", "in10", "in11", "in12", "in13",
    "in20", "in21", "in22", "in23", "in30", "in31", "in32", "in33"};
constexpr std::array<std::string_view, 1> kCellOutputs{"output"};

Expected<Value> fourByFourMatrix(ComputeContext& context)
{
    Matrix4 matrix;
    for (std::size_t cell = 0; cell < kCellInputs.size(); ++cell) {
        const double unit = cell % 5 == 0 ? 1 : 0;
        matrix.m[cell / 4][cell % 4] = context.number(cell, unit);
    }
    return context.isComplete() ? matrixValue(matrix) : Value();
}

enum ComposeInput : std::size_t {
    kTranslate = 0,
    kRotate = 3,
    kScale = 6,
    kShear = 9,
    kQuaternion = 12,
    kRotateOrder = 16,
    kUseEuler = 17,
};
constexpr std::array<std::string_view, 18> kComposeInputs{
    "inputTranslateX", "inputTranslateY",  "inputTranslateZ", "inputRotateX", "inputRotateY",
    "inputRotateZ",    "inputScaleX",      "inputScaleY",     "inputScaleZ",  "inputShearX",
    "inputShearY",     "inputShearZ",      "inputQuatX",      "inputQuatY",   "inputQuatZ",
    "inputQuatW",      "inputRotateOrder", "useEulerRotation"};

Vec3d vectorAt(ComputeContext& context, std::size_t first, double fallback)
{
    return {context.number(first, fallback), context.number(first + 1, fallback),
            context.number(first + 2, fallback)};
}

Expected<Value> composeMatrix(ComputeContext& context)
{
    const Vec3d angles = vectorAt(context, kRotate, 0);
    const Vec3d axis = vectorAt(context, kQuaternion, 0);
    const Quaternion quaternion{axis.x, axis.y, axis.z, context.number(kQuaternion + 3, 1)};
    const bool usesAngles = context.number(kUseEuler, 1) != 0;
    const Matrix4 rotation =
        usesAngles ? eulerRotation(angles, rotationOrderFromNumber(context.number(kRotateOrder, 0)))
                   : quaternionRotation(quaternion);
    const Matrix4 matrix = scaling(vectorAt(context, kScale, 1)) *
                           shearing(vectorAt(context, kShear, 0)) * rotation *
                           translation(vectorAt(context, kTranslate, 0));
    return context.isComplete() ? matrixValue(matrix) : Value();
}

constexpr std::array<std::string_view, 2> kDecomposeInputs{"inputMatrix", "inputRotateOrder"};
constexpr std::array<std::string_view, 16> kDecomposeOutputs{
    "outputTranslateX", "outputTranslateY", "outputTranslateZ", "outputRotateX",
    "outputRotateY",    "outputRotateZ",    "outputScaleX",     "outputScaleY",
    "outputScaleZ",     "outputShearX",     "outputShearY",     "outputShearZ",
    "outputQuatX",      "outputQuatY",      "outputQuatZ",      "outputQuatW"};

Expected<Value> decomposeMatrix(ComputeContext& context)
{
    const Matrix4 matrix = matrixOf(context.input(0));
    const RotationOrder order = rotationOrderFromNumber(context.number(1, 0));
    if (!context.isComplete()) {
        return Value();
    }
    const DecomposedMatrix parts = decompose(matrix, order);
    const std::array<double, 16> numbers{
        parts.translate.x, parts.translate.y, parts.translate.z, parts.rotate.x,
        parts.rotate.y,    parts.rotate.z,    parts.scale.x,     parts.scale.y,
        parts.scale.z,     parts.shear.x,     parts.shear.y,     parts.shear.z,
        parts.rotation.x,  parts.rotation.y,  parts.rotation.z,  parts.rotation.w};
    return Value(numbers[context.output()]);
}

constinit const std::array<NodeCompute, 9> kRows{{
    {"addMatrix", kListInputs, kSumOutputs, addMatrix},
    {"composeMatrix", kComposeInputs, kMatrixOutputs, composeMatrix},
    {"decomposeMatrix", kDecomposeInputs, kDecomposeOutputs, decomposeMatrix},
    {"fourByFourMatrix", kCellInputs, kCellOutputs, fourByFourMatrix},
    {"holdMatrix", kPassInputs, kPassOutputs, passMatrix},
    {"inverseMatrix", kInverseInputs, kMatrixOutputs, inverseMatrix},
    {"multMatrix", kListInputs, kSumOutputs, multMatrix},
    {"passMatrix", kPassInputs, kPassOutputs, passMatrix},
    {"wtAddMatrix", kWeightedInputs, kSumOutputs, wtAddMatrix},
}};

} // namespace

std::span<const NodeCompute> matrixNodes()
{
    return kRows;
}

} // namespace host::nodes
