// The one text in which Windows hands arguments to a program.
#pragma once

#include <string>
#include <vector>

namespace platform {

/// `program` and `arguments` as one command line that the C runtime and CommandLineToArgvW take
/// apart into exactly these texts again: quotes around what is empty or holds blanks or quotes,
/// backslashes doubled only before a quote.
///
/// Range    `program` holds no quote: it is read by simpler rules, and no file name can hold one.
[[nodiscard]] std::string windowsCommandLine(const std::string& program,
                                             const std::vector<std::string>& arguments);

} // namespace platform
