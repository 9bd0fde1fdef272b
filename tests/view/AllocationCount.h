// How often the test program has asked the heap for memory since it started.
#pragma once

#include <cstddef>

namespace orbel {

std::size_t allocationCount();

} // namespace orbel
