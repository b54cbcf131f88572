#pragma once

#include <QString>

class FileList;
class QWidget;
struct SharedState;

/// What the work on the list needs of the main window, which is it. Main thread.
class ListWindow {
public:
    virtual ~ListWindow() = default;

    [[nodiscard]] virtual QWidget* boxParent() = 0;
    /// Whether the user wants to close the window: no further movie is looked at, and no box opens
    /// that would swallow it.
    [[nodiscard]] virtual bool isCloseAsked() const = 0;
    /// The user wants something else since.
    virtual void forgetClose() = 0;

    virtual void setRemoveEnabled(bool enabled) = 0;
    /// The header's check box.
    virtual void setSelectAllChecked(bool checked) = 0;
    /// Sets it by the rows: checked where there are some and all of them are.
    void checkHeaderBtnStatus(const FileList& files);
    virtual void showCaption(const QString& text) = 0;
    /// Brings `countstr` and `fileCountStr` in line with a number of rows and shows the latter: the
    /// caption, two spaces, the number in parentheses. `count` stays as it is.
    void showFileCount(SharedState& state, qint64 rows);
    /// Tells something below the table, without a box, until the user does something else.
    virtual void showQuietLine(const QString& text) = 0;
};
