#pragma once

#include "base/Observable.h"
#include "platform/Platform.h"

#include <functional>
#include <memory>
#include <string>

namespace tapalong {

class SessionSettings;

/// The panel between a child at the keyboard and the end of a session: password or fingerprint, or back to typing.
/// Made anew each time it comes up; held by shared pointer.
class ExitOverlay final : public ObservableObject, public std::enable_shared_from_this<ExitOverlay> {
public:
    /// `clearIsPresented` tells the presenter, who owns the flag, that the overlay takes itself down, fading.
    /// `onAuthenticated` is called for each success; what follows is the presenter's affair.
    ExitOverlay(std::function<void()> clearIsPresented, std::function<void()> onAuthenticated,
                SessionSettings& settings, const Platform& platform);

    /// To be called once, when the overlay comes up.
    void onAppear();

    void attemptTouchID();
    /// Unlock, and Return in the field, the empty one included.
    void attemptPassword();
    /// Cancel, and a click on the backdrop.
    void dismiss();

    [[nodiscard]] bool offersTouchID() const;
    [[nodiscard]] bool isTouchIDEnabled() const { return !m_attemptingTouchID.get(); }
    [[nodiscard]] bool isUnlockEnabled() const { return !password().empty(); }

    /// Letters come out as capitals: the password may look right to who types it, and be wrong.
    [[nodiscard]] bool isCapsLockOn() const;

    [[nodiscard]] const std::string& password() const { return m_password.get(); }
    void setPassword(std::string password) { m_password.set(std::move(password)); }
    [[nodiscard]] const std::string& errorMessage() const { return m_errorMessage.get(); }
    [[nodiscard]] bool attemptingTouchID() const { return m_attemptingTouchID.get(); }
    /// Whether the password field has, or is to get, the keyboard focus.
    [[nodiscard]] bool isPasswordFocused() const { return m_isPasswordFocused.get(); }
    void setPasswordFocused(bool focused) { m_isPasswordFocused.set(focused); }

    /// Has no effect: the field is always offered.
    bool showPasswordField = false;

private:
    const std::function<void()> m_clearIsPresented;
    const std::function<void()> m_onAuthenticated;
    SessionSettings& m_settings;
    const Platform m_platform;
    const Subscription m_locksSubscription;
    Published<std::string> m_password{*this, {}};
    Published<std::string> m_errorMessage{*this, {}};
    Published<bool> m_attemptingTouchID{*this, false};
    Published<bool> m_isPasswordFocused{*this, false};
};

} // namespace tapalong
