// Who gets an input event, and what comes of it.

#include "random/Model.h"
#include "scenarios/runner/SimulatedApplication.h"

#include <algorithm>

namespace tapalong::testing {

namespace {

using Receiver = simulated::SimulatedInput::Receiver;

constexpr ModifierFlags emojiFlags = 0x1F0000;
constexpr ModifierFlags chordFlags = 0x140000;

bool isKeyboard(EventType type) {
    return type == EventType::keyDown || type == EventType::keyUp || type == EventType::flagsChanged;
}

EventType typeOf(const Event& event) {
    return event.kind == Event::Kind::pointer ? EventType::mouseMoved : event.type;
}

/// Nothing where the key says nothing.
std::optional<KeyPress> meaningOf(const Event& event, bool systemKeysSuppressed) {
    const bool chord = (event.flags & chordFlags) != 0;
    const bool suppressed = systemKeysSuppressed && (chord || event.press.meaning == KeyPress::Meaning::navigation);
    const bool textDecides =
        event.press.meaning == KeyPress::Meaning::text || event.press.meaning == KeyPress::Meaning::navigation;
    if (suppressed || (textDecides && event.press.character.empty())) {
        return std::nullopt;
    }
    return event.press;
}

} // namespace

Receiver Model::deliver(const Event& event) {
    const auto type = typeOf(event);
    const bool keptFromTaps = secure && isKeyboard(type);
    if (!keptFromTaps && tapTakes(event)) {
        runPosted(event);
        return Receiver::tap;
    }
    if (!ourAppActive) {
        if (type == EventType::keyDown && !keptFromTaps && isShortcut(event)) {
            m_posted.push_back({.start = true});
        }
        if (session && (type == EventType::mouseMoved || type == EventType::leftMouseDragged)) {
            watchCorner();
        }
        runPosted(event);
        return Receiver::otherApplication;
    }
    const bool taken = localMonitorsTake(event);
    if (!taken) {
        typeIntoField(event);
    }
    runPosted(event);
    return taken ? Receiver::localMonitor : Receiver::ownWindow;
}

bool Model::tapTakes(const Event& event) {
    if (!session || !session->isTapInForce() || (breaks(Broken::overlayStopsTheTap) && session->overlay)) {
        return false;
    }
    switch (typeOf(event)) {
    case EventType::keyDown:
        m_posted.push_back({.press = meaningOf(event, true)});
        return true;
    case EventType::flagsChanged:
        postEmojiFor(event);
        return true;
    case EventType::systemDefined:
    case EventType::scrollWheel:
    case EventType::otherMouseDown:
    case EventType::otherMouseUp:
    case EventType::gesture:
    case EventType::magnify:
    case EventType::swipe:
        return true;
    default: // no tap asks for the others
        return false;
    }
}

bool Model::localMonitorsTake(const Event& event) {
    // The newest monitor comes first. One that takes the event keeps it from the older ones of another kind.
    const auto monitors = localMonitors;
    const auto type = typeOf(event);
    std::optional<MonitorKind> taker;
    for (auto monitor = monitors.rbegin(); monitor != monitors.rend(); ++monitor) {
        if (taker && *taker != *monitor) {
            continue;
        }
        bool takes = false;
        switch (*monitor) {
        case MonitorKind::session:
            takes = sessionMonitorTakes(event);
            break;
        case MonitorKind::recorder:
            takes = type == EventType::keyDown || type == EventType::flagsChanged;
            if (type == EventType::keyDown) {
                recorderSees(event);
            }
            break;
        case MonitorKind::shortcut:
            takes = type == EventType::keyDown && isShortcut(event);
            if (takes) {
                m_posted.push_back({.start = true});
            }
            break;
        }
        if (takes && !taker) {
            taker = *monitor;
        }
    }
    return taker.has_value();
}

bool Model::sessionMonitorTakes(const Event& event) {
    if (session->overlay) {
        return false;
    }
    switch (typeOf(event)) {
    case EventType::systemDefined:
        return session->kiosk;
    case EventType::flagsChanged:
        postEmojiFor(event);
        return session->kiosk;
    case EventType::keyDown:
        m_posted.push_back({.press = meaningOf(event, settings.kioskMode)});
        return session->kiosk;
    default:
        return false;
    }
}

void Model::recorderSees(const Event& event) {
    constexpr std::int64_t escape = 53;
    const ModifierFlags flags = event.flags & 0xFFFF0000;
    if (event.press.code == escape) {
        stopRecording();
    } else if (flags != 0) {
        settings.shortcutKeyCode = event.press.code;
        settings.shortcutModifiers = static_cast<std::int64_t>(flags);
        stopRecording();
        ++milestones.recordings;
        localMonitors.push_back(MonitorKind::shortcut);
    }
}

bool Model::isShortcut(const Event& event) const {
    const auto required = static_cast<ModifierFlags>(settings.shortcutModifiers);
    return event.press.code == settings.shortcutKeyCode && (event.flags & required) == required;
}

void Model::postEmojiFor(const Event& event) {
    if (settings.modifierKeysTypeEmoji && (event.flags & emojiFlags) != 0) {
        m_posted.push_back({.emoji = true});
    }
}

void Model::runPosted(const Event& event) {
    for (const auto& posted : m_posted) {
        if (posted.start) {
            milestones.shortcutStarts += session ? 0 : 1;
            startSession();
        } else if (session) {
            handle(posted, event);
        }
    }
    m_posted.clear();
}

void Model::typeIntoField(const Event& event) {
    if (!session || !session->overlay || !session->overlay->focused || event.kind != Event::Kind::key ||
        event.type != EventType::keyDown) {
        return;
    }
    const auto pressed = simulated::keyEvent(event.press.code, event.flags, event.press.text);
    if (submitsField(pressed)) {
        attemptPassword();
    } else {
        session->overlay->password = fieldAfter(session->overlay->password, pressed);
    }
}

} // namespace tapalong::testing
