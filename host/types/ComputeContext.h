// What the computation of a node may ask: its declared inputs and little else. And the row by which
// a node type says what it computes.
#pragma once

#include "host/math/Matrix4.h"
#include "host/support/Expected.h"
#include "host/types/NumericArray.h"
#include "host/types/Value.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace host {

namespace geometry {
struct ShapeMark;
}

/// Why the result of a computation is a stand-in.
enum class Lack : std::uint8_t {
    Unsaid,
    Components,  ///< the node names parts that its input does not have
    Setting,     ///< it asks for a way of doing it that there is not
    Input,       ///< what comes in has a form on which it cannot be done, or is beyond a limit
    Approximate, ///< what is computed only comes near
    Textures     ///< the shape is right; only its texture coordinates, or their numbers, are not
};

/// The same in words that follow the name of the node; empty where nothing is said.
constexpr std::string_view wordsOf(Lack lack)
{
    switch (lack) {
    case Lack::Components:
        return "names components that the mesh does not have";
    case Lack::Setting:
        return "has a setting that is not supported";
    case Lack::Input:
        return "cannot be carried out on this mesh, or is beyond a limit";
    case Lack::Approximate:
        return "is only approximated";
    case Lack::Textures:
        return "is only approximated, in texture coordinates";
    default:
        return {};
    }
}

/// The stored numbers of a multi inside elements of other multis: `way` holds the indices of those,
/// the outermost first.
struct InnerArray {
    static constexpr std::size_t kMaxDepth = 4;
    std::array<std::int32_t, kMaxDepth> way{};
    const NumericArray* numbers = nullptr; ///< never null
};

/// The questions of one computation of one output. Inputs are named by their position in the row's
/// list. An input that must be computed first is not there yet when it is asked for: the answer is
/// then empty, `isComplete` turns false, and the computation is started again later. So ask for the
/// inputs first and begin no work while `isComplete` is false.
class ComputeContext {
public:
    virtual ~ComputeContext() = default;

    /// The output that is asked for, as a position in the row's list, and its logical index (-1
    /// where the output is no multi).
    virtual std::size_t output() const = 0;
    virtual std::int32_t index() const = 0;
    virtual bool isComplete() const = 0;

    /// The value of an input; empty where the node has none of that name, or no value.
    virtual Value input(std::size_t position) = 0;
    /// True when something is connected to the input or to a compound around it.
    virtual bool isConnected(std::size_t position) = 0;
    /// As a number; `fallback` where the node has no such attribute or its value is no number.
    virtual double number(std::size_t position, double fallback) = 0;
    /// The stored elements of a numeric multi; null when it has none. With multis around it `outer`
    /// holds their indices, the outermost first.
    virtual const NumericArray* array(std::size_t position,
                                      std::span<const std::int32_t> outer = {}) = 0;
    /// Those of a numeric multi inside all elements of the multis around it, ascending by them, in
    /// one pass. What is deeper than `InnerArray::kMaxDepth` is left out.
    virtual std::vector<InnerArray> innerArrays(std::size_t position) = 0;
    /// The logical indices at which a multi input has elements (set or connected), ascending. For
    /// an input that is a child of a multi compound ("key_Position" of key[i]) those of the
    /// compound. With multis inside multis `outer` holds the indices of those further out, the
    /// outermost first.
    virtual std::vector<std::int32_t> elementIndices(std::size_t position,
                                                     std::span<const std::int32_t> outer = {}) = 0;
    /// Those of them at which something is connected to the element or into it.
    virtual std::vector<std::int32_t>
    connectedIndices(std::size_t position, std::span<const std::int32_t> outer = {}) = 0;
    /// The value of an input inside multis: one index per multi on the way, the outermost first.
    virtual Value element(std::size_t position, std::span<const std::int32_t> indices) = 0;
    Value element(std::size_t position, std::int32_t index)
    {
        return element(position, std::span<const std::int32_t>(&index, 1));
    }
    /// A place of the node's own for what it made of values that never change: its stored ones.
    /// Null at first; what is put here stays as long as the scene is open.
    virtual std::shared_ptr<const void>& kept() = 0;

    /// World matrix of the parent on the instance path `index()`; identity below the world.
    virtual Matrix4 parentWorldMatrix() = 0;
    /// World matrix of the shape that put its mark on a mesh, see `geometry::ShapeMark`; identity
    /// for a mark of none.
    virtual Matrix4 worldMatrixOf(const geometry::ShapeMark& mark) = 0;
    /// A positive number that no other node of the scene has.
    virtual std::int32_t nodeNumber() const = 0;
    /// The time in ticks; makes the result depend on it.
    virtual std::int64_t time() = 0;
    /// Says that the result is a stand-in for what the node would really compute, and why.
    virtual void noteLack(Lack lack) = 0;
    void noteUncomputed() { noteLack(Lack::Unsaid); }
};

/// What a node type computes. It holds for the type and for all derived from it, unless one of them
/// has a row of its own for the same output.
struct NodeCompute {
    std::string_view type;
    std::span<const std::string_view> inputs;  ///< long names
    std::span<const std::string_view> outputs; ///< long names; children of compounds one by one
    /// The value of the output; an empty one where there is none.
    Expected<Value> (*compute)(ComputeContext& context) = nullptr;
};

} // namespace host
