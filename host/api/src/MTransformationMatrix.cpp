#include <maya/MTransformationMatrix.h>

#include "host/api/src/toStatus.h"

constinit const MTransformationMatrix MTransformationMatrix::identity;

MMatrix MTransformationMatrix::asMatrix(MStatus* ReturnStatus) const
{
    return host::api::answer(ReturnStatus, MStatus(), m_matrix);
}
