#pragma once

#include <QString>

#include <functional>
#include <vector>

class QWidget;

/// What the work on the list needs of the main window. Main thread; the controller is it.
class ListWindow {
public:
    virtual ~ListWindow() = default;

    [[nodiscard]] virtual QWidget* boxParent() = 0;

    virtual void setRemoveEnabled(bool enabled) = 0;
    /// The header's check box.
    virtual void setSelectAllChecked(bool checked) = 0;
    /// Sets it by the rows: checked where there are some and all of them are.
    virtual void checkHeaderBtnStatus() = 0;
    virtual void showFileCount(const QString& text) = 0;
    /// Tells something below the table, without a box, until the user does something else.
    virtual void showQuietLine(const QString& text) = 0;
    virtual void reloadTable() = 0;
    /// What a row shows has changed.
    virtual void rowChanged(int row) = 0;
    /// Lets `removal` take `rows` out of the lists; the rows must be complete. Lists that are out
    /// of order after a drag are brought in line before.
    virtual void removeRows(const std::vector<int>& rows, const std::function<void()>& removal) = 0;
};
