#include "app/AppDelegate.h"

#include "app/ProgramParts.h"
#include "platform/LocalizedStrings.h"
#include "platform/ProgramName.h"
#include "table/FileTableView.h"
#include "ui_MainWindow.h"
#include "update/KXPortavoUpdate.h"
#include "widgets/PopUpBoxes.h"

#include <QApplication>
#include <QFileDialog>
#include <QTimer>

#include <algorithm>
#include <system_error>

using namespace std::chrono_literals;

namespace {

constexpr auto longestGoodbye = 2s;
// For a folder of the user's: a share may have to be mounted first.
constexpr auto longestLook = 2s;
// A wait may be for a dead share; then the window is closed all the same, within three seconds of
// the click.
constexpr auto longestPutOffClose = 2500ms;

// The panel goes before anything is done with the movies: it looks at its folder as long as it
// lives, and where the folder hangs its end would, too.
std::optional<QStringList> pickMovies(QWidget* parent) {
    QFileDialog panel(parent, getLocalString("IDS_TXT_PANEL_ADD"));
    panel.setFileMode(QFileDialog::ExistingFiles);
    panel.setNameFilter(getLocalString("IDS_TXT_PANEL_FILTER"));
    if (panel.exec() != QDialog::Accepted)
        return std::nullopt;
    return panel.selectedFiles();
}

} // namespace

AppDelegate::AppDelegate(ProgramParts& parts) : parts_(parts) {
    parts_.window.setCloseHandler([this] { return closeWindow(); });
    QCoreApplication::instance()->installEventFilter(this);
    connectControls();
    connectTable();
}

AppDelegate::~AppDelegate() {
    parts_.window.setCloseHandler({});
}

void AppDelegate::awakeFromNib() {
    parts_.window.form().theTableNew->setRowDrag(&parts_.rowDrag);
    parts_.window.form().outputFolderPath->setText(_outputFolderPath);
}

void AppDelegate::applicationDidFinishLaunching() {
    parts_.update.start();
    parts_.interruptedRuns.start(parts_.surroundings.stateFolder);
    _outputFolderPath = rememberedFolder(PersistedFolders::DEFAULT_PATH_COMPONENT);
    _addFilePath = rememberedFolder(PersistedFolders::ADD_FILE_COMPONENT);
    parts_.window.form().outputFolderPath->setText(_outputFolderPath);
    parts_.window.setTexts();
    parts_.window.fitToScreen();
    parts_.window.setWindowTitle(appName + u' ' + parts_.surroundings.version);
    parts_.state.fileListStr = getLocalString("IDS_TXT_FILELIST");
    parts_.window.showFileCount(parts_.state, parts_.state.count);
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() {
    if (!std::exchange(cleanedUp_, true)) {
        parts_.engine.quitting().quit();
        rememberFolders();
    }
    return true;
}

// The folders may lie where nothing answers: the start and the end of the program do not wait for
// ever.
QString AppDelegate::rememberedFolder(const QString& fileName) {
    const PersistedFolders& folders = parts_.surroundings.folders;
    try {
        const auto found = parts_.mainThread.resultWithin(
            longestLook, [folders, fileName] { return folders.readDefaultFilePath(fileName); });
        return found.value_or(folders.defaultFolder());
    } catch (const std::system_error&) {
        return folders.defaultFolder();
    }
}

void AppDelegate::rememberFolders() {
    runGuarded([this] {
        (void)parts_.mainThread.resultWithin(longestLook,
                                             [folders = parts_.surroundings.folders,
                                              output = _outputFolderPath, add = _addFilePath] {
                                                 folders.remeberFolderPath(output, add);
                                                 return true;
                                             });
    });
}

void AppDelegate::quit() {
    if (std::exchange(isQuitting_, true))
        return;
    parts_.window.hide(); // first: see closeAtOnce()
    endWork();
    PopUpBoxes::dismissAll();
    parts_.update.stop();
    QCoreApplication::quit();
}

void AppDelegate::endWork() {
    applicationShouldTerminateAfterLastWindowClosed();
    parts_.mainThread.close();
    parts_.workers.close();
}

bool AppDelegate::awaitEnd() {
    endWork();
    parts_.engine.quitting().awaitEnd();
    const auto end = std::chrono::steady_clock::now() + longestGoodbye;
    const auto rest = [end] {
        return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(
                            end - std::chrono::steady_clock::now()),
                        0ms);
    };
    const bool haveWorkersEnded = parts_.workers.waitForAll(rest());
    const bool haveDownloadsEnded = parts_.update.waitForDownloads(rest());
    return parts_.mainThread.waitForHelpers(rest()) && haveWorkersEnded && haveDownloadsEnded;
}

// The session manager's last word is to be obeyed like a signal: left to itself the toolkit asks
// every window, and an open box or a wait would refuse.
bool AppDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Quit || watched != QCoreApplication::instance() || isQuitting_)
        return false;
    quit();
    return true;
}

// Inside a wait the closing is put off like every action, but not for ever; under an open box it
// does nothing.
bool AppDelegate::closeWindow() {
    if (parts_.mainThread.isClosing())
        return true;
    if (parts_.gate.isOpen()) {
        // Not now: the window that closes comes to its own end first.
        QMetaObject::invokeMethod(this, &AppDelegate::windowWasClosed, Qt::QueuedConnection);
        return true;
    }
    const bool isPutOff = parts_.mainThread.isWaiting() && !QApplication::activeModalWidget();
    if (isPutOff && !parts_.window.isCloseAsked())
        QTimer::singleShot(longestPutOffClose, this, [this] {
            if (parts_.window.isCloseAsked() && parts_.mainThread.isWaiting())
                closeAtOnce();
        });
    if (isPutOff)
        parts_.window.askForClose();
    else
        parts_.window.forgetClose();
    parts_.gate.pass([this] {
        parts_.window.forgetClose();
        parts_.window.close();
    });
    return false;
}

void AppDelegate::closeAtOnce() {
    parts_.mainThread.close();
    // First: what follows may take its time where a folder does not answer.
    parts_.window.close();
    PopUpBoxes::dismissAll();
    endWork();
    QMetaObject::invokeMethod(this, &AppDelegate::windowWasClosed, Qt::QueuedConnection);
}

// The window that offers a newer version may stay, and the program with it; no encoder does.
void AppDelegate::windowWasClosed() {
    endWork();
    parts_.engine.quitting().awaitEnd();
}

void AppDelegate::addData() {
    parts_.addFiles.beforePanel();
    if (const auto paths = pickMovies(&parts_.window))
        addPicked(*paths);
    else
        parts_.addFiles.close();
}

void AppDelegate::addPicked(const QStringList& paths) {
    parts_.addFiles.addPicked(paths);
}

void AppDelegate::remove() {
    parts_.removeFiles.remove();
}

void AppDelegate::convert() {
    parts_.window.form().theTableNew->closeEditors();
    parts_.engine.queue().convert();
}

void AppDelegate::stop() {
    parts_.engine.stopping().stop();
}

void AppDelegate::selectFolder() {
    if (const auto folder =
            parts_.outputFolder.selectFolder(parts_.window.outputFolderText(), &parts_.window))
        setOutputFolder(*folder);
}

void AppDelegate::openFolder() {
    parts_.outputFolder.openFolder(parts_.window.outputFolderText(), &parts_.window);
}

void AppDelegate::selectAll() {
    parts_.removeFiles.selectAll(parts_.window.form().theTableNew->btnSelectAll()->isChecked());
}

void AppDelegate::rowButton(int row) {
    parts_.rowButton.press(row);
}

void AppDelegate::comboBoxSelectionDidChange(int item) {
    parts_.editing.comboBoxSelectionDidChange(item,
                                              parts_.window.form().theTableNew->selectedRow());
    parts_.model.reload();
}

bool AppDelegate::isUpdateAvailable(const QString& local, const QString& server) {
    return KXPortavoUpdate::isUpdateAvailable(local, server);
}

void AppDelegate::setOutputFolder(const QString& folder) {
    parts_.window.form().outputFolderPath->setText(folder);
    _outputFolderPath = folder;
    parts_.state.outputFolder = folder;
}

void AppDelegate::showProfileOfRow(int row) {
    if (!parts_.model.source().shouldSelectRow(row))
        return;
    const QString profile = parts_.files.recordAt(row)->text(key::profile);
    // By what it is converted as: the profile of a new movie has its English name in every
    // language.
    parts_.window.form().comboBox->setCurrentIndex(
        static_cast<int>(parts_.profiles.kindOf(profile)));
}
