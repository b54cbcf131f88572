#pragma once

#include <QFile>
#include <QString>

/// A file that is on its way: it grows under a name of its own beside its destination, and is gone
/// with this object unless it was moved there. Each call may hang for as long as the file system
/// does; any one thread.
class PartFile final {
public:
    /// What went wrong; for the user.
    struct Error {
        QString description;
    };

    PartFile() = default;
    ~PartFile() { remove(); }
    Q_DISABLE_COPY_MOVE(PartFile)

    /// Creates the folder where it is missing, and the file in it. Throws Error.
    void create(const QString& folder);
    /// Throws Error.
    void write(const QByteArray& piece);
    /// Has the disk take all of it. Throws Error.
    void finish();
    /// Moves the finished file to `path`, or to the first numbered name beside it
    /// that is free: what is there is never replaced. The path that it has then. Throws Error.
    [[nodiscard]] QString moveTo(const QString& path);
    void remove();

private:
    QFile file_;
};
