// The units of time by number and by the names that files give them.
#pragma once

#include <maya/MTime.h>

#include <string_view>

namespace host::api {

/// Ticks of one unit: whole numbers all, 24000/1001 and its kin included. kUserDef is the open
/// scene's rate. 0 for what is no unit.
double ticksPerUnit(MTime::Unit unit);

/// The name that files give a unit; empty for kInvalid, kUserDef and what is no unit.
std::string_view nameOfTimeUnit(MTime::Unit unit);

/// The unit of a name ("film", "48fps"); kUserDef for a rate that has no number of its own.
MTime::Unit timeUnitOfName(std::string_view name);

} // namespace host::api
