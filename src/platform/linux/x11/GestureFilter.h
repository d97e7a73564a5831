#pragma once

#include "platform/InputEvent.h"

#include <QObject>

#include <functional>

namespace tapalong {

/// Offers the touchpad gestures of our own windows to the tap before the windows get them. Smooth scrolling, which
/// comes along with the wheel steps that the tap is offered anyway, is withheld with them.
class GestureFilter final : public QObject {
public:
    explicit GestureFilter(std::function<Verdict(const InputEvent&)> offer);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<Verdict(const InputEvent&)> m_offer;
};

} // namespace tapalong
