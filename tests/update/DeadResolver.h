#pragma once

#include <QtGlobal>

/// Name servers that never answer: while this object lives, every look-up of a name hangs, in
/// whatever thread; then all of them go on and fail. Replaces getaddrinfo in the test program that
/// links it, where names that end in .invalid are unknown at once; addresses in numbers are no
/// look-ups. One at a time.
class DeadResolver final {
public:
    DeadResolver();
    ~DeadResolver();
    Q_DISABLE_COPY_MOVE(DeadResolver)

    /// How many look-ups hang now. Any thread.
    [[nodiscard]] static int hangingCalls();
    /// Returns when one hangs. Any thread.
    static void waitUntilAsked();
};
