#pragma once

#include <QtGlobal>

struct ConversionContext;

/// Disables what must not change during a run, and the other way round. Main thread; owned by the
/// engine.
class RunLock final {
public:
    explicit RunLock(const ConversionContext& context) : context_(context) {}
    Q_DISABLE_COPY_MOVE(RunLock)

    void lock();
    void unlock();

private:
    const ConversionContext& context_;
};
