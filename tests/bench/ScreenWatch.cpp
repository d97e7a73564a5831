#include "ScreenWatch.h"

#include <poll.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tapalong::bench {

namespace {

[[noreturn]] void giveUp(const char* why) {
    std::fprintf(stderr, "%s\n", why);
    std::exit(EXIT_FAILURE);
}

} // namespace

void ScreenWatch::Free::operator()(void* reply) const {
    std::free(reply); // NOLINT(cppcoreguidelines-no-malloc): xcb's own rule
}

ScreenWatch::ScreenWatch() : m_xcb(xcb_connect(nullptr, nullptr), &xcb_disconnect) {
    if (xcb_connection_has_error(m_xcb.get()) != 0) {
        giveUp("no display");
    }
    const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(m_xcb.get())).data;
    m_root = screen->root;
    m_width = screen->width_in_pixels;
    m_height = screen->height_in_pixels;
    if (screen->root_depth != 24) {
        giveUp("the display's pixels must have 24 bits");
    }
    subscribe();
    m_seen = pixels({0, 0, m_width, m_height});
}

void ScreenWatch::subscribe() {
    auto* const xcb = m_xcb.get();
    const auto* const extension = xcb_get_extension_data(xcb, &xcb_damage_id);
    if (extension == nullptr || extension->present == 0) {
        giveUp("the display does not report what is drawn on it");
    }
    m_firstDamageEvent = extension->first_event;
    const Reply<xcb_damage_query_version_reply_t> version(
        xcb_damage_query_version_reply(xcb, xcb_damage_query_version(xcb, 1, 1), nullptr));
    xcb_damage_create(xcb, xcb_generate_id(xcb), m_root, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(xcb);
}

void ScreenWatch::catchUp() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_xcb.get())}) {
        (void)hasChanged(*event);
    }
}

std::optional<ScreenWatch::Clock::time_point> ScreenWatch::waitForChange(std::chrono::milliseconds atMost) {
    const auto deadline = Clock::now() + atMost;
    while (const auto event = nextEvent(deadline)) {
        const auto reported = Clock::now();
        if (hasChanged(*event)) {
            return reported;
        }
    }
    return std::nullopt;
}

ScreenWatch::Reply<xcb_generic_event_t> ScreenWatch::nextEvent(Clock::time_point deadline) {
    while (true) {
        if (Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_xcb.get())}) {
            return event;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd socket{xcb_get_file_descriptor(m_xcb.get()), POLLIN, 0};
        if (left.count() <= 0 || poll(&socket, 1, static_cast<int>(left.count())) < 0) {
            return nullptr;
        }
        if (xcb_connection_has_error(m_xcb.get()) != 0) {
            giveUp("the display is gone");
        }
    }
}

std::vector<std::uint32_t> ScreenWatch::pixels(const xcb_rectangle_t& area) {
    const std::size_t count = std::size_t{area.width} * area.height;
    std::vector<std::uint32_t> result(count);
    if (count == 0) {
        return result;
    }
    const Reply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(m_xcb.get(),
                            xcb_get_image(m_xcb.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_root, area.x, area.y, area.width,
                                          area.height, ~std::uint32_t{0}),
                            nullptr));
    if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) < count * sizeof(std::uint32_t)) {
        giveUp("the display does not show its pixels");
    }
    std::memcpy(result.data(), xcb_get_image_data(image.get()), count * sizeof(std::uint32_t));
    return result;
}

bool ScreenWatch::hasChanged(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7FU) != m_firstDamageEvent + XCB_DAMAGE_NOTIFY) {
        return false;
    }
    xcb_damage_notify_event_t drawn{};
    std::memcpy(&drawn, &event, sizeof(drawn));
    return hasChanged(onScreen(drawn.area));
}

bool ScreenWatch::hasChanged(const xcb_rectangle_t& area) {
    const auto now = pixels(area);
    bool changed = false;
    for (std::size_t row = 0; row < area.height; ++row) {
        const auto place = (static_cast<std::size_t>(area.y) + row) * m_width + static_cast<std::size_t>(area.x);
        const auto seen = m_seen.begin() + static_cast<std::ptrdiff_t>(place);
        const auto line = now.begin() + static_cast<std::ptrdiff_t>(row * area.width);
        changed = changed || !std::equal(line, line + area.width, seen);
        std::copy(line, line + area.width, seen);
    }
    return changed;
}

xcb_rectangle_t ScreenWatch::onScreen(const xcb_rectangle_t& area) const {
    const int left = std::clamp<int>(area.x, 0, m_width);
    const int top = std::clamp<int>(area.y, 0, m_height);
    const int right = std::clamp<int>(area.x + area.width, left, m_width);
    const int bottom = std::clamp<int>(area.y + area.height, top, m_height);
    return {static_cast<std::int16_t>(left), static_cast<std::int16_t>(top), static_cast<std::uint16_t>(right - left),
            static_cast<std::uint16_t>(bottom - top)};
}

} // namespace tapalong::bench
