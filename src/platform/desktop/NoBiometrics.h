#pragma once

#include "platform/Biometrics.h"

namespace tapalong {

/// Stands in where no fingerprint reader is used: every request is refused with the reason.
class NoBiometrics final : public Biometrics {
public:
    [[nodiscard]] std::shared_ptr<BiometricContext> makeContext() override;
};

} // namespace tapalong
