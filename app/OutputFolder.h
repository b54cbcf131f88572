#pragma once

#include <QString>

#include <memory>
#include <optional>
#include <utility>

class FileManager;
class MainThread;
class QWidget;
class VolumeInfo;

/// The choice of the output folder and its showing. Main thread; owned by main().
class OutputFolder final {
public:
    OutputFolder(MainThread& mainThread, std::shared_ptr<VolumeInfo> volumes,
                 FileManager& fileManager)
        : mainThread_(mainThread), volumes_(std::move(volumes)), fileManager_(fileManager) {}
    Q_DISABLE_COPY_MOVE(OutputFolder)

    /// Asks for a folder, beginning at `current` ("~" stands for the home folder). Nothing when
    /// none was chosen or the chosen one is refused, which the user is told.
    [[nodiscard]] std::optional<QString> selectFolder(const QString& current, QWidget* parent);
    /// Whether `folder`, which was chosen, is taken; tells the user why not.
    [[nodiscard]] bool isTaken(const QString& folder, QWidget* parent);
    /// Shows what is at `shown`, as it stands, or tells the user that nothing is there.
    void openFolder(const QString& shown, QWidget* parent);

private:
    MainThread& mainThread_;
    const std::shared_ptr<VolumeInfo> volumes_;
    FileManager& fileManager_;
};

/// `path` with a leading "~" or "~/" expanded to the home folder.
[[nodiscard]] QString withTildeExpanded(const QString& path);
