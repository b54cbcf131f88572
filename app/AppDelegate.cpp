#include "app/AppDelegate.h"

#include "app/Closing.h"
#include "app/ProgramParts.h"
#include "platform/LocalizedStrings.h"
#include "platform/ProgramName.h"
#include "table/FileTableView.h"
#include "ui_MainWindow.h"
#include "update/KXPortavoUpdate.h"

#include <QFileDialog>

#include <system_error>

using namespace std::chrono_literals;

namespace {

// For a folder of the user's: a share may have to be mounted first.
constexpr auto longestLook = 2s;

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

AppDelegate::AppDelegate(ProgramParts& parts)
    : parts_(parts), closing_(std::make_unique<Closing>(parts, [this] {
          applicationShouldTerminateAfterLastWindowClosed();
      })) {
    connectControls();
    connectTable();
}

AppDelegate::~AppDelegate() = default;

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
    closing_->quit();
}

bool AppDelegate::awaitEnd() {
    return closing_->awaitEnd();
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
