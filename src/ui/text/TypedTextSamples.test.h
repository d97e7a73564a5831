#pragma once

#include "session/TypedCharacter.h"

#include <QGuiApplication>

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

namespace tapalong::samples {

/// Fonts and text layout need the toolkit, not a display.
class WithFonts : public testing::Test {
protected:
    static void SetUpTestSuite() {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        qputenv("QT_LOGGING_RULES", "qt.text.font.db.warning=false;*.warning=false");
        static int count = 1;
        static char name[] = "typed_text_tests";
        static char* arguments[] = {name, nullptr};
        static auto* const application = new QGuiApplication(count, arguments); // NOLINT: lives as long as the process
        (void)application;
    }
};

/// Typed characters with ever new identities and a few colours.
class Typist {
public:
    void type(std::string_view text) {
        while (!text.empty()) {
            const auto character = Character::first(text).value();
            text.remove_prefix(character.utf8().size());
            content.emplace_back(character, color(), Uuid{m_next, m_next * 7});
            ++m_next;
        }
    }

    void drop(std::size_t count) {
        content.erase(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(count));
    }

    TypedContent content;

private:
    [[nodiscard]] Color color() const {
        switch (m_next % 5) {
        case 0:
            return NamedColor::primary;
        case 1:
            return SrgbColor{1, 0, 0};
        case 2:
            return SrgbColor{0, 0.6, 0};
        default:
            return SrgbColor{0, 0, 1};
        }
    }

    std::uint64_t m_next = 1;
};

} // namespace tapalong::samples
