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

// The session goes on when the slot has returned.
SessionEnd::SessionEnd(Parts parts, QObject* parent) : QObject(parent), parts_(parts) {
    connect(qApp, &QGuiApplication::commitDataRequest, this, &SessionEnd::commit,
            Qt::DirectConnection);
}

// When the session does end, the program gets a word of its own, and may not be asked before.
void SessionEnd::commit(QSessionManager& manager) {
    parts_.controller.rememberFolders();
    // The leave to ask may take long, until another program has asked its own question.
    if (!isWorkLost() || !manager.allowsInteraction() || !isWorkLost())
        return;
    runGuarded([&] {
        if (mayEnd())
            manager.release();
        else
            manager.cancel();
    });
}

bool SessionEnd::isWorkLost() const {
    return parts_.state.isConversionRunning && !parts_.mainThread.isClosing();
}

bool SessionEnd::mayEnd() const {
    bringToFront(parts_.window, StartupTokens());
    return PopUpBoxes(&parts_.window)
               .PopUpMesg({getLocalString("IDS_TXT_POPUP_SESSIONENDS"),
                           getLocalString("IDS_BTN_POPUP_CANCEL"),
                           getLocalString("IDS_BTN_POPUP_ENDSESSION")}) == boxanswer::second;
}
