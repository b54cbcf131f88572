#pragma once

#include "convert/EncoderMarkers.h"
#include "platform/ChildProcess.h"

#include <optional>

/// The life of one job, from the moment it is picked from the queue to its one outcome: what has
/// been asked of its encoder, what the encoder has said and how it ended, and what that comes to.
/// A value without threads; its job keeps it on the main thread.
class EncoderLife final {
public:
    enum class Phase {
        Preparing, ///< no encoder yet
        Running,
        Suspended,
        Settled ///< it has had its outcome: nothing changes a row any more
    };
    enum class Request { None, Stop, Remove };
    enum class Verdict { Converted, WriteFailed, Failed, Stopped, Removed };

    [[nodiscard]] Phase phase() const { return phase_; }
    [[nodiscard]] bool isSettled() const { return phase_ == Phase::Settled; }
    [[nodiscard]] Request request() const { return request_; }
    /// Whether the encoder was suspended when its row was removed.
    [[nodiscard]] bool wasRemovedWhilePaused() const { return removedWhilePaused_; }
    /// A pause came too late: the encoder had ended.
    [[nodiscard]] bool suspendFailed() const { return suspendFailed_; }
    [[nodiscard]] bool isSummarySeen() const { return summarySeen_; }
    [[nodiscard]] bool isDamageSeen() const { return damageSeen_; }
    /// Whether the encoder came to its end by itself, with a summary that counts pictures and
    /// status 0, read everything and wrote everything: its output is a finished file, and was there
    /// at that moment.
    [[nodiscard]] bool isFinished() const;
    /// What the end of the encoder means. A removal is always the outcome, a stop unless the
    /// encoder had finished by itself before it could be told to end.
    [[nodiscard]] Verdict verdict() const;

    void launched();
    void suspended();
    void suspendDidFail() { suspendFailed_ = true; }
    void resumed();
    /// A removal outweighs a stop; the first of two equal requests stays.
    void ask(Request request);
    /// What a piece of its output said.
    void saw(const EncoderPiece& piece);
    /// A signal that ends it was sent.
    void toldToEnd() { toldToEnd_ = true; }
    /// `hasOutput`: whether it left a file.
    void ended(ProcessEnd end, bool hasOutput = true) {
        end_ = end;
        hasOutput_ = hasOutput;
    }
    /// True for the first outcome, false for every later one.
    [[nodiscard]] bool settle();

private:
    Phase phase_ = Phase::Preparing;
    Request request_ = Request::None;
    std::optional<ProcessEnd> end_;
    bool hasOutput_ = false;
    bool summarySeen_ = false;
    bool writeFailed_ = false;
    bool damageSeen_ = false;
    bool noPicture_ = false;
    bool toldToEnd_ = false;
    bool suspendFailed_ = false;
    bool removedWhilePaused_ = false;
};
