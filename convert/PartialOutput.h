#pragma once

#include <QString>

#include <memory>
#include <mutex>
#include <optional>

#include <sys/stat.h>

/// What an encoder is about to write, and what stood in its place before: tells a partial output
/// from a file that the encoder never touched. Copies are one and the same; any thread, and every
/// call may hang on a dead share.
class PartialOutput final {
public:
    PartialOutput() = default;
    /// Made just before the encoder is launched.
    explicit PartialOutput(const QString& path);

    [[nodiscard]] const QString& path() const { return path_; }
    /// Whether there is a file now that was not there then, or differs in inode, size or time; once
    /// it was judged, whether the file that the encoder left is still there.
    [[nodiscard]] bool exists() const;
    /// The encoder still writes: the file that is there now is its own, and none that takes its
    /// place.
    void note() const;
    /// The encoder has ended: what others put there from now on is none of its own. The first time
    /// counts. Answers whether the encoder left a file.
    bool judge() const;
    [[nodiscard]] bool isJudged() const;

    /// What stood there before the launch.
    [[nodiscard]] std::optional<struct stat> before() const { return before_; }
    /// The file that is there, where it is not the one of before.
    [[nodiscard]] std::optional<struct stat> madeByNow() const;

    /// Deletes the file if `exists()`. Only for an encoder that did not finish.
    void remove() const;

private:
    struct Judgement {
        std::mutex mutex;
        bool isMade = false;
        std::optional<struct stat> noted; ///< while the encoder wrote
        std::optional<struct stat> left;  ///< nothing where the encoder left no file
    };

    [[nodiscard]] bool isOfTheEncoder(const struct stat& now) const;

    QString path_;
    std::optional<struct stat> before_;
    bool wasLink_ = false;
    std::shared_ptr<Judgement> judgement_ = std::make_shared<Judgement>();
};

/// Whether both names lead to one file (device and inode). May hang on a dead share.
[[nodiscard]] bool isSameFile(const QString& one, const QString& other);
