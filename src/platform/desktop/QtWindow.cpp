#include "platform/desktop/QtWindow.h"

#include "platform/desktop/QtScreens.h"

#include <QQmlEngine>
#include <QScreen>

#include <utility>

namespace tapalong {

QtWindow::QtWindow(QQmlEngine& engine, const WindowTraits& traits, HostQuickView::Callbacks callbacks)
    : m_traits(traits), m_view(new HostQuickView(engine, std::move(callbacks))) {
    // Or what the window's content leaves to the script engine piles up over some forty sessions.
    QObject::connect(m_view, &QObject::destroyed, &engine, [&engine] { engine.collectGarbage(); });
}

QtWindow::~QtWindow() {
    m_view->detach();
    orderOut();
    m_view->deleteLater();
}

std::string QtWindow::title() const {
    return m_view->title().toStdString();
}

void QtWindow::setContentView(std::shared_ptr<HostedView> view) {
    m_content = std::move(view);
    if (m_traits.makeContent) {
        m_traits.makeContent(*m_view, m_content);
    }
}

void QtWindow::setLevel(int level) {
    m_level = level;
}

// Nothing to do: a window that nobody manages is on every workspace, and under Wayland no program may choose.
void QtWindow::setCollectionBehavior(CollectionBehavior) {}

void QtWindow::setOpaqueOnBlack() {
    m_view->setColor(Qt::black);
}

void QtWindow::setIgnoresMouseEvents(bool ignores) {
    m_view->setFlag(Qt::WindowTransparentForInput, ignores);
}

// Nothing to do: windows of the toolkit always get them.
void QtWindow::setAcceptsMouseMovedEvents(bool) {}

void QtWindow::setFrame(Rect frame, bool) {
    auto* const screen = QtScreens::mainScreen();
    m_coversMainScreen = screen != nullptr && QtScreens::isFrameOf(*screen, frame);
    if (m_coversMainScreen) {
        cover(*screen);
    } else {
        m_view->setGeometry(QtScreens::toQt(frame));
    }
}

void QtWindow::cover(QScreen& screen) {
    if (m_view->screen() != &screen) {
        m_view->setScreen(&screen);
    }
    if (m_traits.coverScreen) {
        m_traits.coverScreen(*m_view, screen);
    } else {
        m_view->setGeometry(screen.geometry());
    }
    if (m_view->isVisible() && m_traits.cover == Cover::fullScreen) {
        m_view->showFullScreen();
    }
}

void QtWindow::makeKeyAndOrderFront() {
    show();
    m_view->raise();
    takeKeyboard();
}

void QtWindow::orderFrontRegardless() {
    show();
    m_view->raise();
}

void QtWindow::orderOut() {
    if (!m_view->isVisible()) {
        return;
    }
    m_view->hide();
    if (m_content) {
        m_content->onDisappear();
    }
}

void QtWindow::takeKeyboard() {
    m_traits.takeKeyboard ? m_traits.takeKeyboard(*m_view) : m_view->requestActivate();
}

void QtWindow::show() {
    if (m_view->isVisible()) {
        // Minimised, it counts as visible.
        if (m_view->windowStates().testFlag(Qt::WindowMinimized)) {
            m_view->setWindowStates(m_view->windowStates() & ~Qt::WindowMinimized);
        }
        return;
    }
    if (m_coversMainScreen && m_traits.cover == Cover::fullScreen) {
        m_view->showFullScreen();
    } else {
        m_view->show();
    }
    if (m_content) {
        m_content->onAppear();
    }
}

} // namespace tapalong
