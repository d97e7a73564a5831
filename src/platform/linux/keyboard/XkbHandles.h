#pragma once

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>

namespace tapalong {

/// Ownership of xkbcommon's reference-counted objects.
struct XkbUnref {
    void operator()(xkb_context* object) const { xkb_context_unref(object); }
    void operator()(xkb_keymap* object) const { xkb_keymap_unref(object); }
    void operator()(xkb_state* object) const { xkb_state_unref(object); }
    void operator()(xkb_compose_table* object) const { xkb_compose_table_unref(object); }
    void operator()(xkb_compose_state* object) const { xkb_compose_state_unref(object); }
};

template <class T> using XkbHandle = std::unique_ptr<T, XkbUnref>;

} // namespace tapalong
