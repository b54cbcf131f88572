#include "app/MainWindow.h"

#include "platform/LocalizedStrings.h"
#include "resources/ApplicationIcon.h"
#include "table/FileTableDelegates.h"
#include "ui_MainWindow.h"
#include "widgets/Announcer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace {

std::unique_ptr<Ui::MainWindow> setUpForm(QMainWindow* window) {
    auto form = std::make_unique<Ui::MainWindow>();
    form->setupUi(window);
    return form;
}

} // namespace

MainWindow::MainWindow(FileManager& fileManager)
    : form_(setUpForm(this)),
      keys_(this, *form_),
      announcer_(new Announcer(this)),
      fileManager_(fileManager) {
    form_->notKeptAwake->hide();
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &MainWindow::becomeActive,
            Qt::QueuedConnection);
    // The caption beside the check box is a label of its own; a click on it is meant for the box.
    form_->openFldrAftrFnsh->installEventFilter(this);
    form_->openFolderCheckBtn->setPalette(CheckDelegate::boxPalette(palette()));
}

MainWindow::~MainWindow() = default;

void MainWindow::setTexts() {
    form_->btnStop->setText(getLocalString("IDS_BTN_STOP"));
    form_->btnConvertFile->setText(getLocalString("IDS_BTN_CONVERT"));
    form_->btnOpenFolder->setText(getLocalString("IDS_BTN_OPEN_FOLDER"));
    form_->btnSelectFolder->setText(getLocalString("IDS_BTN_SELECT_FOLDER"));
    form_->btnAddFile->setText(getLocalString("IDS_BTN_ADD_FILE"));
    form_->btnRemoveFile->setText(getLocalString("IDS_BTN_REMOVE_FILE"));
    form_->outputFolderTxtFld->setText(getLocalString("IDS_TXTFLD_OUTPUTFOLDER"));
    form_->openFldrAftrFnsh->setText(getLocalString("IDS_TXTFLD_OPNFLDRAFTRFNSH"));
    form_->notKeptAwake->setText(getLocalString("IDS_TXT_NOT_KEPT_AWAKE"));
    form_->profileTxtFld->setText(getLocalString("IDS_TXT_PROFILE_CAPTION"));

    form_->outputFolderPath->setAccessibleName(getLocalString("IDS_A11Y_OUTPUT_FOLDER"));
    form_->openFolderCheckBtn->setAccessibleName(getLocalString("IDS_A11Y_OPEN_AFTER_FINISH"));
    form_->comboBox->setAccessibleName(getLocalString("IDS_A11Y_PROFILE"));

    setTip(form_->btnStop, "IDS_TIP_STOP");
    setTip(form_->btnConvertFile, "IDS_TIP_CONVERT");
    setTip(form_->btnOpenFolder, "IDS_TIP_OPEN_FOLDER");
    setTip(form_->btnSelectFolder, "IDS_TIP_SELECT_FOLDER");
    setTip(form_->btnAddFile, "IDS_TIP_ADD_FILE");
    setTip(form_->btnRemoveFile, "IDS_TIP_REMOVE_FILE");
    form_->outputFolderPath->setToolTip(getLocalString("IDS_TIP_OUTPUT_FOLDER"));
    setTip(form_->openFolderCheckBtn, "IDS_TIP_OPEN_AFTER_FINISH");
    form_->comboBox->setToolTip(getLocalString("IDS_TIP_PROFILE"));
    form_->theTableNew->setTexts();
    fitToFont();
}

// A panel that is confirmed while its list of completions is open leaves the list behind for as
// long as its movies are being added, and meanwhile the toolkit makes no window active: the keys
// would come here, but no control would have the focus or show it.
bool MainWindow::event(QEvent* event) {
    // Each window hands all sizes of its icon to the X server: the large ones are not read before
    // the window is seen.
    if (event->type() == QEvent::Paint && !std::exchange(hasBeenPainted_, true))
        QMetaObject::invokeMethod(
            this, [] { QApplication::setWindowIcon(applicationIcon()); }, Qt::QueuedConnection);
    if (event->type() == QEvent::WindowUnblocked) {
        while (QWidget* const left = QApplication::activePopupWidget()) {
            if (!left->close())
                break;
        }
        QMetaObject::invokeMethod(this, &MainWindow::becomeActive, Qt::QueuedConnection);
    }
    return QMainWindow::event(event);
}

void MainWindow::becomeActive() {
    if (QGuiApplication::focusWindow() == windowHandle() && !QApplication::activeWindow() &&
        !QApplication::activePopupWidget())
        QApplication::setActiveWindow(this);
}

void MainWindow::setTip(QAbstractButton* button, const char* id) {
    button->setToolTip(keys_.withKey(button, getLocalString(id)));
}

void MainWindow::fitToScreen() {
    constexpr QSize frame(16, 48); // not known before the window is shown
    // Wide enough for every text in every language, where the screen is; the caption that can go
    // on in a second line hints at no more than that.
    const QLabel& caption = *form_->profileTxtFld;
    const int whole = caption.fontMetrics().size(Qt::TextShowMnemonic, caption.text()).width();
    const int least = sizeHint().width() + std::max(0, whole - caption.sizeHint().width());
    const QSize wanted(std::max(width(), least), height());
    resize(wanted.boundedTo(screen()->availableSize() - frame));
}

// Some styles leave a button's text no room at its sides. The list of qualities is shown whole also
// where its button is narrow.
void MainWindow::fitToFont() {
    const int room = fontMetrics().horizontalAdvance(u'm') * 3 / 2;
    for (QPushButton* const button : findChildren<QPushButton*>())
        button->setMinimumWidth(fontMetrics().horizontalAdvance(button->text()) + 2 * room);
    form_->comboBox->view()->setMinimumWidth(form_->comboBox->sizeHint().width());
    // The caption never goes on in a third line.
    QLabel& caption = *form_->profileTxtFld;
    int width = caption.minimumSizeHint().width();
    while (caption.heightForWidth(width) >= 3 * caption.fontMetrics().height())
        ++width;
    caption.setMinimumWidth(width);
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        form_->openFolderCheckBtn->setPalette(CheckDelegate::boxPalette(palette()));
    else if (event->type() == QEvent::FontChange)
        fitToFont();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == form_->openFldrAftrFnsh && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        form_->openFolderCheckBtn->click();
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!closeHandler_ || closeHandler_())
        event->accept();
    else
        event->ignore();
}
