// The controller as the other classes see the window: what its controls are connected to and what
// is shown in them.

#include "app/AppDelegate.h"
#include "platform/desktop/FileManager.h"
#include "table/FileTableView.h"
#include "ui_MainWindow.h"
#include "widgets/Announcer.h"

#include <QApplication>
#include <QCheckBox>

#include <memory>
#include <utility>

template <typename Control, typename Signal>
void AppDelegate::connectAction(Control* control, Signal signal, void (AppDelegate::*action)()) {
    // The press of a screen reader lasts a tenth of a second before it becomes a click: one that
    // began under a box does nothing although the box may have gone meanwhile.
    const auto beganUnderABox = std::make_shared<bool>(false);
    connect(control, &Control::pressed, this,
            [beganUnderABox] { *beganUnderABox = QApplication::activeModalWidget(); });
    connect(control, signal, this, [this, control, action, beganUnderABox] {
        if (std::exchange(*beganUnderABox, false))
            return;
        // Looked at afresh when it was put off: a run may have disabled the control meanwhile.
        gate_.pass([this, action] { (this->*action)(); },
                   [control] { return control->isEnabled(); });
    });
}

void AppDelegate::connectControls() {
    Ui::MainWindow& form = window_.form();
    connectAction(form.btnAddFile, &QPushButton::clicked, &AppDelegate::addData);
    connectAction(form.btnRemoveFile, &QPushButton::clicked, &AppDelegate::remove);
    connectAction(form.btnConvertFile, &QPushButton::clicked, &AppDelegate::convert);
    connectAction(form.btnStop, &QPushButton::clicked, &AppDelegate::stop);
    connectAction(form.btnSelectFolder, &QPushButton::clicked, &AppDelegate::selectFolder);
    connectAction(form.btnOpenFolder, &QPushButton::clicked, &AppDelegate::openFolder);
    // Only a choice of the user counts: the list also follows the selected row.
    connect(form.comboBox, &QComboBox::activated, this, [this](int item) {
        gate_.pass([this, item] { comboBoxSelectionDidChange(item); },
                   [this] { return window_.form().comboBox->isEnabled(); });
    });
    connect(&update_, &UpdateCheck::installerOpened, this, &AppDelegate::terminate);
    connect(&gate_, &ActionGate::actionBegins, form.quietLine,
            [line = form.quietLine] { line->show(QString()); });
}

void AppDelegate::connectTable() {
    FileTableView* const table = window_.form().theTableNew;
    connect(table, &FileTableView::rowButtonPressed, this, &AppDelegate::rowButton);
    connect(table, &FileTableView::selectAllPressed, this, &AppDelegate::selectAll);
    connect(table, &FileTableView::rowSelected, this, &AppDelegate::showProfileOfRow);
    connect(&model_, &FileTableModel::headerStateChanged, this, &AppDelegate::setSelectAllChecked);
}

QWidget* AppDelegate::boxParent() {
    return &window_;
}

QString AppDelegate::outputFolderText() const {
    return const_cast<MainWindow&>(window_).form().outputFolderPath->text();
}

bool AppDelegate::isOpenFolderChecked() const {
    return const_cast<MainWindow&>(window_).form().openFolderCheckBtn->isChecked();
}

void AppDelegate::setRunControlsEnabled(bool enabled) {
    Ui::MainWindow& form = window_.form();
    const QWidget* const focused = window_.focusWidget();
    // From a control that is being disabled the focus would go on to the Remove button, where a
    // second press of the key that began the run would take all checked movies off the list.
    if (!enabled && (focused == form.btnConvertFile || focused == form.btnAddFile ||
                     focused == form.btnSelectFolder || focused == form.comboBox))
        form.theTableNew->setFocus(window_.testAttribute(Qt::WA_KeyboardFocusChange)
                                       ? Qt::TabFocusReason
                                       : Qt::OtherFocusReason);
    form.btnConvertFile->setEnabled(enabled);
    form.btnAddFile->setEnabled(enabled);
    form.btnSelectFolder->setEnabled(enabled);
    form.comboBox->setEnabled(enabled);
}

void AppDelegate::setRemoveEnabled(bool enabled) {
    window_.form().btnRemoveFile->setEnabled(enabled);
}

void AppDelegate::setSelectAllChecked(bool checked) {
    window_.form().theTableNew->btnSelectAll()->setChecked(checked);
}

void AppDelegate::checkHeaderBtnStatus() {
    setSelectAllChecked(files_.allChecked());
}

void AppDelegate::uncheckOpenFolder() {
    window_.form().openFolderCheckBtn->setChecked(false);
}

void AppDelegate::showFileCount(const QString& text) {
    window_.form().fileList->setText(text);
}

void AppDelegate::showQuietLine(const QString& text) {
    window_.form().quietLine->show(text);
    window_.announcer().say(text);
}

void AppDelegate::showFolder(const QString& path) {
    surroundings_.fileManager.showFolder(path);
}

void AppDelegate::reloadTable() {
    model_.reload();
    model_.editLockChanged();
}

void AppDelegate::rowChanged(int row) {
    // After rows were dragged a row's number does not name its shown record any more.
    const auto at = static_cast<size_t>(row);
    if (at < files_.arrayControllerNew.size() && at < files_.fileInfoArr.size() &&
        files_.arrayControllerNew[at] == files_.fileInfoArr[at])
        model_.rowChanged(row);
    else
        model_.reload();
}

void AppDelegate::removeRows(const std::vector<int>& rows, const std::function<void()>& removal) {
    // No row is taken out of lists that speak of different movies in one place.
    if (!rows.empty())
        engine_.alignWithRecords();
    removal();
    model_.rowsWereRemoved(rows);
}
