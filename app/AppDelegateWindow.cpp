// What the window's controls are connected to.

#include "app/AppDelegate.h"
#include "app/ProgramParts.h"
#include "table/FileTableView.h"
#include "ui_MainWindow.h"

#include <QApplication>

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
        parts_.gate.pass([this, action] { (this->*action)(); },
                         [control] { return control->isEnabled(); });
    });
}

void AppDelegate::connectControls() {
    Ui::MainWindow& form = parts_.window.form();
    connectAction(form.btnAddFile, &QPushButton::clicked, &AppDelegate::addData);
    connectAction(form.btnRemoveFile, &QPushButton::clicked, &AppDelegate::remove);
    connectAction(form.btnConvertFile, &QPushButton::clicked, &AppDelegate::convert);
    connectAction(form.btnStop, &QPushButton::clicked, &AppDelegate::stop);
    connectAction(form.btnSelectFolder, &QPushButton::clicked, &AppDelegate::selectFolder);
    connectAction(form.btnOpenFolder, &QPushButton::clicked, &AppDelegate::openFolder);
    // Only a choice of the user counts: the list also follows the selected row.
    connect(form.comboBox, &QComboBox::activated, this, [this](int item) {
        parts_.gate.pass([this, item] { comboBoxSelectionDidChange(item); },
                         [this] { return parts_.window.form().comboBox->isEnabled(); });
    });
    connect(&parts_.update, &UpdateCheck::installerOpened, this, &AppDelegate::quit);
    connect(&parts_.gate, &ActionGate::actionBegins, form.quietLine,
            [line = form.quietLine] { line->show(QString()); });
}

void AppDelegate::connectTable() {
    FileTableView* const table = parts_.window.form().theTableNew;
    connect(table, &FileTableView::rowButtonPressed, this, &AppDelegate::rowButton);
    connect(table, &FileTableView::selectAllPressed, this, &AppDelegate::selectAll);
    connect(table, &FileTableView::rowSelected, this, &AppDelegate::showProfileOfRow);
    connect(&parts_.model, &FileTableModel::headerStateChanged, &parts_.window,
            &MainWindow::setSelectAllChecked);
}
