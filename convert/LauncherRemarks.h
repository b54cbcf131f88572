#pragma once

#include <QByteArray>
#include <QStringList>

/// What the launcher says of a job before the encoder says anything: the command that it was made
/// into, and what is lost. Only the beginning of the stream counts; nothing that comes later, such
/// as a movie's title, can look like it. One thread, which owns it.
class LauncherRemarks final {
public:
    /// The remarks that are whole by now, without the words that they begin with.
    [[nodiscard]] QStringList add(const QByteArray& bytes);

private:
    QByteArray open_;
    bool isOver_ = false;
};
