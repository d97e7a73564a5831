#include "platform/simulated/SimulatedTime.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tapalong::simulated {

namespace {

std::string withSeconds(const char* effect, double seconds) {
    std::array<char, 64> text{};
    const int length = std::snprintf(text.data(), text.size(), "%s %g", effect, seconds);
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace

void SimulatedTime::async(std::function<void()> work) {
    m_posted.push_back(std::move(work));
}

void SimulatedTime::asyncAfter(double seconds, std::function<void()> work) {
    m_effects.record(withSeconds("queue.after", seconds));
    m_delayed.emplace(m_now + seconds, std::move(work));
}

TimerToken SimulatedTime::scheduledTimer(double interval, Repeats repeats, std::weak_ptr<const void> owner,
                                         std::function<void()> block) {
    m_effects.record(withSeconds(repeats == Repeats::yes ? "timer.every" : "timer.once", interval));
    return m_timers.schedule(m_now, interval, repeats, std::move(owner), std::move(block));
}

void SimulatedTime::invalidate(TimerToken token) {
    m_effects.record("timer.invalidate");
    m_timers.invalidate(token);
}

void SimulatedTime::drain() {
    while (!m_posted.empty()) {
        const auto work = std::move(m_posted.front());
        m_posted.pop_front();
        work();
    }
}

double SimulatedTime::nextInstant(double latest) {
    double next = latest;
    if (const auto deadline = m_timers.nextDeadline()) {
        next = std::min(next, *deadline);
    }
    if (!m_delayed.empty()) {
        next = std::min(next, m_delayed.begin()->first);
    }
    return std::max(next, m_now);
}

void SimulatedTime::runDelayed() {
    while (!m_delayed.empty() && m_delayed.begin()->first <= m_now) {
        const auto work = std::move(m_delayed.begin()->second);
        m_delayed.erase(m_delayed.begin());
        work();
        drain();
    }
}

void SimulatedTime::advance(double seconds) {
    const double target = m_now + seconds;
    drain();
    bool arrived = false;
    while (!arrived) {
        m_now = nextInstant(target);
        m_timers.fireDue(m_now);
        drain();
        runDelayed();
        arrived = m_now >= target && nextInstant(target + 1) > target;
    }
    m_now = target;
}

} // namespace tapalong::simulated
