#ifndef VARNO_WINDOW_XREPLY_H
#define VARNO_WINDOW_XREPLY_H

#include <cstdlib>
#include <memory>

namespace varno {

/// Gives back what the X library has allocated.
struct FreeXReply {
    void operator()(void* reply) const { std::free(reply); }
};

/// An answer or an event of the X server, owned; null where none came.
template<class T>
using XReply = std::unique_ptr<T, FreeXReply>;

} // namespace varno

#endif
