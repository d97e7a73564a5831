#pragma once

#include <unistd.h>

namespace tapalong {

/// A descriptor that is closed with its holder; negative when there is none.
class Socket {
public:
    Socket() = default;
    explicit Socket(int descriptor) : m_descriptor(descriptor) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() { reset(); }

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }

    void reset(int descriptor = -1) {
        if (isOpen()) {
            close(m_descriptor);
        }
        m_descriptor = descriptor;
    }

private:
    int m_descriptor = -1;
};

} // namespace tapalong
