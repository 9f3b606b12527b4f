// ffd: geometry in a lattice, moved as the lattice's points are.
#include "host/nodes/deform/Deformation.h"
#include "host/nodes/deform/deformTypes.h"

#include "host/geometry/deform/moveByLattice.h"

#include <algorithm>

namespace host::nodes {
namespace {

constexpr auto kInputs =
    deformerInputs("deformedLatticePoints", "deformedLatticeMatrix", "baseLatticeMatrix", "local",
                   "localInfluenceS", "localInfluenceT", "localInfluenceU", "outsideLattice",
                   "outsideFalloffDist");
enum Input : std::size_t {
    kLatticePoints = kFirstDeformerInput,
    kLatticeMatrix,
    kBaseMatrix,
    kLocal,
    kInfluence,
    kOutside = kInfluence + 3,
    kFalloffDistance
};

geometry::LatticeSettings readSettings(ComputeContext& context)
{
    geometry::LatticeSettings settings;
    settings.isLocal = flagInput(context, kLocal, false);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        settings.influence[axis] =
            wholeInput(context, kInfluence + axis, 2, 1, geometry::kMaxLatticeDivisions);
    }
    settings.outside =
        static_cast<geometry::LatticeOutside>(wholeInput(context, kOutside, 0, 0, 2));
    settings.falloffDistance = context.number(kFalloffDistance, 1);
    return settings;
}

/// True where the published sense of the settings leaves no choice: which splines "local" means
/// is not told beyond two points.
bool isWellKnown(const geometry::LatticeData& lattice, const geometry::LatticeSettings& settings)
{
    return !settings.isLocal || std::max({lattice.s, lattice.t, lattice.u}) == 2;
}

void transform(std::vector<Vec3d>& points, const Matrix4& matrix)
{
    for (Vec3d& point : points) {
        point = transformPoint(point, matrix);
    }
}

Expected<Value> compute(ComputeContext& context)
{
    const Deformation deformation(context);
    if (deformation.isIdle()) {
        return deformation.geometry();
    }
    const auto lattice = context.input(kLatticePoints).data<geometry::LatticeData>();
    const Matrix4 lattices = matrixOf(context.input(kLatticeMatrix));
    const Matrix4 base = matrixOf(context.input(kBaseMatrix));
    const geometry::LatticeSettings settings = readSettings(context);
    const Matrix4 world = deformation.worldMatrix();
    if (!context.isComplete()) {
        return Value();
    }
    const std::vector<Vec3d> before = pointsOf(deformation.geometry());
    if (lattice == nullptr || !geometry::isValidLattice(*lattice) ||
        geometry::latticeWork(*lattice, settings, before.size()) > geometry::kMaxLatticeWork) {
        return deformation.passed();
    }
    if (!isWellKnown(*lattice, settings)) {
        context.noteUncomputed();
    }
    std::vector<Vec3d> after = before;
    transform(after, world * inverse(base));
    std::vector<float> reach(after.size());
    std::transform(after.begin(), after.end(), reach.begin(), [&](const Vec3d& point) {
        return static_cast<float>(geometry::latticeReach(settings, point));
    });
    geometry::moveByLattice(*lattice, settings, after);
    transform(after, lattices * inverse(world));
    return deformation.moved(before, std::move(after), reach);
}

} // namespace

constinit const NodeCompute kFfd{
    .type = "ffd", .inputs = kInputs, .outputs = kDeformerOutputs, .compute = compute};

} // namespace host::nodes
