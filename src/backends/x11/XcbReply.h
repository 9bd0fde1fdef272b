// Owns what xcb hands out from malloc: replies, events and errors. Empty when there was no answer.
#pragma once

#include <cstdlib>
#include <memory>

namespace orbel::x11 {

struct XcbDeleter {
  void operator()(void* memory) const { std::free(memory); }
};

template <class Reply>
using XcbReply = std::unique_ptr<Reply, XcbDeleter>;

// So that the type of the reply need not be written at every call.
template <class Reply>
XcbReply<Reply> ownReply(Reply* reply) {
  return XcbReply<Reply>(reply);
}

} // namespace orbel::x11
