#include "platform/QuitSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace {

constexpr std::array<int, 3> numbers{SIGTERM, SIGINT, SIGHUP};

// A handler can reach nothing but what is global; it is empty while no object listens.
std::array<int, 2> wakePipe{-1, -1};

void onSignal(int) {
    const int before = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(wakePipe[1], &byte, 1);
    errno = before;
}

void setHandler(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    for (const int number : numbers)
        ::sigaction(number, &action, nullptr);
}

} // namespace

QuitSignals::QuitSignals(QObject* parent) : QObject(parent) {
    Q_ASSERT(wakePipe[0] < 0);
    if (::pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    notifier_ = new QSocketNotifier(wakePipe[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        std::array<char, 4096> bytes{};
        while (::read(wakePipe[0], bytes.data(), bytes.size()) > 0) {
        }
        Q_EMIT quitAsked();
    });
    setHandler(onSignal);
}

QuitSignals::~QuitSignals() {
    setHandler(SIG_DFL);
    delete notifier_;
    for (int& end : wakePipe) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
}
