#include "platform/linux/keyboard/ComposeSequence.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace tapalong {

namespace {

// The table of the "C" locale knows next to nothing, and a program started without a locale should still type "é".
constexpr const char* fallbackLocale = "en_US.UTF-8";

const char* localeOfTheUser() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            const std::string_view locale = value;
            const bool plain = locale == "C" || locale == "POSIX" || locale.substr(0, 2) == "C.";
            return plain ? fallbackLocale : value;
        }
    }
    return fallbackLocale;
}

xkb_compose_table* composeTable() {
    static const XkbHandle<xkb_compose_table> table = [] {
        const XkbHandle<xkb_context> context{xkb_context_new(XKB_CONTEXT_NO_FLAGS)};
        XkbHandle<xkb_compose_table> loaded;
        if (context) {
            loaded.reset(
                xkb_compose_table_new_from_locale(context.get(), localeOfTheUser(), XKB_COMPOSE_COMPILE_NO_FLAGS));
            if (!loaded) {
                loaded.reset(
                    xkb_compose_table_new_from_locale(context.get(), fallbackLocale, XKB_COMPOSE_COMPILE_NO_FLAGS));
            }
        }
        return loaded;
    }();
    return table.get();
}

std::string textOf(xkb_compose_state* state) {
    std::array<char, 256> buffer{};
    const int length = xkb_compose_state_get_utf8(state, buffer.data(), buffer.size());
    return {buffer.data(), std::min(static_cast<std::size_t>(std::max(length, 0)), buffer.size() - 1)};
}

} // namespace

ComposeSequence::Step ComposeSequence::press(xkb_keysym_t keysym) {
    if (!m_state && composeTable() != nullptr) {
        m_state.reset(xkb_compose_state_new(composeTable(), XKB_COMPOSE_STATE_NO_FLAGS));
    }
    if (!m_state || xkb_compose_state_feed(m_state.get(), keysym) == XKB_COMPOSE_FEED_IGNORED) {
        return {};
    }
    switch (xkb_compose_state_get_status(m_state.get())) {
    case XKB_COMPOSE_COMPOSING:
        return {.underWay = true};
    case XKB_COMPOSE_COMPOSED: {
        Step step{.finished = textOf(m_state.get())};
        reset();
        return step;
    }
    case XKB_COMPOSE_CANCELLED:
        reset();
        break;
    case XKB_COMPOSE_NOTHING:
        break;
    }
    return {};
}

bool ComposeSequence::isUnderWay() const {
    return m_state && xkb_compose_state_get_status(m_state.get()) == XKB_COMPOSE_COMPOSING;
}

void ComposeSequence::reset() {
    if (m_state) {
        xkb_compose_state_reset(m_state.get());
    }
}

} // namespace tapalong
