// What the evaluator answers to one computation.
#pragma once

#include "host/eval/Evaluator.h"

namespace host::eval {

/// The answers to one computation: every input is fetched, or requested when it is not there yet.
class Evaluator::Context final : public ComputeContext {
public:
    /// All must outlive the context; the entry is that of the output which the plug is.
    Context(Evaluator& evaluator, const graph::Plug& plug, const OutputEntry& entry);

    std::size_t output() const override { return m_entry.output; }
    std::int32_t index() const override { return m_plug.index; }
    bool isComplete() const override { return m_evaluator.m_requests.empty(); }

    Value input(std::size_t position) override;
    bool isConnected(std::size_t position) override;
    double number(std::size_t position, double fallback) override;
    const NumericArray* array(std::size_t position, std::span<const std::int32_t> outer) override;
    std::vector<InnerArray> innerArrays(std::size_t position) override;
    std::vector<std::int32_t> elementIndices(std::size_t position,
                                             std::span<const std::int32_t> outer) override;
    std::vector<std::int32_t> connectedIndices(std::size_t position,
                                               std::span<const std::int32_t> outer) override;
    Value element(std::size_t position, std::span<const std::int32_t> indices) override;

    std::shared_ptr<const void>& kept() override { return m_evaluator.m_kept[m_plug.node]; }
    Matrix4 worldMatrixOf(const geometry::ShapeMark& mark) override;
    Matrix4 parentWorldMatrix() override;
    std::int32_t nodeNumber() const override { return static_cast<std::int32_t>(m_plug.node) + 1; }
    std::int64_t time() override;

    void noteLack(Lack lack) override;
    bool isUncomputed() const { return m_isUncomputed; }

private:
    Matrix4 worldMatrixAt(graph::NodeId node, std::int32_t instance);
    graph::Plug plugInside(std::size_t position, std::span<const std::int32_t> indices);

    Evaluator& m_evaluator;
    const graph::Plug& m_plug;
    const OutputEntry& m_entry;
    const NodeInputs m_inputs; ///< numbers that are surely not connected are read straight away
    bool m_isUncomputed = false;
};

} // namespace host::eval
