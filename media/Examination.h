#pragma once

#include "media/ProbeRunner.h"
#include "media/RetryProbeReader.h"

#include <QString>

#include <functional>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

/// What ffmpeg says about one movie: the first look and, where it is wanted and the first one has
/// ended, the second. One thread runs it, any may ask.
class Examination final {
public:
    struct FirstLook {
        ProbeRunner::Result result = ProbeRunner::Result::Stopped;
        QString report; ///< without what the movie says about itself
    };
    struct SecondLook {
        ProbeRunner::Result result = ProbeRunner::Result::Stopped;
        std::vector<RetryFindings> found; ///< in each chunk of the report, as they arrived
    };

    Examination(QString moviePath, bool twice) : moviePath_(std::move(moviePath)), twice_(twice) {}
    Q_DISABLE_COPY_MOVE(Examination)

    /// Blocks. Calls `lookIsOver` after each look.
    void run(const ProbeRunner& runner, const std::function<void()>& lookIsOver);
    /// Nobody wants to know any more: kills what runs, and what has not begun does not.
    void stop() { stop_.ask(); }

    [[nodiscard]] bool isTwice() const { return twice_; }
    [[nodiscard]] bool isFirstOver() const;
    [[nodiscard]] bool isSecondOver() const;
    /// To be asked for when it is over.
    [[nodiscard]] const FirstLook& first() const;
    [[nodiscard]] const SecondLook& second() const;

private:
    [[nodiscard]] FirstLook lookFirst(const ProbeRunner& runner);
    [[nodiscard]] SecondLook lookAgain(const ProbeRunner& runner);

    const QString moviePath_;
    const bool twice_;
    ProbeRunner::Stop stop_;
    mutable std::mutex mutex_;
    std::optional<FirstLook> first_;
    std::optional<SecondLook> second_;
};
