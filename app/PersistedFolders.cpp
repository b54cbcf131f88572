#include "app/PersistedFolders.h"

#include "app/AppLog.h"
#include "app/FolderText.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <filesystem>

namespace {

// Not for the toolkit, which finds its own resources, too, under names like ":/images".
bool isThere(const QString& path) {
    std::error_code failure;
    return std::filesystem::exists(QFile::encodeName(path).toStdString(), failure);
}

} // namespace

PersistedFolders::PersistedFolders()
    : documentsFolder_(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)),
      home_(qEnvironmentVariable("HOME")) {}

QString PersistedFolders::readDefaultFilePath(const QString& fileName) const {
    if (documentsFolder_.isEmpty())
        return defaultFolder();
    QFile file(filePath(fileName));
    // Whoever opens a pipe that nobody writes to waits for ever.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return defaultFolder();
    const auto folder = folderInText(file.read(maximumFolderText + 1));
    return folder && isThere(*folder) ? *folder : defaultFolder();
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
        qCWarning(lcApp, "%s was not written: %s", qPrintable(fileName),
                  qPrintable(file.errorString()));
}
