#pragma once

#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace tapalong::bench {

/// Looks at a display from outside, as a client of its own, for the moment at which its pixels change.
class ScreenWatch {
public:
    using Clock = std::chrono::steady_clock;

    /// Ends the program when DISPLAY names none, or one that does not report what is drawn.
    ScreenWatch();

    /// Takes in what has been drawn so far: changes are told from what is on the screen now.
    void catchUp();

    /// When the server reported the first drawing after which a pixel is another one than before. None when there is
    /// none for so long.
    [[nodiscard]] std::optional<Clock::time_point> waitForChange(std::chrono::milliseconds atMost);

private:
    struct Free {
        void operator()(void* reply) const;
    };
    template <class T> using Reply = std::unique_ptr<T, Free>;

    void subscribe();
    /// Null once `deadline` has passed.
    [[nodiscard]] Reply<xcb_generic_event_t> nextEvent(Clock::time_point deadline);
    [[nodiscard]] std::vector<std::uint32_t> pixels(const xcb_rectangle_t& area);
    /// Looks at the area anew.
    [[nodiscard]] bool hasChanged(const xcb_generic_event_t& event);
    [[nodiscard]] bool hasChanged(const xcb_rectangle_t& area);
    /// Of the screen itself: what lies outside of it was never seen.
    [[nodiscard]] xcb_rectangle_t onScreen(const xcb_rectangle_t& area) const;

    std::unique_ptr<xcb_connection_t, void (*)(xcb_connection_t*)> m_xcb;
    xcb_window_t m_root = XCB_NONE;
    std::uint16_t m_width = 0;
    std::uint16_t m_height = 0;
    std::uint8_t m_firstDamageEvent = 0;
    std::vector<std::uint32_t> m_seen;
};

} // namespace tapalong::bench
