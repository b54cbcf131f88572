#include "app/SessionEnd.h"

#include "app/AppDelegate.h"
#include "app/MainWindow.h"
#include "app/WindowToFront.h"
#include "filelist/SharedState.h"
#include "opening/StartupTokens.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "widgets/ActionGate.h"
#include "widgets/BoxAnswers.h"
#include "widgets/PopUpBoxes.h"

#include <QApplication>
#include <QSessionManager>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

constexpr auto betweenQuestionLooks = 100ms;

QString sessionQuestion() {
    return getLocalString("IDS_TXT_POPUP_SESSIONENDS");
}

} // namespace

// The session goes on when the slot has returned.
SessionEnd::SessionEnd(Parts parts, QObject* parent) : QObject(parent), parts_(parts) {
    connect(qApp, &QGuiApplication::commitDataRequest, this, &SessionEnd::commit,
            Qt::DirectConnection);
}

// When the session does end, the program gets a word of its own, and may not be asked before.
void SessionEnd::commit(QSessionManager& manager) {
    PopUpBoxes::dismiss(sessionQuestion()); // of an end that was put off
    parts_.controller.rememberFolders();
    // The leave to ask may take long, until another program has asked its own question.
    if (!isWorkLost() || !manager.allowsInteraction() || !isWorkLost())
        return;
    runGuarded([&] {
        if (mayEnd(manager))
            manager.release();
        else
            manager.cancel();
    });
}

bool SessionEnd::isWorkLost() const {
    return parts_.state.isConversionRunning && !parts_.mainThread.isClosing();
}

// The run may end beneath the question, and another program may put the session's end off. Nobody
// tells of that: then the leave to ask is gone.
bool SessionEnd::mayEnd(QSessionManager& manager) const {
    QTimer looks;
    connect(&looks, &QTimer::timeout, this, [&] {
        if (!isWorkLost() || !manager.allowsInteraction())
            PopUpBoxes::dismiss(sessionQuestion());
    });
    looks.start(betweenQuestionLooks);
    bringToFront(parts_.window, StartupTokens());
    return PopUpBoxes(&parts_.window)
               .PopUpMesg({sessionQuestion(), getLocalString("IDS_BTN_POPUP_CANCEL"),
                           getLocalString("IDS_BTN_POPUP_ENDSESSION")}) == boxanswer::second;
}
