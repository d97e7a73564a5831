#include "settings/SessionSettings.h"

#include "base/Fatal.h"
#include "platform/Application.h"

namespace tapalong {

namespace {

SessionSettings* sharedInstance = nullptr;

const Application& existing(const Application* application) {
    verify(application != nullptr, "the application object must exist before its appearance is asked for");
    return *application;
}

} // namespace

SessionSettings::SessionSettings(UserDefaults& defaults, Application* application)
    : m_defaults(defaults), m_application(application) {
    sharedInstance = this;
}

SessionSettings::~SessionSettings() {
    if (sharedInstance == this) {
        sharedInstance = nullptr;
    }
}

SessionSettings& SessionSettings::shared() {
    verify(sharedInstance != nullptr, "the settings store must exist before it is used");
    return *sharedInstance;
}

Color SessionSettings::foregroundColor() const {
    if (useSystemAppearance.get()) {
        return NamedColor::primary;
    }
    return Color::fromHex(customFGColorHex.get()).value_or(NamedColor::white);
}

Color SessionSettings::backgroundColor() const {
    if (useSystemAppearance.get()) {
        const bool dark = existing(m_application).effectiveAppearance() == Appearance::darkAqua;
        return dark ? Color(SrgbColor{0.07, 0.07, 0.1}) : Color(NamedColor::windowBackground);
    }
    return Color::fromHex(customBGColorHex.get()).value_or(NamedColor::black);
}

bool SessionSettings::backgroundIsLight() const {
    if (const auto background = backgroundColor().srgb()) {
        return background->isLight();
    }
    const auto appearance = existing(m_application).effectiveAppearance();
    verify(appearance.has_value(), "the desktop must have a light or a dark appearance");
    return *appearance != Appearance::darkAqua;
}

} // namespace tapalong
