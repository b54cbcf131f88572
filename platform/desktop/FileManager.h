#pragma once

#include "platform/Mailbox.h"
#include "platform/WorkerThreads.h"
#include "platform/desktop/MessageBus.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <memory>

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

    ~DesktopFileManager() override;
    Q_DISABLE_COPY_MOVE(DesktopFileManager)

    /// Looks at the path on a thread that is left behind when the file system does not answer.
    void showFolder(const QString& path) override;

private:
    struct Item {
        QString path; ///< absolute
        bool isFolder = false;
    };

    void show(const Item& item);
    [[nodiscard]] static QDBusMessage showCall(const Item& item);
    static void openWithDesktop(const Item& item);

    /// Outlives this object for a thread that comes back late.
    const std::shared_ptr<Mailbox<DesktopFileManager>> mailbox_;
    WorkerThreads lookers_;
    const QString busAddress_;
    const std::chrono::milliseconds answerLimit_;
};
