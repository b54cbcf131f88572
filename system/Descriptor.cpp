#include "system/Descriptor.h"

#include <array>

#include <fcntl.h>

namespace {

int awayFromStandardStreams(int number) {
    if (number > STDERR_FILENO)
        return number;
    const int moved = ::fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    ::close(number);
    return moved;
}

} // namespace

Pipe Pipe::open() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return {};
    const int readEnd = awayFromStandardStreams(ends[0]);
    return {Descriptor(readEnd), Descriptor(awayFromStandardStreams(ends[1]))};
}
