#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace tapalong {

/// A running tapalong-x11-guard. It goes by itself when its input ends: by endInput(), with this object, or with our
/// process.
class GuardProcess {
public:
    /// Null when the program cannot be started.
    [[nodiscard]] static std::unique_ptr<GuardProcess> start(const std::string& program);
    ~GuardProcess();
    GuardProcess(const GuardProcess&) = delete;
    GuardProcess& operator=(const GuardProcess&) = delete;

    enum class Word : std::uint8_t {
        none,    ///< nothing in that time
        closed,  ///< all that it is for is closed
        refused, ///< the server refuses a part
        ended,   ///< there is no process any more, and it did what it was to do at its end
        failed,  ///< there is no process any more; it was killed or lost the server, and may have done nothing of that
    };

    /// Waits for its next word, at most so long.
    [[nodiscard]] Word listen(std::chrono::milliseconds atMost);

    /// To be watched for the next word.
    [[nodiscard]] int descriptor() const { return m_output; }

    void endInput();

private:
    GuardProcess(pid_t process, int input, int output) : m_process(process), m_input(input), m_output(output) {}

    pid_t m_process;
    int m_input;
    int m_output;
};

} // namespace tapalong
