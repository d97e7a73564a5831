#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tapalong {

class Biometrics;
class MainQueue;
class SessionSettings;

/// Verifies the adult who ends a session. Keeps no state, counts no attempts.
class AuthService {
public:
    struct AuthResult {
        enum class Kind : std::uint8_t { failure, success, cancelled };

        Kind kind = Kind::failure;
        std::string message{}; ///< of a failure: a text for the user

        bool operator==(const AuthResult&) const = default;
    };
    using Completion = std::function<void(const AuthResult&)>;

    AuthService() = delete;

    /// Compares whole texts, as a reader sees them: case counts, how an accent is encoded does not. An empty
    /// password matches while none is set.
    [[nodiscard]] static AuthResult authenticateWithPassword(std::string_view password,
                                                             const SessionSettings& settings);

    /// Asks the fingerprint reader. `completion` is called exactly once, on the main thread: before this returns
    /// when there is no reader to ask, later from the main queue otherwise.
    static void authenticateWithTouchID(Biometrics& biometrics, MainQueue& mainQueue, Completion completion);
};

} // namespace tapalong
