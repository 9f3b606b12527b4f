// A first look at the file that is to be converted.
#pragma once

#include <string>

/// kExitDone for what looks like a Maya scene, ASCII or binary; else the exit status, and in
/// `message` what is wrong and what to do. The content decides, not the name.
int checkScene(const std::string& path, std::string& message);
