#include <maya/MFnNurbsSurface.h>

#include "host/api/src/Inside.h"
#include "host/api/src/splineArrays.h"
#include "host/api/src/toStatus.h"

using host::ErrorCode;
using host::api::answer;
using host::api::fill;
using host::api::Inside;
using host::api::toStatus;
using host::geometry::CurveData;
using host::geometry::SurfaceData;
using host::geometry::TrimBoundary;
using host::geometry::TrimEdge;
using host::session::currentSession;
using host::session::kNoNode;
using host::session::NodeId;

namespace {

using Surface = std::shared_ptr<const SurfaceData>;

Surface surfaceOf(const MObject& object)
{
    const NodeId node = Inside::nodeOf(object);
    return node != kNoNode ? currentSession()->surface(node) : nullptr;
}

/// The answer of a surface to a question; `none` where there is no geometry.
template<class T, class Question>
T ask(const MObject& object, MStatus* status, T none, Question question)
{
    const Surface surface = surfaceOf(object);
    if (surface == nullptr) {
        return answer(status, toStatus(ErrorCode::NotFound), none);
    }
    return answer(status, MStatus(), static_cast<T>(question(*surface)));
}

/// The curves of a boundary's edges, one after another.
MObjectArray edgesOf(const Surface& surface, const TrimBoundary& boundary, bool isInParameters)
{
    MObjectArray edges;
    for (const TrimEdge& edge : boundary.edges) {
        for (const CurveData& curve : isInParameters ? edge.curves2d : edge.curves3d) {
            // The curve lives as long as its surface, which the object holds on to.
            edges.append(Inside::curve({surface, &curve}));
        }
    }
    return edges;
}

} // namespace

MFnNurbsSurface::MFnNurbsSurface(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, keepIfThere(MFnDagNode::setObject(object)));
}

MFnNurbsSurface::MFnNurbsSurface(const MDagPath& path, MStatus* ReturnStatus)
{
    answer(ReturnStatus, keepIfThere(MFnDagNode::setObject(path)));
}

MStatus MFnNurbsSurface::setObject(const MObject& object)
{
    return keepIfThere(MFnDagNode::setObject(object));
}

MStatus MFnNurbsSurface::keepIfThere(MStatus attached)
{
    if (!attached || surfaceOf(m_object) != nullptr) {
        return attached;
    }
    m_object = MObject();
    m_path = MDagPath();
    return toStatus(ErrorCode::NotFound);
}

MFn::Type MFnNurbsSurface::type() const
{
    return MFn::kNurbsSurface;
}

MStatus MFnNurbsSurface::getKnotDomain(double& startU, double& endU, double& startV,
                                       double& endV) const
{
    const Surface surface = surfaceOf(m_object);
    if (surface == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    startU = surface->startU();
    endU = surface->endU();
    startV = surface->startV();
    endV = surface->endV();
    return MStatus();
}

int MFnNurbsSurface::degreeU(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0,
               [](const SurfaceData& surface) { return surface.degreeU; });
}

int MFnNurbsSurface::degreeV(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0,
               [](const SurfaceData& surface) { return surface.degreeV; });
}

int MFnNurbsSurface::numSpansInU(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0, [](const SurfaceData& surface) {
        return static_cast<std::int64_t>(surface.cvCountU()) - surface.degreeU;
    });
}

int MFnNurbsSurface::numSpansInV(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0, [](const SurfaceData& surface) {
        return static_cast<std::int64_t>(surface.cvCountV()) - surface.degreeV;
    });
}

int MFnNurbsSurface::numKnotsInU(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0,
               [](const SurfaceData& surface) { return surface.knotsU.size(); });
}

int MFnNurbsSurface::numKnotsInV(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0,
               [](const SurfaceData& surface) { return surface.knotsV.size(); });
}

MStatus MFnNurbsSurface::getKnotsInU(MDoubleArray& array) const
{
    const Surface surface = surfaceOf(m_object);
    return surface != nullptr ? fill(array, surface->knotsU) : toStatus(ErrorCode::NotFound);
}

MStatus MFnNurbsSurface::getKnotsInV(MDoubleArray& array) const
{
    const Surface surface = surfaceOf(m_object);
    return surface != nullptr ? fill(array, surface->knotsV) : toStatus(ErrorCode::NotFound);
}

int MFnNurbsSurface::numCVsInU(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0,
               [](const SurfaceData& surface) { return surface.cvCountU(); });
}

int MFnNurbsSurface::numCVsInV(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0,
               [](const SurfaceData& surface) { return surface.cvCountV(); });
}

MStatus MFnNurbsSurface::getCVs(MPointArray& array, MSpace::Space space) const
{
    const Surface surface = surfaceOf(m_object);
    if (surface == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    MStatus status;
    const MMatrix matrix =
        space == MSpace::kWorld ? m_path.inclusiveMatrix(&status) : MMatrix::identity;
    return status ? fill(array, surface->poles, 3, surface->rational, matrix) : status;
}

bool MFnNurbsSurface::isTrimmedSurface(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, false,
               [](const SurfaceData& surface) { return surface.isTrimmed(); });
}

unsigned int MFnNurbsSurface::numRegions(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, 0U,
               [](const SurfaceData& surface) { return surface.trims.size(); });
}

MStatus MFnNurbsSurface::getTrimBoundaries(MTrimBoundaryArray& result, unsigned int region,
                                           bool paramEdge) const
{
    const Surface surface = surfaceOf(m_object);
    if (surface == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    result.clear();
    if (region >= surface->trims.size()) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    for (const TrimBoundary& boundary : surface->trims[region]->boundaries) {
        result.append(edgesOf(surface, boundary, paramEdge));
    }
    return MStatus();
}
