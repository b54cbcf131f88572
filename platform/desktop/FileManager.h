#pragma once

#include "platform/desktop/MessageBus.h"

#include <QObject>
#include <QString>

#include <chrono>

/// Shows folders to the user. Main thread; owned by the controller.
class FileManager {
public:
    FileManager() = default;
    virtual ~FileManager() = default;
    Q_DISABLE_COPY_MOVE(FileManager)

    /// Shows the inside of a folder, or a file selected in its folder. Returns at once.
    virtual void showFolder(const QString& path) = 0;
};

/// The desktop's own file manager: over the session bus, and where none answers there, the program
/// that the desktop opens folders with.
class DesktopFileManager final : public QObject, public FileManager {
    Q_OBJECT

public:
    /// A file manager that the bus has to start first may take some seconds.
    static constexpr std::chrono::milliseconds defaultAnswerLimit{10'000};

    explicit DesktopFileManager(QString busAddress = sessionBusAddress(),
                                std::chrono::milliseconds answerLimit = defaultAnswerLimit,
                                QObject* parent = nullptr);

    void showFolder(const QString& path) override;

private:
    const QString busAddress_;
    const std::chrono::milliseconds answerLimit_;
};
