#pragma once

#include "platform/desktop/VolumeInfo.h"

#include <QList>
#include <QMap>

#include <condition_variable>
#include <mutex>

/// Volumes as a test wants them: the facts of the longest folder in the table that holds the path.
class FakeVolumes final : public VolumeInfo {
public:
    QMap<QString, VolumeFacts> table; ///< not to be changed during an add

    [[nodiscard]] QList<QString> asked() const {
        const std::lock_guard lock(mutex_);
        return asked_;
    }

    /// Whoever asks about this folder waits until it is released.
    void hold(const QString& folder) {
        const std::lock_guard lock(mutex_);
        held_ = folder;
    }
    void release() {
        const std::lock_guard lock(mutex_);
        held_.clear();
        released_.notify_all();
    }

    VolumeFacts facts(const QString& path) override {
        {
            std::unique_lock lock(mutex_);
            asked_ += path;
            released_.wait(lock, [&] { return held_ != path || path.isEmpty(); });
        }
        VolumeFacts found;
        qsizetype longest = -1;
        for (auto it = table.cbegin(); it != table.cend(); ++it) {
            const bool holds = path == it.key() || path.startsWith(QString(it.key() % u'/'));
            if (holds && it.key().size() > longest) {
                longest = it.key().size();
                found = it.value();
            }
        }
        return found;
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable released_;
    QString held_;
    QList<QString> asked_;
};
