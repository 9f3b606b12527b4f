// A processing module that the renderer shall load for the scene, with its options.
#pragma once

#include "scene/LightNode.h"

#include <string>

namespace orv {

/// Base of modules: the load block. The order of the virtual functions is part of the contract.
class LightModule : public LightNode {
public:
    /// `name` is the file name of the module as the renderer knows it on every system.
    explicit LightModule(std::string name);

    void write(orvSceneapi_oo& oo) override;
    /// Modules have no definition form: does nothing.
    void define(orvSceneapi_oo& oo) override;
    bool isDefined() const override;
    ~LightModule() override;
    /// Writes the options into the open load block.
    virtual void writeOptions(orvSceneapi_oo& oo) = 0;

    const std::string& getName() const { return m_name; }

private:
    std::string m_name;
};

} // namespace orv
