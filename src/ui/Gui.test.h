#pragma once

#include "app/TapalongApp.h"
#include "base/Observable.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "ui/ViewFactory.h"

#include <QObject>
#include <QQuickItem>
#include <QQuickView>
#include <QStringList>

#include <functional>
#include <memory>

namespace tapalong {

/// Lets posted events and animations run for as long as `condition` is false, at most a few seconds.
bool waitUntil(const std::function<bool()>& condition);
/// One turn of the event loop.
void turn();
void press(QQuickView& window, int key, const QString& text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void click(QQuickView& window, QPointF position);
/// Everything in the window, popovers and what views repeat included.
QList<QQuickItem*> allItems(QQuickView& window);
/// The first visible item with that text or label; null when there is none.
QQuickItem* itemNamed(QQuickView& window, const QString& name);
/// What was written to the log as a warning or worse since the last call.
QStringList takeWarnings();

/// A desktop without a desktop, the whole application on it, and a window for one of its views.
struct Gui {
    struct Look : ObservableObject {
        bool dark = false;
    };

    Gui();

    void open(const std::shared_ptr<HostedView>& view, QSize size);
    void setDark(bool dark);
    /// The session's view; starts a session.
    std::shared_ptr<HostedView> startSession();

    simulated::SimulatedPlatform desktop;
    TapalongApp app;
    Look look;
    QList<QObject*> focusedFields; ///< every report of the overlay's field, in order
    ViewFactory factory;
    std::unique_ptr<QQuickView> window; // last: its adapters go before what they look at
};

} // namespace tapalong
