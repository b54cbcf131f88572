#pragma once

#include "app/ControllerFixture.h"
#include "convert/Job.h"
#include "filelist/StatusWords.h"

#include <QAbstractButton>

#include <functional>

// Names of movies, and a size that some of them are given.
inline const QString a = QStringLiteral("a");
inline const QString b = QStringLiteral("b");
inline const QString c = QStringLiteral("c");
inline const QString d = QStringLiteral("d");
inline const QString half = QStringLiteral("640x360");

/// An encode that says a position and nothing more.
[[nodiscard]] inline QStringList silent() {
    return {QStringLiteral("create"), QStringLiteral("write 100"), QStringLiteral("progress 1"),
            QStringLiteral("hang")};
}

/// A program in the middle of a run whose encoders go on step by step, as the test tells them:
/// each says 10 %, waits for step 1, says 20 %, waits for step 2, says 30 %, waits for step 3,
/// writes its output and ends. All of them must find themselves alone.
class RunScene final {
public:
    static constexpr int lastStep = 3;

    /// The five seconds and the ten of an encoder that does not end are in proportion.
    explicit RunScene(std::chrono::milliseconds second = std::chrono::milliseconds(50));
    Q_DISABLE_COPY_MOVE(RunScene)

    ControllerFixture program;

    [[nodiscard]] QAbstractButton* button(const char* name) {
        return program.widget<QAbstractButton>(name);
    }

    // The list.
    void add(const QStringList& names);
    void addScript(const QString& name, const QStringList& encode);
    [[nodiscard]] QString source(const QString& name) const;
    [[nodiscard]] QString output(const QString& name) const;
    [[nodiscard]] bool hasOutput(const QString& name) const;
    [[nodiscard]] QStringList names();
    /// Whether all lists beside the records have their length, and the shown records are them.
    [[nodiscard]] bool isInStep();

    // The run.
    /// Convert, and wait until the first encoder has said a position.
    [[nodiscard]] bool begin();
    /// Waits until the row's encoder has said this much.
    [[nodiscard]] bool waitForPercent(int row, int percent);
    /// Lets an encoder take a step.
    void go(const QString& name, int step);
    void goToEnd(const QString& name);
    /// Presses the row's button and lets its encoder say something.
    [[nodiscard]] bool pause(int row, const QString& name, int step = 1);
    /// Lets these encoders come to their end, answers the summary and waits for the end.
    [[nodiscard]] bool end(const QStringList& names);
    [[nodiscard]] JobPtr run();
    /// Blocks, without turning the main loop, until the run's encoder has ended.
    [[nodiscard]] bool blockUntilEnded();

    // The encoders.
    /// Letter of the state of the encoder that was started last; 0 when it is gone.
    [[nodiscard]] char encoderState() const;
    [[nodiscard]] qint64 encoderPid() const;
    /// Whether no two encoders ever ran at a time.
    [[nodiscard]] bool ranAlone() const;

private:
    void write(const QString& name, const QStringList& encode);
};

/// Waits, with the main loop turning, for up to 20 s.
[[nodiscard]] bool eventually(const std::function<bool()>& condition);
/// Letter of a process's state as the kernel has it; 0 when it is gone.
[[nodiscard]] char processState(qint64 pid);
/// Text of the string table.
[[nodiscard]] QString text(const char* id);
/// The message of a box of several lines.
[[nodiscard]] QString lines(std::initializer_list<QString> texts);
