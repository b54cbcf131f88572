#include "app/PersistedFolders.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringDecoder>

namespace {

Q_LOGGING_CATEGORY(log, "reelshift.app")

} // namespace

PersistedFolders::PersistedFolders()
    : documentsFolder_(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)),
      home_(qEnvironmentVariable("HOME")) {}

QString PersistedFolders::readDefaultFilePath(const QString& fileName) const {
    if (documentsFolder_.isEmpty())
        return defaultFolder();
    QFile file(filePath(fileName));
    if (!file.open(QIODevice::ReadOnly))
        return defaultFolder();
    // Stateless: a character that is cut by the file's end is an error, too.
    // A byte-order mark belongs to the text like everything else.
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless |
                                                       QStringConverter::Flag::ConvertInitialBom);
    const QString text = decoder.decode(file.readAll());
    if (decoder.hasError() || text.isEmpty() || text.contains(QChar::Null) ||
        !QFileInfo::exists(text))
        return defaultFolder();
    return text;
}

void PersistedFolders::remeberFolderPath(const QString& outputFolder,
                                         const QString& addFolder) const {
    write(DEFAULT_PATH_COMPONENT, outputFolder);
    write(ADD_FILE_COMPONENT, addFolder);
}

QString PersistedFolders::filePath(const QString& fileName) const {
    return documentsFolder_ + u'/' + fileName;
}

void PersistedFolders::write(const QString& fileName, const QString& folder) const {
    QSaveFile file(filePath(fileName));
    if (!file.open(QIODevice::WriteOnly) || file.write(folder.toUtf8()) < 0 || !file.commit())
        qCWarning(log, "%s was not written: %s", qPrintable(fileName),
                  qPrintable(file.errorString()));
}
