#include "app/OpenedMovies.h"

#include "app/MainWindow.h"
#include "filelist/AddFiles.h"
#include "filelist/SharedState.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "table/DroppedFiles.h"
#include "ui_MainWindow.h"
#include "widgets/ActionGate.h"
#include "widgets/Announcer.h"
#include "widgets/ForeignText.h"

#include <QApplication>
#include <QUrl>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto betweenLooks = 100ms;
constexpr qsizetype longestName = 100;

} // namespace

OpenedMovies::OpenedMovies(Parts parts, QObject* parent) : QObject(parent), parts_(parts) {
    timer_.setInterval(betweenLooks);
    connect(&timer_, &QTimer::timeout, this, &OpenedMovies::addWaiting);
}

void OpenedMovies::open(const QStringList& addresses) {
    for (const QString& address : addresses) {
        const QStringList path = droppedFiles({QUrl::fromEncoded(address.toUtf8())});
        waiting_ += path;
        if (path.isEmpty())
            parts_.window.showQuietLine(
                getLocalString("IDS_TXT_ADD_ENDED")
                    .arg(foreignLine(address.section(u'/', -1), longestName)));
    }
    if (waiting_.isEmpty())
        return;
    tellWaiting();
    timer_.start();
}

// Looked at again and again, because there are many ways in which a wait, a box or a run ends.
void OpenedMovies::addWaiting() {
    if (parts_.mainThread.isClosing() || !parts_.window.isVisible()) {
        timer_.stop();
        return;
    }
    tellWaiting();
    // An add would keep the input from an open list, and that keeps it from the desktop.
    if (parts_.state.isConversionRunning || !parts_.gate.isOpen() ||
        QApplication::activePopupWidget())
        return;
    timer_.stop();
    const QStringList paths = std::exchange(waiting_, {});
    tellWaiting();
    parts_.gate.pass([this, paths] { parts_.addFiles.addDropped(paths); });
}

void OpenedMovies::tellWaiting() {
    // Also under the box that sums the run up: they come when it is closed.
    const bool tells = parts_.state.isConversionRunning || told_ > 0;
    if (const qsizetype now = tells ? waiting_.size() : 0; now == std::exchange(told_, now))
        return;
    const QString line = told_ > 0 ? getLocalString("IDS_TXT_OPENED_LATER").arg(told_) : QString();
    parts_.window.form().quietLine->showBehind(QuietLine::Behind::Opened, line);
    if (told_ > 0)
        parts_.window.announcer().say(line);
}
