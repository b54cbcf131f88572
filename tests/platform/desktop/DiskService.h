#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QMap>
#include <QStringList>
#include <QThread>

#include <mutex>

/// A disk service (org.freedesktop.UDisks2) on a private bus, on a thread of its own so that a
/// test may block on its answers.
class DiskService final : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// How a service behaves when it is asked.
    enum class Manner {
        Answers,
        Silent,         ///< never answers
        SilentOnDrives, ///< answers about the block device, never about its drive
        WrongType,      ///< answers with texts
    };

    explicit DiskService(const QString& busAddress);
    ~DiskService() override;
    Q_DISABLE_COPY_MOVE(DiskService)

    [[nodiscard]] bool isReady() const { return ready_; }
    [[nodiscard]] QStringList asked() const; ///< object paths, in order

    /// `drive` is the last part of its object path; empty for a device without a drive.
    void addBlock(const QString& name, const QString& drive);
    /// A USB hard disk is removable, its medium is not.
    void addDrive(const QString& name, bool removable, bool mediaRemovable);
    void setManner(Manner manner);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    QThread thread_;
    bool ready_ = false;
    mutable std::mutex mutex_;
    Manner manner_ = Manner::Answers;
    QStringList asked_;
    QMap<QString, QVariant> properties_; ///< by "object interface property"
};
