#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>

struct EncoderPiece;

/// What the threads of one job tell each other while one of them waits for a slow thing: what is
/// asked of the encoder, and what it has said, noted as it is read. The main thread hears of that
/// later, or, where the program closes, never. Any thread.
class JobNews final {
public:
    using Clock = std::chrono::steady_clock;

    /// When the encoder was asked to end, if it was.
    [[nodiscard]] std::optional<Clock::time_point> endAskedAt() const;
    /// Whether the encoder's file is whole, for all that was read of one that ended with status 0.
    [[nodiscard]] bool allowWholeFile() const;

    /// Blocks while the encoder is suspended and not asked to end; false when the program closes.
    [[nodiscard]] bool waitWhileSuspended() const;
    /// Blocks until `done` answers true, which wake() has it asked for, or until the end is asked
    /// for or the program closes.
    void waitUntil(const std::function<bool()>& done) const;
    /// False when there was no last word within `limit`.
    bool waitForLastWord(std::chrono::milliseconds limit) const;

    void wake();
    void setSuspended(bool suspended);
    void askForEnd();
    void close();
    void noteSaid(const EncoderPiece& piece);
    void noteLastWord();

private:
    template <typename Change> void tell(Change change);

    mutable std::mutex mutex_;
    mutable std::condition_variable changed_;
    std::optional<Clock::time_point> endAskedAt_;
    bool suspended_ = false;
    bool closing_ = false;
    bool summary_ = false;
    bool failure_ = false; ///< the file is no converted movie, whatever else is said
    bool isLastRead_ = false;
};
