#pragma once

#include <cstdlib>
#include <memory>

namespace fadewell {

/// Frees what xcb hands out.
struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, event or error of an X server; null when there is none.
template <class T>
using XcbReply = std::unique_ptr<T, XcbFree>;

} // namespace fadewell
