#pragma once

#include <QObject>

#include <functional>

class QSessionManager;

namespace tapalong {

/// Answers the session manager of the desktop when the user logs out: no while `isRefused` says so. A log-out that
/// comes about ends the program's main loop, whatever its windows would like.
/// To be created after and destroyed before the QGuiApplication.
class LogOutRequests final : public QObject {
public:
    explicit LogOutRequests(std::function<bool()> isRefused);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void answer(QSessionManager& manager) const;

    std::function<bool()> m_isRefused;
};

} // namespace tapalong
