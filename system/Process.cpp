#include "system/Process.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

bool put(int descriptor, int stream) {
    return descriptor < 0 || ::dup2(descriptor, stream) >= 0;
}

} // namespace

Descriptor openPidFd(pid_t process) {
    return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}

bool endWithParent(pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    return ::getppid() == parent;
}

bool setStandardStreams(int input, int output, int error) {
    return put(input, STDIN_FILENO) && put(output, STDOUT_FILENO) && put(error, STDERR_FILENO);
}
