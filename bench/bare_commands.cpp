// Runs commands one after the other, as somebody would by hand who loses no time between them, and
// reads what they say on standard error to the end.
//
//     bare_commands FILE          arguments end with a NUL, an empty one ends a command
//
// Prints the seconds that all took and the processor seconds of the commands.

#include <array>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

using Command = std::vector<std::string>;

std::vector<Command> readCommands(const char* path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<Command> commands;
    Command command;
    for (std::string argument; std::getline(file, argument, '\0');) {
        if (!argument.empty())
            command.push_back(argument);
        else if (!command.empty())
            commands.push_back(std::exchange(command, {}));
    }
    return commands;
}

bool run(Command command) {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0)
        return false;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, pipe[1], STDERR_FILENO);
    std::vector<char*> arguments;
    for (std::string& each : command)
        arguments.push_back(each.data());
    arguments.push_back(nullptr);
    pid_t pid = 0;
    const bool started =
        posix_spawnp(&pid, arguments[0], &actions, nullptr, arguments.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(pipe[1]);
    std::array<char, 65536> buffer{};
    while (started && read(pipe[0], buffer.data(), buffer.size()) > 0) {
    }
    close(pipe[0]);
    return started && waitpid(pid, nullptr, 0) == pid;
}

} // namespace

int main(int argc, char* argv[]) {
    const std::vector<Command> commands = readCommands(argc > 1 ? argv[1] : "/dev/stdin");
    const auto begin = std::chrono::steady_clock::now();
    for (const Command& command : commands) {
        if (!run(command)) {
            std::perror(command[0].c_str());
            return 1;
        }
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    rusage used{};
    getrusage(RUSAGE_CHILDREN, &used);
    const double cpu = static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
                       static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e6;
    std::printf("{\"commands\": %zu, \"seconds\": %.6f, \"cpu\": %.6f}\n", commands.size(),
                took.count(), cpu);
    return 0;
}
