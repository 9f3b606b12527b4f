// Memory for arrays of many megabytes.
#pragma once

namespace platform {

/// Call it before the first large array is made; later calls change nothing. From then on, where
/// the system offers it, a large array takes pages of two megabytes instead of four kilobytes, so
/// that the system is entered once where it was entered five hundred times, and pages of arrays
/// that are gone (see LargeBlocks.h). Elsewhere: nothing.
void expectLargeArrays();

} // namespace platform
