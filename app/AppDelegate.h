#pragma once

#include "app/AddCompanion.h"
#include "app/InterruptedRunQuestion.h"
#include "app/MainWindow.h"
#include "app/OutputFolder.h"
#include "app/PersistedFolders.h"
#include "app/RunCompanion.h"
#include "convert/ConversionEngine.h"
#include "filelist/AddFiles.h"
#include "filelist/AddWatch.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/MovieProbe.h"
#include "filelist/RemoveFiles.h"
#include "media/Examiner.h"
#include "media/ProfileCatalogue.h"
#include "media/ResolutionCatalogue.h"
#include "platform/ChildProcesses.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"
#include "table/FileTableModel.h"
#include "table/RowAnnouncements.h"
#include "table/RowButton.h"
#include "table/RowDrag.h"
#include "table/TableEditing.h"
#include "update/UpdateCheck.h"
#include "widgets/ActionGate.h"

#include <QObject>

#include <memory>

class FileManager;
class VolumeInfo;

/// The application's name, in the window title and over every message box.
inline const QString appName = QStringLiteral("Quorvex Reelshift");

/// The controller: owns the main window, the list with all that stands beside it, and the engine,
/// and takes each action of the window to the class that carries it out. Main thread; owned by
/// main().
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    /// What the program works with and a test brings its own of.
    struct Surroundings {
        QString resourceFolder; ///< holds the encoder, a program called ffmpeg
        QString version;        ///< four parts
        PersistedFolders folders;
        QString stateFolder;                 ///< of the notes of a run; empty for none
        std::shared_ptr<VolumeInfo> volumes; ///< also of threads that may be left behind
        FileManager& fileManager;
        RunCompanion::Desktop desktop;
        UpdateSettings update;
        std::chrono::milliseconds second{1000}; ///< of every deliberate wait
    };

    explicit AppDelegate(const Surroundings& surroundings);
    ~AppDelegate() override;
    Q_DISABLE_COPY_MOVE(AppDelegate)

    [[nodiscard]] MainWindow& window() { return window_; }
    [[nodiscard]] FileList& files() { return files_; }
    [[nodiscard]] SharedState& state() { return state_; }
    [[nodiscard]] ConversionEngine& engine() { return engine_; }
    [[nodiscard]] MainThread& mainThread() { return mainThread_; }
    [[nodiscard]] ChildProcesses& processes() { return processes_; }
    [[nodiscard]] ActionGate& gate() { return gate_; }
    [[nodiscard]] ProbeRunner& probeRunner() { return probeRunner_; }
    [[nodiscard]] RowDrag& rowDrag() { return rowDrag_; }
    [[nodiscard]] UpdateCheck& update() { return update_; }
    [[nodiscard]] const QString& persistedOutputFolder() const { return _outputFolderPath; }

    /// Prepares the table's cells; the form's widgets exist.
    void awakeFromNib();
    /// Starts the version check, restores the folders and labels every control.
    void applicationDidFinishLaunching();
    /// The clean-up when the last window has closed; always true: the program quits.
    bool applicationShouldTerminateAfterLastWindowClosed();
    /// Closes the program, whatever is open: the clean-up, then the end of the main loop.
    void quit();
    /// Says something in the quiet line, until the next action.
    void tell(const QString& text) { window_.showQuietLine(text); }
    /// Writes the two folders down.
    void rememberFolders();
    /// To be called after the main loop has returned: releases the threads and ends the encoders.
    /// False when a thread hangs in the kernel and must be left behind.
    [[nodiscard]] bool awaitEnd();

    // The window's actions. Each runs inside the gate.
    void addData();
    /// The movies of a confirmed panel.
    void addPicked(const QStringList& paths);
    /// Movies that another program dropped on the table, or that were opened.
    void addDropped(const QStringList& paths);
    void remove();
    void convert();
    void stop();
    void selectFolder();
    void openFolder();
    void selectAll();
    void rowButton(int row);
    void comboBoxSelectionDidChange(int item);

    /// Whether the server's version is to be taken as newer; see VersionComparison.h.
    [[nodiscard]] static bool isUpdateAvailable(const QString& local, const QString& server);

private:
    void connectControls();
    void connectTable();
    /// Connects a control's signal to an action that passes the gate.
    template <typename Control, typename Signal>
    void connectAction(Control* control, Signal signal, void (AppDelegate::*action)());
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showProfileOfRow(int row);
    void setOutputFolder(const QString& folder);
    bool closeWindow();
    void closeAtOnce();
    void windowWasClosed();
    void endWork();
    [[nodiscard]] QString rememberedFolder(const QString& fileName);

    const Surroundings surroundings_;
    QString _outputFolderPath;
    QString _addFilePath;
    bool cleanedUp_ = false;
    bool isQuitting_ = false;

    const ProfileCatalogue profiles_;
    const ResolutionCatalogue resolutions_;
    FileList files_;
    SharedState state_;

    MainThread mainThread_;
    ChildProcesses processes_;
    WorkerThreads workers_;
    ActionGate gate_;

    TableEditing editing_;
    FileTableModel model_;
    MainWindow window_;
    ConversionDialogs dialogs_;
    RowAnnouncements announcements_;
    ConversionEngine engine_;
    RunCompanion companion_;
    ProbeRunner probeRunner_;
    Examiner examiner_;
    MovieProbe probe_;
    AddWatch addWatch_;
    AddCompanion addCompanion_;
    AddFiles addFiles_;
    RemoveFiles removeFiles_;
    RowButton rowButton_;
    RowDrag rowDrag_;
    OutputFolder outputFolder_;
    UpdateCheck update_;
    InterruptedRunQuestion interruptedRuns_;
};
