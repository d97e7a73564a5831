#include "platform/desktop/NoBiometrics.h"

#include <utility>

namespace tapalong {

namespace {

constexpr std::int64_t biometryNotAvailable = -6;

class RefusingContext final : public BiometricContext {
public:
    void setLocalizedFallbackTitle(std::string) override {}

    bool canEvaluatePolicy(BiometricPolicy, std::optional<BiometricError>& error) override {
        error = reason();
        return false;
    }

    void evaluatePolicy(BiometricPolicy, std::string, Reply reply) override { reply(false, reason()); }

private:
    static BiometricError reason() {
        return {.code = biometryNotAvailable, .localizedDescription = "No fingerprint reader is set up."};
    }
};

} // namespace

std::shared_ptr<BiometricContext> NoBiometrics::makeContext() {
    return std::make_shared<RefusingContext>();
}

} // namespace tapalong
