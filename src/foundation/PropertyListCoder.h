// Property lists as bytes: the XML and binary forms, read and written with libplist.
// Bytes from outside are checked for size, depth and reference expansion before libplist sees them.
#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Result.h"

#include <cstddef>
#include <span>

namespace orbel {

class PropertyListCoder {
public:
  enum class Format { xml, binary };

  // Reads either form. A failure names what is wrong with the bytes. An integer beyond 64 signed bits becomes
  // the nearest double, text that is not UTF-8 is repaired as below, and a text ends at a NUL inside of it.
  static Result<PropertyList> read(std::span<const std::byte> bytes);

  // Never fails: every PropertyList has both forms. Text that is not UTF-8 has its bad bytes replaced by
  // U+FFFD, and so are NUL and, in XML, the other characters that XML forbids. Dates keep microseconds in the
  // binary form and whole seconds in XML, and are cut to the years 1932 to 2069.
  static PropertyList::Data write(const PropertyList& value, Format format);
};

} // namespace orbel
