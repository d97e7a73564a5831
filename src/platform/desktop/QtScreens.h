#pragma once

#include "platform/Screens.h"

#include <QObject>
#include <QPointF>
#include <QRect>
#include <QSizeF>

#include <functional>
#include <optional>

class QScreen;

namespace tapalong {

class NotificationCenter;

/// The screens as Qt sees them: the main screen is the primary one. Qt's own coordinates grow downwards from the top
/// left of the virtual desktop; those of the interface grow upwards from the bottom left of the main screen.
class QtScreens final : public Screens {
public:
    struct Sources {
        /// In Qt's coordinates; none while nobody knows.
        std::function<std::optional<QPointF>()> pointer{};
        /// A screen's size in points, with the fraction that Qt rounds away. Without it, as Qt says.
        std::function<QSizeF(const QScreen&)> size{};
    };

    /// Says on `notices` when the main screen changes.
    QtScreens(NotificationCenter& notices, Sources sources);

    [[nodiscard]] std::optional<Rect> mainScreenFrame() const override;
    /// Far outside of every screen while nobody knows.
    [[nodiscard]] Point mouseLocation() const override;

    /// Null while no display is attached.
    [[nodiscard]] static QScreen* mainScreen();
    /// `frame` in Qt's coordinates.
    [[nodiscard]] static QRect toQt(const Rect& frame);
    /// Whether `frame` is all of that main screen, with or without the fraction of a point.
    [[nodiscard]] static bool isFrameOf(const QScreen& mainScreen, const Rect& frame);

private:
    void watchMainScreen();

    NotificationCenter& m_notices;
    const Sources m_sources;
    QObject m_watch;
    QMetaObject::Connection m_geometryChanges;
};

} // namespace tapalong
