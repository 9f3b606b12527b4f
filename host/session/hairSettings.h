// What hair systems and follicles of a scene say, in the form that the kernels take.
#pragma once

#include "host/geometry/hair/HairStyle.h"
#include "host/session/Session.h"

#include <string>

namespace host::session {

/// The settings of a hair system; what the scene does not say is as a new node has it.
geometry::HairStyle readHairStyle(Session& session, NodeId hairSystem);

/// Whether a hair system has settings that nothing here carries out.
bool hasUnusedHairSettings(Session& session, NodeId hairSystem);

/// A follicle with its points in world space; `number` is its index in the system.
geometry::HairGuide readHairGuide(Session& session, NodeId follicle, std::uint32_t number);

/// The entries of a ramp of numbers ("name_Position", "name_FloatValue", "name_Interp").
geometry::Ramp<double> readNumberRamp(Session& session, NodeId node, const std::string& name);

/// The number of an attribute; `fallback` where the node has none.
double readNumber(Session& session, NodeId node, std::string_view name, double fallback);

} // namespace host::session
