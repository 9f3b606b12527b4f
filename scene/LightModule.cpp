#include "scene/LightModule.h"

#include "sceneapi/orvScene_api.h"
#include "sceneapi/orvSceneapi_oo.h"

#include <utility>

namespace orv {

LightModule::LightModule(std::string name) : m_name(std::move(name)) {}

LightModule::~LightModule() = default;

void LightModule::write(orvSceneapi_oo& oo)
{
    orvScene_api* api = oo.sceneApi();
    if (api == nullptr) {
        return;
    }
    api->beginLoad(m_name.c_str());
    writeOptions(oo);
    api->endLoad();
}

void LightModule::define(orvSceneapi_oo&) {}

bool LightModule::isDefined() const
{
    return false;
}

} // namespace orv
