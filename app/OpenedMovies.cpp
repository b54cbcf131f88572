#include "app/OpenedMovies.h"

#include "app/AppDelegate.h"
#include "platform/LocalizedStrings.h"
#include "table/DroppedFiles.h"
#include "ui_MainWindow.h"
#include "widgets/Announcer.h"
#include "widgets/ForeignText.h"

#include <QUrl>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto betweenLooks = 100ms;
constexpr qsizetype longestName = 100;

} // namespace

OpenedMovies::OpenedMovies(AppDelegate& controller, QObject* parent)
    : QObject(parent), controller_(controller) {
    timer_.setInterval(betweenLooks);
    connect(&timer_, &QTimer::timeout, this, &OpenedMovies::addWaiting);
}

void OpenedMovies::open(const QStringList& addresses) {
    for (const QString& address : addresses) {
        const QStringList path = droppedFiles({QUrl::fromEncoded(address.toUtf8())});
        waiting_ += path;
        if (path.isEmpty())
            controller_.tell(getLocalString("IDS_TXT_ADD_ENDED")
                                 .arg(foreignLine(address.section(u'/', -1), longestName)));
    }
    if (waiting_.isEmpty())
        return;
    isTold_ = false;
    tellWaiting();
    timer_.start();
}

// Looked at again and again, because there are many ways in which a wait, a box or a run ends.
void OpenedMovies::addWaiting() {
    if (controller_.mainThread().isClosing() || !controller_.window().isVisible()) {
        timer_.stop();
        return;
    }
    tellWaiting();
    if (controller_.state().isConversionRunning || !controller_.gate().isOpen())
        return;
    timer_.stop();
    const QStringList paths = std::exchange(waiting_, {});
    tellWaiting();
    controller_.gate().pass([this, paths] { controller_.addDropped(paths); });
}

void OpenedMovies::tellWaiting() {
    const bool tells = controller_.state().isConversionRunning && !waiting_.isEmpty();
    if (tells == isTold_)
        return;
    isTold_ = tells;
    const QString line =
        tells ? getLocalString("IDS_TXT_OPENED_LATER").arg(waiting_.size()) : QString();
    controller_.window().form().quietLine->showBehind(QuietLine::Behind::Opened, line);
    if (tells)
        controller_.window().announcer().say(line);
}
