#include "host/session/defaultScene.h"

#include "host/math/units.h"

#include <array>
#include <numbers>

namespace host::session {
namespace {

struct NodeRow {
    std::string_view type;
    std::string_view name;
    std::string_view parent;
};

/// In order of creation, which is the order of iteration over nodes.
constexpr NodeRow kNodes[] = {
    {"time", "time1", ""},
    {"sequenceManager", "sequenceManager1", ""},
    {"hardwareRenderingGlobals", "hardwareRenderingGlobals", ""},
    {"partition", "renderPartition", ""},
    {"renderGlobalsList", "renderGlobalsList1", ""},
    {"defaultLightList", "defaultLightList1", ""},
    {"defaultShaderList", "defaultShaderList1", ""},
    {"postProcessList", "postProcessList1", ""},
    {"defaultRenderUtilityList", "defaultRenderUtilityList1", ""},
    {"defaultRenderingList", "defaultRenderingList1", ""},
    {"lightList", "lightList1", ""},
    {"defaultTextureList", "defaultTextureList1", ""},
    {"lambert", "lambert1", ""},
    {"particleCloud", "particleCloud1", ""},
    {"shadingEngine", "initialShadingGroup", ""},
    {"shadingEngine", "initialParticleSE", ""},
    {"materialInfo", "initialMaterialInfo", ""},
    {"shaderGlow", "shaderGlow1", ""},
    {"dof", "dof1", ""},
    {"renderGlobals", "defaultRenderGlobals", ""},
    {"renderQuality", "defaultRenderQuality", ""},
    {"resolution", "defaultResolution", ""},
    {"objectSet", "defaultLightSet", ""},
    {"objectSet", "defaultObjectSet", ""},
    {"viewColorManager", "defaultViewColorManager", ""},
    {"colorManagementGlobals", "defaultColorMgtGlobals", ""},
    {"hwRenderGlobals", "hardwareRenderGlobals", ""},
    {"hwRenderGlobals", "defaultHardwareRenderGlobals", ""},
    {"partition", "characterPartition", ""},
    {"ikSystem", "ikSystem", ""},
    {"hyperGraphInfo", "hyperGraphInfo", ""},
    {"hyperLayout", "hyperGraphLayout", ""},
    {"globalCacheControl", "globalCacheControl", ""},
    {"strokeGlobals", "strokeGlobals", ""},
    {"dynController", "dynController1", ""},
    {"lightLinker", "lightLinker1", ""},
    {"displayLayerManager", "layerManager", ""},
    {"displayLayer", "defaultLayer", ""},
    {"renderLayerManager", "renderLayerManager", ""},
    {"renderLayer", "defaultRenderLayer", ""},
    {"shapeEditorManager", "shapeEditorManager", ""},
    {"poseInterpolatorManager", "poseInterpolatorManager", ""},
    {"standardSurface", "standardSurface1", ""},
    {"openPBRSurface", "openPBR_shader1", ""},
    {"transform", "persp", ""},
    {"camera", "perspShape", "persp"},
    {"transform", "top", ""},
    {"camera", "topShape", "top"},
    {"transform", "front", ""},
    {"camera", "frontShape", "front"},
    {"transform", "side", ""},
    {"camera", "sideShape", "side"},
};

struct NumberRow {
    std::string_view node;
    std::string_view attribute;
    std::array<double, 3> values; ///< centimetres, radians
    std::size_t count = 1;
};

constexpr double kDegree = std::numbers::pi / 180;

/// What differs from the attributes' own defaults.
constexpr NumberRow kNumbers[] = {
    {"initialShadingGroup", "renderableOnlySet", {1}},
    {"initialParticleSE", "renderableOnlySet", {1}},
    {"persp", "visibility", {0}},
    {"persp", "translate", {28, 21, 28}, 3},
    {"persp", "rotate", {-27.938352729602379 * kDegree, 45 * kDegree, 0}, 3},
    {"perspShape", "visibility", {0}},
    {"perspShape", "focalLength", {35}},
    {"perspShape", "centerOfInterest", {44.82186966202994}},
    {"top", "visibility", {0}},
    {"top", "translate", {0, 1000.1, 0}, 3},
    {"top", "rotate", {-90 * kDegree, 0, 0}, 3},
    {"topShape", "visibility", {0}},
    {"topShape", "renderable", {0}},
    {"topShape", "orthographic", {1}},
    {"topShape", "orthographicWidth", {30}},
    {"topShape", "centerOfInterest", {1000.1}},
    {"front", "visibility", {0}},
    {"front", "translate", {0, 0, 1000.1}, 3},
    {"frontShape", "visibility", {0}},
    {"frontShape", "renderable", {0}},
    {"frontShape", "orthographic", {1}},
    {"frontShape", "orthographicWidth", {30}},
    {"frontShape", "centerOfInterest", {1000.1}},
    {"side", "visibility", {0}},
    {"side", "translate", {1000.1, 0, 0}, 3},
    {"side", "rotate", {0, 90 * kDegree, 0}, 3},
    {"sideShape", "visibility", {0}},
    {"sideShape", "renderable", {0}},
    {"sideShape", "orthographic", {1}},
    {"sideShape", "orthographicWidth", {30}},
    {"sideShape", "centerOfInterest", {1000.1}},
};

struct ConnectionRow {
    std::string_view source;
    std::string_view destination;
};

constexpr ConnectionRow kConnections[] = {
    {"lambert1.outColor", "initialShadingGroup.surfaceShader"},
    {"lambert1.outColor", "initialParticleSE.surfaceShader"},
    {"particleCloud1.outColor", "initialParticleSE.volumeShader"},
    {"initialShadingGroup.partition", "renderPartition.sets[0]"},
    {"initialParticleSE.partition", "renderPartition.sets[1]"},
    {"initialShadingGroup.message", "initialMaterialInfo.shadingGroup"},
    {"lambert1.message", "initialMaterialInfo.material"},
    {"lambert1.message", "defaultShaderList1.shaders[0]"},
    {"particleCloud1.message", "defaultShaderList1.shaders[1]"},
    {"layerManager.displayLayerId[0]", "defaultLayer.identification"},
    {"renderLayerManager.renderLayerId[0]", "defaultRenderLayer.identification"},
};

void sendNumbers(file::CommandSink& sink, const NumberRow& row)
{
    sink.selectNode(row.node);
    file::SetAttribute command;
    command.plug.steps[0].name = row.attribute;
    command.plug.stepCount = 1;
    command.payload = file::SetAttribute::Payload::Numbers;
    command.numbers.width = row.count;
    command.numbers.doubles = std::span(row.values).first(row.count);
    sink.setAttribute(command);
}

} // namespace

void sendDefaultScene(file::CommandSink& sink)
{
    sink.currentUnit({});
    for (const NodeRow& row : kNodes) {
        sink.createNode({.type = row.type, .name = row.name, .parent = row.parent});
    }
    for (const NumberRow& row : kNumbers) {
        sendNumbers(sink, row);
    }
    for (const ConnectionRow& row : kConnections) {
        sink.connect({.source = row.source, .destination = row.destination});
    }
    sink.endOfScene();
}

} // namespace host::session
