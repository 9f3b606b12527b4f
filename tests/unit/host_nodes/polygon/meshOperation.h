// What tests of operations on a mesh with named components have in common.
#pragma once

#include "host/geometry/mesh/MeshData.h"
#include "tests/support/ToyContext.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace test {

inline std::shared_ptr<const host::geometry::MeshData> outputOf(ToyContext& context)
{
    return context.compute("output").data<host::geometry::MeshData>();
}

/// Gives the operation its mesh and the components that it names.
inline void setInput(ToyContext& context, host::geometry::MeshData mesh,
                     std::vector<std::string> components)
{
    context.values["inputPolymesh"] = host::Value::of(std::move(mesh));
    context.values["inputComponents"] = host::Value::of(host::ComponentList{std::move(components)});
}

} // namespace test
