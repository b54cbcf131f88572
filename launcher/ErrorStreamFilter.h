#pragma once

#include "launcher/ReportRewriter.h"

/// Puts a process of ours between the error stream of what this process is about to become and the
/// one that it has now. False where that cannot be done; the stream is then as it was.
///
/// The filter is a child of this process, and after the exec of the encoder, which knows nothing of
/// it. It ends after the encoder, when all that the encoder said has been passed on, and is then
/// reaped by init: it is no zombie while the encoder lives unless nobody reads the stream any more.
/// It does not wait for the stream's end, which a grandchild of the encoder may delay. What is
/// meant for the encoder does not touch it: not a stop, nor a signal to the whole group.
[[nodiscard]] bool startErrorStreamFilter(ReportRewriter rewriter);
