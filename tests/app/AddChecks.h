#pragma once

#include "filelist/FileList.h"
#include "filelist/ProgressObject.h"
#include "platform/LocalizedStrings.h"

#include <QFile>
#include <QString>

/// A stream that is none of the wanted kind, as a report names it.
inline const QString h264 = QStringLiteral("h264 (High)");

/// Whether the lists have an entry for every row; of progress records there may be more.
inline bool areInStep(const FileList& files) {
    const size_t rows = files.fileInfoArr.size();
    return files.check.size() == rows && size_t(files.cmb.size()) == rows &&
           files.idList.size() == rows && size_t(files.resolutionListForTable.size()) == rows &&
           files.arrayControllerNew.size() == rows && files.progressObjects.size() >= rows;
}

inline QString text(const char* key) {
    return getLocalString(key);
}

/// Puts a shell script in a program's place.
inline void writeProgram(const QString& path, const QByteArray& script, bool executable = true) {
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size())
        qFatal("%s cannot be written", qPrintable(path));
    file.close();
    QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner;
    if (executable)
        permissions |= QFile::ExeOwner;
    file.setPermissions(permissions);
}
