// A value on a plug: nothing, a number, or shared immutable data.
#pragma once

#include "host/math/Matrix4.h"

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace host {

namespace geometry {
struct MeshData;
struct CurveData;
struct SurfaceData;
struct TrimRegion;
struct LatticeData;
} // namespace geometry

/// Component texts such as "f[0:5]", kept as written.
struct ComponentList {
    std::vector<std::string> components;
};

/// Values per component of a mesh ("Index_Data Edge 2 ..."): creases, pinned uvs, invisible faces.
struct PolyComponentData {
    enum class Domain : std::uint8_t { Edge, Vertex, Uv, Face } domain = Domain::Edge;
    std::vector<std::uint32_t> indices;
    std::vector<double> values; ///< one per index, or empty where the file gives none
};

/// The faces of a stored mesh as statements deliver them: the outer loop and the hole loops of each
/// face as signed edge references, and per uv set one id per corner (-1 none), in step with
/// `corners`.
struct PolyFaces {
    std::vector<std::int32_t> corners;
    std::vector<std::uint32_t> loopSizes;
    std::vector<std::uint32_t> faceLoopCounts; ///< loops of each face: 1 + holes
    struct UvIds {
        std::int32_t set = 0;
        std::vector<std::int32_t> ids;
    };
    std::vector<UvIds> uvSets; ///< ascending set numbers, at most 64
};

/// Text that nothing here interprets (plug-in data, reference edits).
struct OpaqueText {
    std::string type;
    std::string text;
};

template<class T>
using Shared = std::shared_ptr<const T>;

using ValueState =
    std::variant<std::monostate, double, Shared<std::string>, Shared<Matrix4>,
                 Shared<std::vector<std::string>>, Shared<std::vector<std::int32_t>>,
                 Shared<std::vector<double>>, Shared<std::vector<Vec3d>>,
                 Shared<std::vector<std::array<double, 4>>>, Shared<ComponentList>,
                 Shared<PolyComponentData>, Shared<PolyFaces>, Shared<geometry::MeshData>,
                 Shared<geometry::CurveData>, Shared<geometry::SurfaceData>,
                 Shared<geometry::TrimRegion>, Shared<geometry::LatticeData>, Shared<OpaqueText>>;

/// Copies are cheap: everything but a number is shared and immutable. Booleans, integers and
/// enumerations are numbers; lengths, angles and times are in centimetres, radians and ticks.
class Value {
public:
    Value() = default;
    Value(double number) : m_state(number) {}
    template<class T>
    Value(std::shared_ptr<const T> data) : m_state(std::move(data))
    {
    }
    /// Data made here and now: Value::of(std::string("x")).
    template<class T>
    static Value of(T data)
    {
        return Value(std::shared_ptr<const T>(std::make_shared<T>(std::move(data))));
    }

    bool isEmpty() const { return m_state.index() == 0; }
    bool isNumber() const { return m_state.index() == 1; }
    double number(double fallback = 0) const
    {
        const double* held = std::get_if<double>(&m_state);
        return held != nullptr ? *held : fallback;
    }
    /// The data if the value holds a T, else null.
    template<class T>
    std::shared_ptr<const T> data() const
    {
        const Shared<T>* held = std::get_if<Shared<T>>(&m_state);
        return held != nullptr ? *held : nullptr;
    }

private:
    ValueState m_state;
};

} // namespace host
