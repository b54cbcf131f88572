#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <sys/types.h>

/// The launcher as the window starts it, with a pipe for the error stream. One thread; killed and
/// reaped with its owner.
class LaunchedEncoder final {
public:
    enum class Stream { Usual, NonBlocking };

    /// `searchPath` is its PATH; a null one is no PATH at all.
    LaunchedEncoder(const QString& searchPath, const QStringList& arguments,
                    Stream stream = Stream::Usual);
    ~LaunchedEncoder();
    Q_DISABLE_COPY_MOVE(LaunchedEncoder)

    [[nodiscard]] pid_t pid() const { return pid_; }
    /// Process number of its filter, 0 where there is none.
    [[nodiscard]] pid_t filter() const;
    /// All it said so far.
    [[nodiscard]] const QByteArray& said() const { return said_; }
    [[nodiscard]] int bytesWaiting() const;

    /// Whether it has said that within 20 s.
    [[nodiscard]] bool waitFor(const QByteArray& text);
    /// Reads to the end of the stream; false when that does not come within 20 s.
    [[nodiscard]] bool readToEnd();
    /// Exit status, or minus the signal that ended it.
    [[nodiscard]] int waitForEnd();
    void closeReadEnd();

private:
    [[nodiscard]] bool readSome();

    pid_t pid_ = -1;
    int readEnd_ = -1;
    bool isAtEnd_ = false;
    QByteArray said_;
};
