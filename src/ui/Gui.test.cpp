#include "ui/Gui.test.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSGRendererInterface>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

namespace tapalong {

namespace {

QStringList& warnings() {
    static QStringList list;
    return list;
}

void collect(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        warnings().append(message);
    }
}

/// The application object that Qt wants; no display is needed.
class GuiEnvironment final : public testing::Environment {
public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        m_application.emplace(m_argumentCount, m_arguments);
        QAccessible::setActive(true);
        qInstallMessageHandler(collect);
    }
    void TearDown() override {
        qInstallMessageHandler(nullptr);
        m_application.reset();
    }

private:
    int m_argumentCount = 1;
    char m_name[9] = "ui_tests";
    char* m_arguments[2] = {m_name, nullptr};
    std::optional<QGuiApplication> m_application;
};

const auto* const environment = testing::AddGlobalTestEnvironment(new GuiEnvironment);

} // namespace

bool waitUntil(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > 10000) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

void turn() {
    QCoreApplication::sendPostedEvents();
}

void press(QQuickView& window, int key, const QString& text, Qt::KeyboardModifiers modifiers) {
    QTest::sendKeyEvent(QTest::Click, &window, static_cast<Qt::Key>(key), text, modifiers);
}

void click(QQuickView& window, QPointF position) {
    QTest::mouseClick(&window, Qt::LeftButton, {}, position.toPoint());
}

QStringList takeWarnings() {
    return std::exchange(warnings(), {});
}

Gui::Gui() : app(desktop.platform()) {
    takeWarnings();
    app.appDelegate().applicationDidFinishLaunching();
    factory =
        makeViewFactory({&look, [this] { return look.dark; }, [this](QObject* field) { focusedFields.append(field); }});
}

void Gui::open(const std::shared_ptr<HostedView>& view, QSize size) {
    window = std::make_unique<QQuickView>();
    window->resize(size);
    factory(*window, view);
    window->show();
    window->requestActivate();
    waitUntil([this] { return window->isActive(); });
}

void Gui::setDark(bool dark) {
    look.sendObjectWillChange();
    look.dark = dark;
}

std::shared_ptr<HostedView> Gui::startSession() {
    app.sessionManager().startSession();
    return desktop.desktop.shownWindow()->contentView();
}

QList<QQuickItem*> allItems(QQuickView& window) {
    window.grabWindow(); // lays out what has changed
    QList<QQuickItem*> items{window.contentItem()};
    for (qsizetype i = 0; i < items.size(); ++i) {
        items.append(items[i]->childItems());
    }
    return items;
}

QQuickItem* itemNamed(QQuickView& window, const QString& name) {
    for (auto* item : allItems(window)) {
        if (item->isVisible() &&
            (item->property("text").toString() == name || item->property("label").toString() == name)) {
            return item;
        }
    }
    return nullptr;
}

} // namespace tapalong
