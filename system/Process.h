#pragma once

#include "system/Descriptor.h"

#include <sys/types.h>

/// A kernel without pidfds (before 5.3) is asked in this rhythm whether a process has ended.
inline constexpr int pollIntervalWithoutPidFds = 20; // milliseconds

/// Readable when the process has ended; not open on a kernel without pidfds.
[[nodiscard]] Descriptor openPidFd(pid_t process);

// Between fork and exec: both use only what is safe there.

/// The kernel kills this process with the thread that started it. False when that has ended
/// already.
[[nodiscard]] bool endWithParent(pid_t parent);
/// Makes them standard input, output and error; those that are -1 stay as they are.
[[nodiscard]] bool setStandardStreams(int input, int output, int error);
