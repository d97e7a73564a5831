#include "app/DesktopRenderer.h"

#include <QDir>
#include <QFileInfo>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QSGRendererInterface>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

namespace tapalong {

namespace {

bool isChosenByUser() {
    constexpr std::array names{"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI_BACKEND"};
    return std::any_of(names.begin(), names.end(), [](const char* name) { return qEnvironmentVariableIsSet(name); });
}

bool hasGraphicsDevice() {
    return !QDir(QStringLiteral("/dev/dri")).entryList(QDir::System | QDir::NoDotAndDotDot).isEmpty() ||
           QFileInfo::exists(QStringLiteral("/dev/nvidiactl"));
}

/// A device alone proves little: in virtual machines it often only shows pictures.
bool hasGraphicsCard() {
    QOpenGLContext context;
    QOffscreenSurface surface;
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface)) {
        return false;
    }
    const auto* const text = context.functions()->glGetString(GL_RENDERER);
    const QByteArray renderer(reinterpret_cast<const char*>(text)); // NOLINT: bytes by another name
    context.doneCurrent();
    return isGraphicsCard({renderer.constData(), static_cast<std::size_t>(renderer.size())});
}

} // namespace

bool isGraphicsCard(std::string_view openGlRenderer) {
    constexpr std::array standIns{"llvmpipe", "softpipe", "swrast", "swiftshader", "software"};
    std::string name(openGlRenderer);
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
    return !name.empty() && std::none_of(standIns.begin(), standIns.end(), [&name](const char* standIn) {
        return name.find(standIn) != std::string::npos;
    });
}

void chooseRenderer() {
    // The device first: starting OpenGL only to find none takes longer than the rest of the start.
    if (!isChosenByUser() && !(hasGraphicsDevice() && hasGraphicsCard())) {
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    }
}

} // namespace tapalong
