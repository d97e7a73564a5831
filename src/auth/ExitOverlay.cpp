#include "auth/ExitOverlay.h"

#include "auth/AuthService.h"
#include "base/WhileAlive.h"
#include "lockdown/Notifications.h"
#include "platform/KeyboardLocks.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "settings/SessionSettings.h"

#include <utility>

namespace tapalong {

namespace {

constexpr double appearanceDelay = 0.1; // seconds: a view that is still coming up takes no focus

using Kind = AuthService::AuthResult::Kind;

} // namespace

ExitOverlay::ExitOverlay(std::function<void()> clearIsPresented, std::function<void()> onAuthenticated,
                         SessionSettings& settings, const Platform& platform)
    : m_clearIsPresented(std::move(clearIsPresented)), m_onAuthenticated(std::move(onAuthenticated)),
      m_settings(settings), m_platform(platform),
      m_locksSubscription(platform.keyboardLocks.objectWillChange([this] { sendObjectWillChange(); })) {}

void ExitOverlay::onAppear() {
    const auto begin = [](ExitOverlay& self) {
        if (self.offersTouchID()) {
            self.attemptTouchID();
        } else {
            self.m_isPasswordFocused.set(true);
        }
    };
    m_platform.mainQueue.asyncAfter(appearanceDelay, whileAlive(weak_from_this(), begin));
}

bool ExitOverlay::offersTouchID() const {
    return m_settings.useTouchID.get();
}

bool ExitOverlay::isCapsLockOn() const {
    return m_platform.keyboardLocks.isCapsLockOn();
}

void ExitOverlay::attemptTouchID() {
    m_attemptingTouchID.set(true);
    m_errorMessage.set({});
    // The request keeps the overlay: an answer counts even when it comes after the overlay was taken down.
    AuthService::authenticateWithTouchID(m_platform.biometrics, m_platform.mainQueue,
                                         [self = shared_from_this()](const AuthService::AuthResult& result) {
                                             self->m_attemptingTouchID.set(false);
                                             switch (result.kind) {
                                             case Kind::success:
                                                 self->m_onAuthenticated();
                                                 break;
                                             case Kind::cancelled:
                                                 self->m_isPasswordFocused.set(true);
                                                 break;
                                             case Kind::failure:
                                                 self->m_errorMessage.set(result.message);
                                                 self->m_isPasswordFocused.set(true);
                                                 break;
                                             }
                                         });
}

void ExitOverlay::attemptPassword() {
    m_errorMessage.set({});
    const auto result = AuthService::authenticateWithPassword(password(), m_settings);
    switch (result.kind) {
    case Kind::success:
        m_onAuthenticated();
        break;
    case Kind::cancelled:
        break;
    case Kind::failure:
        m_errorMessage.set(result.message);
        m_password.set({});
        break;
    }
}

void ExitOverlay::dismiss() {
    m_platform.notificationCenter.post(hideExitOverlayNotification);
    m_clearIsPresented();
    m_password.set({});
    m_errorMessage.set({});
}

} // namespace tapalong
