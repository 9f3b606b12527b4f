#include <maya/MFnNurbsCurve.h>

#include "host/api/src/Inside.h"
#include "host/api/src/splineArrays.h"
#include "host/api/src/toStatus.h"

using host::ErrorCode;
using host::api::answer;
using host::api::fill;
using host::api::Inside;
using host::api::toStatus;
using host::geometry::CurveData;
using host::session::currentSession;
using host::session::kNoNode;
using host::session::NodeId;

namespace {

using Curve = std::shared_ptr<const CurveData>;

/// The curve that an object holds or, being a shape, has; null when there is none, or none with
/// points.
Curve curveOf(const MObject& object)
{
    Curve curve = Inside::curveOf(object);
    const NodeId node = Inside::nodeOf(object);
    if (node != kNoNode) {
        curve = currentSession()->curve(node);
    }
    return curve != nullptr && curve->cvCount() > 0 ? curve : nullptr;
}

/// The answer of a curve to a question; 0 where there is no geometry.
template<class Question>
int ask(const MObject& object, MStatus* status, Question question)
{
    const Curve curve = curveOf(object);
    if (curve == nullptr) {
        return answer(status, toStatus(ErrorCode::NotFound), 0);
    }
    return answer(status, MStatus(), static_cast<int>(question(*curve)));
}

} // namespace

MFnNurbsCurve::MFnNurbsCurve(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnNurbsCurve::setObject(object));
}

MFnNurbsCurve::MFnNurbsCurve(const MDagPath& path, MStatus* ReturnStatus)
{
    answer(ReturnStatus, setObject(path));
}

MFn::Type MFnNurbsCurve::type() const
{
    return MFn::kNurbsCurve;
}

MStatus MFnNurbsCurve::getKnotDomain(double& start, double& end) const
{
    const Curve curve = curveOf(m_object);
    if (curve == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    start = curve->start();
    end = curve->end();
    return MStatus();
}

int MFnNurbsCurve::numCVs(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, [](const CurveData& curve) { return curve.cvCount(); });
}

int MFnNurbsCurve::numKnots(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, [](const CurveData& curve) { return curve.knots.size(); });
}

int MFnNurbsCurve::numSpans(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, [](const CurveData& curve) {
        return static_cast<std::int64_t>(curve.cvCount()) - curve.degree;
    });
}

int MFnNurbsCurve::degree(MStatus* ReturnStatus) const
{
    return ask(m_object, ReturnStatus, [](const CurveData& curve) { return curve.degree; });
}

MStatus MFnNurbsCurve::getCVs(MPointArray& array, MSpace::Space space) const
{
    const Curve curve = curveOf(m_object);
    if (curve == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    MStatus status;
    const MMatrix matrix =
        space == MSpace::kWorld ? m_path.inclusiveMatrix(&status) : MMatrix::identity;
    return status ? fill(array, curve->poles, static_cast<std::size_t>(curve->dimension),
                         curve->rational, matrix)
                  : status;
}

MStatus MFnNurbsCurve::getKnots(MDoubleArray& array) const
{
    const Curve curve = curveOf(m_object);
    return curve != nullptr ? fill(array, curve->knots) : toStatus(ErrorCode::NotFound);
}
