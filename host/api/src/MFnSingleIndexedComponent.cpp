#include <maya/MFnSingleIndexedComponent.h>

#include "host/api/src/Inside.h"
#include "host/api/src/toStatus.h"

#include <maya/MIntArray.h>

#include <algorithm>
#include <numeric>

using host::ErrorCode;
using host::api::answer;
using host::api::Component;
using host::api::Inside;
using host::api::toStatus;

namespace {

std::vector<std::uint32_t> elementsOf(const Component& component)
{
    if (!component.isComplete) {
        return component.elements != nullptr ? *component.elements : std::vector<std::uint32_t>();
    }
    std::vector<std::uint32_t> all(component.completeCount);
    std::iota(all.begin(), all.end(), 0u);
    return all;
}

} // namespace

MFnSingleIndexedComponent::MFnSingleIndexedComponent(const MObject& object, MStatus* ReturnStatus)
{
    answer(ReturnStatus, MFnSingleIndexedComponent::setObject(object));
}

MFn::Type MFnSingleIndexedComponent::type() const
{
    return MFn::kSingleIndexedComponent;
}

MObject MFnSingleIndexedComponent::create(MFn::Type componentType, MStatus* ReturnStatus)
{
    if (componentType != MFn::kMeshPolygonComponent) {
        return answer(ReturnStatus, toStatus(ErrorCode::InvalidParameter), MObject());
    }
    m_object = Inside::component(std::make_shared<Component>());
    return answer(ReturnStatus, MStatus(), m_object);
}

MStatus MFnSingleIndexedComponent::setCompleteData(int elementCount)
{
    Component* component = Inside::componentOf(m_object);
    if (component == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    if (elementCount < 0) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    *component = {component->type, true, static_cast<std::uint32_t>(elementCount), nullptr};
    return MStatus();
}

MStatus MFnSingleIndexedComponent::getCompleteData(int& elementCount) const
{
    const Component* component = Inside::componentOf(m_object);
    if (component == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    if (!component->isComplete) {
        return toStatus(ErrorCode::InvalidParameter);
    }
    elementCount = static_cast<int>(component->completeCount);
    return MStatus();
}

MStatus MFnSingleIndexedComponent::addElement(int element)
{
    return addElements(MIntArray(1, element));
}

MStatus MFnSingleIndexedComponent::addElements(const MIntArray& elements)
{
    Component* component = Inside::componentOf(m_object);
    if (component == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    std::vector<std::uint32_t> all = elementsOf(*component);
    for (unsigned int i = 0; i < elements.length(); ++i) {
        if (elements[i] < 0) {
            return toStatus(ErrorCode::InvalidParameter);
        }
        all.push_back(static_cast<std::uint32_t>(elements[i]));
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    *component = {component->type, false, 0,
                  std::make_shared<const std::vector<std::uint32_t>>(std::move(all))};
    return MStatus();
}

MStatus MFnSingleIndexedComponent::getElements(MIntArray& elements) const
{
    elements.clear();
    const Component* component = Inside::componentOf(m_object);
    if (component == nullptr) {
        return toStatus(ErrorCode::NotFound);
    }
    MStatus status = elements.setLength(static_cast<unsigned int>(component->count()));
    for (unsigned int i = 0; i < elements.length(); ++i) {
        elements[i] = static_cast<int>(component->element(i));
    }
    return status;
}

int MFnSingleIndexedComponent::element(int position, MStatus* ReturnStatus) const
{
    const Component* component = Inside::componentOf(object(ReturnStatus));
    if (component == nullptr) {
        return 0;
    }
    const auto place = static_cast<std::size_t>(position);
    if (position < 0 || place >= component->count()) {
        return answer(ReturnStatus, toStatus(ErrorCode::InvalidParameter), 0);
    }
    return static_cast<int>(component->element(place));
}
