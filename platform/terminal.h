// Is somebody watching?
#pragma once

namespace platform {

/// True when standard error is a terminal that a progress bar may be drawn on.
[[nodiscard]] bool isErrorTerminal();

} // namespace platform
