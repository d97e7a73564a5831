#pragma once

#include <deque>

namespace tapalong {

struct TypedCharacter;

/// Oldest first. A deque, because characters come at the end and go at the front: no key pays for moving all of them,
/// and none are kept twice while the list grows.
using TypedContent = std::deque<TypedCharacter>;

} // namespace tapalong
