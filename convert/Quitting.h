#pragma once

#include <QtGlobal>

struct ConversionContext;

/// What becomes of a run when the program quits. Main thread; owned by the engine.
class Quitting final {
public:
    explicit Quitting(const ConversionContext& context) : context_(context) {}
    Q_DISABLE_COPY_MOVE(Quitting)

    /// Every encoder is told to end and its partial output goes. awaitEnd() must follow when
    /// nothing runs on the main loop any more.
    void quit();
    /// Waits for the encoders, kills those that do not obey, and deletes what they still wrote.
    void awaitEnd();

private:
    const ConversionContext& context_;
};
