// The answers to one computation, from a table.
#pragma once

#include "host/types/ComputeContext.h"

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace test {

/// Knows what was put in; anything else is not there. Refuses an input that the row does not
/// declare.
class ToyContext final : public host::ComputeContext {
public:
    explicit ToyContext(const host::NodeCompute& row) : m_row(row) {}

    std::map<std::string, host::Value, std::less<>> values;
    std::map<std::string, const host::NumericArray*, std::less<>> arrays;
    host::Matrix4 parent;
    std::int32_t number_ = 1;
    std::int64_t ticks = 0;
    std::size_t timesUncomputed = 0;

    void set(std::string_view name, double number) { values[std::string(name)] = number; }
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
    bool isComplete() const override { return true; }
    host::Value input(std::size_t position) override
    {
        const auto found = values.find(m_row.inputs[position]);
        return found == values.end() ? host::Value() : found->second;
    }
    double number(std::size_t position, double fallback) override
    {
        return input(position).number(fallback);
    }
    const host::NumericArray* array(std::size_t position) override
    {
        const auto found = arrays.find(m_row.inputs[position]);
        return found == arrays.end() ? nullptr : found->second;
    }
    host::Matrix4 parentWorldMatrix() override { return parent; }
    std::int32_t nodeNumber() const override { return number_; }
    std::int64_t time() override { return ticks; }
    void noteUncomputed() override { ++timesUncomputed; }

private:
    const host::NodeCompute& m_row;
    std::size_t m_output = 0;
    std::int32_t m_index = -1;
};

} // namespace test
