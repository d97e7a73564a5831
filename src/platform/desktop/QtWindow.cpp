#include "platform/desktop/QtWindow.h"

#include "platform/desktop/QtScreens.h"

#include <QGuiApplication>
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
    QObject::disconnect(m_screenChanges);
    QObject::disconnect(m_geometryChanges);
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
    if (screen != nullptr) {
        m_view->setScreen(screen);
    }
    m_view->setGeometry(QtScreens::toQt(frame));
    m_coversMainScreen = screen != nullptr && m_view->geometry() == screen->geometry();
    if (m_coversMainScreen && !m_screenChanges) {
        m_screenChanges =
            QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, m_view, [this] { followMainScreen(); });
        followMainScreen();
    }
}

void QtWindow::followMainScreen() {
    QObject::disconnect(m_geometryChanges);
    auto* const screen = QtScreens::mainScreen();
    if (!m_coversMainScreen || screen == nullptr) {
        return;
    }
    if (m_view->screen() != screen) {
        m_view->setScreen(screen);
    }
    if (m_view->geometry() != screen->geometry()) {
        m_view->setGeometry(screen->geometry());
    }
    m_geometryChanges = QObject::connect(screen, &QScreen::geometryChanged, m_view, [this] { followMainScreen(); });
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
