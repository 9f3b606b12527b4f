#include <maya/MFnMesh.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;
using host::geometry::MeshData;
using host::session::currentSession;
using host::session::kNoNode;
using host::session::NodeId;

namespace {

/// The answer of a mesh to a question; `none` where there is no geometry.
template<class T, class Question>
T ask(const MObject& object, MStatus* status, T none, Question question)
{
    const NodeId node = Inside::nodeOf(object);
    if (node == kNoNode) {
        return answer(status, toStatus(ErrorCode::NotFound), std::move(none));
    }
    const std::shared_ptr<const MeshData> mesh = currentSession()->mesh(node);
    return answer(status, MStatus(), mesh != nullptr ? T(question(*mesh)) : std::move(none));
}

} // namespace

MFnMesh::MFnMesh(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnMesh::setObject(object));
}

MFnMesh::MFnMesh(const MDagPath& path, MStatus* ReturnStatus)
{
    answer(ReturnStatus, setObject(path));
}

MFn::Type MFnMesh::type() const
{
    return MFn::kMesh;
}

MStatus MFnMesh::syncObject()
{
    return check(m_object);
}

int MFnMesh::numPolygons(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0,
               [](const MeshData& mesh) { return static_cast<int>(mesh.topology->faceCount()); });
}

int MFnMesh::numVertices(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0,
               [](const MeshData& mesh) { return static_cast<int>(mesh.topology->vertexCount); });
}

MString MFnMesh::currentUVSetName(MStatus* ReturnStatus, int) const
{
    return ask(m_object, ReturnStatus, MString(), [](const MeshData& mesh) {
        const bool isNamed = !mesh.currentUvSet.empty() || mesh.uvSets.empty();
        return MString((isNamed ? mesh.currentUvSet : mesh.uvSets.front().name).c_str());
    });
}
