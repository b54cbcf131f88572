#include "app/InterruptedRunQuestion.h"

#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "platform/WorkerThreads.h"
#include "widgets/ActionGate.h"
#include "widgets/BoxAnswers.h"
#include "widgets/ForeignText.h"
#include "widgets/PopUpBoxes.h"

#include <QApplication>

#include <algorithm>

using namespace std::chrono_literals;

namespace {

// A question that comes later would come in the middle of something else: it waits for the next
// start.
constexpr auto longestSearch = 10s;
constexpr auto betweenTries = 100ms;
constexpr qsizetype longestPath = 300;

QString shownPath(const QString& path) {
    return foreignLine(path, longestPath);
}

} // namespace

InterruptedRunQuestion::InterruptedRunQuestion(MainThread& mainThread, WorkerThreads& workers,
                                               const ActionGate& gate, QWidget& window,
                                               QObject* parent)
    : QObject(parent), mainThread_(mainThread), workers_(workers), gate_(gate), window_(window) {
    timer_.setInterval(betweenTries);
    connect(&timer_, &QTimer::timeout, this, [this] {
        if (mayAsk())
            runGuarded([this] { askNext(); });
    });
}

void InterruptedRunQuestion::start(const QString& stateFolder) {
    runGuarded([&] {
        workers_.start([this, stateFolder, begin = std::chrono::steady_clock::now()] {
            const InterruptedRun::Found found = InterruptedRun::findAll(stateFolder);
            if (found.empty() || std::chrono::steady_clock::now() - begin > longestSearch)
                return;
            mainThread_.onMainThread([&] {
                found_ = found;
                timer_.start();
            });
        });
    });
}

// Not over another window of the program either: it may have a question of its own.
bool InterruptedRunQuestion::mayAsk() const {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return gate_.isOpen() && window_.isVisible() &&
           std::none_of(windows.begin(), windows.end(), [this](const QWidget* each) {
               const Qt::WindowType type = each->windowType();
               return each != &window_ && each->isVisible() &&
                      (type == Qt::Window || type == Qt::Dialog);
           });
}

void InterruptedRunQuestion::askNext() {
    if (!notMoved_.isEmpty()) {
        PopUpBoxes(&window_).PopUpMesg(
            {getLocalString("IDS_TXT_POPUP_NOTTRASHED") + u'\n' + shownPath(notMoved_.takeFirst()),
             getLocalString("IDS_BTN_POPUP_OK")});
        return;
    }
    if (found_.empty()) {
        timer_.stop();
        return;
    }
    const std::shared_ptr<InterruptedRun> run = found_.front();
    found_.erase(found_.begin());
    const int answer = PopUpBoxes(&window_).PopUpMesg(
        {getLocalString("IDS_TXT_POPUP_INTERRUPTED") + u'\n' + shownPath(run->output()) + u'\n' +
             getLocalString("IDS_TXT_POPUP_WANTTOTRASH"),
         getLocalString("IDS_BTN_POPUP_CANCEL"), getLocalString("IDS_BTN_POPUP_TRASH")});
    carryOut(run, answer == boxanswer::second);
}

void InterruptedRunQuestion::carryOut(const std::shared_ptr<InterruptedRun>& run, bool moves) {
    workers_.start([this, run, moves] {
        if (!moves) {
            run->forget();
        } else if (!run->moveToTrash()) {
            mainThread_.onMainThread([&] {
                notMoved_ += run->output();
                timer_.start();
            });
        }
    });
}
