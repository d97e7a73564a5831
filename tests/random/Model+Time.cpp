// What happens by itself as time goes by. Of what falls on one instant, timers come first, the older before the
// younger, then what was put off.

#include "random/Model.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tapalong::testing {

void Model::advance(double seconds) {
    const double target = now + seconds;
    while (nextInstant() <= target) {
        now = nextInstant();
        fireTimers();
        runDelayed();
    }
    now = target;
}

double Model::nextInstant() const {
    double next = std::numeric_limits<double>::infinity();
    if (settingsOpen) {
        next = std::min(next, nextPermissionCheck);
    }
    for (const double check : grantChecks) {
        next = std::min(next, check);
    }
    if (session) {
        next = std::min({next, session->nextPoll, session->nextWatch, session->dwellEnds.value_or(next),
                         session->tapTriedAgainAt.value_or(next)});
    }
    for (const auto& [instant, overlay] : appearances) {
        next = std::min(next, instant);
    }
    return next;
}

void Model::fireTimers() {
    if (settingsOpen && nextPermissionCheck <= now) {
        granted = trusted;
        nextPermissionCheck += 2;
    }
    for (double& check : grantChecks) {
        if (check <= now) {
            granted = granted || trusted;
            check += 1;
            if (trusted) {
                check = -1; // done
            }
        }
    }
    std::erase(grantChecks, -1);
    if (!session) {
        return;
    }
    if (session->nextPoll <= now) {
        session->nextPoll += 0.25;
        watchCorner();
    }
    if (session->nextWatch <= now) {
        session->nextWatch += 0.5;
        if (!session->overlay || breaks(Broken::watchdogIgnoresTheOverlay)) {
            ourAppActive = true;
            options = session->kiosk ? 0x1FA : options;
        }
    }
    if (session->dwellEnds && *session->dwellEnds <= now) {
        session->dwellEnds.reset();
        presentOverlay();
    }
}

void Model::watchCorner() {
    if (!hasScreen) {
        return;
    }
    const bool onScreen = mouse.x >= 0 && mouse.x < 1920 && mouse.y > 0 && mouse.y <= 1080;
    const bool left = session->corner == ScreenCorner::topLeft || session->corner == ScreenCorner::bottomLeft;
    const bool top = session->corner == ScreenCorner::topLeft || session->corner == ScreenCorner::topRight;
    const double zone = breaks(Broken::cornerWithoutItsEdge) ? 9.9 : 10;
    const bool in = onScreen && (left ? mouse.x : 1920 - mouse.x) <= zone && (top ? 1080 - mouse.y : mouse.y) <= zone;
    if (in && (!session->inCorner || (breaks(Broken::dwellRestartsWithinTheCorner) && session->dwellEnds))) {
        constexpr double shortest = 0.0001; // the platform's shortest timer
        session->dwellEnds = now + std::max(session->dwell, shortest);
    } else if (!in) {
        session->dwellEnds.reset();
    }
    session->inCorner = in;
}

void Model::presentOverlay() {
    if (!session->overlay) {
        session->overlay = std::make_shared<Overlay>();
        session->overlay->session = session->number;
        appearances.emplace_back(now + 0.1, session->overlay);
    }
}

void Model::runDelayed() {
    if (session && session->tapTriedAgainAt && *session->tapTriedAgainAt <= now) {
        session->tapTriedAgainAt.reset();
        if (trusted) {
            installTap();
            milestones.tapsHadLater += session->tap ? 1 : 0;
        }
    }
    const auto due = std::exchange(appearances, {});
    for (const auto& [instant, weak] : due) {
        const auto shown = weak.lock();
        if (instant > now) {
            appearances.emplace_back(instant, weak);
        } else if (shown && settings.useTouchID) {
            attemptTouchID(shown);
        } else if (shown) {
            shown->focused = true;
        }
    }
}

} // namespace tapalong::testing
