#pragma once

/// Puts the null device in the place of every standard stream that was closed when the program was
/// started: otherwise a socket or a user's file that is opened next gets the number of the error
/// stream, and the log goes into it. To be called before anything is opened; one thread.
void openStandardStreams();
