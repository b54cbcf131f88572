#include "app/RunCompanion.h"

#include "app/MainWindow.h"
#include "platform/LocalizedStrings.h"
#include "platform/desktop/LauncherProgress.h"
#include "platform/desktop/Notifications.h"
#include "platform/desktop/SleepInhibitor.h"
#include "ui_MainWindow.h"

#include <QApplication>

RunCompanion::RunCompanion(RunWatch& watch, MainWindow& window, Desktop desktop)
    : window_(window), desktop_(desktop) {
    connect(&watch, &RunWatch::workBegan, this, &RunCompanion::workBegan);
    connect(&watch, &RunWatch::workRests, this, [this] { desktop_.sleep.release(); });
    connect(&watch, &RunWatch::progressed, this,
            [this](double share) { desktop_.launcher.show(share); });
    connect(&watch, &RunWatch::timeLeftChanged, this, [this](const QString& text) {
        window_.form().quietLine->showBehind(QuietLine::Behind::TimeLeft, text);
    });
    connect(&watch, &RunWatch::ended, this, &RunCompanion::ended);
    connect(&watch, &RunWatch::over, this, &RunCompanion::over);
    connect(&desktop_.sleep, &SleepInhibitor::granted, this, [this] { showNotKeptAwake(false); });
    connect(&desktop_.sleep, &SleepInhibitor::refused, this, [this] { showNotKeptAwake(true); });
}

void RunCompanion::workBegan() {
    desktop_.sleep.hold(getLocalString("IDS_TXT_KEEP_AWAKE_REASON"));
}

void RunCompanion::ended(const RunWatch::Outcome& outcome) {
    if (isWindowActive())
        return;
    const QString summary = getLocalString("IDS_TXT_POPUP_OPERATION_SUCCESSFUL");
    desktop_.notifications.notify(
        summary.section(u'\n', 0, 0), // the rest is for the box
        getLocalString("IDS_TXT_RUN_CONVERTED").arg(outcome.converted) % u'\n' %
            getLocalString("IDS_TXT_RUN_NOT_CONVERTED").arg(outcome.notConverted));
}

void RunCompanion::over() {
    desktop_.launcher.hide();
    showNotKeptAwake(false);
}

void RunCompanion::showNotKeptAwake(bool shown) {
    window_.form().notKeptAwake->setVisible(shown);
}

bool RunCompanion::isWindowActive() const {
    for (const QWidget* each = QApplication::activeWindow(); each; each = each->parentWidget()) {
        if (each == &window_)
            return true;
    }
    return false;
}
