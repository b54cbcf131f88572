#pragma once

#include <QObject>
#include <QStringList>

struct ProgramParts;

/// The controller: takes each action of the window to the class that carries it out, and the
/// program through its start and its end. Main thread; owned by main().
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    explicit AppDelegate(ProgramParts& parts);
    ~AppDelegate() override;
    Q_DISABLE_COPY_MOVE(AppDelegate)

    /// Prepares the table's cells; the form's widgets exist.
    void awakeFromNib();
    /// Starts the version check, restores the folders and labels every control.
    void applicationDidFinishLaunching();
    /// The clean-up when the last window has closed; always true: the program quits.
    bool applicationShouldTerminateAfterLastWindowClosed();
    /// Closes the program, whatever is open: the clean-up, then the end of the main loop.
    void quit();
    /// Writes the two folders down.
    void rememberFolders();
    /// To be called after the main loop has returned: releases the threads and ends the encoders.
    /// False when a thread hangs in the kernel and must be left behind.
    [[nodiscard]] bool awaitEnd();

    // The window's actions. Each runs inside the gate.
    void addData();
    /// The movies of a confirmed panel.
    void addPicked(const QStringList& paths);
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

    ProgramParts& parts_;
    QString _outputFolderPath;
    QString _addFilePath;
    bool cleanedUp_ = false;
    bool isQuitting_ = false;
};
