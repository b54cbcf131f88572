#include "app/AppDelegate.h"

#include "platform/LocalizedStrings.h"
#include "platform/desktop/FileManager.h"
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

SharedState freshState(std::chrono::milliseconds second) {
    SharedState state;
    state.second = second;
    return state;
}

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

AppDelegate::AppDelegate(const Surroundings& surroundings)
    : surroundings_(surroundings),
      profiles_(getLocalString("IDS_TXT_PROFILELIST"),
                getLocalString("IDS_TXT_PROFILELIST_DROPDOWN")),
      state_(freshState(surroundings.second)),
      gate_(mainThread_),
      editing_(files_, state_),
      model_(files_, state_, editing_, gate_),
      window_(surroundings.fileManager),
      dialogs_(state_, window_),
      announcements_(model_, window_.announcer()),
      engine_({mainThread_, processes_, workers_}, files_, state_, window_, dialogs_, profiles_,
              surroundings.resourceFolder + QStringLiteral("/ffmpeg"), surroundings.stateFolder),
      companion_(engine_.watch(), window_, surroundings.desktop),
      probeRunner_(processes_, surroundings.resourceFolder + QStringLiteral("/ffmpeg")),
      examiner_(workers_, probeRunner_, mainThread_.waker()),
      probe_(mainThread_, files_, state_),
      addCompanion_(addWatch_, window_, surroundings.desktop.launcher),
      addFiles_({mainThread_,
                 files_,
                 state_,
                 probe_,
                 {examiner_, workers_, surroundings.volumes},
                 addWatch_,
                 profiles_,
                 resolutions_,
                 window_,
                 dialogs_}),
      removeFiles_(files_, state_, engine_.rows(), window_),
      rowButton_(mainThread_, files_, state_, engine_.rows(), window_, dialogs_),
      rowDrag_({files_, state_, gate_, window_, addFiles_}),
      outputFolder_(mainThread_, surroundings.volumes, surroundings.fileManager),
      update_(surroundings.update),
      interruptedRuns_(mainThread_, workers_, gate_, window_) {
    files_.setQualities(profiles_.comboBoxItems(), profiles_.cmbItems());
    window_.form().comboBox->addItems(files_.comboBoxItems);
    window_.form().comboBox->setCurrentIndex(0);
    window_.form().theTableNew->setFileModel(&model_);
    files_.setObserver(&model_);
    window_.setCloseHandler([this] { return closeWindow(); });
    QCoreApplication::instance()->installEventFilter(this);
    connectControls();
    connectTable();
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::awakeFromNib() {
    window_.form().theTableNew->setRowDrag(&rowDrag_);
    window_.form().outputFolderPath->setText(_outputFolderPath);
}

void AppDelegate::applicationDidFinishLaunching() {
    update_.start();
    interruptedRuns_.start(surroundings_.stateFolder);
    _outputFolderPath = rememberedFolder(PersistedFolders::DEFAULT_PATH_COMPONENT);
    _addFilePath = rememberedFolder(PersistedFolders::ADD_FILE_COMPONENT);
    window_.form().outputFolderPath->setText(_outputFolderPath);
    window_.setTexts();
    window_.fitToScreen();
    window_.setWindowTitle(appName + u' ' + surroundings_.version);
    state_.fileListStr = getLocalString("IDS_TXT_FILELIST");
    window_.showFileCount(state_, state_.count);
}

bool AppDelegate::applicationShouldTerminateAfterLastWindowClosed() {
    if (!std::exchange(cleanedUp_, true)) {
        engine_.quitting().quit();
        rememberFolders();
    }
    return true;
}

// The folders may lie where nothing answers: the start and the end of the program do not wait for
// ever.
QString AppDelegate::rememberedFolder(const QString& fileName) {
    const PersistedFolders& folders = surroundings_.folders;
    try {
        const auto found = mainThread_.resultWithin(
            longestLook, [folders, fileName] { return folders.readDefaultFilePath(fileName); });
        return found.value_or(folders.defaultFolder());
    } catch (const std::system_error&) {
        return folders.defaultFolder();
    }
}

void AppDelegate::rememberFolders() {
    runGuarded([this] {
        (void)mainThread_.resultWithin(
            longestLook,
            [folders = surroundings_.folders, output = _outputFolderPath, add = _addFilePath] {
                folders.remeberFolderPath(output, add);
                return true;
            });
    });
}

void AppDelegate::quit() {
    if (std::exchange(isQuitting_, true))
        return;
    window_.hide(); // first: see closeAtOnce()
    endWork();
    PopUpBoxes::dismissAll();
    update_.stop();
    QCoreApplication::quit();
}

void AppDelegate::endWork() {
    applicationShouldTerminateAfterLastWindowClosed();
    mainThread_.close();
    workers_.close();
}

bool AppDelegate::awaitEnd() {
    endWork();
    engine_.quitting().awaitEnd();
    const auto end = std::chrono::steady_clock::now() + longestGoodbye;
    const auto rest = [end] {
        return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(
                            end - std::chrono::steady_clock::now()),
                        0ms);
    };
    const bool haveWorkersEnded = workers_.waitForAll(rest());
    const bool haveDownloadsEnded = update_.waitForDownloads(rest());
    return mainThread_.waitForHelpers(rest()) && haveWorkersEnded && haveDownloadsEnded;
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
    if (mainThread_.isClosing())
        return true;
    if (gate_.isOpen()) {
        // Not now: the window that closes comes to its own end first.
        QMetaObject::invokeMethod(this, &AppDelegate::windowWasClosed, Qt::QueuedConnection);
        return true;
    }
    const bool isPutOff = mainThread_.isWaiting() && !QApplication::activeModalWidget();
    if (isPutOff && !window_.isCloseAsked())
        QTimer::singleShot(longestPutOffClose, this, [this] {
            if (window_.isCloseAsked() && mainThread_.isWaiting())
                closeAtOnce();
        });
    if (isPutOff)
        window_.askForClose();
    else
        window_.forgetClose();
    gate_.pass([this] {
        window_.forgetClose();
        window_.close();
    });
    return false;
}

void AppDelegate::closeAtOnce() {
    mainThread_.close();
    // First: what follows may take its time where a folder does not answer.
    window_.close();
    PopUpBoxes::dismissAll();
    endWork();
    QMetaObject::invokeMethod(this, &AppDelegate::windowWasClosed, Qt::QueuedConnection);
}

// The window that offers a newer version may stay, and the program with it; no encoder does.
void AppDelegate::windowWasClosed() {
    endWork();
    engine_.quitting().awaitEnd();
}

void AppDelegate::addData() {
    addFiles_.beforePanel();
    if (const auto paths = pickMovies(&window_))
        addPicked(*paths);
    else
        addFiles_.close();
}

void AppDelegate::addPicked(const QStringList& paths) {
    addFiles_.addPicked(paths);
}

void AppDelegate::addDropped(const QStringList& paths) {
    addFiles_.addDropped(paths);
}

void AppDelegate::remove() {
    removeFiles_.remove();
}

void AppDelegate::convert() {
    window_.form().theTableNew->closeEditors();
    engine_.queue().convert();
}

void AppDelegate::stop() {
    engine_.stopping().stop();
}

void AppDelegate::selectFolder() {
    if (const auto folder = outputFolder_.selectFolder(window_.outputFolderText(), &window_))
        setOutputFolder(*folder);
}

void AppDelegate::openFolder() {
    outputFolder_.openFolder(window_.outputFolderText(), &window_);
}

void AppDelegate::selectAll() {
    removeFiles_.selectAll(window_.form().theTableNew->btnSelectAll()->isChecked());
}

void AppDelegate::rowButton(int row) {
    rowButton_.press(row);
}

void AppDelegate::comboBoxSelectionDidChange(int item) {
    editing_.comboBoxSelectionDidChange(item, window_.form().theTableNew->selectedRow());
    model_.reload();
}

bool AppDelegate::isUpdateAvailable(const QString& local, const QString& server) {
    return KXPortavoUpdate::isUpdateAvailable(local, server);
}

void AppDelegate::setOutputFolder(const QString& folder) {
    window_.form().outputFolderPath->setText(folder);
    _outputFolderPath = folder;
    state_.outputFolder = folder;
}

void AppDelegate::showProfileOfRow(int row) {
    if (!model_.source().shouldSelectRow(row))
        return;
    const QString profile = files_.recordAt(row)->text(key::profile);
    // By what it is converted as: the profile of a new movie has its English name in every
    // language.
    window_.form().comboBox->setCurrentIndex(static_cast<int>(profiles_.kindOf(profile)));
}
