#pragma once

#include "platform/Screens.h"

#include <QPointF>
#include <QRect>

#include <functional>
#include <optional>

class QScreen;

namespace tapalong {

/// The screens as Qt sees them: the main screen is the primary one. Qt's own coordinates grow downwards from the top
/// left of the virtual desktop; those of the interface grow upwards from the bottom left of the main screen.
class QtScreens final : public Screens {
public:
    /// In Qt's coordinates; none while nobody knows.
    using PointerSource = std::function<std::optional<QPointF>()>;

    explicit QtScreens(PointerSource pointer);

    [[nodiscard]] std::optional<Rect> mainScreenFrame() const override;
    /// Far outside of every screen while nobody knows.
    [[nodiscard]] Point mouseLocation() const override;

    /// Null while no display is attached.
    [[nodiscard]] static QScreen* mainScreen();
    /// `frame` in Qt's coordinates.
    [[nodiscard]] static QRect toQt(const Rect& frame);

private:
    PointerSource m_pointer;
};

} // namespace tapalong
