#include "app/WindowKeys.h"

#include "table/FileTableKeys.h"
#include "table/FileTableView.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QShortcut>

#include <algorithm>

WindowKeys::WindowKeys(QWidget* window, const Ui::MainWindow& form)
    : window_(window), table_(form.theTableNew) {
    add(form.btnAddFile, {Qt::CTRL | Qt::Key_O});
    add(form.btnRemoveFile, {Qt::Key_Delete});
    add(form.btnConvertFile, {Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter});
    add(form.btnStop, {Qt::CTRL | Qt::Key_Period});
    add(form.btnSelectFolder, {Qt::CTRL | Qt::Key_L}); // where file managers take a place to go to
    add(form.btnOpenFolder, {Qt::CTRL | Qt::SHIFT | Qt::Key_O});
    add(table_->btnSelectAll(), {tablekey::selectAll});
    QObject::connect(makeShortcut({tablekey::pauseOrResume}), &QShortcut::activated, table_,
                     [this] {
                         if (isFree())
                             table_->pauseOrResume();
                     });
}

QString WindowKeys::withKey(const QAbstractButton* button, const QString& tip) const {
    const auto found = std::find_if(keys_.begin(), keys_.end(), [button](const ButtonKey& each) {
        return each.button == button;
    });
    return found == keys_.end() ? tip : tipWithKey(tip, found->shortcut->key());
}

void WindowKeys::add(QAbstractButton* button, const QList<QKeySequence>& keys) {
    QShortcut* const shortcut = makeShortcut(keys);
    keys_.push_back({button, shortcut});
    QObject::connect(shortcut, &QShortcut::activated, button, [this, button] {
        if (isFree())
            button->click();
    });
}

QShortcut* WindowKeys::makeShortcut(const QList<QKeySequence>& keys) {
    auto* const shortcut = new QShortcut(window_);
    shortcut->setKeys(keys);
    // A key that is held down is one press: the next one might meet another row.
    shortcut->setAutoRepeat(false);
    return shortcut;
}

// What is open over a cell or a control takes the keys first; Delete there means a letter.
bool WindowKeys::isFree() const {
    return !QApplication::activePopupWidget() && !table_->openedEditor();
}
