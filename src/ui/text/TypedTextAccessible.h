#pragma once

namespace tapalong {

/// Lets assistive technology read a typed text as the item's name, which is put together only when it is asked for.
/// The item still needs a role in QML to be part of the tree. More than one call is one.
void installTypedTextAccessible();

} // namespace tapalong
