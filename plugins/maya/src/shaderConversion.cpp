#include "plugins/maya/src/shaderConversion.h"

#include "importers/maya/src/Log.h"
#include "importers/maya/src/TraceCheck.h"
#include "scene/Diffuse.h"
#include "scene/OldSCeneapiLightMultiMaterial.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericData.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MObject.h>
#include <maya/MPlug.h>
#include <maya/MString.h>

#include <cmath>

namespace {

struct Color {
    float r, g, b;
};

/// Three floats of a plug; `start` stays where they cannot be read.
Color readColor(const MPlug& plug, Color start)
{
    MObject data = plug.asMObject();
    MStatus status;
    MFnNumericData numbers(data, &status);
    Color color = start;
    if (!status || !numbers.getData(color.r, color.g, color.b)) {
        return start;
    }
    return color;
}

/// The first file texture upstream of a plug, or a null object.
MObject findFileTexture(MPlug& plug)
{
    MStatus status;
    MItDependencyGraph upstream(plug, MFn::kFileTexture, MItDependencyGraph::kUpstream,
                                MItDependencyGraph::kBreadthFirst, MItDependencyGraph::kNodeLevel,
                                &status);
    TRACE_REPORT(status, "MItDependencyGraph::MItDependencyGraph");
    upstream.disablePruningOnFilter();
    return upstream.isDone() ? MObject::kNullObj : upstream.currentItem();
}

void setTexture(orv::OldSCeneapiLightMultiMaterial& material, const MObject& textureNode)
{
    const MFnDependencyNode texture(textureNode);
    material.setTexture(texture.findPlug("fileTextureName", true).asString().asUTF8());

    MObject frame = texture.findPlug("translateFrame", true).asMObject();
    MFnNumericData numbers(frame);
    float shiftU = 0;
    float shiftV = 0;
    if (numbers.getData(shiftU, shiftV)) {
        material.setShiftU(shiftU);
        material.setShiftV(shiftV);
    }
    const double angle = texture.findPlug("rotateFrame", true).asDouble();
    material.setAngle(static_cast<float>(angle / 3.141592653589793 * 180));
}

} // namespace

std::shared_ptr<orv::Material> convertNodeToMaterial(const MObject& shader)
{
    FILE_LOG(DEBUG3) << "convertNodeToMaterial";
    if (shader.isNull()) {
        return std::make_shared<orv::Diffuse>("No maya shader found");
    }
    const MFnDependencyNode node(shader);
    auto material = std::make_shared<orv::OldSCeneapiLightMultiMaterial>(node.name().asUTF8());

    MStatus status;
    MPlug colorPlug = node.findPlug("color", true, &status);
    TRACE_REPORT(status, "MFnDependencyNode::findPlug");
    const MObject texture = findFileTexture(colorPlug);
    if (!texture.isNull()) {
        setTexture(*material, texture);
    }

    const Color color = readColor(colorPlug, {1, 1, 1});
    const MPlug diffusePlug = node.findPlug("diffuse", true, &status);
    if (status) {
        float weight = 1.0f;
        if (float value = 0; diffusePlug.getValue(value)) {
            weight = value;
        }
        material->setDiffuse(weight * color.r, weight * color.g, weight * color.b);
    }

    const Color transparency = readColor(node.findPlug("transparency", true), {1, 1, 1});
    const float opacity = ((1 - transparency.r) + (1 - transparency.g) + (1 - transparency.b)) / 3;
    constexpr double kNoticeable = 0.01;
    if (std::fabs(static_cast<double>(opacity) - 1.0) > kNoticeable) {
        material->setAlpha(opacity);
    }

    const MPlug specularPlug = node.findPlug("specularColor", true, &status);
    if (status) {
        const Color specular = readColor(specularPlug, {1, 1, 1});
        material->setSpecular(specular.r, specular.g, specular.b);
    }
    return material;
}
