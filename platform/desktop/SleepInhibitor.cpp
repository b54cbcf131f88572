#include "platform/desktop/SleepInhibitor.h"

#include "platform/desktop/SessionInhibition.h"
#include "platform/desktop/SleepLock.h"

#include <QThread>

#include <utility>

DesktopSleepInhibitor::DesktopSleepInhibitor(QString systemBus, QString sessionBus,
                                             std::chrono::milliseconds answerLimit, QObject* parent)
    : SleepInhibitor(parent),
      systemBus_(std::move(systemBus)),
      sessionBus_(std::move(sessionBus)),
      answerLimit_(answerLimit) {}

DesktopSleepInhibitor::~DesktopSleepInhibitor() {
    release();
}

void DesktopSleepInhibitor::hold(const QString& reason) {
    Q_ASSERT(thread() == QThread::currentThread());
    if (!asked_.isEmpty())
        return;
    refusals_ = 0;
    asked_ = {new SleepLock(systemBus_, reason, answerLimit_, this),
              new SessionInhibition(sessionBus_, reason, answerLimit_, this)};
    const auto all = asked_;
    for (const QPointer<Inhibition>& each : all) {
        connect(each, &Inhibition::granted, this, &SleepInhibitor::granted);
        connect(each, &Inhibition::refused, this, [this] {
            if (++refusals_ == asked_.size())
                Q_EMIT refused();
        });
        each->ask();
    }
}

void DesktopSleepInhibitor::release() {
    Q_ASSERT(thread() == QThread::currentThread());
    for (const QPointer<Inhibition>& each : std::exchange(asked_, {})) {
        if (!each)
            continue;
        each->disconnect(this);
        each->giveBack();
    }
}
