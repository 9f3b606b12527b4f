// The rows of this folder.
#pragma once

#include "host/types/ComputeContext.h"

namespace host::nodes {

} // namespace host::nodes
