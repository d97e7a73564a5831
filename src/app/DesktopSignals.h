#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tapalong {

/// Turns the signals that ask a program to end into a call on the main thread. One at a time per process; when it
/// goes, the signals end the process again.
class DesktopSignals {
public:
    explicit DesktopSignals(std::function<void()> askedToEnd);
    DesktopSignals(const DesktopSignals&) = delete;
    DesktopSignals& operator=(const DesktopSignals&) = delete;
    ~DesktopSignals();

private:
    int m_readEnd = -1;
    int m_writeEnd = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tapalong
