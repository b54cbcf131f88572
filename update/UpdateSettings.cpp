#include "update/UpdateSettings.h"

#include <QDesktopServices>
#include <QStandardPaths>
#include <QUrl>

QString UpdateSettings::standardDownloadsFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
}

bool UpdateSettings::openWithSystem(const QUrl& file) {
    return QDesktopServices::openUrl(file);
}
