#include "platform/linux/x11/ServerKeys.h"

#include "platform/linux/ProgramFolder.h"
#include "platform/linux/x11/ServerKeysNote.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tapalong {

namespace {

using namespace std::chrono_literals;

// It takes a few milliseconds; more only on a machine that is busy or broken.
constexpr auto patience = 500ms;
constexpr auto betweenGuards = 2s;

/// Whether a guard's note is there and no guard.
bool isLeftOver(xcb_connection_t* xcb) {
    const auto request = xcb_intern_atom(xcb, 1, serverKeysNote.size(), serverKeysNote.data());
    const auto name = own(xcb_intern_atom_reply(xcb, request, nullptr));
    if (!name || name->atom == XCB_NONE) {
        return false; // nobody ever wrote one here
    }
    const auto root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    const auto noteRequest = xcb_get_property(xcb, 0, root, name->atom, name->atom, 0, 0);
    const auto ownerRequest = xcb_get_selection_owner(xcb, name->atom);
    const auto note = own(xcb_get_property_reply(xcb, noteRequest, nullptr));
    const auto owner = own(xcb_get_selection_owner_reply(xcb, ownerRequest, nullptr));
    return note && note->type != XCB_NONE && owner && owner->owner == XCB_NONE;
}

/// `ended` or `failed`, whatever it says before; none when it does not come in that time.
std::optional<GuardProcess::Word> endOf(GuardProcess& guard, std::chrono::milliseconds atMost) {
    const auto end = std::chrono::steady_clock::now() + atMost;
    auto left = atMost;
    auto word = GuardProcess::Word::none;
    do {
        word = guard.listen(left);
        if (word == GuardProcess::Word::ended || word == GuardProcess::Word::failed) {
            return word;
        }
        left = std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        left = std::max(left, 0ms);
    } while (left > 0ms || word != GuardProcess::Word::none);
    return std::nullopt;
}

} // namespace

ServerKeys::ServerKeys(std::string guard) : m_guardProgram(std::move(guard)) {
    m_untilNextGuard.setSingleShot(true);
    m_untilNextGuard.setInterval(betweenGuards);
    QObject::connect(&m_untilNextGuard, &QTimer::timeout, &m_listener, [this] {
        if (!m_guard) {
            startGuard();
        }
    });
}

std::string ServerKeys::guardBesideProgram() {
    const auto folder = programFolder();
    return folder.empty() ? std::string{} : (folder / "tapalong-x11-guard").string();
}

void ServerKeys::putBackLeftOver(const X11Connection& connection) {
    if (isLeftOver(connection.xcb())) {
        close();
        reopen();
    }
}

void ServerKeys::close() {
    if (!std::exchange(m_areWanted, true)) {
        startGuardAndWait();
    }
}

void ServerKeys::reopen() {
    if (!std::exchange(m_areWanted, false)) {
        return;
    }
    m_untilNextGuard.stop();
    m_hasFailed = !std::exchange(m_areClosed, false);
    if (!endGuard()) {
        // It was killed, or lost the server. Another one finds in its note what is to be put back.
        m_guard = GuardProcess::start(m_guardProgram);
        (void)endGuard();
    }
}

bool ServerKeys::canBeClosed() const {
    return !m_hasFailed && access(m_guardProgram.c_str(), X_OK) == 0;
}

void ServerKeys::startGuard() {
    std::erase_if(m_lateGuards, [](const auto& each) { return endOf(*each, 0ms).has_value(); });
    m_guard = GuardProcess::start(m_guardProgram);
    if (!m_guard) {
        m_untilNextGuard.start();
        return;
    }
    m_guardSpeaks.emplace(m_guard->descriptor(), QSocketNotifier::Read);
    QObject::connect(
        &*m_guardSpeaks, &QSocketNotifier::activated, &m_listener, [this] { hearGuard(); }, Qt::QueuedConnection);
}

void ServerKeys::startGuardAndWait() {
    startGuard();
    m_areClosed = m_guard && m_guard->listen(patience) == GuardProcess::Word::closed;
}

void ServerKeys::hearGuard() {
    if (!m_guard) {
        return;
    }
    const bool wereClosed = m_areClosed;
    switch (m_guard->listen(0ms)) {
    case GuardProcess::Word::none:
        break;
    case GuardProcess::Word::closed:
        m_areClosed = true;
        break;
    case GuardProcess::Word::refused:
        m_areClosed = false;
        break;
    case GuardProcess::Word::ended:
    case GuardProcess::Word::failed:
        replaceGuard();
        break;
    }
    if (m_areClosed != wereClosed && m_changed) {
        m_changed();
    }
}

/// One that had closed everything was killed, and its successor goes on from its note before a key is pressed. One that
/// fails again and again must not keep us busy with starting it.
void ServerKeys::replaceGuard() {
    m_guardSpeaks.reset();
    m_guard.reset();
    const bool hadClosed = std::exchange(m_areClosed, false);
    if (!m_untilNextGuard.isActive()) {
        m_untilNextGuard.start();
        if (hadClosed) {
            startGuardAndWait();
        }
    }
}

/// False when there was none any more, or none that did its work.
bool ServerKeys::endGuard() {
    m_guardSpeaks.reset();
    auto guard = std::exchange(m_guard, nullptr);
    if (!guard) {
        return false;
    }
    guard->endInput();
    const auto end = endOf(*guard, patience);
    if (!end) {
        m_lateGuards.push_back(std::move(guard)); // but at it
    }
    return end != GuardProcess::Word::failed;
}

} // namespace tapalong
