// The answers to one computation, from a table.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "host/types/ComputeContext.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace test {

/// Knows what was put in; anything else is not there. Refuses an input that the row does not
/// declare.
class ToyContext final : public host::ComputeContext {
public:
    explicit ToyContext(const host::NodeCompute& row) : m_row(row) {}

    std::map<std::string, host::Value, std::less<>> values;
    std::map<std::string, const host::NumericArray*, std::less<>> arrays;
    /// Per multi inside multis: the stored numbers by the indices of those, the outermost first.
    std::map<std::string, std::map<std::vector<std::int32_t>, const host::NumericArray*>,
             std::less<>>
        inners;
    /// Per multi input: the values of its elements by their indices, the outermost first.
    std::map<std::string, std::map<std::vector<std::int32_t>, host::Value>, std::less<>> elements;
    /// Inputs that count as connected.
    std::set<std::string, std::less<>> connected;
    host::Matrix4 parent;
    std::int32_t number_ = 1;
    std::int64_t ticks = 0;
    std::size_t timesUncomputed = 0;
    bool isWaiting = false;               ///< inputs are still to come
    host::Lack lack = host::Lack::Unsaid; ///< what was said last

    void set(std::string_view name, double number) { values[std::string(name)] = number; }
    void setElement(const std::string& name, std::vector<std::int32_t> indices, host::Value value)
    {
        elements[name][std::move(indices)] = std::move(value);
    }
    void setVector(const std::string& name, double x, double y, double z)
    {
        set(name + "X", x);
        set(name + "Y", y);
        set(name + "Z", z);
    }

    host::Value compute(std::string_view output, std::int32_t instance = -1)
    {
        m_index = instance;
        m_output = m_row.outputs.size();
        for (std::size_t i = 0; i < m_row.outputs.size(); ++i) {
            m_output = m_row.outputs[i] == output ? i : m_output;
        }
        if (m_output == m_row.outputs.size()) {
            throw std::logic_error("no output " + std::string(output));
        }
        auto result = m_row.compute(*this);
        if (!result) {
            throw std::logic_error(result.error().message);
        }
        return *result;
    }

    std::size_t output() const override { return m_output; }
    std::int32_t index() const override { return m_index; }
    bool isComplete() const override { return !isWaiting; }
    host::Value input(std::size_t position) override
    {
        const auto found = values.find(m_row.inputs[position]);
        return found == values.end() ? host::Value() : found->second;
    }
    bool isConnected(std::size_t position) override
    {
        return connected.count(m_row.inputs[position]) != 0;
    }
    double number(std::size_t position, double fallback) override
    {
        return input(position).number(fallback);
    }
    const host::NumericArray* array(std::size_t position,
                                    std::span<const std::int32_t> outer) override
    {
        if (!outer.empty()) {
            const auto inner = inners.find(m_row.inputs[position]);
            if (inner == inners.end()) {
                return nullptr;
            }
            const auto found = inner->second.find({outer.begin(), outer.end()});
            return found == inner->second.end() ? nullptr : found->second;
        }
        const auto found = arrays.find(m_row.inputs[position]);
        return found == arrays.end() ? nullptr : found->second;
    }
    std::vector<host::InnerArray> innerArrays(std::size_t position) override
    {
        std::vector<host::InnerArray> found;
        const auto inner = inners.find(m_row.inputs[position]);
        if (inner == inners.end()) {
            return found;
        }
        for (const auto& [way, numbers] : inner->second) {
            host::InnerArray one{{}, numbers};
            std::copy(way.begin(), way.end(), one.way.begin());
            found.push_back(one);
        }
        return found;
    }
    std::vector<std::int32_t> elementIndices(std::size_t position,
                                             std::span<const std::int32_t> outer) override
    {
        std::vector<std::int32_t> indices;
        const auto found = elements.find(m_row.inputs[position]);
        if (found == elements.end()) {
            return indices;
        }
        for (const auto& [way, value] : found->second) {
            const bool isInside =
                way.size() > outer.size() && std::equal(outer.begin(), outer.end(), way.begin());
            if (isInside && (indices.empty() || indices.back() != way[outer.size()])) {
                indices.push_back(way[outer.size()]);
            }
        }
        return indices;
    }
    /// All elements of an input that counts as connected.
    std::vector<std::int32_t> connectedIndices(std::size_t position,
                                               std::span<const std::int32_t> outer) override
    {
        return isConnected(position) ? elementIndices(position, outer)
                                     : std::vector<std::int32_t>();
    }
    host::Value element(std::size_t position, std::span<const std::int32_t> indices) override
    {
        const auto found = elements.find(m_row.inputs[position]);
        if (found == elements.end()) {
            return {};
        }
        const auto value = found->second.find({indices.begin(), indices.end()});
        return value == found->second.end() ? host::Value() : value->second;
    }
    std::shared_ptr<const void>& kept() override { return m_kept; }
    host::Matrix4 parentWorldMatrix() override { return parent; }
    host::Matrix4 worldMatrixOf(const host::geometry::ShapeMark& mark) override
    {
        return mark.node == 0 ? host::Matrix4{} : parent;
    }
    std::int32_t nodeNumber() const override { return number_; }
    std::int64_t time() override { return ticks; }
    void noteLack(host::Lack reason) override
    {
        ++timesUncomputed;
        lack = reason;
    }

private:
    const host::NodeCompute& m_row;
    std::size_t m_output = 0;
    std::int32_t m_index = -1;
    std::shared_ptr<const void> m_kept;
};

} // namespace test
