#pragma once

#include <cstdlib>
#include <memory>

namespace tapalong::test {

/// Replies of XCB are the caller's to free.
template <class Reply> std::unique_ptr<Reply, void (*)(void*)> own(Reply* reply) {
    return {reply, &std::free};
}

} // namespace tapalong::test
