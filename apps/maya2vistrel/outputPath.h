// Where the result goes when nobody says.
#pragma once

#include <string>
#include <string_view>

/// The scene's path with environment variables ($NAME, ${NAME}) and a leading tilde expanded, ".mb"
/// taken off and ".obx" put on where it is not there yet: "car.mb" and "car" give "car.obx",
/// "car.ma" gives "car.ma.obx". Unknown variables stay as they are.
std::string outputPathOf(std::string_view scenePath);
