#include <maya/MFnTransform.h>

#include "host/api/src/Inside.h"
#include "host/api/src/matrices.h"
#include "host/api/src/toStatus.h"

using host::ErrorCode;
using host::api::answer;
using host::api::Inside;
using host::api::toStatus;

MFnTransform::MFnTransform(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnTransform::setObject(object));
}

MFnTransform::MFnTransform(const MDagPath& path, MStatus* ReturnStatus)
{
    answer(ReturnStatus, setObject(path));
}

MFn::Type MFnTransform::type() const
{
    return MFn::kTransform;
}

MTransformationMatrix MFnTransform::transformation(MStatus* ReturnStatus) const
{
    const host::session::NodeId node = Inside::nodeOf(m_object);
    if (node == host::session::kNoNode) {
        return answer(ReturnStatus, toStatus(ErrorCode::NotFound), MTransformationMatrix());
    }
    const auto matrix = host::session::currentSession()->localMatrix(node);
    return answer(ReturnStatus, toStatus(matrix),
                  MTransformationMatrix(matrix ? host::api::toMatrix(*matrix) : MMatrix()));
}
