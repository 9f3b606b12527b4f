// Where the running program lies.
#pragma once

#include <string>

namespace platform {

/// The program's own path (UTF-8, absolute); empty when the system does not tell.
[[nodiscard]] std::string executablePath();

/// A number that names this process among those that run.
[[nodiscard]] unsigned long processId();

} // namespace platform
