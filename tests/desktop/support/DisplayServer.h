#pragma once

#include <sys/types.h>

#include <string>

namespace tapalong::test {

/// A virtual X server of the test's own, on a display number that it picks itself. Ends with this object, and with the
/// test program should that be killed.
class DisplayServer {
public:
    /// Stops the program when no server can be had: no test can say anything then.
    DisplayServer();
    ~DisplayServer();
    DisplayServer(const DisplayServer&) = delete;
    DisplayServer& operator=(const DisplayServer&) = delete;

    /// As in the environment variable DISPLAY.
    [[nodiscard]] const std::string& display() const { return m_display; }

private:
    pid_t m_process = -1;
    std::string m_display;
};

} // namespace tapalong::test
