// The answers to one computation, made of bytes: whatever a node asks for, it gets something of the
// right kind, and the same when it asks again.
#pragma once

#include "host/geometry/deform/LatticeData.h"
#include "host/geometry/mesh/MeshData.h"
#include "host/math/Matrix4.h"
#include "host/types/ComputeContext.h"
#include "host/types/NodeType.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace test {

/// Bytes that are used up; zeros behind their end.
class ByteSource {
public:
    explicit ByteSource(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}
    bool isAtEnd() const { return m_at >= m_bytes.size(); }
    std::uint32_t byte() { return isAtEnd() ? 0U : m_bytes[m_at++]; }
    std::uint32_t below(std::uint32_t count)
    {
        const std::uint32_t low = byte();
        return count == 0 ? 0 : count <= 256 ? low % count : (low + 256 * byte()) % count;
    }

private:
    std::span<const std::uint8_t> m_bytes;
    std::size_t m_at = 0;
};

using MeshPointer = std::shared_ptr<const host::geometry::MeshData>;

class RandomContext final : public host::ComputeContext {
public:
    /// `mesh` is what operations get, `other` what comes in beside it.
    RandomContext(const host::NodeCompute& row, ByteSource& bytes, MeshPointer mesh,
                  MeshPointer other)
        : m_row(row)
        , m_type(host::NodeType::find(row.type))
        , m_bytes(bytes)
        , m_mesh(std::move(mesh))
        , m_other(std::move(other))
        , m_output(bytes.below(static_cast<std::uint32_t>(row.outputs.size())))
    {
    }

    std::size_t output() const override { return m_output; }
    std::int32_t index() const override { return m_index; }
    bool isComplete() const override { return true; }
    host::Value input(std::size_t position) override { return element(position, {}); }
    bool isConnected(std::size_t) override { return false; }
    double number(std::size_t position, double fallback) override
    {
        return input(position).number(fallback);
    }
    /// The numbers of moved points or texture coordinates, some of them behind the last one.
    const host::NumericArray* array(std::size_t position, std::span<const std::int32_t>) override
    {
        const auto [entry, isNew] = m_arrays.try_emplace(position);
        if (isNew && kindOf(position) == host::AttributeKind::Compound) {
            const bool isUv = m_row.inputs[position].starts_with("uv");
            auto made =
                std::make_unique<host::NumericArray>(host::NumberStorage::Float, isUv ? 2U : 3U);
            for (std::uint32_t left = m_bytes.below(8); left > 0; --left) {
                const auto index = m_bytes.below(count("vtx") + 2);
                for (std::size_t component = 0; component < made->width(); ++component) {
                    made->storeComponent(index, component, real());
                }
            }
            entry->second = std::move(made);
        }
        return entry->second.get();
    }
    /// Weights of points, some of them behind the last one, for indices that may be anything.
    std::vector<host::InnerArray> innerArrays(std::size_t position) override
    {
        std::vector<host::InnerArray> found;
        for (const std::int32_t index : elementIndices(position, {})) {
            auto& made = m_inners[{position, {index}}];
            if (made == nullptr) {
                made = std::make_unique<host::NumericArray>(host::NumberStorage::Double, 1U);
                for (std::uint32_t left = m_bytes.below(5); left > 0; --left) {
                    made->storeComponent(m_bytes.below(count("vtx") + 2), 0, real());
                }
            }
            if (!made->empty()) {
                found.push_back({{index}, made.get()});
            }
        }
        return found;
    }
    std::vector<std::int32_t> elementIndices(std::size_t position,
                                             std::span<const std::int32_t> outer) override
    {
        auto& list = m_indices[{position, {outer.begin(), outer.end()}}];
        if (list == nullptr) {
            list = std::make_unique<std::vector<std::int32_t>>();
            std::int32_t next = 0;
            for (std::uint32_t left = m_bytes.below(7); left > 0; --left) {
                next += static_cast<std::int32_t>(m_bytes.below(16) == 0 ? 3U : 0U);
                list->push_back(next++);
            }
        }
        return *list;
    }
    std::vector<std::int32_t> connectedIndices(std::size_t, std::span<const std::int32_t>) override
    {
        return {};
    }
    host::Value element(std::size_t position, std::span<const std::int32_t> indices) override
    {
        const auto [entry, isNew] =
            m_values.try_emplace({position, {indices.begin(), indices.end()}});
        if (isNew) {
            entry->second = make(position, !indices.empty());
        }
        return entry->second;
    }
    std::shared_ptr<const void>& kept() override { return m_kept; }
    host::Matrix4 parentWorldMatrix() override { return {}; }
    host::Matrix4 worldMatrixOf(const host::geometry::ShapeMark&) override { return {}; }
    std::int32_t nodeNumber() const override { return 1; }
    std::int64_t time() override { return 0; }
    void noteLack(host::Lack) override {}

    void setIndex(std::int32_t index) { m_index = index; }

private:
    using Place = std::pair<std::size_t, std::vector<std::int32_t>>;

    host::AttributeKind kindOf(std::size_t position) const
    {
        const host::AttributeIndex index = m_type.findAttribute(m_row.inputs[position]);
        return index == host::kNoAttribute ? host::AttributeKind::Any
                                           : m_type.attribute(index).kind;
    }

    /// How many components of a kind the mesh has.
    std::uint32_t count(std::string_view kind) const
    {
        if (m_mesh == nullptr) {
            return 0;
        }
        const host::geometry::MeshTopology& topology = *m_mesh->topology;
        return kind == "f"     ? topology.faceCount()
               : kind == "e"   ? static_cast<std::uint32_t>(topology.edges.size())
               : kind == "vtx" ? topology.vertexCount
               : m_mesh->uvSets.empty() || m_mesh->uvSets.front().points == nullptr
                   ? 0
                   : static_cast<std::uint32_t>(m_mesh->uvSets.front().points->size());
    }

    host::Value make(std::size_t position, bool isElement)
    {
        using host::AttributeKind;
        const AttributeKind kind = kindOf(position);
        const std::string_view name = m_row.inputs[position];
        if (kind == AttributeKind::Mesh || kind == AttributeKind::Geometry ||
            (kind == AttributeKind::Any && name.find("oly") != std::string_view::npos)) {
            const MeshPointer& mesh = m_bytes.below(4) == 3 || isSecond(name) ? m_other : m_mesh;
            return mesh == nullptr ? host::Value() : host::Value(mesh);
        }
        if (kind == AttributeKind::ComponentList) {
            return components();
        }
        if (kind == AttributeKind::Matrix || kind == AttributeKind::FloatMatrix) {
            return matrix();
        }
        if (kind == AttributeKind::Lattice) {
            return lattice();
        }
        if (kind == AttributeKind::PointArray) {
            std::vector<std::array<double, 4>> points(m_bytes.below(6));
            for (auto& point : points) {
                point = {real(), real(), real(), 1};
            }
            return host::Value::of(std::move(points));
        }
        if (kind == AttributeKind::String) {
            constexpr std::array<const char*, 4> kNames{"map1", "", "other", "map1"};
            return host::Value::of(std::string(kNames[m_bytes.below(4)]));
        }
        if (host::isInteger(kind)) {
            return whole(name, isElement);
        }
        return host::isNumeric(kind) ? host::Value(real()) : host::Value();
    }

    static bool isSecond(std::string_view name) { return name.starts_with("other"); }

    /// Whole numbers that name a component are near the counts, others are small: limits of large
    /// ones are tested where they are made.
    host::Value whole(std::string_view name, bool isElement)
    {
        const auto has = [&](std::string_view part) {
            return name.find(part) != std::string_view::npos;
        };
        const bool isName = isElement || has("dge") || has("ertex") || has("ace");
        if (!isName || m_bytes.below(4) == 3) {
            return static_cast<double>(m_bytes.below(6)) - 1.0;
        }
        constexpr std::array<std::string_view, 4> kKinds{"e", "f", "vtx", "map"};
        const std::uint32_t number = m_bytes.below(count(kKinds[m_bytes.below(4)]) + 2);
        switch (m_bytes.below(4)) {
        case 0:
            return static_cast<double>(number) - 2147483648.0; // as files mark the other kind
        case 1:
            return -1.0 - static_cast<double>(number);
        default:
            return static_cast<double>(number);
        }
    }

    double real()
    {
        constexpr double kLarge = std::numeric_limits<double>::max();
        constexpr std::array<double, 16> kReals{0,
                                                1,
                                                -1,
                                                0.5,
                                                0.25,
                                                2,
                                                1e-6,
                                                -0.5,
                                                1.5707963267948966,
                                                3.5,
                                                1e10,
                                                -1e-3,
                                                1e-30,
                                                kLarge,
                                                std::numeric_limits<double>::infinity(),
                                                std::numeric_limits<double>::quiet_NaN()};
        const std::uint32_t choice = m_bytes.byte();
        return choice < 128   ? kReals[choice % 11]
               : choice < 136 ? kReals[choice % 16]
                              : (choice - 192.0) / 32;
    }

    host::Value matrix()
    {
        host::Matrix4 made;
        if (m_bytes.below(2) == 1) {
            for (auto& row : made.m) {
                for (double& number : row) {
                    number = m_bytes.below(3) == 0 ? real() : number;
                }
            }
        }
        return host::Value::of(made);
    }

    /// A lattice of few points, sometimes of fewer than it says.
    host::Value lattice()
    {
        host::geometry::LatticeData made;
        for (std::int32_t* const size : {&made.s, &made.t, &made.u}) {
            *size = static_cast<std::int32_t>(m_bytes.below(4)) + 1;
        }
        made.points.resize(static_cast<std::size_t>(made.s * made.t * made.u) -
                           (m_bytes.below(8) == 0 ? 1 : 0));
        for (host::Vec3d& point : made.points) {
            point = {real(), real(), real()};
        }
        return host::Value::of(std::move(made));
    }

    host::Value components()
    {
        constexpr std::array<const char*, 4> kKinds{"f", "e", "vtx", "map"};
        host::ComponentList list;
        const std::string kind = kKinds[m_bytes.below(4)];
        const std::uint32_t most = count(kind) + (m_bytes.below(16) == 0 ? 2 : 0);
        const std::uint32_t texts = m_bytes.below(6);
        if (texts == 5) {
            list.components.push_back(kind + "[*]");
        }
        for (std::uint32_t text = 0; text < texts % 5; ++text) {
            const std::uint32_t first = m_bytes.below(most);
            const std::uint32_t last = m_bytes.below(2) == 0 ? first : m_bytes.below(most);
            list.components.push_back(kind + "[" + std::to_string(first) + ":" +
                                      std::to_string(last) + "]");
        }
        return host::Value::of(std::move(list));
    }

    const host::NodeCompute& m_row;
    host::NodeType m_type;
    ByteSource& m_bytes;
    MeshPointer m_mesh;
    MeshPointer m_other;
    std::size_t m_output;
    std::int32_t m_index = -1;
    std::map<Place, host::Value> m_values;
    std::map<Place, std::unique_ptr<std::vector<std::int32_t>>> m_indices;
    std::map<std::size_t, std::unique_ptr<host::NumericArray>> m_arrays;
    std::map<Place, std::unique_ptr<host::NumericArray>> m_inners;
    std::shared_ptr<const void> m_kept;
};

} // namespace test
