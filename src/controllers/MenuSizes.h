// The sides, in points, of the square windows that the menu-size setting (1 to 3) stands for.
#pragma once

#include <cstdint>

namespace orbel {

constexpr double mainMenuSide(std::int64_t menuSizeSettings) {
  return menuSizeSettings == 1 ? 400 : menuSizeSettings == 2 ? 500 : 600;
}

// A collection's menu is a step smaller than the menu it opens over.
constexpr double collectionMenuSide(std::int64_t menuSizeSettings) {
  return menuSizeSettings == 1 ? 300 : menuSizeSettings == 2 ? 350 : 400;
}

} // namespace orbel
