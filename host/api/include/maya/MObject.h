// A handle on something of the scene: a node, an attribute, a component or a piece of data. A
// handle of a scene that is open no more is as good as null.
#pragma once

#include <maya/MFn.h>
#include <maya/MTypes.h>

#include <cstdint>
#include <memory>

class MObject {
public:
    MObject() = default;

    /// True when the object can be used with function sets of that kind; false when null.
    bool hasFn(MFn::Type type) const;
    bool isNull() const;
    MFn::Type apiType() const;
    /// The enumerator's name, such as "kMesh".
    const char* apiTypeStr() const;

    /// Whether both are the same object of the scene.
    bool operator==(const MObject& other) const;

    static MObject kNullObj;

private:
    friend struct host::api::Inside;
    enum class Kind : std::uint8_t { Null, Node, Attribute, Component, Data, Curve };

    Kind m_kind = Kind::Null;
    std::uint16_t m_attribute = 0;
    std::uint32_t m_generation = 0;
    std::uint32_t m_node = 0;
    std::shared_ptr<void> m_content; // of components, data and curves
};
