#include "app/Closing.h"

#include "app/ProgramParts.h"
#include "widgets/PopUpBoxes.h"

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto longestGoodbye = 2s;
// A wait may be for a dead share; then the window is closed all the same, within three seconds of
// the click.
constexpr auto longestPutOffClose = 2500ms;

} // namespace

Closing::Closing(ProgramParts& parts, std::function<void()> cleanUp)
    : parts_(parts), cleanUp_(std::move(cleanUp)) {
    parts_.window.setCloseHandler([this] { return closeWindow(); });
    QCoreApplication::instance()->installEventFilter(this);
}

Closing::~Closing() {
    parts_.window.setCloseHandler({});
}

void Closing::quit() {
    if (std::exchange(isQuitting_, true))
        return;
    parts_.window.hide(); // first: see closeAtOnce()
    endWork();
    PopUpBoxes::dismissAll();
    parts_.update.stop();
    QCoreApplication::quit();
}

void Closing::endWork() {
    cleanUp_();
    parts_.mainThread.close();
    parts_.workers.close();
}

bool Closing::awaitEnd() {
    endWork();
    parts_.engine.quitting().awaitEnd();
    const auto end = std::chrono::steady_clock::now() + longestGoodbye;
    const auto rest = [end] {
        return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(
                            end - std::chrono::steady_clock::now()),
                        0ms);
    };
    const bool haveWorkersEnded = parts_.workers.waitForAll(rest());
    const bool haveDownloadsEnded = parts_.update.waitForDownloads(rest());
    return parts_.mainThread.waitForHelpers(rest()) && haveWorkersEnded && haveDownloadsEnded;
}

// The session manager's last word is to be obeyed like a signal: left to itself the toolkit asks
// every window, and an open box or a wait would refuse.
bool Closing::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Quit || watched != QCoreApplication::instance() || isQuitting_)
        return false;
    quit();
    return true;
}

// Inside a wait the closing is put off like every action, but not for ever; under an open box it
// does nothing.
bool Closing::closeWindow() {
    if (parts_.mainThread.isClosing())
        return true;
    if (parts_.gate.isOpen()) {
        // Not now: the window that closes comes to its own end first.
        QMetaObject::invokeMethod(this, &Closing::windowWasClosed, Qt::QueuedConnection);
        return true;
    }
    const bool isPutOff = parts_.mainThread.isWaiting() && !QApplication::activeModalWidget();
    if (isPutOff && !parts_.window.isCloseAsked())
        QTimer::singleShot(longestPutOffClose, this, [this] {
            if (parts_.window.isCloseAsked() && parts_.mainThread.isWaiting())
                closeAtOnce();
        });
    if (isPutOff)
        parts_.window.askForClose();
    else
        parts_.window.forgetClose();
    parts_.gate.pass([this] {
        parts_.window.forgetClose();
        parts_.window.close();
    });
    return false;
}

void Closing::closeAtOnce() {
    parts_.mainThread.close();
    // First: what follows may take its time where a folder does not answer.
    parts_.window.close();
    PopUpBoxes::dismissAll();
    endWork();
    QMetaObject::invokeMethod(this, &Closing::windowWasClosed, Qt::QueuedConnection);
}

// The window that offers a newer version may stay, and the program with it; no encoder does.
void Closing::windowWasClosed() {
    endWork();
    parts_.engine.quitting().awaitEnd();
}
