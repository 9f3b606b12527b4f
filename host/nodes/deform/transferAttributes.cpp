// transferAttributes: points and texture coordinates of another mesh. What is taken vertex by
// vertex is, and texture coordinates from any mesh of the same faces: where both do not lie on each
// other in the space of the search that only comes near. What would be looked for on another
// surface stays as it is.
#include "host/nodes/deform/Deformation.h"
#include "host/nodes/deform/deformTypes.h"

#include "host/geometry/mesh/texture/UvEditor.h"
#include "host/geometry/mesh/texture/transferUvs.h"

namespace host::nodes {
namespace {

using geometry::MeshData;
using SharedMesh = Shared<MeshData>;

constexpr auto kInputs =
    deformerInputs("source", "transferPositions", "transferNormals", "transferUVs", "sourceUVSet",
                   "targetUVSet", "sampleSpace", "flipUVs");
enum Input : std::size_t {
    kSource = kFirstDeformerInput,
    kPositions,
    kNormals,
    kUvs,
    kSourceSet,
    kTargetSet,
    kSpace,
    kFlips
};

/// The numbers of the attribute sampleSpace.
enum Space : std::int32_t { kWorld = 0, kModel = 1, kComponents = 4, kTopology = 5 };

struct Request {
    std::int32_t space = kWorld;
    bool takesPoints = false;
    bool takesNormals = false;
    std::int32_t uvs = 0; ///< 1: one set, 2: all
    std::string sourceSet;
    std::string targetSet;
    std::int32_t flips = 0; ///< 1: u, 2: v, 3: both
};

std::string textInput(ComputeContext& context, std::size_t position)
{
    const auto text = context.input(position).data<std::string>();
    return text != nullptr ? *text : std::string();
}

Request readRequest(ComputeContext& context)
{
    Request request;
    request.space = wholeInput(context, kSpace, kWorld, 0, kTopology);
    request.takesPoints = context.number(kPositions, 0) != 0;
    request.takesNormals = context.number(kNormals, 0) != 0;
    request.uvs = wholeInput(context, kUvs, 0, 0, 2);
    request.sourceSet = textInput(context, kSourceSet);
    request.targetSet = textInput(context, kTargetSet);
    request.flips = wholeInput(context, kFlips, 0, 0, 3);
    return request;
}

SharedMesh firstSource(ComputeContext& context)
{
    SharedMesh source;
    for (const std::int32_t index : context.elementIndices(kSource)) {
        const auto mesh = context.element(kSource, index).data<MeshData>();
        source = source == nullptr ? mesh : source;
    }
    return source;
}

/// Whether what is nearest on the other surface is always the vertex of the same number.
bool areAtSamePlaces(const std::vector<Vec3d>& points, const Matrix4& space,
                     const std::vector<Vec3d>& others, const Matrix4& otherSpace)
{
    constexpr double kSamePlace = 1e-5; // parts of the distance from the origin
    if (points.size() != others.size()) {
        return false;
    }
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Vec3d place = transformPoint(points[i], space);
        const Vec3d other = transformPoint(others[i], otherSpace);
        if (!(length(place - other) <= kSamePlace * (1 + length(place)))) {
            return false;
        }
    }
    return true;
}

/// The texture coordinates taken over; null where there is no set to take.
SharedMesh withUvs(const SharedMesh& mesh, const MeshData& source, const Request& request)
{
    constexpr std::int32_t kAllSets = 2;
    const bool flipsU = (request.flips & 1) != 0;
    const bool flipsV = (request.flips & 2) != 0;
    if (request.uvs == kAllSets) {
        SharedMesh result = mesh;
        for (std::size_t set = 0; set < source.uvSets.size(); ++set) {
            result = geometry::withUvSetOf(*result, source, set, source.uvSets[set].name, flipsU,
                                           flipsV);
        }
        return result;
    }
    const auto set = geometry::findUvSet(source, request.sourceSet);
    const auto own = geometry::findUvSet(*mesh, request.targetSet);
    const std::string name = own                         ? mesh->uvSets[*own].name
                             : request.targetSet.empty() ? std::string(geometry::kUsualUvSetName)
                                                         : request.targetSet;
    return set ? geometry::withUvSetOf(*mesh, source, *set, name, flipsU, flipsV) : nullptr;
}

class Transfer {
public:
    Transfer(ComputeContext& context, const Deformation& deformation, const MeshData& source,
             const Request& request)
        : m_context(context), m_deformation(deformation), m_source(source), m_request(request)
    {
    }

    Value run()
    {
        const auto mesh = m_deformation.geometry().data<MeshData>();
        if (mesh == nullptr) {
            return m_deformation.passed();
        }
        const bool isAlike = geometry::haveSameCorners(*mesh->topology, *m_source.topology);
        Value result = m_request.takesPoints ? withPoints(*mesh) : m_deformation.geometry();
        if (m_request.takesNormals) {
            m_context.noteLack(Lack::Approximate);
        }
        if (m_request.uvs == 0) {
            return result;
        }
        SharedMesh textured =
            isAlike ? withUvs(result.data<MeshData>(), m_source, m_request) : SharedMesh();
        if (textured == nullptr || !isByNumber(*mesh)) {
            m_context.noteLack(Lack::Textures);
        }
        return textured == nullptr ? result : Value(std::move(textured));
    }

private:
    /// Of meshes of the same corners.
    bool isByNumber(const MeshData& mesh) const
    {
        const bool isWorld = m_request.space == kWorld;
        const bool isSearch = isWorld || m_request.space == kModel;
        return m_request.space == kComponents || m_request.space == kTopology ||
               (isSearch &&
                areAtSamePlaces(pointsOf(m_deformation.geometry()),
                                isWorld ? m_context.worldMatrixOf(mesh.shape) : Matrix4{},
                                pointsOf(Value(std::make_shared<const MeshData>(m_source))),
                                isWorld ? m_context.worldMatrixOf(m_source.shape) : Matrix4{}));
    }

    Value withPoints(const MeshData& mesh) const
    {
        if (m_request.space != kComponents ||
            mesh.topology->vertexCount != m_source.topology->vertexCount) {
            return m_deformation.passed();
        }
        const Value source(std::make_shared<const MeshData>(m_source));
        return m_deformation.moved(pointsOf(m_deformation.geometry()), pointsOf(source));
    }

    ComputeContext& m_context;
    const Deformation& m_deformation;
    const MeshData& m_source;
    const Request& m_request;
};

Expected<Value> compute(ComputeContext& context)
{
    const Deformation deformation(context);
    const Request request = readRequest(context);
    const SharedMesh source = firstSource(context);
    if (!context.isComplete() || deformation.isIdle() || source == nullptr) {
        return deformation.geometry();
    }
    return Transfer(context, deformation, *source, request).run();
}

} // namespace

constinit const NodeCompute kTransferAttributes{.type = "transferAttributes",
                                                .inputs = kInputs,
                                                .outputs = kDeformerOutputs,
                                                .compute = compute};

} // namespace host::nodes
