#pragma once

#include <QKeySequence>
#include <QList>

#include <vector>

class FileTableView;
class QAbstractButton;
class QShortcut;
class QWidget;

namespace Ui {
class MainWindow;
}

/// The keys that press a button of the main window from anywhere in it. A key does what a click on
/// its button does: it passes the gate, and does nothing where the button is disabled. Main thread;
/// owned by the main window.
class WindowKeys final {
public:
    WindowKeys(QWidget* window, const Ui::MainWindow& form);
    Q_DISABLE_COPY_MOVE(WindowKeys)

    /// The tooltip with the button's key behind it; as it is where the button has none.
    [[nodiscard]] QString withKey(const QAbstractButton* button, const QString& tip) const;

private:
    void add(QAbstractButton* button, const QList<QKeySequence>& keys);
    [[nodiscard]] QShortcut* makeShortcut(const QList<QKeySequence>& keys);
    [[nodiscard]] bool isFree() const;

    struct ButtonKey {
        const QAbstractButton* button;
        QShortcut* shortcut;
    };

    QWidget* const window_;
    FileTableView* const table_;
    std::vector<ButtonKey> keys_;
};
