#include "auth/AuthService.h"

#include "platform/Biometrics.h"
#include "platform/MainQueue.h"
#include "settings/SessionSettings.h"
#include "text/Normalization.h"

#include <memory>
#include <optional>
#include <utility>

namespace tapalong {

namespace {

using AuthResult = AuthService::AuthResult;

AuthResult failure(std::string message) {
    return {AuthResult::Kind::failure, std::move(message)};
}

AuthResult resultOf(bool success, const std::optional<BiometricError>& error) {
    if (success) {
        return {AuthResult::Kind::success};
    }
    if (error && error->code == BiometricError::userCancel) {
        return {AuthResult::Kind::cancelled};
    }
    return failure(error ? error->localizedDescription : "Authentication failed");
}

} // namespace

AuthResult AuthService::authenticateWithPassword(std::string_view password, const SessionSettings& settings) {
    if (canonicallyEqual(password, settings.exitPassword.get())) {
        return {AuthResult::Kind::success};
    }
    return failure("Incorrect password");
}

void AuthService::authenticateWithTouchID(Biometrics& biometrics, MainQueue& mainQueue, Completion completion) {
    constexpr auto policy = BiometricPolicy::deviceOwnerAuthenticationWithBiometrics;
    const std::shared_ptr<BiometricContext> context = biometrics.makeContext();
    // Without a title the system offers no password of its own: the overlay's field is the only one.
    context->setLocalizedFallbackTitle("");
    std::optional<BiometricError> error;
    if (!context->canEvaluatePolicy(policy, error)) {
        completion(failure("Touch ID not available: " + (error ? error->localizedDescription : "Unknown error")));
        return;
    }
    // The reply carries the context, which so lives until the reply has been handled.
    context->evaluatePolicy(policy, "Authenticate to exit Tapalong session",
                            [context, &mainQueue, completion = std::move(completion)](
                                bool success, std::optional<BiometricError> replyError) {
                                mainQueue.async([context, completion, success, replyError = std::move(replyError)] {
                                    completion(resultOf(success, replyError));
                                });
                            });
}

} // namespace tapalong
