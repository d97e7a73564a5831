#include "platform/linux/wayland/WaylandEventMonitors.h"

#include "platform/desktop/DesktopTest.test.h"

#include <QKeyEvent>
#include <QWindow>

#include <vector>

namespace tapalong {

namespace {

constexpr quint32 aKey = 38;
constexpr quint32 leftShift = 50;
constexpr quint32 rightShift = 62;
constexpr quint32 capsLock = 66;
constexpr quint32 arrowUp = 111;
constexpr quint32 volumeUp = 123;
constexpr quint32 nativeLock = 2;
constexpr EventMask allKeys = maskOf(EventType::keyDown) | maskOf(EventType::keyUp) | maskOf(EventType::flagsChanged) |
                              maskOf(EventType::systemDefined);

/// Counts the keys that reach it.
class CountingWindow final : public QWindow {
public:
    int keys = 0;

protected:
    void keyPressEvent(QKeyEvent*) override { ++keys; }
    void keyReleaseEvent(QKeyEvent*) override { ++keys; }
};

class WaylandEventMonitorsTest : public DesktopTest {
protected:
    WaylandEventMonitorsTest() {
        std::ignore = monitors.addLocalMonitorForEvents(allKeys, [this](const InputEvent& event) {
            seen.push_back(event);
            return verdict;
        });
        std::ignore = monitors.addGlobalMonitorForEvents(allKeys, [this](const InputEvent&) { ++globalCalls; });
    }

    void press(quint32 scanCode, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}, quint32 native = 0,
               bool isRepeat = false) {
        send(QEvent::KeyPress, scanCode, text, modifiers, native, isRepeat);
    }
    void release(quint32 scanCode, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}, quint32 native = 0,
                 bool isRepeat = false) {
        send(QEvent::KeyRelease, scanCode, text, modifiers, native, isRepeat);
    }
    [[nodiscard]] std::vector<ModifierFlags> flagsSeen() const {
        std::vector<ModifierFlags> flags;
        for (const auto& each : seen) {
            flags.push_back(each.modifierFlags);
        }
        return flags;
    }

    CountingWindow window;
    WaylandEventMonitors monitors;
    std::vector<InputEvent> seen;
    Verdict verdict = Verdict::pass;
    int globalCalls = 0;

private:
    void send(QEvent::Type type, quint32 scanCode, const QString& text, Qt::KeyboardModifiers modifiers, quint32 native,
              bool isRepeat) {
        QKeyEvent event(type, 0, modifiers, scanCode, 0, native, text, isRepeat);
        QCoreApplication::sendEvent(&window, &event);
    }
};

TEST_F(WaylandEventMonitorsTest, KeyOfOurWindowHasItsPlaceItsTextAndItsModifiers) {
    press(aKey, "A", Qt::ShiftModifier | Qt::MetaModifier);
    release(aKey, "A", Qt::ShiftModifier);
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].type, EventType::keyDown);
    EXPECT_EQ(seen[0].keyCode, 0);
    EXPECT_EQ(seen[0].modifierFlags, Modifier::shift | Modifier::command);
    EXPECT_EQ(seen[0].text(), "A");
    EXPECT_EQ(seen[1].type, EventType::keyUp);
    EXPECT_EQ(globalCalls, 0);
}

TEST_F(WaylandEventMonitorsTest, ConsumedKeyDoesNotReachTheWindow) {
    press(aKey, "a");
    EXPECT_EQ(window.keys, 1);
    verdict = Verdict::consume;
    press(aKey, "a");
    EXPECT_EQ(window.keys, 1);
    EXPECT_EQ(seen.size(), 2U);
}

TEST_F(WaylandEventMonitorsTest, KeyWithoutTextHasNone) {
    press(arrowUp);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].keyCode, 126);
    EXPECT_EQ(seen[0].modifierFlags, Modifier::numericPad | Modifier::function);
    EXPECT_EQ(seen[0].text(), std::nullopt);
}

TEST_F(WaylandEventMonitorsTest, HeldKeyRepeatsAsPressesOnly) {
    press(aKey, "a");
    release(aKey, "a", {}, 0, true);
    press(aKey, "a", {}, 0, true);
    release(aKey, "a", {}, 0, true);
    press(aKey, "a", {}, 0, true);
    release(aKey, "a");
    ASSERT_EQ(seen.size(), 4U);
    EXPECT_EQ(seen[2].type, EventType::keyDown);
    EXPECT_EQ(seen[3].type, EventType::keyUp);
}

TEST_F(WaylandEventMonitorsTest, ModifierEventsCarryTheStateAfterTheKey) {
    press(leftShift);
    press(rightShift, {}, Qt::ShiftModifier);
    release(leftShift, {}, Qt::ShiftModifier);
    release(rightShift, {}, Qt::ShiftModifier);
    for (const auto& each : seen) {
        EXPECT_EQ(each.type, EventType::flagsChanged);
    }
    EXPECT_EQ(flagsSeen(), (std::vector<ModifierFlags>{Modifier::shift, Modifier::shift, Modifier::shift, 0}));
}

TEST_F(WaylandEventMonitorsTest, ModifierReleasedElsewhereIsForgottenWithTheFocus) {
    press(leftShift);
    QFocusEvent lost(QEvent::FocusOut);
    QCoreApplication::sendEvent(&window, &lost);
    press(aKey, "a");
    EXPECT_EQ(flagsSeen(), (std::vector<ModifierFlags>{Modifier::shift, 0}));
}

TEST_F(WaylandEventMonitorsTest, TheLockIsKnownFromTheKeys) {
    press(aKey, "A", {}, nativeLock);
    EXPECT_TRUE(monitors.keyboardLocks().isCapsLockOn());
    release(aKey, {}, {}, nativeLock);
    press(capsLock, {}, {}, nativeLock);
    release(capsLock, {}, {}, nativeLock);
    EXPECT_FALSE(monitors.keyboardLocks().isCapsLockOn());
    press(capsLock);
    EXPECT_TRUE(monitors.keyboardLocks().isCapsLockOn());
}

TEST_F(WaylandEventMonitorsTest, CapsLockTellsOnceThatItLocksAndOnceThatItUnlocks) {
    press(capsLock);
    release(capsLock, {}, {}, nativeLock);
    press(capsLock, {}, {}, nativeLock);
    release(capsLock, {}, {}, nativeLock);
    EXPECT_EQ(flagsSeen(), (std::vector<ModifierFlags>{Modifier::capsLock, 0}));
}

TEST_F(WaylandEventMonitorsTest, MediaKeyIsASystemEvent) {
    press(volumeUp);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].type, EventType::systemDefined);
}

} // namespace

} // namespace tapalong
