#pragma once

#include "help/TextWindow.h"

#include <QObject>
#include <QString>

class ActionGate;
class ChildProcesses;
class FileList;
class MainThread;
class MainWindow;
class QAction;
class QMenu;
class RunWatch;

/// The help: F1, and the context menus of the window and of a row. Main thread; owned by main().
class HelpMenu final : public QObject {
    Q_OBJECT

public:
    struct Parts {
        MainThread& mainThread;
        ActionGate& gate;
        ChildProcesses& processes;
        const FileList& files;
        const RunWatch& watch;
        MainWindow& window;
    };

    struct Names {
        QString version;
        QString encoderPath;
        QString language; ///< the manual's, like "de" or "pt_BR"
    };

    HelpMenu(Parts parts, Names names, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(HelpMenu)

    /// What a report about the movie of a row begins and goes on with; empty where it has not
    /// failed.
    [[nodiscard]] QString detailsOf(int row) const;

private:
    void addTo(QMenu& menu);
    void addToRowMenu(QMenu& menu, int row);
    void openWindowMenu(const QPoint& position);
    void openMenuAtFocus();
    void showHelp();
    void showAbout();
    void copy(const QString& details);
    [[nodiscard]] QString keysHtml() const;
    [[nodiscard]] QString encoderVersion() const;

    const Parts parts_;
    const Names names_;
    TextWindow* const text_; ///< the main window's
};
