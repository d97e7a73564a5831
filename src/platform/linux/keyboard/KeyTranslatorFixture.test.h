#pragma once

#include "platform/linux/keyboard/KeyTranslator.h"
#include "platform/linux/keyboard/XkbHandles.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace tapalong::test {

inline XkbHandle<xkb_keymap> keymapOf(const char* layout, const char* variant = "", const char* options = "") {
    const XkbHandle<xkb_context> context{xkb_context_new(XKB_CONTEXT_NO_FLAGS)};
    const xkb_rule_names names{
        .rules = "evdev", .model = "pc105", .layout = layout, .variant = variant, .options = options};
    return XkbHandle<xkb_keymap>{xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS)};
}

class KeyTranslatorTest : public testing::Test {
protected:
    static void SetUpTestSuite() { setenv("LC_ALL", "en_US.UTF-8", 1); }

    void use(const char* layout, const char* variant = "", const char* options = "") {
        const auto keymap = keymapOf(layout, variant, options);
        ASSERT_NE(keymap, nullptr);
        translator.setKeymap(keymap.get());
    }

    TranslatedKey press(std::uint32_t code) { return translator.translate(code, KeyAction::press); }
    TranslatedKey release(std::uint32_t code) { return translator.translate(code, KeyAction::release); }

    TranslatedKey tap(std::uint32_t code) {
        auto pressed = press(code);
        (void)release(code);
        return pressed;
    }

    std::optional<std::string> typed(std::uint32_t code) {
        const auto key = tap(code);
        return key.event ? key.event->text() : std::nullopt;
    }

    std::optional<std::string> typedWith(std::uint32_t modifier, std::uint32_t code) {
        (void)press(modifier);
        auto text = typed(code);
        (void)release(modifier);
        return text;
    }

    ModifierFlags flagsAfterPress(std::uint32_t code) { return press(code).event.value().modifierFlags; }
    ModifierFlags flagsAfterRelease(std::uint32_t code) { return release(code).event.value().modifierFlags; }

    KeyTranslator translator;
};

} // namespace tapalong::test
