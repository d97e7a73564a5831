#include "platform/TimerQueue.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tapalong {

TimerToken TimerQueue::schedule(double now, double interval, Repeats repeats, std::weak_ptr<const void> owner,
                                std::function<void()> block) {
    // A repeating timer without length would fire for ever at one instant.
    constexpr double shortestInterval = 0.0001;
    const double length = std::max(interval, shortestInterval);
    const auto token = ++m_lastToken;
    m_timers.emplace(Key{now + length, token}, Timer{length, repeats, std::move(owner), std::move(block)});
    return static_cast<TimerToken>(token);
}

std::map<TimerQueue::Key, TimerQueue::Timer>::iterator TimerQueue::find(TimerToken token) {
    return std::find_if(m_timers.begin(), m_timers.end(),
                        [token](const auto& entry) { return entry.first.second == static_cast<std::uint64_t>(token); });
}

void TimerQueue::invalidate(TimerToken token) {
    if (const auto found = find(token); found != m_timers.end()) {
        m_timers.erase(found);
    }
}

void TimerQueue::forgetOrphans() {
    std::erase_if(m_timers, [](const auto& entry) { return entry.second.owner.expired(); });
}

std::optional<double> TimerQueue::nextDeadline() {
    forgetOrphans();
    return m_timers.empty() ? std::nullopt : std::optional(m_timers.begin()->first.first);
}

std::size_t TimerQueue::count() {
    forgetOrphans();
    return m_timers.size();
}

void TimerQueue::fireDue(double now) {
    std::vector<Key> due;
    for (const auto& entry : m_timers) {
        if (entry.first.first > now) {
            break;
        }
        due.push_back(entry.first);
    }
    for (const auto& key : due) {
        const auto found = m_timers.find(key);
        if (found == m_timers.end()) {
            continue; // an earlier block invalidated it
        }
        Timer timer = found->second;
        m_timers.erase(found);
        if (timer.owner.expired()) {
            continue;
        }
        const auto block = timer.block;
        if (timer.repeats == Repeats::yes) {
            const double missed = std::max(0.0, std::floor((now - key.first) / timer.interval));
            m_timers.emplace(Key{key.first + (missed + 1) * timer.interval, key.second}, std::move(timer));
        }
        block();
    }
}

} // namespace tapalong
