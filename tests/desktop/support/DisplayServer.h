#pragma once

#include "desktop/support/ServerProcess.h"

#include <string>

namespace tapalong::test {

/// A virtual X server of the test's own, on a display number that it picks itself.
class DisplayServer {
public:
    DisplayServer();

    /// As in the environment variable DISPLAY.
    [[nodiscard]] std::string display() const { return ":" + m_server.line(); }

private:
    ServerProcess m_server;
};

} // namespace tapalong::test
