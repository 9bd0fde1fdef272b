// The icon of a collection: a dark disc with small copies of its members' icons on a circle inside it.
#pragma once

#include "foundation/Geometry.h"
#include "model/MenuItem.h"
#include "scene/Canvas.h"

#include <cstddef>

namespace orbel {

class CollectionIcon {
public:
  static constexpr Size kSize = {320, 320}; // points

  // Draws the members in their order, clockwise, the first half a step from the top. A member without an
  // image leaves its place empty; so does one whose icon would be less than half a device pixel.
  static void draw(Canvas& canvas, const Rect& destination, const MenuItemList& members);

  // Where the icon of a member is drawn, in the coordinates of the destination; a square, y up.
  static Rect memberFrame(const Rect& destination, std::size_t index, std::size_t memberCount);
};

} // namespace orbel
