#pragma once

#include <cstdlib>
#include <memory>

namespace tapalong::test {

template <class Type> using Reply = std::unique_ptr<Type, void (*)(void*)>;

/// Replies of XCB are the caller's to free.
template <class Type> Reply<Type> own(Type* reply) {
    return {reply, &std::free};
}

} // namespace tapalong::test
