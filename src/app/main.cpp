#include "app/DesktopPlatform.h"
#include "app/DesktopRenderer.h"
#include "app/DesktopSignals.h"
#include "app/TapalongApp.h"
#include "platform/linux/instance/FirstInstance.h"

#include <QGuiApplication>
#include <QString>

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace {

bool hasDisplay() {
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

/// The toolkit takes the X server's name from here before it asks the environment, by which the keyboard, its guard and
/// the one running program are sought: they would be another server's.
void useDisplayOf(std::span<char*> arguments) {
    for (std::size_t i = 1; i + 1 < arguments.size(); ++i) {
        const std::string_view option = arguments[i];
        if (option == "-display" || option == "--display") {
            qputenv("DISPLAY", arguments[++i]);
        }
    }
}

/// The desktop gets everything back when our connections to it end, and they stay open while memory is dumped; nor
/// should the password lie in a file. One byte is too little for a file, and the kernel takes it for no dump to a pipe
/// either, which a limit of none would not be.
void dumpNoMemory() {
    constexpr rlimit noDump{.rlim_cur = 1, .rlim_max = 1};
    (void)setrlimit(RLIMIT_CORE, &noDump);
}

/// Whoever started the program may stop reading what it prints, or have given it nothing to print to.
void outliveReaders() {
    // Handled and not ignored: what is ignored would be so in the programs too that we or our libraries start.
    std::signal(SIGPIPE, [](int) {});
    // Else a connection to the desktop would take the place of the missing descriptor, and be printed into.
    int descriptor = -1;
    do {
        descriptor = open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor > STDERR_FILENO) {
        close(descriptor);
    }
}

/// Whoever started the program may ignore what becomes of children and hand that on. Then nobody could say how a guard
/// of ours ended.
void learnOfChildren() {
    std::signal(SIGCHLD, SIG_DFL);
}

/// Large blocks, pictures all of them, go back to the system when they are freed. By itself the allocator would keep
/// them from the first one on, and lay what stays among what goes.
void returnLargeBlocks() {
    constexpr int large = 128 * 1024; // bytes; where the allocator begins, too
    (void)mallopt(M_MMAP_THRESHOLD, large);
}

void prepareToolkit() {
    // Else each key waits five milliseconds before it is drawn.
    if (!qEnvironmentVariableIsSet("QT_QPA_UPDATE_IDLE_TIME")) {
        qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    }
    QGuiApplication::setApplicationName(QStringLiteral("tapalong"));
    QGuiApplication::setDesktopFileName(QStringLiteral("tapalong"));
    // Windows that are closed are only hidden; who closes the last one decides.
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

/// What two running programs would fight over, as the desktop calls it.
std::string displayName() {
    if (QGuiApplication::platformName().startsWith(QStringLiteral("wayland"))) {
        return qEnvironmentVariable("WAYLAND_DISPLAY", QStringLiteral("wayland-0")).toStdString();
    }
    // The screens of an X server share its keyboard: "host:0.1" is one of "host:0".
    const QString display = qEnvironmentVariable("DISPLAY");
    const qsizetype screen = display.indexOf(u'.', display.lastIndexOf(u':') + 1);
    return (screen < 0 ? display : display.left(screen)).toStdString();
}

/// What to end with when the program runs already, since two would both start sessions and write the same settings.
std::optional<int> endBecauseItRuns(tapalong::FirstInstance& instance) {
    using Claim = tapalong::FirstInstance::Claim;
    switch (instance.claim()) {
    case Claim::first:
        break;
    case Claim::answered:
        std::cout << "Tapalong runs already.\n";
        return EXIT_SUCCESS;
    case Claim::unanswered:
        std::cerr << "Tapalong runs already, but does not answer. Please end it before you start it anew.\n";
        return EXIT_FAILURE;
    }
    return std::nullopt;
}

} // namespace

int main(int argc, char* argv[]) {
    outliveReaders();
    learnOfChildren();
    useDisplayOf({argv, static_cast<std::size_t>(argc)});
    if (!hasDisplay()) {
        std::cerr << "Tapalong needs a graphical desktop: please start it from there.\n";
        return EXIT_FAILURE;
    }
    dumpNoMemory();
    returnLargeBlocks();
    prepareToolkit();
    QGuiApplication toolkit(argc, argv);
    tapalong::FirstInstance instance(displayName());
    if (const auto result = endBecauseItRuns(instance)) {
        return *result;
    }
    tapalong::chooseRenderer();

    tapalong::DesktopPlatform desktop;
    tapalong::TapalongApp app(desktop.platform());
    const tapalong::DesktopSignals askedToEnd([] { QGuiApplication::exit(EXIT_SUCCESS); });
    desktop.windows().openScene(app.body(),
                                [&app] { return app.appDelegate().applicationShouldTerminateAfterLastWindowClosed(); });
    app.appDelegate().applicationDidFinishLaunching();
    instance.serve([&app] { app.appDelegate().applicationShouldHandleReopen(); });

    const int result = QGuiApplication::exec();
    // Windows show the state of the application, so they go first.
    app.sessionManager().endSession();
    desktop.windows().removeScene();
    return result;
}
