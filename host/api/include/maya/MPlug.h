// An attribute of a node, or an element of one that is an array.
#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <cstdint>

class MPlugArray;

class MPlug {
public:
    /// The null plug.
    MPlug() = default;
    /// The plug of an attribute that is not inside an array.
    MPlug(const MObject& node, const MObject& attribute);

    MObject node(MStatus* ReturnStatus = nullptr) const;
    MObject attribute(MStatus* ReturnStatus = nullptr) const;
    bool isNull(MStatus* ReturnStatus = nullptr) const;
    /// "node.attribute[3].child" in long names.
    MString name(MStatus* ReturnStatus = nullptr) const;

    bool isArray(MStatus* ReturnStatus = nullptr) const;
    bool isElement(MStatus* ReturnStatus = nullptr) const;
    bool isCompound(MStatus* ReturnStatus = nullptr) const;
    unsigned int numChildren(MStatus* ReturnStatus = nullptr) const;
    MPlug child(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    /// Elements that hold something: set or connected ones.
    unsigned int numElements(MStatus* ReturnStatus = nullptr) const;
    /// Any element of an array, whether it holds something or not.
    MPlug elementByLogicalIndex(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MPlug elementByPhysicalIndex(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    unsigned int logicalIndex(MStatus* ReturnStatus = nullptr) const;

    /// Connections of this very plug, not of its children or elements.
    bool isConnected(MStatus* ReturnStatus = nullptr) const;
    /// True when the plug has any connection. The array gets those asked for: the plug that feeds
    /// this one (`asDestination`) first, then the plugs that it feeds, in order of connection.
    bool connectedTo(MPlugArray& plugs, bool asDestination, bool asSource,
                     MStatus* ReturnStatus = nullptr) const;

    /// The evaluated value: lengths in centimetres, angles in radians.
    double asDouble(MStatus* ReturnStatus = nullptr) const;
    float asFloat(MStatus* ReturnStatus = nullptr) const;
    int asInt(MStatus* ReturnStatus = nullptr) const;
    short asShort(MStatus* ReturnStatus = nullptr) const;
    bool asBool(MStatus* ReturnStatus = nullptr) const;
    MString asString(MStatus* ReturnStatus = nullptr) const;
    /// Compounds of two or three numbers as numeric data (see MFnNumericData).
    MObject asMObject(MStatus* ReturnStatus = nullptr) const;
    /// The same with the status as result; the receiver stays as it was on failure.
    MStatus getValue(double& value) const;
    MStatus getValue(float& value) const;
    MStatus getValue(int& value) const;
    MStatus getValue(short& value) const;
    MStatus getValue(bool& value) const;
    MStatus getValue(MString& value) const;
    MStatus getValue(MObject& value) const;

    bool operator==(const MPlug& other) const;

private:
    friend struct host::api::Inside;
    static constexpr std::uint32_t kNone = 0xffffffff;

    std::uint32_t m_generation = 0;
    std::uint32_t m_node = kNone;
    std::uint32_t m_context = kNone; // of the element that the plug is inside of
    std::int32_t m_index = -1;
    std::uint16_t m_attribute = 0;
};
