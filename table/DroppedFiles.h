#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <QUrl>

/// The local files that the addresses of a drop name, in order: absolute paths. Addresses of other
/// schemes and of other machines are left out.
[[nodiscard]] QStringList droppedFiles(const QList<QUrl>& addresses);
