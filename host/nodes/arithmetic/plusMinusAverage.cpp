// plusMinusAverage: sums, differences and means of lists of numbers, pairs and triples.
#include "host/nodes/arithmetic/arithmeticNodes.h"
#include "host/nodes/wholeNumber.h"

#include <array>

namespace host::nodes {
namespace {

/// In step with the outputs.
constexpr std::array<std::string_view, 7> kInputs{"input1D",  "input2Dx", "input2Dy", "input3Dx",
                                                  "input3Dy", "input3Dz", "operation"};
constexpr std::array<std::string_view, 6> kOutputs{"output1D",  "output2Dx", "output2Dy",
                                                   "output3Dx", "output3Dy", "output3Dz"};
constexpr std::size_t kOperation = 6;

enum Operation : int { kFirst = 0, kSum = 1, kDifference = 2, kAverage = 3 };

Expected<Value> compute(ComputeContext& context)
{
    const int operation = wholeNumber(context.number(kOperation, kSum), kSum);
    const std::size_t list = context.output();
    const std::vector<std::int32_t> indices = context.elementIndices(list);
    double result = 0;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const double number = context.element(list, indices[i]).number();
        if (operation == kFirst && i > 0) {
            break;
        }
        result += operation == kDifference && i > 0 ? -number : number;
    }
    const bool isMean = operation == kAverage && !indices.empty();
    return Value(isMean ? result / static_cast<double>(indices.size()) : result);
}

constinit const std::array<NodeCompute, 1> kRows{
    {{"plusMinusAverage", kInputs, kOutputs, compute}}};

} // namespace

std::span<const NodeCompute> sumNodes()
{
    return kRows;
}

} // namespace host::nodes
