#pragma once

#include <QString>

/// The two folders that survive from one session to the next, each the whole content of a small
/// file in the user's documents folder. Main thread; owned by main().
class PersistedFolders final {
public:
    static inline const QString DEFAULT_PATH_COMPONENT = QStringLiteral("default_hevc_path.txt");
    static inline const QString ADD_FILE_COMPONENT = QStringLiteral("add_hevc_file_path.txt");
    static inline const QString DEFAULT_FOLDER_PATH = QStringLiteral("/Documents");

    /// The documents folder of the user and the value of HOME.
    PersistedFolders();
    PersistedFolders(const QString& documentsFolder, const QString& home)
        : documentsFolder_(documentsFolder), home_(home) {}

    /// The folder that a file names if something exists there, else the default folder.
    [[nodiscard]] QString readDefaultFilePath(const QString& fileName) const;
    [[nodiscard]] QString defaultFolder() const { return home_ + DEFAULT_FOLDER_PATH; }

    /// Writes both; a failure is logged.
    void remeberFolderPath(const QString& outputFolder, const QString& addFolder) const;

private:
    [[nodiscard]] QString filePath(const QString& fileName) const;
    void write(const QString& fileName, const QString& folder) const;

    const QString documentsFolder_;
    const QString home_;
};
