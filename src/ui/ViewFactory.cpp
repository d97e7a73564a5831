#include "ui/ViewFactory.h"

#include "base/Fatal.h"
#include "ui/controls/SymbolImageProvider.h"
#include "ui/session/SessionViewAdapter.h"
#include "ui/settings/SettingsViewAdapter.h"
#include "views/SessionView.h"
#include "views/SettingsView.h"

#include <QQmlEngine>
#include <QQmlError>
#include <QQuickView>

#include <utility>

// Written by the build. Called, or the linker drops the registration from a static library.
void qml_register_types_Tapalong();

namespace tapalong {

namespace {

void load(QQuickView& window, ViewAdapter* adapter, const char* file) {
    if (window.engine()->imageProvider(SymbolImageProvider::name) == nullptr) {
        window.engine()->addImageProvider(SymbolImageProvider::name, new SymbolImageProvider);
    }
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.setInitialProperties({{"view", QVariant::fromValue<QObject*>(adapter)}});
    window.setSource(QUrl(QString("qrc:/qt-project.org/imports/Tapalong/") + file));
    if (window.status() != QQuickView::Ready) {
        QString reasons("a view's QML must load:");
        for (const auto& error : window.errors()) {
            reasons += "\n" + error.toString();
        }
        fatal(reasons.toStdString());
    }
}

} // namespace

ViewFactory makeViewFactory(ViewEnvironment environment) {
    qml_register_types_Tapalong();
    return [environment = std::move(environment)](QQuickView& window, const std::shared_ptr<HostedView>& view) {
        if (auto settings = std::dynamic_pointer_cast<SettingsView>(view)) {
            load(window, new SettingsViewAdapter(std::move(settings), environment, &window),
                 "settings/SettingsWindow.qml");
        } else if (auto session = std::dynamic_pointer_cast<SessionView>(view)) {
            load(window, new SessionViewAdapter(std::move(session), environment, &window), "session/SessionScreen.qml");
        } else {
            fatal("a window's content must be the settings view or the session view");
        }
    };
}

} // namespace tapalong
