#include "TestProgram.h"

#include <cstdio>
#include <cstring>

const TestProgram::Entry* TestProgram::first = nullptr;

TestProgram::Entry::Entry(const char* name, Main main) noexcept
    : name_(name), main_(main), next_(first) {
    first = this;
}

int TestProgram::run(int argc, char** argv) {
    const char* const wanted = argc > 1 ? argv[1] : "";
    for (const Entry* entry = first; entry; entry = entry->next_) {
        if (std::strcmp(entry->name_, wanted) == 0) {
            argv[1] = argv[0];
            return entry->main_(argc - 1, argv + 1);
        }
    }
    std::fputs("The first argument names one of these:\n", stderr);
    for (const Entry* entry = first; entry; entry = entry->next_)
        std::fprintf(stderr, "    %s\n", entry->name_);
    return 2;
}

int main(int argc, char** argv) {
    return TestProgram::run(argc, argv);
}
