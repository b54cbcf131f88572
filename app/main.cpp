#include "app/AppDelegate.h"
#include "app/HelpMenu.h"
#include "app/OpenedMovies.h"
#include "app/ProgramParts.h"
#include "app/SessionEnd.h"
#include "app/UpdateAddress.h"
#include "app/Version.h"
#include "app/WindowToFront.h"
#include "convert/NoteFile.h"
#include "opening/Beginning.h"
#include "opening/BusApplication.h"
#include "opening/HandOver.h"
#include "opening/NoDisplay.h"
#include "platform/LocalizedStrings.h"
#include "platform/ProgramName.h"
#include "platform/QuitSignals.h"
#include "platform/StandardStreams.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/LauncherProgress.h"
#include "platform/desktop/Notifications.h"
#include "platform/desktop/ProgramId.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/desktop/VolumeInfo.h"
#include "resources/ApplicationIcon.h"
#include "widgets/ReadablePalette.h"

#include <QApplication>
#include <QLocale>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

using namespace std::chrono_literals;

namespace {

// A message bus that has started the program says at once what for.
constexpr auto longestIdleService = 10s;

bool isWindowOpen() {
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* widget) {
        const Qt::WindowType type = widget->windowType();
        return widget->isVisible() && (type == Qt::Window || type == Qt::Dialog);
    });
}

/// What comes over the message bus.
void connectOpening(BusApplication& bus, AppDelegate& controller, ProgramParts& parts,
                    OpenedMovies& opened) {
    bus.setReadiness([&parts] { return !parts.mainThread.isClosing(); });
    QObject::connect(QApplication::instance(), &QCoreApplication::aboutToQuit, &bus,
                     &BusApplication::release);
    QObject::connect(&bus, &BusApplication::activated, &controller,
                     [&parts](const StartupTokens& tokens) { bringToFront(parts.window, tokens); });
    QObject::connect(&bus, &BusApplication::opened, &controller,
                     [&parts, &opened](const QStringList& addresses, const StartupTokens& tokens) {
                         bringToFront(parts.window, tokens);
                         opened.open(addresses);
                     });
    // As its close button does, where there is a window.
    QObject::connect(&bus, &BusApplication::quitAsked, &controller, [&controller, &parts] {
        if (parts.window.isVisible())
            parts.window.close();
        else
            controller.quit();
    });
}

void endWhereNothingIsAsked(AppDelegate& controller) {
    QTimer::singleShot(longestIdleService, &controller, [&controller] {
        if (!isWindowOpen())
            controller.quit();
    });
}

void nameApplication() {
    QApplication::setApplicationName(appName);
    QApplication::setApplicationDisplayName(QString());
    // Windows that stand alone have it, too.
    QApplication::setWindowIcon(smallApplicationIcon());
    QApplication::setDesktopFileName(programId);
    QApplication::setApplicationVersion(QStringLiteral(REELSHIFT_VERSION));
    // The controller quits when the last window has closed, after its clean-up.
    QApplication::setQuitOnLastWindowClosed(false);
}

UpdateSettings updateSettings() {
    UpdateSettings settings;
    settings.baseUrl = updateBaseUrl();
    settings.version = QStringLiteral(REELSHIFT_VERSION);
    return settings;
}

/// What ends the program from outside of its window.
void connectEnds(const QuitSignals& quitSignals, AppDelegate& controller) {
    QObject::connect(&quitSignals, &QuitSignals::quitAsked, &controller, &AppDelegate::quit);
    // Queued: the window that closes is not to be destroyed while it does, and may open a box yet.
    QObject::connect(
        qApp, &QApplication::lastWindowClosed, &controller,
        [&controller] {
            if (!isWindowOpen())
                controller.quit();
        },
        Qt::QueuedConnection);
}

} // namespace

int main(int argc, char* argv[]) {
    openStandardStreams();
    const Beginning beginning = Beginning::of(argc, argv, QStringLiteral(REELSHIFT_VERSION));
    if (beginning.status)
        return *beginning.status;
    std::optional<NoDisplay> noDisplay(beginning.noDisplay);
    QApplication application(argc, argv);
    noDisplay.reset();
    nameApplication();

    const bool isService = beginning.line.wish == CommandLine::Wish::Service;
    BusApplication bus;
    // Of two that are started at once, the later one.
    if (bus.claim() == BusApplication::Claim::Anothers && !beginning.isRefused &&
        (isService || handOver(bus.bus(), beginning.line.addresses) == HandOver::Taken))
        return EXIT_SUCCESS;

    const QString resourceFolder =
        QApplication::applicationDirPath() + QStringLiteral("/../share/reelshift");
    const StringTable strings(resourceFolder, QLocale());
    // Said outright: left alone, it follows Qt's own texts, which need not be on the system.
    QApplication::setLayoutDirection(strings.direction());
    const ReadablePalette palette;
    const auto volumes = std::make_shared<SystemVolumeInfo>();
    DesktopFileManager fileManager;
    DesktopSleepInhibitor sleep;
    DesktopNotifications notifications;
    DesktopLauncherProgress launcher;
    const UpdateSettings update = updateSettings();

    ProgramParts parts({resourceFolder,
                        update.version,
                        PersistedFolders(),
                        NoteFile::stateFolder(),
                        volumes,
                        fileManager,
                        {sleep, notifications, launcher},
                        update});
    AppDelegate controller(parts);
    const QuitSignals signals_;
    connectEnds(signals_, controller);
    const SessionEnd sessionEnd({controller, parts.mainThread, parts.state, parts.window});

    OpenedMovies opened({parts.mainThread, parts.gate, parts.state, parts.window, parts.addFiles});
    const HelpMenu help(
        {parts.mainThread, parts.gate, parts.processes, parts.files, parts.engine.watch(),
         parts.window},
        {update.version, resourceFolder + QStringLiteral("/ffmpeg"), strings.language()});
    connectOpening(bus, controller, parts, opened);
    controller.awakeFromNib();
    controller.applicationDidFinishLaunching();
    if (isService)
        endWhereNothingIsAsked(controller);
    else
        parts.window.show();
    opened.open(beginning.line.addresses);
    const int status = QApplication::exec();
    if (!controller.awaitEnd())
        std::_Exit(status); // a thread hangs in the kernel: nothing may be taken from under it
    return status;
}
