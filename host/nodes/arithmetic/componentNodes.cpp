// Nodes that do the same with each of three components: clamp, multiplyDivide, setRange and the
// like. The inputs of a row stand in groups of three, the outputs are the three components.
#include "host/math/power.h"
#include "host/nodes/arithmetic/arithmeticNodes.h"
#include "host/nodes/wholeNumber.h"

#include <algorithm>
#include <array>

namespace host::nodes {
namespace {

/// The component that is asked for of the group at a position.
double part(ComputeContext& context, std::size_t group, double fallback)
{
    return context.number(group + context.output(), fallback);
}

// --- blendColors: color1 * blender + color2 * (1 - blender)

constexpr std::array<std::string_view, 7> kBlendInputs{"color1R", "color1G", "color1B", "color2R",
                                                       "color2G", "color2B", "blender"};
constexpr std::array<std::string_view, 3> kBlendOutputs{"outputR", "outputG", "outputB"};

Expected<Value> blendColors(ComputeContext& context)
{
    const double share = context.number(6, 0.5);
    return Value(part(context, 0, 0) * share + part(context, 3, 0) * (1 - share));
}

// --- clamp

constexpr std::array<std::string_view, 9> kClampInputs{"inputR", "inputG", "inputB", "minR", "minG",
                                                       "minB",   "maxR",   "maxG",   "maxB"};

Expected<Value> clampComponent(ComputeContext& context)
{
    const double atLeast = std::max(part(context, 0, 0), part(context, 3, 0));
    return Value(std::min(atLeast, part(context, 6, 0)));
}

// --- condition: one of two colours by a comparison

constexpr std::array<std::string_view, 9> kConditionInputs{
    "colorIfTrueR",  "colorIfTrueG", "colorIfTrueB", "colorIfFalseR", "colorIfFalseG",
    "colorIfFalseB", "firstTerm",    "secondTerm",   "operation"};
constexpr std::array<std::string_view, 3> kColourOutputs{"outColorR", "outColorG", "outColorB"};

bool holds(double first, double second, int operation)
{
    switch (operation) {
    case 1:
        return first != second;
    case 2:
        return first > second;
    case 3:
        return first >= second;
    case 4:
        return first < second;
    case 5:
        return first <= second;
    default:
        return first == second;
    }
}

Expected<Value> condition(ComputeContext& context)
{
    const bool isTrue =
        holds(context.number(6, 0), context.number(7, 0), wholeNumber(context.number(8, 0), 0));
    return Value(isTrue ? part(context, 0, 0) : part(context, 3, 1));
}

// --- contrast: a curve through the bias that gets steeper with the contrast

constexpr std::array<std::string_view, 9> kContrastInputs{
    "valueX", "valueY", "valueZ", "contrastX", "contrastY", "contrastZ", "biasX", "biasY", "biasZ"};
constexpr std::array<std::string_view, 3> kValueOutputs{"outValueX", "outValueY", "outValueZ"};

/// The published description fits a power of a bias curve: value b^(ln bias / ln 0.5) moved to
/// 0.5, steepened by the contrast on both sides of it, moved back. Exact at 0, at the bias and
/// at 1.
double contrasted(double value, double contrast, double bias)
{
    if (!(bias > 0 && bias < 1) || !(value > 0 && value < 1)) {
        return value;
    }
    const double exponent = -binaryLogarithm(bias); // bias = 0.5 ^ exponent
    const double centred = power(value, 1 / exponent);
    const double steep = centred < 0.5 ? 0.5 * power(2 * centred, contrast)
                                       : 1 - 0.5 * power(2 * (1 - centred), contrast);
    return power(steep, exponent);
}

Expected<Value> contrast(ComputeContext& context)
{
    return Value(contrasted(part(context, 0, 0), part(context, 3, 2), part(context, 6, 0.5)));
}

// --- gammaCorrect: value ^ (1 / gamma)

constexpr std::array<std::string_view, 6> kGammaInputs{"valueX", "valueY", "valueZ",
                                                       "gammaX", "gammaY", "gammaZ"};

Expected<Value> gammaCorrect(ComputeContext& context)
{
    const double value = part(context, 0, 0);
    const double gamma = part(context, 3, 1);
    return Value(gamma != 0 && value > 0 ? power(value, 1 / gamma) : value);
}

// --- multiplyDivide

constexpr std::array<std::string_view, 7> kMultiplyInputs{
    "input1X", "input1Y", "input1Z", "input2X", "input2Y", "input2Z", "operation"};
constexpr std::array<std::string_view, 3> kOutputs{"outputX", "outputY", "outputZ"};

/// Dividing by zero gives the greatest number of single precision, as of 1 / 0 in the channel box.
double quotient(double dividend, double divisor)
{
    constexpr double kGreatest = 3.4028234663852886e38;
    if (divisor != 0) {
        return dividend / divisor;
    }
    return dividend > 0 ? kGreatest : dividend < 0 ? -kGreatest : 0;
}

Expected<Value> multiplyDivide(ComputeContext& context)
{
    const double first = part(context, 0, 0);
    const double second = part(context, 3, 1);
    switch (wholeNumber(context.number(6, 1), 1)) {
    case 0:
        return Value(first);
    case 2:
        return Value(quotient(first, second));
    case 3:
        return Value(power(first, second));
    default:
        return Value(first * second);
    }
}

// --- reverse

constexpr std::array<std::string_view, 3> kReverseInputs{"inputX", "inputY", "inputZ"};

Expected<Value> reverse(ComputeContext& context)
{
    return Value(1 - part(context, 0, 0));
}

// --- setRange: from one range to another, held at its ends

constexpr std::array<std::string_view, 15> kRangeInputs{
    "valueX", "valueY",  "valueZ",  "minX",    "minY",    "minZ",    "maxX",   "maxY",
    "maxZ",   "oldMinX", "oldMinY", "oldMinZ", "oldMaxX", "oldMaxY", "oldMaxZ"};

Expected<Value> setRange(ComputeContext& context)
{
    const double oldMinimum = part(context, 9, 0);
    const double width = part(context, 12, 0) - oldMinimum;
    const double minimum = part(context, 3, 0);
    const double place = width != 0 ? (part(context, 0, 0) - oldMinimum) / width : 0;
    return Value(minimum + std::clamp(place, 0.0, 1.0) * (part(context, 6, 0) - minimum));
}

constinit const std::array<NodeCompute, 8> kRows{{
    {"blendColors", kBlendInputs, kBlendOutputs, blendColors},
    {"clamp", kClampInputs, kBlendOutputs, clampComponent},
    {"condition", kConditionInputs, kColourOutputs, condition},
    {"contrast", kContrastInputs, kValueOutputs, contrast},
    {"gammaCorrect", kGammaInputs, kValueOutputs, gammaCorrect},
    {"multiplyDivide", kMultiplyInputs, kOutputs, multiplyDivide},
    {"reverse", kReverseInputs, kOutputs, reverse},
    {"setRange", kRangeInputs, kValueOutputs, setRange},
}};

} // namespace

std::span<const NodeCompute> componentNodes()
{
    return kRows;
}

} // namespace host::nodes
