#pragma once

#include <QString>

#include <optional>

#include <sys/stat.h>

/// What an encoder is about to write, and what stood in its place before: tells a partial output
/// from a file that the encoder never touched. A value that never changes; any thread, and every
/// call may hang on a dead share.
class PartialOutput final {
public:
    PartialOutput() = default;
    /// Made just before the encoder is launched.
    explicit PartialOutput(const QString& path);

    [[nodiscard]] const QString& path() const { return path_; }
    /// Whether there is a file now that was not there then, or differs in inode, size or time.
    [[nodiscard]] bool exists() const;

    /// Deletes the file if `exists()`. Only for an encoder that did not finish.
    void remove() const;

private:
    QString path_;
    std::optional<struct stat> before_;
    bool wasLink_ = false;
};

/// Whether both names lead to one file (device and inode). May hang on a dead share.
[[nodiscard]] bool isSameFile(const QString& one, const QString& other);
