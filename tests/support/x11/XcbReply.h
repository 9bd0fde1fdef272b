// Owners for what xcb hands out with malloc.
#pragma once

#include <cstdlib>
#include <memory>

namespace orbel::test {

struct FreeWithMalloc {
  void operator()(void* memory) const { std::free(memory); }
};

template <class Reply>
using XcbReply = std::unique_ptr<Reply, FreeWithMalloc>;

} // namespace orbel::test
