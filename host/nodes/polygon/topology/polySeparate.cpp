// polySeparate: the shells of a mesh one by one.
#include "host/nodes/polygon/meshInputs.h"
#include "host/nodes/polygon/topology/polygonTopologyTypes.h"

#include "host/geometry/mesh/edit/splitMesh.h"

#include <algorithm>

namespace host::nodes {
namespace {

using geometry::MeshData;
using geometry::MeshParts;

constexpr std::array<std::string_view, 6> kInputs{"inputPoly", "remShells", "userSpecifiedShells",
                                                  "startFace", "endFace",   "nodeState"};
enum Position : std::size_t { kPoly, kRemoved, kByFaces, kStartFace, kEndFace, kState };
constexpr std::array<std::string_view, 1> kOutputs{"output"};

struct Request {
    SharedMesh mesh;
    std::vector<std::int32_t> removed; ///< shells that no output has, ascending
    bool isByFaces = false;            ///< two parts: all faces but a range, and the range
    double startFace = 0;
    double endFace = 0;
    friend bool operator==(const Request&, const Request&) = default;
};

/// What was made of a request: one mesh for each output.
struct Separated {
    Request request;
    std::vector<SharedMesh> meshes;
};

Request takeRequest(ComputeContext& context)
{
    Request request;
    request.mesh = context.input(kPoly).data<MeshData>();
    if (const auto removed = context.input(kRemoved).data<std::vector<std::int32_t>>()) {
        request.removed = *removed;
        std::sort(request.removed.begin(), request.removed.end());
    }
    request.isByFaces = context.number(kByFaces, 0) != 0;
    request.startFace = context.number(kStartFace, 0);
    request.endFace = context.number(kEndFace, 0);
    return request;
}

MeshParts partsByFaces(const MeshData& mesh, double start, double end)
{
    MeshParts parts;
    parts.count = 2;
    for (std::uint32_t face = 0; face < mesh.topology->faceCount(); ++face) {
        parts.ofFace.push_back(face >= start && face <= end ? 1 : 0);
    }
    return parts;
}

std::vector<SharedMesh> separate(const Request& request)
{
    const MeshParts parts = request.isByFaces
                                ? partsByFaces(*request.mesh, request.startFace, request.endFace)
                                : geometry::shellsOf(*request.mesh->topology);
    std::vector<SharedMesh> all = geometry::splitMesh(*request.mesh, parts);
    std::vector<SharedMesh> kept;
    for (std::size_t shell = 0; shell < all.size(); ++shell) {
        if (!std::binary_search(request.removed.begin(), request.removed.end(),
                                static_cast<std::int32_t>(shell))) {
            kept.push_back(std::move(all[shell]));
        }
    }
    return kept;
}

/// All outputs are made at the first question and stay for the others.
Expected<Value> compute(ComputeContext& context)
{
    Request request = takeRequest(context);
    const bool hasNoEffect = context.number(kState, 0) == 1;
    if (!context.isComplete() || request.mesh == nullptr || context.index() < 0) {
        return Value();
    }
    if (hasNoEffect) {
        return Value(request.mesh);
    }
    auto kept = std::static_pointer_cast<const Separated>(context.kept());
    if (kept == nullptr || !(kept->request == request)) {
        auto made = std::make_shared<Separated>();
        made->meshes = separate(request);
        made->request = std::move(request);
        kept = std::move(made);
        context.kept() = kept;
    }
    const auto shell = static_cast<std::size_t>(context.index());
    return shell < kept->meshes.size() ? Value(kept->meshes[shell]) : Value();
}

} // namespace

constinit const NodeCompute kPolySeparate{
    .type = "polySeparate", .inputs = kInputs, .outputs = kOutputs, .compute = compute};

} // namespace host::nodes
