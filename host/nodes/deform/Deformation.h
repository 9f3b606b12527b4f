// What deformers have in common: the geometry that passes through, which of its points are moved,
// and how far.
#pragma once

#include "host/nodes/deform/geometryPoints.h"
#include "host/nodes/matrixValue.h"
#include "host/nodes/numberInputs.h"

#include <array>
#include <string_view>
#include <vector>

namespace host::nodes {

/// The first inputs of every row of a deformer, in this order.
enum DeformerInput : std::size_t {
    kInputGeometry, ///< "inputGeometry" of input[k]
    kGroupId,       ///< "groupId" of input[k]
    kComponentTags, ///< "componentTagExpression" of input[k]
    kEnvelope,      ///< "envelope"
    kState,         ///< "nodeState"
    kFirstDeformerInput
};

/// Inputs of a row: those that all deformers have, then its own.
template<class... Names>
constexpr std::array<std::string_view, kFirstDeformerInput + sizeof...(Names)>
deformerInputs(const Names&... names)
{
    return {"inputGeometry", "groupId",   "componentTagExpression",
            "envelope",      "nodeState", std::string_view(names)...};
}

inline constexpr std::array<std::string_view, 1> kDeformerOutputs{"outputGeometry"};

/// One geometry on its way through a deformer: outputGeometry[k] is made of input[k].
class Deformation {
public:
    /// Asks for the common inputs. Ask for the node's own ones as well before any work: see
    /// `ComputeContext::isComplete`.
    explicit Deformation(ComputeContext& context);

    /// Position k of the geometry.
    std::int32_t which() const { return m_which; }
    /// True when there is nothing to be done: the geometry is handed on as it is.
    bool isIdle() const { return m_isIdle; }
    const Value& geometry() const { return m_geometry; }
    double envelope() const { return m_envelope; }
    Matrix4 worldMatrix() const { return worldOf(m_context, m_geometry); }

    /// The geometry with its points as they are `after` the deformation: as far as the envelope
    /// and the weights let them (in step with the points; empty: all 1), and only those of the
    /// node's group.
    Value moved(const std::vector<Vec3d>& before, std::vector<Vec3d> after,
                const std::vector<float>& weights = {}) const;
    /// The geometry as it is, told as an approximation.
    Value passed() const;

private:
    ComputeContext& m_context;
    std::int32_t m_which = 0;
    Value m_geometry;
    double m_groupId = 0;
    double m_envelope = 1;
    bool m_isIdle = true;
};

/// The weights of the first `count` points at a multi inside `outer`, stored or connected;
/// `fallback` for those without. Empty where all have it.
std::vector<float> pointWeights(ComputeContext& context, std::size_t position,
                                std::span<const std::int32_t> outer, std::size_t count,
                                float fallback = 1);

} // namespace host::nodes
