#include <maya/MFnComponent.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

using host::api::answer;
using host::api::Component;
using host::api::Inside;

MFnComponent::MFnComponent(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnComponent::setObject(object));
}

MFn::Type MFnComponent::type() const
{
    return MFn::kComponent;
}

MFn::Type MFnComponent::componentType(MStatus* ReturnStatus) const
{
    const Component* component = Inside::componentOf(object(ReturnStatus));
    return component != nullptr ? component->type : MFn::kInvalid;
}

int MFnComponent::elementCount(MStatus* ReturnStatus) const
{
    const Component* component = Inside::componentOf(object(ReturnStatus));
    return component != nullptr ? static_cast<int>(component->count()) : 0;
}

bool MFnComponent::isEmpty() const
{
    return elementCount() == 0;
}

bool MFnComponent::isComplete() const
{
    const Component* component = Inside::componentOf(m_object);
    return component != nullptr && component->isComplete;
}
