#include "platform/StandardStreams.h"

#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

void openStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest free number is taken, which is this one.
        if (::fcntl(stream, F_GETFD) < 0)
            (void)::open("/dev/null", O_RDWR);
    }
}
