#include "opening/MovieAddress.h"

#include <QUrl>

#include <cstdlib>
#include <memory>

#include <unistd.h>

QString movieAddress(const QByteArray& argument, const QByteArray& folder) {
    if (argument.startsWith("file:/"))
        return QString::fromLatin1(QUrl::fromEncoded(argument).toEncoded());
    const QByteArray path = argument.startsWith('/') ? argument : folder + '/' + argument;
    return QStringLiteral("file://") + QString::fromLatin1(path.toPercentEncoding("/"));
}

QByteArray workingFolder() {
    const std::unique_ptr<char, decltype(&std::free)> folder(::getcwd(nullptr, 0), &std::free);
    return folder ? QByteArray(folder.get()) : QByteArray();
}
