#include "update/KXDownloadController.h"

#include "platform/LocalizedStrings.h"
#include "ui_KXDownload.h"
#include "update/InstallerDownload.h"
#include "update/SafeFileName.h"
#include "update/UpdateLog.h"
#include "widgets/ForeignText.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace {

/// The bar counts whole numbers; this many of them are the range 0.0 to 1.0.
constexpr int barSteps = 1000;
constexpr qsizetype longestPath = 400; // characters

} // namespace

KXDownloadController::KXDownloadController(UpdateSettings settings, WorkerThreads& threads,
                                           QWidget* parent)
    : QDialog(parent),
      settings_(std::move(settings)),
      threads_(threads),
      ui_(std::make_unique<Ui::KXDownload>()) {
    ui_->setupUi(this);
    setWindowTitle(getLocalString("IDS_TXT_UPDATE_TITLE"));
    awakeFromNib();
}

KXDownloadController::~KXDownloadController() {
    endDownload();
}

void KXDownloadController::awakeFromNib() {
    ui_->downloadQuest->setText(getLocalString("IDS_TXT_NEWVERSION"));
    ui_->okBtn->setText(getLocalString("IDS_BTN_POPUP_OK"));
    ui_->cancelBtn->setText(getLocalString("IDS_BTN_POPUP_CANCEL"));
    // Some styles leave a text no room at its sides.
    for (QPushButton* const button : {ui_->okBtn, ui_->cancelBtn})
        button->setMinimumWidth(fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() +
                                36);
    ui_->downloadCaption->setText(getLocalString("IDS_TXT_DOWNLOADING"));
    ui_->downloadProgressbar->setAccessibleName(getLocalString("IDS_A11Y_DOWNLOAD_PROGRESS"));
    filePath_ = QString();
    connect(ui_->okBtn, &QPushButton::clicked, this, &KXDownloadController::clickOkBtn);
    connect(ui_->cancelBtn, &QPushButton::clicked, this, &KXDownloadController::clickCancelBtn);
}

void KXDownloadController::showWindow() {
    show();
    raise();
}

void KXDownloadController::clickOkBtn() {
    if (downloading_)
        return;
    ui_->views->setCurrentWidget(ui_->downloadView);
    ui_->okBtn->hide();
    ui_->cancelBtn->setFocus();
    downloadProgress_ = 0.0F;
    downloading_ = true;
    showIndeterminate(true);
    startDownload();
}

void KXDownloadController::clickCancelBtn() {
    close();
}

void KXDownloadController::reject() {
    endDownload();
    QDialog::reject();
}

void KXDownloadController::startDownload() {
    download_ = new InstallerDownload(settings_, threads_, this);
    connect(download_, &InstallerDownload::destinationNeeded, this,
            &KXDownloadController::decideDestinationWithSuggestedFilename);
    connect(download_, &InstallerDownload::destinationCreated, this,
            &KXDownloadController::didCreateDestination);
    connect(download_, &InstallerDownload::responseReceived, this,
            &KXDownloadController::didReceiveResponse);
    connect(download_, &InstallerDownload::dataReceived, this,
            &KXDownloadController::didReceiveDataOfLength);
    connect(download_, &InstallerDownload::finished, this,
            &KXDownloadController::downloadDidFinish);
    connect(download_, &InstallerDownload::failed, this, &KXDownloadController::didFailWithError);
    download_->start(QUrl(downloadURL_, QUrl::TolerantMode));
}

void KXDownloadController::decideDestinationWithSuggestedFilename(const QString& suggested) {
    filePath_ = QDir(settings_.downloadsFolder).absoluteFilePath(safeFileName(suggested));
    download_->setDestination(filePath_);
}

void KXDownloadController::didCreateDestination(const QString& path) {
    fileURL_ = QUrl::fromLocalFile(path);
}

void KXDownloadController::didReceiveResponse(qint64 expectedLength) {
    expectedContentLength_ = expectedLength;
    if (expectedContentLength_ <= 0)
        return;
    showIndeterminate(false);
    downloadedSoFar_ = 0;
    showBytes();
}

void KXDownloadController::didReceiveDataOfLength(qint64 length) {
    downloadedSoFar_ += length;
    if (expectedContentLength_ > 0) {
        downloadProgress_ =
            static_cast<float>(downloadedSoFar_) / static_cast<float>(expectedContentLength_);
        ui_->downloadProgressbar->setValue(qRound(downloadProgress_ * barSteps));
    }
    showBytes();
}

void KXDownloadController::downloadDidFinish(const QString& path, bool isRunnable) {
    endDownload();
    close();
    filePath_ = path;
    fileURL_ = QUrl::fromLocalFile(path);
    if (isRunnable)
        qCWarning(lcUpdate, "What was downloaded is a program: it is shown, not opened");
    if (settings_.openFile(isRunnable ? QUrl::fromLocalFile(QFileInfo(path).absolutePath())
                                      : fileURL_)) {
        Q_EMIT installerOpened();
        return;
    }
    // The program still ends, but not without having said where the installer is.
    showAlert(getLocalString("IDS_TXT_UPDATE_NOT_OPENED") % u'\n' %
                  foreignLine(filePath_, longestPath),
              QString(), [this] { Q_EMIT installerOpened(); });
}

void KXDownloadController::didFailWithError(const FetchError& error) {
    endDownload();
    qCWarning(lcUpdate, "Download failed! Error - %s %s", qUtf8Printable(error.description),
              qUtf8Printable(foreignLine(error.url.toString(QUrl::FullyEncoded), longestPath)));
    if (!error.details.isEmpty())
        qCWarning(lcUpdate, "%s", qUtf8Printable(error.details));
    QString message = error.description;
    QString information;
    if (error.code == FetchError::zeroByteResource)
        message = information = getLocalString("IDS_TXT_STATUS");
    showAlert(message, information, [this] { close(); });
}

void KXDownloadController::endDownload() {
    downloading_ = false;
    if (!download_)
        return;
    download_->stop();
    download_->deleteLater();
    download_ = nullptr;
}

void KXDownloadController::showIndeterminate(bool indeterminate) {
    downloadIsIndeterminate_ = indeterminate;
    ui_->downloadProgressbar->setRange(0, indeterminate ? 0 : barSteps);
    ui_->downloadProgressbar->setValue(0);
}

void KXDownloadController::showBytes() {
    const QLocale locale;
    const QString soFar = locale.formattedDataSize(downloadedSoFar_);
    ui_->downloadBytes->setText(downloadIsIndeterminate_
                                    ? soFar
                                    : soFar % QStringLiteral(" / ") %
                                          locale.formattedDataSize(expectedContentLength_));
}

void KXDownloadController::showAlert(const QString& message, const QString& information,
                                     const std::function<void()>& then) {
    auto* const alert = new QMessageBox(this);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->setWindowTitle(QStringLiteral("Quorvex Tavrin"));
    alert->setIcon(QMessageBox::Warning);
    alert->setTextFormat(Qt::PlainText);
    alert->setText(message);
    alert->setInformativeText(information);
    alert->setAccessibleName(message);
    alert->addButton(getLocalString("IDS_BTN_POPUP_OK"), QMessageBox::AcceptRole);
    connect(alert, &QMessageBox::finished, this, then);
    alert->open();
}
