// Components whose elements have one number each: faces, edges, vertices.
#pragma once

#include <maya/MFnComponent.h>

class MIntArray;

class MFnSingleIndexedComponent : public MFnComponent {
public:
    MFnSingleIndexedComponent() = default;
    explicit MFnSingleIndexedComponent(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    /// A new, empty component, which the function set is attached to; its objects see what is added
    /// later. Mesh polygons (kMeshPolygonComponent) are what is offered.
    MObject create(MFn::Type componentType, MStatus* ReturnStatus = nullptr);
    /// All elements from 0 to `elementCount` - 1.
    MStatus setCompleteData(int elementCount);
    /// Fails for a component that is not complete.
    MStatus getCompleteData(int& elementCount) const;
    MStatus addElement(int element);
    MStatus addElements(const MIntArray& elements);
    /// Ascending.
    MStatus getElements(MIntArray& elements) const;
    /// The element at a position of the ascending order.
    int element(int position, MStatus* ReturnStatus = nullptr) const;
};
