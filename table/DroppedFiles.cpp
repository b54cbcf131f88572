#include "table/DroppedFiles.h"

#include <QSysInfo>

namespace {

/// Empty where the address names no file of this machine.
QString localPath(QUrl url) {
    if (url.scheme() != QLatin1StringView("file"))
        return {};
    const QString host = url.host();
    // Some file managers write this machine's name before the path.
    if (!host.isEmpty() && host != QLatin1StringView("localhost") &&
        host.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) != 0)
        return {};
    url.setHost(QString());
    const QString path = url.toLocalFile();
    const bool isPath = path.startsWith(u'/') && !path.contains(QChar::Null);
    return isPath ? path : QString();
}

} // namespace

QStringList droppedFiles(const QList<QUrl>& addresses) {
    QStringList paths;
    for (const QUrl& url : addresses) {
        if (const QString path = localPath(url); !path.isEmpty())
            paths += path;
    }
    return paths;
}
