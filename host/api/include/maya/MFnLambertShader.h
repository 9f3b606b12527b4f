// Lambert materials and all that derive from them (blinn, phong, phongE, anisotropic, ...).
#pragma once

#include <maya/MFnDependencyNode.h>

class MFnLambertShader : public MFnDependencyNode {
public:
    MFnLambertShader() = default;
    explicit MFnLambertShader(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
};
