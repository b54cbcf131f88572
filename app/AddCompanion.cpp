#include "app/AddCompanion.h"

#include "app/MainWindow.h"
#include "filelist/AddWatch.h"
#include "platform/LocalizedStrings.h"
#include "platform/desktop/LauncherProgress.h"
#include "ui_MainWindow.h"
#include "widgets/Announcer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

#include <utility>

AddCompanion::AddCompanion(AddWatch& watch, MainWindow& window, LauncherProgress& launcher)
    : watch_(watch), window_(window), launcher_(launcher) {
    connect(&watch, &AddWatch::began, this, &AddCompanion::began);
    connect(&watch, &AddWatch::movieAtHand, this, &AddCompanion::movieAtHand);
    connect(&watch, &AddWatch::over, this, &AddCompanion::over);
    shortAdd_.setSingleShot(true);
    connect(&shortAdd_, &QTimer::timeout, this, &AddCompanion::show);
}

void AddCompanion::began() {
    index_ = 0;
    movies_ = 0;
    shortAdd_.start(shortAdd);
    // The latest filter comes first: before the one that keeps input until a wait is over.
    qApp->installEventFilter(this);
}

void AddCompanion::movieAtHand(qsizetype index, qsizetype movies) {
    index_ = index;
    movies_ = movies;
    if (isShown_)
        show();
}

void AddCompanion::show() {
    const bool areKnown = movies_ > 0;
    if (movies_ == 1)
        return;
    const QString line = areKnown ? getLocalString("IDS_TXT_ADDING").arg(index_ + 1).arg(movies_)
                                  : getLocalString("IDS_TXT_LOOKING_FOR_MOVIES");
    window_.form().quietLine->show(line);
    if (areKnown)
        launcher_.show(static_cast<double>(index_) / static_cast<double>(movies_));
    // Not each of a thousand.
    if (!std::exchange(isShown_, true))
        window_.announcer().say(line);
}

void AddCompanion::over() {
    shortAdd_.stop();
    qApp->removeEventFilter(this);
    if (!std::exchange(isShown_, false))
        return;
    window_.form().quietLine->show(QString());
    launcher_.hide();
}

bool AddCompanion::eventFilter(QObject* receiver, QEvent* event) {
    if (event->type() != QEvent::KeyPress || receiver != window_.windowHandle() ||
        QApplication::activeModalWidget() || QApplication::activePopupWidget())
        return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_Escape || key->modifiers() != Qt::NoModifier)
        return false;
    watch_.askEnd();
    return true;
}
