#pragma once

#include "settings/SessionSettings.h"
#include "ui/ControlRangeValue.h"
#include "ui/ViewAdapter.h"
#include "ui/ViewFactory.h"
#include "ui/ViewProperty.h"
#include "views/ControlRange.h"
#include "views/SettingsView.h"
#include "views/ShortcutRecorder.h"

#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>

namespace tapalong {

/// The settings window's state and intents, for QML.
class SettingsViewAdapter final : public tapalong::ViewAdapter {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")

    VIEW_PROPERTY(bool, isDark, m_environment.isDark())

    VIEW_SETTING(bool, kioskMode, setKioskMode, m_settings.kioskMode)
    VIEW_SETTING(bool, rainbowMode, setRainbowMode, m_settings.rainbowMode)
    VIEW_SETTING(bool, modifierKeysTypeEmoji, setModifierKeysTypeEmoji, m_settings.modifierKeysTypeEmoji)
    VIEW_SETTING(bool, soundEnabled, setSoundEnabled, m_settings.soundEnabled)
    VIEW_SETTING(bool, useTouchID, setUseTouchID, m_settings.useTouchID)
    VIEW_SETTING(QString, exitPassword, setExitPassword, m_settings.exitPassword)
    VIEW_SLIDER(hotCornerDwellTime, setHotCornerDwellTime, m_settings.hotCornerDwellTime, tapalong::dwellTimeRange)
    VIEW_SLIDER(fontSize, setFontSize, m_settings.fontSize, tapalong::fontSizeRange)
    VIEW_SETTING(bool, useSystemAppearance, setUseSystemAppearance, m_settings.useSystemAppearance)
    VIEW_SETTING(bool, showCursor, setShowCursor, m_settings.showCursor)

    VIEW_SETTING(bool, showLockdownInfo, setShowLockdownInfo, m_view->showLockdownInfo)
    VIEW_SETTING(bool, showEmojiInfo, setShowEmojiInfo, m_view->showEmojiInfo)
    VIEW_PROPERTY(bool, lockdownToggleEnabled, m_view->isLockdownToggleEnabled())
    VIEW_PROPERTY(QString, lockdownInfo, translated(m_view->lockdownInfo()))
    VIEW_PROPERTY(QStringList, lockdownLimits, m_view->lockdownLimits())
    VIEW_PROPERTY(QString, emojiInfo, translated(m_view->emojiInfo()))
    VIEW_PROPERTY(bool, showsSoundPicker, m_view->showsSoundPicker())
    VIEW_PROPERTY(bool, showsColorPickers, m_view->showsColorPickers())
    VIEW_PROPERTY(QString, dwellTimeLabel, tapalong::dwellTimeLabel(m_settings.hotCornerDwellTime.get()))
    VIEW_PROPERTY(QString, fontSizeLabel, tapalong::fontSizeLabel(m_settings.fontSize.get()))
    VIEW_PROPERTY(QString, maxCharacters, std::to_string(m_settings.maxCharacters.get())) // too long for QML's numbers
    VIEW_PROPERTY(bool, canIncrementMaxCharacters, maxCharactersRange.canIncrement(m_settings.maxCharacters.get()))
    VIEW_PROPERTY(bool, canDecrementMaxCharacters, maxCharactersRange.canDecrement(m_settings.maxCharacters.get()))
    VIEW_PROPERTY(bool, isRecordingShortcut, m_view->shortcutRecorder().isRecordingShortcut())
    VIEW_PROPERTY(QString, shortcutDisplayString, m_view->shortcutRecorder().shortcutDisplayString())

    VIEW_PROPERTY(bool, showsAccessibilityWarning, m_view->showsAccessibilityWarning())
    VIEW_PROPERTY(bool, showsPasswordWarning, m_view->showsPasswordWarning())
    VIEW_PROPERTY(QStringList, notices, m_view->notices())
    VIEW_PROPERTY(bool, startEnabled, m_view->isStartEnabled())
    VIEW_PROPERTY(double, startOpacity, m_view->startOpacity())
    VIEW_PROPERTY(QString, exitHint, translated(m_view->exitHint()))

    Q_PROPERTY(QColor customFG READ customFG WRITE setCustomFG NOTIFY changed FINAL)
    Q_PROPERTY(QColor customBG READ customBG WRITE setCustomBG NOTIFY changed FINAL)
    Q_PROPERTY(QUrl appIcon READ appIcon CONSTANT FINAL)
    Q_PROPERTY(int soundPackIndex READ soundPackIndex WRITE setSoundPackIndex NOTIFY changed FINAL)
    Q_PROPERTY(int exitCornerIndex READ exitCornerIndex WRITE setExitCornerIndex NOTIFY changed FINAL)
    Q_PROPERTY(QStringList soundPackNames READ soundPackNames CONSTANT FINAL)
    Q_PROPERTY(QStringList exitCornerLabels READ exitCornerLabels CONSTANT FINAL)
    Q_PROPERTY(tapalong::ControlRangeValue fontSizeRange READ fontSizeRange CONSTANT FINAL)
    Q_PROPERTY(tapalong::ControlRangeValue dwellTimeRange READ dwellTimeRange CONSTANT FINAL)

public:
    SettingsViewAdapter(std::shared_ptr<SettingsView> view, ViewEnvironment environment, QObject* parent);
    ~SettingsViewAdapter() override;

    [[nodiscard]] QColor customFG() const;
    [[nodiscard]] QColor customBG() const;
    void setCustomFG(const QColor& color);
    void setCustomBG(const QColor& color);

    [[nodiscard]] QUrl appIcon() const;

    /// Positions in the lists below.
    [[nodiscard]] int soundPackIndex() const;
    [[nodiscard]] int exitCornerIndex() const;
    void setSoundPackIndex(int index);
    void setExitCornerIndex(int index);
    [[nodiscard]] QStringList soundPackNames() const;
    [[nodiscard]] QStringList exitCornerLabels() const;

    [[nodiscard]] ControlRangeValue fontSizeRange() const;
    [[nodiscard]] ControlRangeValue dwellTimeRange() const;

    Q_INVOKABLE void incrementMaxCharacters();
    Q_INVOKABLE void decrementMaxCharacters();
    Q_INVOKABLE void previewSound();
    Q_INVOKABLE void toggleRecording();
    Q_INVOKABLE void requestAccessibilityPermission();
    /// Does nothing while the start is not enabled: the keyboard shortcut reaches it too.
    Q_INVOKABLE void startSession();

private:
    const std::shared_ptr<SettingsView> m_view;
    SessionSettings& m_settings;
    const ViewEnvironment m_environment;
};

} // namespace tapalong
