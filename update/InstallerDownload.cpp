#include "update/InstallerDownload.h"

#include "platform/LocalizedStrings.h"
#include "update/SafeFileName.h"

#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <cerrno>
#include <cstdio>
#include <utility>

#include <unistd.h>

InstallerDownload::InstallerDownload(HostResolver resolver, std::chrono::milliseconds silenceLimit,
                                     QObject* parent)
    : QObject(parent), fetch_(std::move(resolver), HttpFetch::Coding::Identity, silenceLimit) {
    connect(&fetch_, &HttpFetch::responseReceived, this, &InstallerDownload::createFile);
    connect(&fetch_, &HttpFetch::dataReceived, this, &InstallerDownload::write);
    connect(&fetch_, &HttpFetch::succeeded, this, &InstallerDownload::complete);
    connect(&fetch_, &HttpFetch::failed, this, [this](const FetchError& error) {
        if (over_)
            return;
        abort();
        Q_EMIT failed(error);
    });
}

InstallerDownload::~InstallerDownload() {
    abort();
}

void InstallerDownload::start(const QUrl& url) {
    fetch_.start(url);
}

void InstallerDownload::abort() {
    if (std::exchange(over_, true))
        return;
    fetch_.abort();
    removeFile();
}

void InstallerDownload::createFile() {
    expected_ = fetch_.expectedLength();
    Q_EMIT responseReceived(expected_);
    Q_EMIT destinationNeeded(suggestedFileName(fetch_.header("Content-Disposition"), fetch_.url()));
    if (over_)
        return;
    const QDir folder = QFileInfo(destination_).absoluteDir();
    if (!folder.exists() && !folder.mkpath(QStringLiteral("."))) {
        fail(0, getLocalString("IDS_TXT_UPDATE_NO_DOWNLOADS"));
        return;
    }
    // A name of its own: the final one may be as long as a name can be. Opened as a new file, it
    // gets the user's default permissions, never those of an older file nor the right to run.
    file_.setFileName(folder.filePath(QStringLiteral(".reelshift-update-") %
                                      QUuid::createUuid().toString(QUuid::Id128) %
                                      QStringLiteral(".part")));
    if (!file_.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        fail(0, file_.errorString());
        return;
    }
    Q_EMIT destinationCreated(destination_);
}

void InstallerDownload::write(const QByteArray& piece) {
    if (over_)
        return;
    // A disk that fills up takes a part first and gives its reason with the next one.
    for (qsizetype written = 0; written < piece.size();) {
        const qint64 part = file_.write(piece.constData() + written, piece.size() - written);
        if (part <= 0) {
            fail(0, file_.errorString());
            return;
        }
        written += part;
    }
    received_ += piece.size();
    Q_EMIT dataReceived(piece.size());
}

void InstallerDownload::complete() {
    if (over_)
        return;
    if (received_ == 0) {
        fail(FetchError::zeroByteResource, QStringLiteral("zero byte resource"));
        return;
    }
    if (expected_ > 0 && received_ != expected_) {
        fail(0, getLocalString("IDS_TXT_UPDATE_UNUSABLE"));
        return;
    }
    if (!moveIntoPlace()) {
        fail(0, qt_error_string(errno));
        return;
    }
    over_ = true;
    Q_EMIT finished();
}

/// On failure errno tells why.
bool InstallerDownload::moveIntoPlace() {
    // Some file systems report a full disk only here.
    if (::fsync(file_.handle()) != 0 && errno != EINVAL && errno != ENOSYS)
        return false;
    file_.close();
    return std::rename(QFile::encodeName(file_.fileName()).constData(),
                       QFile::encodeName(destination_).constData()) == 0;
}

void InstallerDownload::removeFile() {
    if (file_.fileName().isEmpty())
        return;
    file_.close();
    QFile::remove(file_.fileName());
    file_.setFileName(QString());
}

void InstallerDownload::fail(int code, const QString& description) {
    if (over_)
        return;
    abort();
    Q_EMIT failed({code, description, fetch_.url()});
}
