// The build date and time that the banner in every scene file shows: that of the release, not of
// the compiler's run, so that one version writes the same bytes wherever and whenever it was built.
#pragma once

inline constexpr const char* kBuildStamp = "Nov 21 2026 12:00:00";
