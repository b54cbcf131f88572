#include "app/AppDelegate.h"
#include "app/Version.h"
#include "convert/NoteFile.h"
#include "platform/LocalizedStrings.h"
#include "platform/QuitSignals.h"
#include "platform/StandardStreams.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/LauncherProgress.h"
#include "platform/desktop/Notifications.h"
#include "platform/desktop/SleepInhibitor.h"
#include "platform/desktop/VolumeInfo.h"
#include "resources/ApplicationIcon.h"
#include "widgets/ReadablePalette.h"

#include <QApplication>
#include <QLocale>
#include <QSessionManager>
#include <QWidget>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

bool isWindowOpen() {
    return std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* widget) {
        const Qt::WindowType type = widget->windowType();
        return widget->isVisible() && (type == Qt::Window || type == Qt::Dialog);
    });
}

} // namespace

int main(int argc, char* argv[]) {
    openStandardStreams();
    QApplication application(argc, argv);
    QApplication::setApplicationName(appName);
    QApplication::setApplicationDisplayName(QString());
    // Windows that stand alone have it, too.
    QApplication::setWindowIcon(applicationIcon());
    QApplication::setDesktopFileName(QStringLiteral("reelshift"));
    QApplication::setApplicationVersion(QStringLiteral(REELSHIFT_VERSION));
    // The controller quits when the last window has closed, after its clean-up.
    QApplication::setQuitOnLastWindowClosed(false);

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
    UpdateSettings update;
    update.baseUrl = QStringLiteral(REELSHIFT_UPDATE_BASE_URL);
    update.version = QStringLiteral(REELSHIFT_VERSION);

    AppDelegate controller({resourceFolder,
                            update.version,
                            PersistedFolders(),
                            NoteFile::stateFolder(),
                            volumes,
                            fileManager,
                            {sleep, notifications, launcher},
                            update});
    const QuitSignals signals_;
    QObject::connect(&signals_, &QuitSignals::quitAsked, &controller, &AppDelegate::terminate);
    // Queued: the window that closes is not to be destroyed while it does, and may open a box yet.
    QObject::connect(
        &application, &QApplication::lastWindowClosed, &controller,
        [&controller] {
            if (!isWindowOpen())
                controller.terminate();
        },
        Qt::QueuedConnection);

    // When a session ends the program may not be asked again.
    QObject::connect(&application, &QGuiApplication::commitDataRequest, &controller,
                     &AppDelegate::rememberFolders, Qt::DirectConnection);

    controller.awakeFromNib();
    controller.applicationDidFinishLaunching();
    controller.window().show();
    const int status = QApplication::exec();
    if (!controller.finish())
        std::_Exit(status); // a thread hangs in the kernel: nothing may be taken from under it
    return status;
}
