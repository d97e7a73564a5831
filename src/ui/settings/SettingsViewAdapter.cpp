#include "ui/settings/SettingsViewAdapter.h"

#include "base/Fatal.h"
#include "resources/GeneratedAssetSymbols.h"
#include "settings/ScreenCorner.h"
#include "sound/SoundPack.h"

#include <algorithm>
#include <utility>

namespace tapalong {

namespace {

ControlRangeValue toQml(const SliderRange& range) {
    return {range.lower, range.upper, range.step};
}

template <class List> const auto& at(const List& list, int index) {
    verify(index >= 0 && static_cast<std::size_t>(index) < list.size(), "a picker's choice must be in its list");
    return list[static_cast<std::size_t>(index)];
}

template <class List, class Entry> int indexOf(const List& list, const Entry& entry) {
    return static_cast<int>(std::find(list.begin(), list.end(), entry) - list.begin());
}

} // namespace

SettingsViewAdapter::SettingsViewAdapter(std::shared_ptr<SettingsView> view, ViewEnvironment environment,
                                         QObject* parent)
    : m_view(std::move(view)), m_settings(m_view->settings()), m_environment(std::move(environment)) {
    setParent(parent);
    follow(*m_view);
    follow(m_settings);
    follow(m_view->shortcutRecorder());
    if (m_environment.appearance != nullptr) {
        follow(*m_environment.appearance);
    }
}

SettingsViewAdapter::~SettingsViewAdapter() = default;

QColor SettingsViewAdapter::customFG() const {
    return toQColor(m_view->customFG(), isDark());
}

QColor SettingsViewAdapter::customBG() const {
    return toQColor(m_view->customBG(), isDark());
}

void SettingsViewAdapter::setCustomFG(const QColor& color) {
    m_view->setCustomFG(fromQColor(color));
}

void SettingsViewAdapter::setCustomBG(const QColor& color) {
    m_view->setCustomBG(fromQColor(color));
}

QUrl SettingsViewAdapter::appIcon() const {
    return QUrl("image://symbol/" + tapalong::toQml(AppIconImage.name));
}

int SettingsViewAdapter::soundPackIndex() const {
    return indexOf(SoundPack::allPacks(), SoundPack::packWithID(m_settings.selectedSoundPack.get()));
}

int SettingsViewAdapter::exitCornerIndex() const {
    return indexOf(allCorners, m_settings.exitCorner.get());
}

void SettingsViewAdapter::setSoundPackIndex(int index) {
    m_settings.selectedSoundPack.set(std::string(at(SoundPack::allPacks(), index).id));
}

void SettingsViewAdapter::setExitCornerIndex(int index) {
    m_settings.exitCorner.set(at(allCorners, index));
}

QStringList SettingsViewAdapter::soundPackNames() const {
    QStringList names;
    for (const auto& pack : SoundPack::allPacks()) {
        names.append(translated(pack.name));
    }
    return names;
}

QStringList SettingsViewAdapter::exitCornerLabels() const {
    QStringList labels;
    for (const auto corner : allCorners) {
        labels.append(translated(label(corner)));
    }
    return labels;
}

ControlRangeValue SettingsViewAdapter::fontSizeRange() const {
    return toQml(tapalong::fontSizeRange);
}

ControlRangeValue SettingsViewAdapter::dwellTimeRange() const {
    return toQml(tapalong::dwellTimeRange);
}

void SettingsViewAdapter::incrementMaxCharacters() {
    m_settings.maxCharacters.set(maxCharactersRange.incremented(m_settings.maxCharacters.get()));
}

void SettingsViewAdapter::decrementMaxCharacters() {
    m_settings.maxCharacters.set(maxCharactersRange.decremented(m_settings.maxCharacters.get()));
}

void SettingsViewAdapter::previewSound() {
    m_view->previewSound();
}

void SettingsViewAdapter::toggleRecording() {
    m_view->shortcutRecorder().toggle();
}

void SettingsViewAdapter::requestAccessibilityPermission() {
    m_view->requestAccessibilityPermission();
}

void SettingsViewAdapter::startSession() {
    if (startEnabled()) {
        m_view->startSession();
    }
}

} // namespace tapalong
