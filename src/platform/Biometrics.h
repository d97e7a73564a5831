#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tapalong {

enum class BiometricPolicy : std::int32_t { deviceOwnerAuthenticationWithBiometrics = 1 };

struct BiometricError {
    /// The one code that the rest of the program tells apart.
    static constexpr std::int64_t userCancel = -2;

    std::int64_t code = 0;
    std::string localizedDescription;
};

/// One request to the fingerprint reader. Made anew for each request; the requester keeps it until the reply has
/// been handled.
class BiometricContext {
public:
    /// `success`, and otherwise the error where there is one. May come on any thread, exactly once.
    using Reply = std::function<void(bool success, std::optional<BiometricError> error)>;

    virtual ~BiometricContext() = default;

    /// Title of the system's own way round the reader; empty removes it.
    virtual void setLocalizedFallbackTitle(std::string title) = 0;

    /// Whether a reader can be asked now; when not, `error` may say why.
    [[nodiscard]] virtual bool canEvaluatePolicy(BiometricPolicy policy, std::optional<BiometricError>& error) = 0;

    /// Returns at once.
    virtual void evaluatePolicy(BiometricPolicy policy, std::string localizedReason, Reply reply) = 0;
};

class Biometrics {
public:
    virtual ~Biometrics() = default;

    [[nodiscard]] virtual std::shared_ptr<BiometricContext> makeContext() = 0;
};

} // namespace tapalong
