#include "platform/desktop/QtWindows.h"

#include "base/Fatal.h"
#include "platform/desktop/QtScreens.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QQuickItem>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace tapalong {

namespace {

/// What a window manager adds above a window's content, as far as room must be left for it.
constexpr int titleBarHeight = 40; // points
constexpr int anyHeight = 1 << 20;

void tell(WindowResponder& responder, const InputEvent& event) {
    if (event.type == EventType::keyDown) {
        responder.keyDown(event);
    } else if (event.type == EventType::flagsChanged) {
        responder.flagsChanged(event);
    }
}

/// `width` is fixed; the height is the content's own, as far as the screen has room.
void placeScene(QQuickView& view, const Scene& scene) {
    const int width = qRound(scene.width);
    const int minHeight = qRound(scene.minHeight);
    view.setMinimumSize({width, minHeight});
    view.setMaximumSize({width, anyHeight});
    auto* const content = view.rootObject();
    int height = content != nullptr ? qRound(content->implicitHeight()) : minHeight;
    const auto* const screen = QtScreens::mainScreen();
    const auto room = screen != nullptr ? screen->availableGeometry() : QRect();
    if (screen != nullptr) {
        height = std::min(height, room.height() - titleBarHeight);
    }
    height = std::max(height, minHeight);
    view.resize(width, height);
    if (content != nullptr) {
        // The view gives its content no size that it has already; it would then shrink when it wants less room.
        content->setSize(QSizeF(width, height));
    }
    if (screen != nullptr && scene.centred) {
        const int y = room.y() + std::max((room.height() - height) / 2, 0);
        view.setPosition(room.x() + std::max((room.width() - width) / 2, 0), y);
    }
}

} // namespace

QtWindows::QtWindows(WindowTraits traits) : m_traits(std::move(traits)) {}

QtWindows::~QtWindows() {
    removeScene();
}

std::shared_ptr<Window> QtWindows::makeWindow(Rect contentRect, StyleMask style, BackingStore, bool,
                                              WindowResponder& responder) {
    verify(style == StyleMask::borderless, "only borderless windows are made; others are declared");
    HostQuickView::Callbacks callbacks{.unhandledKey = [this, &responder](const QKeyEvent& event) {
        if (m_traits.translateKey) {
            tell(responder, m_traits.translateKey(event));
        }
    }};
    // No window manager gives a window the keyboard that it does not manage, not even for a click.
    callbacks.pressedWhileInactive = [this] {
        if (auto* const front = frontWindow()) {
            front->takeKeyboard();
        }
    };
    const auto window = std::make_shared<QtWindow>(m_engine, m_traits, std::move(callbacks));
    auto flags = Qt::Window | Qt::FramelessWindowHint;
    if (m_traits.cover == Cover::unmanaged) {
        flags |= Qt::BypassWindowManagerHint;
    }
    window->quickView().setFlags(flags);
    window->setFrame(contentRect, false);
    if (m_traits.borderlessWindowMade) {
        m_traits.borderlessWindowMade(window->quickView());
    }
    std::erase_if(m_windows, [](const auto& each) { return each.expired(); });
    m_windows.push_back(window);
    return window;
}

std::vector<std::shared_ptr<QtWindow>> QtWindows::living() const {
    std::vector<std::shared_ptr<QtWindow>> result;
    for (const auto& each : m_windows) {
        if (auto window = each.lock()) {
            result.push_back(std::move(window));
        }
    }
    return result;
}

std::vector<std::shared_ptr<Window>> QtWindows::windows() const {
    const auto ours = living();
    return {ours.begin(), ours.end()};
}

void QtWindows::openScene(const Scene& scene, std::function<bool()> quitsWithLastWindow) {
    verify(!m_scene, "the declared window opens once");
    m_quitsWithLastWindow = std::move(quitsWithLastWindow);
    m_scene = std::make_shared<QtWindow>(
        m_engine, m_traits,
        HostQuickView::Callbacks{
            .closeRequested = [this] { sceneAskedToClose(); },
            .isBehind = [this] { return m_onlyFrontTakesPointer && frontWindow() != m_scene.get(); }});
    m_windows.push_back(m_scene);
    auto& view = m_scene->quickView();
    view.setTitle(QString::fromStdString(scene.title));
    view.setObjectName(QString::fromStdString(scene.identifier));
    m_scene->setContentView(scene.content);
    placeScene(view, scene);
    m_scene->makeKeyAndOrderFront();
}

void QtWindows::removeScene() {
    m_scene.reset();
    // The toolkit's windows wait for a turn of the event loop that may not come any more, and need the engine.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void QtWindows::sceneAskedToClose() {
    m_scene->orderOut();
    // exit() and not quit(), which would ask every window whether it likes to close: none of ours does.
    if (frontWindow() == nullptr && m_quitsWithLastWindow()) {
        QCoreApplication::exit(0);
    }
}

QtWindow* QtWindows::frontWindow() const {
    QtWindow* front = nullptr;
    for (const auto& each : living()) {
        if (each->isVisible() && (front == nullptr || each->level() >= front->level())) {
            front = each.get();
        }
    }
    return front;
}

} // namespace tapalong
