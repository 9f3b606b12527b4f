// One conversion: the importer as a process of its own, its stream into a file that appears whole
// or not at all.
#pragma once

#include "apps/maya2vistrel/Options.h"

/// Converts and reports; returns the exit status.
int convert(const Options& options);
