#pragma once

#include "desktop/support/XClient.h"
#include "desktop/x11/Guards.h"
#include "platform/linux/x11/X11EventTaps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tapalong::test {

/// A tap on the whole input, and another program that types and watches.
class X11EventTapsTest : public testing::Test {
protected:
    explicit X11EventTapsTest(const std::string& guard = ServerKeys::guardBesideProgram())
        : taps(connection, monitors, secureInput, guard) {
        setLayout("us");
        other.focus(elsewhere);
    }

    std::optional<TapHandle> create(EventMask mask = ~EventMask{0}) {
        return taps.createTap(TapLocation::session, TapPlacement::headInsert, TapOptions::activeFilter, mask,
                              [this](const InputEvent& event) {
                                  events.push_back(event);
                                  text += event.text().value_or("");
                                  if (event.type == EventType::tapDisabledByUserInput && reenable) {
                                      taps.enableTap(*tap, true);
                                  }
                                  return verdict;
                              });
    }

    void start(EventMask mask = ~EventMask{0}) {
        tap = create(mask);
        ASSERT_TRUE(tap.has_value());
        source = taps.createRunLoopSource(*tap);
        taps.addSource(source);
        taps.enableTap(*tap, true);
    }

    void stop() {
        taps.enableTap(*tap, false);
        taps.removeSource(source);
    }

    [[nodiscard]] std::size_t count(EventType type) const {
        return static_cast<std::size_t>(
            std::count_if(events.begin(), events.end(), [type](const auto& event) { return event.type == type; }));
    }

    X11Connection connection;
    SecureInput secureInput;
    X11EventMonitors monitors{connection};
    X11EventTaps taps;
    XClient other;
    xcb_window_t elsewhere = other.openWindow(0, 0, 50, 50);
    std::optional<TapHandle> tap;
    RunLoopSource source{};
    std::vector<InputEvent> events;
    std::string text;
    Verdict verdict = Verdict::consume;
    bool reenable = false;
};

/// What the grabs do by themselves: the guard does nothing, which would keep some buttons from everybody.
class GrabsAloneTest : public X11EventTapsTest {
protected:
    GrabsAloneTest() : GrabsAloneTest(std::make_unique<FakeGuard>("echo closed; cat")) {}

private:
    explicit GrabsAloneTest(std::unique_ptr<FakeGuard> guard)
        : X11EventTapsTest(guard->program()), m_guard(std::move(guard)) {}

    std::unique_ptr<FakeGuard> m_guard;
};

} // namespace tapalong::test
