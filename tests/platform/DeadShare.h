#pragma once

#include <QString>

/// A folder on a share whose server has gone: while this object lives, every call of the C library
/// that looks at a path in the folder hangs, in whatever thread, as it does in the kernel; then the
/// server is back and all of them go on. Replaces those calls in the test program that links it;
/// other programs do not notice. Main thread; one at a time.
class DeadShare final {
public:
    explicit DeadShare(const QString& folder);
    ~DeadShare();
    Q_DISABLE_COPY_MOVE(DeadShare)

    /// How many calls hang now. Any thread.
    [[nodiscard]] static int hangingCalls();
};
