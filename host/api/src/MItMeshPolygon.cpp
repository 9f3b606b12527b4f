#include <maya/MItMeshPolygon.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <maya/MFnMesh.h>

using host::ErrorCode;
using host::api::answer;
using host::api::Component;
using host::api::Inside;
using host::api::toStatus;

MItMeshPolygon::MItMeshPolygon(const MObject& mesh, MStatus* ReturnStatus)
{
    MDagPath path;
    const MStatus found = MDagPath::getAPathTo(mesh, path);
    answer(ReturnStatus, found ? attach(path, MObject()) : found);
}

MItMeshPolygon::MItMeshPolygon(const MDagPath& mesh, MObject& component, MStatus* ReturnStatus)
{
    answer(ReturnStatus, attach(mesh, component));
}

MStatus MItMeshPolygon::attach(const MDagPath& mesh, const MObject& component)
{
    MStatus status;
    const int faceCount = MFnMesh(mesh, &status).numPolygons();
    if (!status || component.isNull()) {
        m_count = faceCount;
        return status;
    }
    const Component* faces = Inside::componentOf(component);
    if (faces == nullptr || faces->type != MFn::kMeshPolygonComponent ||
        faces->end() > static_cast<std::size_t>(faceCount)) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    m_count = static_cast<int>(faces->count());
    return MStatus();
}

int MItMeshPolygon::count(MStatus* ReturnStatus) const
{
    return answer(ReturnStatus, MStatus(), m_count);
}
