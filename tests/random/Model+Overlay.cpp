// The exit overlay.

#include "base/Fatal.h"
#include "random/Model.h"

namespace tapalong::testing {

void Model::applyToOverlay(const Event& event) {
    verify(session && session->overlay, "only an overlay that is shown can be clicked");
    switch (event.kind) {
    case Event::Kind::overlayPassword:
        session->overlay->password = event.text;
        break;
    case Event::Kind::overlayReturn:
        attemptPassword();
        break;
    case Event::Kind::overlayCancel:
        session->overlay.reset();
        break;
    case Event::Kind::overlayField:
        session->overlay->focused = true;
        ourAppActive = true;
        break;
    default:
        attemptTouchID(session->overlay);
    }
}

void Model::attemptTouchID(const std::shared_ptr<Overlay>& asking) {
    asking->error.clear();
    asking->attempting = hasReader;
    if (hasReader) {
        pendingFingers.push_back(asking);
    } else {
        asking->error = "Touch ID not available: No fingerprint reader.";
        asking->focused = true;
    }
}

void Model::attemptPassword() {
    auto& shown = *session->overlay;
    shown.error.clear();
    if (shown.password == settings.exitPassword) {
        ++milestones.passwordEnds;
        endSession();
    } else {
        shown.error = "Incorrect password";
        shown.password.clear();
    }
}

void Model::answerFinger(const Event& event) {
    const auto asking = pendingFingers.front();
    pendingFingers.pop_front();
    asking->attempting = false;
    if (event.on) {
        // Also an answer to an overlay that was taken down counts, but for its own session only.
        if (session && session->number == asking->session) {
            ++milestones.fingerEnds;
            endSession();
        }
        return;
    }
    asking->focused = true;
    if (event.choice == 1) {
        asking->error = "Too wet.";
    } else if (event.choice == 2) {
        asking->error = "Authentication failed";
    }
}

} // namespace tapalong::testing
