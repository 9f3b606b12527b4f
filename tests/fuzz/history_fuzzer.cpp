// Any bytes as a chain of operations on a mesh: each gets settings, components and matrices of the
// bytes' making, and must give a mesh that holds together and has not grown beyond measure, or
// none.
#include "host/nodes/deform/allDeformNodes.h"
#include "host/nodes/polygon/creators/allPolygonCreatorNodes.h"
#include "host/nodes/polygon/creators/solidInputs.h"
#include "host/nodes/polygon/shape/allPolygonShapeNodes.h"
#include "host/nodes/polygon/texture/allPolygonTextureNodes.h"
#include "host/nodes/polygon/topology/allPolygonTopologyNodes.h"
#include "tests/support/RandomContext.h"

#include <cstdio>
#include <cstdlib>

namespace {

using host::NodeCompute;
using test::ByteSource;
using test::MeshPointer;

constexpr int kMostOperations = 12;
/// A larger mesh ends the chain: the next operation would take too long for one input.
constexpr std::size_t kMostCorners = 6000;
/// What an operation with the small numbers of the bytes may make of a mesh: four steps of
/// subdivision multiply by 256, walls and bevels by less.
constexpr std::size_t kMostGrowth = 1024;
/// What a creator may make: faces of four corners, and some more at the ends.
constexpr std::size_t kMostMade = std::size_t{5} * host::nodes::SolidReader::kMostCells;

std::vector<const NodeCompute*> operations()
{
    std::vector<const NodeCompute*> rows;
    for (const auto list :
         {host::nodes::allPolygonTopologyNodes(), host::nodes::allPolygonShapeNodes(),
          host::nodes::allPolygonTextureNodes(), host::nodes::allDeformNodes()}) {
        rows.insert(rows.end(), list.begin(), list.end());
    }
    return rows;
}

std::size_t cornersOf(const MeshPointer& mesh)
{
    return mesh == nullptr ? 0 : mesh->topology->corners.size();
}

/// The node's mesh; null where it has none. Ends the program where it does not hold together.
MeshPointer result(const NodeCompute& row, ByteSource& bytes, const MeshPointer& mesh,
                   const MeshPointer& other)
{
    test::RandomContext context(row, bytes, mesh, other);
    context.setIndex(static_cast<std::int32_t>(bytes.below(3)));
    const auto value = row.compute(context);
    const auto made = value ? value->data<host::geometry::MeshData>() : nullptr;
    const std::size_t most =
        mesh == nullptr ? kMostMade : kMostGrowth * (cornersOf(mesh) + cornersOf(other) + 64);
    const bool isSound = made == nullptr || host::geometry::isConsistent(*made);
    if (!isSound || cornersOf(made) > most) {
        std::fprintf(stderr, "%.*s gives a mesh that %s: %zu corners of %zu\n",
                     static_cast<int>(row.type.size()), row.type.data(),
                     isSound ? "is too large" : "does not hold together", cornersOf(made),
                     cornersOf(mesh));
        std::abort();
    }
    return made;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::vector<const NodeCompute*> rows = operations();
    const auto creators = host::nodes::allPolygonCreatorNodes();
    ByteSource bytes({data, size});
    const auto creator = [&]() -> const NodeCompute& {
        return *creators[bytes.below(static_cast<std::uint32_t>(creators.size()))];
    };
    const MeshPointer other = result(creator(), bytes, nullptr, nullptr);
    MeshPointer mesh = result(creator(), bytes, nullptr, nullptr);
    for (int count = 0; count < kMostOperations && !bytes.isAtEnd(); ++count) {
        const auto& row = *rows[bytes.below(static_cast<std::uint32_t>(rows.size()))];
        const MeshPointer next = result(row, bytes, mesh, other);
        mesh = next == nullptr ? mesh : next;
        if (cornersOf(mesh) > kMostCorners) {
            break;
        }
    }
    return 0;
}
