// The main window as the work on the list and a run see it.

#include "app/MainWindow.h"
#include "platform/desktop/FileManager.h"
#include "table/FileTableView.h"
#include "ui_MainWindow.h"
#include "widgets/Announcer.h"

#include <QCheckBox>

QString MainWindow::outputFolderText() const {
    return form_->outputFolderPath->text();
}

bool MainWindow::isOpenFolderChecked() const {
    return form_->openFolderCheckBtn->isChecked();
}

void MainWindow::setRunControlsEnabled(bool enabled) {
    const QWidget* const focused = focusWidget();
    // From a control that is being disabled the focus would go on to the Remove button, where a
    // second press of the key that began the run would take all checked movies off the list.
    if (!enabled && (focused == form_->btnConvertFile || focused == form_->btnAddFile ||
                     focused == form_->btnSelectFolder || focused == form_->comboBox))
        form_->theTableNew->setFocus(
            testAttribute(Qt::WA_KeyboardFocusChange) ? Qt::TabFocusReason : Qt::OtherFocusReason);
    form_->btnConvertFile->setEnabled(enabled);
    form_->btnAddFile->setEnabled(enabled);
    form_->btnSelectFolder->setEnabled(enabled);
    form_->comboBox->setEnabled(enabled);
}

void MainWindow::setRemoveEnabled(bool enabled) {
    form_->btnRemoveFile->setEnabled(enabled);
}

void MainWindow::setSelectAllChecked(bool checked) {
    form_->theTableNew->btnSelectAll()->setChecked(checked);
}

void MainWindow::uncheckOpenFolder() {
    form_->openFolderCheckBtn->setChecked(false);
}

void MainWindow::showCaption(const QString& text) {
    form_->fileList->setText(text);
}

void MainWindow::showQuietLine(const QString& text) {
    form_->quietLine->show(text);
    announcer_->say(text);
}

void MainWindow::showFolder(const QString& path) {
    fileManager_.showFolder(path);
}
