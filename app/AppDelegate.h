#pragma once

#include <QObject>
#include <QStringList>

#include <memory>

class Closing;
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
    void quit(); ///< Closing::quit()
    /// Writes the two folders down.
    void rememberFolders();
    [[nodiscard]] bool awaitEnd(); ///< Closing::awaitEnd()

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
    void showProfileOfRow(int row);
    void setOutputFolder(const QString& folder);
    [[nodiscard]] QString rememberedFolder(const QString& fileName);

    ProgramParts& parts_;
    const std::unique_ptr<Closing> closing_;
    QString _outputFolderPath;
    QString _addFilePath;
    bool cleanedUp_ = false;
};
