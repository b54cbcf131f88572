#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"

#include <cstdio>
#include <cstring>
#include <thread>

#include <unistd.h>

/// Starts a child, prints its process number and waits to be killed. With "suspended" the child is
/// stopped first.
int main(int argc, char** argv) {
    ChildProcesses processes;
    std::shared_ptr<ChildProcess> child;
    // The thread that asks is gone by the time of the kill.
    std::thread([&] {
        child = processes.launch(QStringLiteral("/bin/sleep"), {QStringLiteral("300")});
    }).join();
    if (child->end())
        return 1;
    if (argc > 1 && std::strcmp(argv[1], "suspended") == 0 && !child->suspend())
        return 2;
    std::printf("%d\n", static_cast<int>(child->processIdentifier()));
    std::fflush(stdout);
    for (;;)
        ::pause();
}
