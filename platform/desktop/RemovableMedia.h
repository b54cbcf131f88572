#pragma once

#include <QDeadlineTimer>
#include <QString>

#include <chrono>
#include <mutex>
#include <optional>

/// Asks the disk service (UDisks2) whether a device's medium can be taken out. Any thread, also
/// several at once; owned by the `SystemVolumeInfo` that asks.
class RemovableMedia final {
public:
    /// How long a silent service is left alone, so that a list of files waits for it once.
    static constexpr std::chrono::milliseconds defaultRest{30'000};

    explicit RemovableMedia(QString busAddress, std::chrono::milliseconds rest = defaultRest);
    Q_DISABLE_COPY_MOVE(RemovableMedia)

    /// Nothing where the service is missing, does not know the device or does not answer in time.
    [[nodiscard]] std::optional<bool> isRemovable(const QString& deviceName,
                                                  QDeadlineTimer deadline);

private:
    [[nodiscard]] bool isResting();
    void startRest();

    const QString busAddress_;
    const std::chrono::milliseconds rest_;
    std::mutex mutex_;
    QDeadlineTimer restUntil_;
};

/// The service's object path of a device: "sdb1", "dm-0".
[[nodiscard]] QString blockObjectPath(const QString& deviceName);
