#include "platform/ChildProcess.h"
#include "platform/ChildProcesses.h"

#include <cstdio>
#include <cstring>
#include <thread>

#include <unistd.h>

/// Starts a child, which sleeps or is the program that the second and further arguments name,
/// prints its process number and waits to be killed. With "suspended" the child is stopped first.
int main(int argc, char** argv) {
    ChildProcesses processes;
    std::shared_ptr<ChildProcess> child;
    QStringList command{QStringLiteral("/bin/sleep"), QStringLiteral("300")};
    if (argc > 2) {
        command.clear();
        for (int i = 2; i < argc; ++i)
            command += QString::fromLocal8Bit(argv[i]);
    }
    const QString program = command.takeFirst();
    // The thread that asks is gone by the time of the kill.
    std::thread([&] { child = processes.launch(program, command); }).join();
    if (child->end())
        return 1;
    if (argc > 1 && std::strcmp(argv[1], "suspended") == 0 && !child->suspend())
        return 2;
    std::printf("%d\n", static_cast<int>(child->processIdentifier()));
    std::fflush(stdout);
    for (;;)
        ::pause();
}
