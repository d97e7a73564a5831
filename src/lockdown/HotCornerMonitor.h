#pragma once

#include "platform/EventMonitors.h"
#include "platform/Geometry.h"
#include "platform/Platform.h"
#include "platform/Timers.h"
#include "settings/ScreenCorner.h"

#include <functional>
#include <memory>
#include <optional>

namespace tapalong {

/// Watches whether the pointer rests in one corner of the main screen, and calls its trigger once for each visit
/// that lasts the dwell time. Held by shared pointer, because its timers look whether it is still there.
class HotCornerMonitor : public std::enable_shared_from_this<HotCornerMonitor> {
public:
    /// Points from either edge that still count as the corner.
    static constexpr double cornerThreshold = 10.0;

    /// `dwellTime` in seconds.
    HotCornerMonitor(ScreenCorner corner, double dwellTime, std::function<void()> onTrigger, const Platform& platform);

    void start();
    /// Ends the watching of pointer movements and a running dwell. The polling has no handle: it ends when the
    /// monitor is released.
    void stop();

    /// The zone itself, edges included.
    [[nodiscard]] static bool isMouseInCorner(ScreenCorner corner, Point mouseLocation, const Rect& screenFrame);

private:
    void checkMousePosition();
    void beginDwell();

    const ScreenCorner m_corner;
    const double m_dwellTime;
    const std::function<void()> m_onTrigger;
    const Platform m_platform;
    std::optional<MonitorToken> m_mouseMonitor;
    std::optional<TimerToken> m_dwellTimer;
    bool m_isInCorner = false;
};

} // namespace tapalong
