#include "host/nodes/allNodeTypes.h"

#include "host/nodes/animation/allAnimationNodes.h"
#include "host/nodes/arithmetic/allArithmeticNodes.h"
#include "host/nodes/deform/allDeformNodes.h"
#include "host/nodes/hair/allHairNodes.h"
#include "host/nodes/nodeTypes.h"
#include "host/nodes/nurbs/allNurbsNodes.h"
#include "host/nodes/polygon/creators/allPolygonCreatorNodes.h"
#include "host/nodes/polygon/shape/allPolygonShapeNodes.h"
#include "host/nodes/polygon/texture/allPolygonTextureNodes.h"
#include "host/nodes/polygon/topology/allPolygonTopologyNodes.h"

#include <algorithm>
#include <array>
#include <vector>

namespace host::nodes {
namespace {

constinit const std::array<const NodeCompute*, 10> kCommonNodes{
    &kDagNode, &kFile,      &kGroupId,   &kGroupParts, &kJoint,
    &kMesh,    &kTexture2d, &kTexture3d, &kTransform,  &kUnitConversion,
};

bool byType(const NodeCompute* left, const NodeCompute* right)
{
    return left->type < right->type;
}

std::vector<const NodeCompute*> gather()
{
    std::vector<const NodeCompute*> rows(kCommonNodes.begin(), kCommonNodes.end());
    for (const auto folder :
         {allAnimationNodes(), allArithmeticNodes(), allDeformNodes(), allHairNodes(),
          allNurbsNodes(), allPolygonCreatorNodes(), allPolygonShapeNodes(),
          allPolygonTextureNodes(), allPolygonTopologyNodes()}) {
        rows.insert(rows.end(), folder.begin(), folder.end());
    }
    std::stable_sort(rows.begin(), rows.end(), byType);
    return rows;
}

} // namespace

std::span<const NodeCompute* const> allNodeTypes()
{
    static const std::vector<const NodeCompute*> kRows = gather();
    return kRows;
}

} // namespace host::nodes
