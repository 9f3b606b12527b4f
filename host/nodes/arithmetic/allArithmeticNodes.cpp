#include "host/nodes/arithmetic/allArithmeticNodes.h"

#include "host/nodes/arithmetic/arithmeticNodes.h"

#include <vector>

namespace host::nodes {
namespace {

std::vector<const NodeCompute*> gather()
{
    std::vector<const NodeCompute*> rows;
    for (const auto& list :
         {componentNodes(), matrixNodes(), rampNodes(), scalarNodes(), sumNodes(), vectorNodes()}) {
        for (const NodeCompute& row : list) {
            rows.push_back(&row);
        }
    }
    return rows;
}

} // namespace

std::span<const NodeCompute* const> allArithmeticNodes()
{
    static const std::vector<const NodeCompute*> kRows = gather();
    return kRows;
}

} // namespace host::nodes
