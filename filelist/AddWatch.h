#pragma once

#include <QObject>
#include <QTimer>

#include <atomic>
#include <chrono>
#include <memory>
#include <utility>

/// What an add tells about itself while it goes on, and the wish to end it. Main thread; owned by
/// main().
class AddWatch final : public QObject {
    Q_OBJECT

public:
    AddWatch() {
        overdue_.setSingleShot(true);
        connect(&overdue_, &QTimer::timeout, this, &AddWatch::endOverdue);
    }
    Q_DISABLE_COPY_MOVE(AddWatch)

    /// What is left to a movie at hand after the wish.
    static constexpr std::chrono::milliseconds lastMoment{1000};

    /// The movie at hand is the last one of this add. Nothing where none goes on.
    void askEnd() {
        *endAsked_ = adding_;
        if (adding_ && !overdue_.isActive())
            overdue_.start(lastMoment);
    }
    [[nodiscard]] bool isEndAsked() const { return *endAsked_; }
    /// The same for a thread that works for this add and may be left behind by it.
    [[nodiscard]] std::shared_ptr<const std::atomic<bool>> endAsked() const { return endAsked_; }

    // Told by the add itself.
    void begin() {
        adding_ = true;
        endAsked_ = std::make_shared<std::atomic<bool>>(false);
        Q_EMIT began();
    }
    void takeNext(qsizetype index, qsizetype movies) { Q_EMIT movieAtHand(index, movies); }
    void end() {
        overdue_.stop();
        if (std::exchange(adding_, false))
            Q_EMIT over();
    }

Q_SIGNALS:
    /// The movies may have to be looked for first.
    void began();
    /// `index` counts from 0.
    void movieAtHand(qsizetype index, qsizetype movies);
    void over();
    /// The movie at hand has had its time since the wish for the end.
    void endOverdue();

private:
    bool adding_ = false;
    QTimer overdue_;
    std::shared_ptr<std::atomic<bool>> endAsked_ = std::make_shared<std::atomic<bool>>(false);
};
