#include "lockdown/HotCornerMonitor.h"

#include "base/WhileAlive.h"
#include "platform/Screens.h"

namespace tapalong {

namespace {

constexpr double pollingInterval = 0.25; // seconds; covers the time while this application is in front

} // namespace

HotCornerMonitor::HotCornerMonitor(ScreenCorner corner, double dwellTime, std::function<void()> onTrigger,
                                   const Platform& platform)
    : m_corner(corner), m_dwellTime(dwellTime), m_onTrigger(std::move(onTrigger)), m_platform(platform) {}

void HotCornerMonitor::start() {
    const auto sample = whileAlive(weak_from_this(), &HotCornerMonitor::checkMousePosition);
    m_mouseMonitor = m_platform.eventMonitors.addGlobalMonitorForEvents(
        maskOf(EventType::mouseMoved) | maskOf(EventType::leftMouseDragged), [sample](const InputEvent&) { sample(); });
    m_platform.timers.scheduledTimer(pollingInterval, Repeats::yes, weak_from_this(), sample);
}

void HotCornerMonitor::stop() {
    if (m_mouseMonitor) {
        m_platform.eventMonitors.removeMonitor(*m_mouseMonitor);
        m_mouseMonitor.reset();
    }
    if (m_dwellTimer) {
        m_platform.timers.invalidate(*m_dwellTimer);
        m_dwellTimer.reset();
    }
}

bool HotCornerMonitor::isMouseInCorner(ScreenCorner corner, Point mouseLocation, const Rect& screenFrame) {
    const bool left = corner == ScreenCorner::topLeft || corner == ScreenCorner::bottomLeft;
    const bool top = corner == ScreenCorner::topLeft || corner == ScreenCorner::topRight;
    const bool inX = left ? mouseLocation.x <= screenFrame.minX() + cornerThreshold
                          : mouseLocation.x >= screenFrame.maxX() - cornerThreshold;
    return inX && (top ? mouseLocation.y >= screenFrame.maxY() - cornerThreshold
                       : mouseLocation.y <= screenFrame.minY() + cornerThreshold);
}

void HotCornerMonitor::checkMousePosition() {
    const auto frame = m_platform.screens.mainScreenFrame();
    if (!frame) {
        return;
    }
    const Point mouse = m_platform.screens.mouseLocation();
    // The zone has no outer bound of its own: without the first test every other screen beyond it would trigger.
    const bool inCorner = frame->contains(mouse) && isMouseInCorner(m_corner, mouse, *frame);
    if (inCorner && !m_isInCorner) {
        m_isInCorner = true;
        beginDwell();
    } else if (!inCorner && m_isInCorner) {
        m_isInCorner = false;
        if (m_dwellTimer) {
            m_platform.timers.invalidate(*m_dwellTimer);
            m_dwellTimer.reset();
        }
    }
}

void HotCornerMonitor::beginDwell() {
    if (m_dwellTimer) {
        m_platform.timers.invalidate(*m_dwellTimer);
    }
    m_dwellTimer = m_platform.timers.scheduledTimer(
        m_dwellTime, Repeats::no, weak_from_this(),
        whileAlive(weak_from_this(), [](const HotCornerMonitor& self) { self.m_onTrigger(); }));
}

} // namespace tapalong
