#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

namespace tapalong::test {

/// Ends the test program when its scope is not left in time: what it guards must not wait for ever. It measures nothing.
class HangGuard {
public:
    explicit HangGuard(const char* what, std::chrono::seconds limit = std::chrono::seconds(30))
        : m_thread([this, what, limit] { watch(what, limit); }) {}
    ~HangGuard() {
        {
            const std::lock_guard lock(m_mutex);
            m_left = true;
        }
        m_changed.notify_one();
        m_thread.join();
    }
    HangGuard(const HangGuard&) = delete;
    HangGuard& operator=(const HangGuard&) = delete;

private:
    void watch(const char* what, std::chrono::seconds limit) {
        std::unique_lock lock(m_mutex);
        if (!m_changed.wait_for(lock, limit, [this] { return m_left; })) {
            (void)std::fprintf(stderr, "hangs: %s\n", what);
            std::abort();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_left = false;
    std::thread m_thread; ///< last, so that it finds the others made
};

} // namespace tapalong::test
