#pragma once

#include <QByteArray>

#include <optional>

#include <sys/stat.h>

/// What is written down of a job before its encoder is launched, so that the next start of the
/// program knows an output that an interrupted run has left. A value; any thread.
struct RunNote final {
    static constexpr qsizetype longestText = 32 * 1024; ///< bytes

    /// A file as it was looked at.
    struct File {
        quint64 device = 0;
        quint64 inode = 0;
        quint64 size = 0;
        qint64 seconds = 0; ///< of the last change of its content, since 1970
        qint64 nanoseconds = 0;

        bool operator==(const File&) const = default;
    };

    /// The computer's session, as the kernel names it: device numbers hold for one alone.
    QByteArray boot;
    qint64 launched = 0; ///< seconds since 1970
    /// Absolute, as the file system has them.
    QByteArray output;
    QByteArray source;
    File sourceFile;
    /// What stood at the output's path.
    std::optional<File> before;
    /// What the encoder made of it, as it was when it was first seen.
    std::optional<File> made;

    bool operator==(const RunNote&) const = default;

    /// All but `made`, which is added later.
    [[nodiscard]] QByteArray text() const;
    /// What is added to the text when the encoder's file is seen.
    [[nodiscard]] static QByteArray madeText(const File& made);
    /// Nothing where the text is not exactly what the two above write. A last line that is cut, as
    /// by a power failure, counts as not written.
    [[nodiscard]] static std::optional<RunNote> fromText(const QByteArray& text);
};

[[nodiscard]] RunNote::File noted(const struct stat& file);
