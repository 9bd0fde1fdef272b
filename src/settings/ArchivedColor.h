// A colour as the preferences store keeps it: a binary property-list dictionary of four doubles, lossless.
#pragma once

#include "foundation/Color.h"
#include "foundation/PropertyList.h"
#include "foundation/Result.h"

namespace orbel {

class ArchivedColor {
public:
  static PropertyList::Data archive(const Color& color);
  // Fails when the bytes are no such dictionary or a component is not between 0 and 1.
  static Result<Color> unarchive(const PropertyList::Data& data);
};

} // namespace orbel
