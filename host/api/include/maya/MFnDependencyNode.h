// Names, attributes and connections of any node.
#pragma once

#include <maya/MFnBase.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

class MPlugArray;

class MFnDependencyNode : public MFnBase {
public:
    MFnDependencyNode() = default;
    explicit MFnDependencyNode(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    /// The leaf name with its namespace, never a path.
    MString name(MStatus* ReturnStatus = nullptr) const;
    /// The type's word in scene files.
    MString typeName(MStatus* ReturnStatus = nullptr) const;
    /// By long or short name; null and kInvalidParameter when there is none.
    MObject attribute(const MString& attributeName, MStatus* ReturnStatus = nullptr) const;
    bool hasAttribute(const MString& attributeName, MStatus* ReturnStatus = nullptr) const;
    MPlug findPlug(const MString& attributeName, bool wantNetworkedPlug,
                   MStatus* ReturnStatus = nullptr) const;
    MPlug findPlug(const MString& attributeName, MStatus* ReturnStatus = nullptr) const;
    MPlug findPlug(const MObject& attribute, bool wantNetworkedPlug,
                   MStatus* ReturnStatus = nullptr) const;
    /// All plugs of the node that have any connection, in the order of attributes.
    MStatus getConnections(MPlugArray& plugs) const;
};
