#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

namespace tapalong::test {

/// A server of the test's own, as a child process that says in one line where it can be reached. Ends with this object,
/// and with the test program should that be killed.
class ServerProcess {
public:
    /// `become` runs in the child: it puts the server in its place, which writes its line to the file descriptor, and
    /// returns only when that fails. Stops the program, with `need` as its reason, when no line comes: no test can say
    /// anything then.
    ServerProcess(const std::function<void(int lineTo)>& become, const char* need);
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    /// Without its line end.
    [[nodiscard]] const std::string& line() const { return m_line; }

    /// While suspended, the server answers nobody.
    void suspend() const;
    void resume() const;

private:
    pid_t m_process = -1;
    std::string m_line;
};

} // namespace tapalong::test
