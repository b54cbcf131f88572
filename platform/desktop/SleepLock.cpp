#include "platform/desktop/SleepLock.h"

#include "platform/desktop/DesktopLog.h"

#include <QCoreApplication>
#include <QThread>

#include <utility>

SleepLock::SleepLock(QString busAddress, QString reason, std::chrono::milliseconds answerLimit,
                     QObject* parent)
    : Inhibition(parent),
      busAddress_(std::move(busAddress)),
      reason_(std::move(reason)),
      answerLimit_(answerLimit) {}

void SleepLock::ask() {
    Q_ASSERT(thread() == QThread::currentThread());
    bus_ = std::make_unique<MessageBus>(busAddress_);
    if (!bus_->isConnected()) {
        refuse(QStringLiteral("there is no system bus"));
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << QCoreApplication::applicationName() << reason_
         << QStringLiteral("block");
    answer_ = std::make_unique<QDBusPendingCallWatcher>(bus_->callLater(call, answerLimit_));
    connect(answer_.get(), &QDBusPendingCallWatcher::finished, this,
            [this] { take(answer_->reply()); });
}

void SleepLock::take(const QDBusMessage& answer) {
    if (!isWanted_) {
        end(); // and with the answer goes the descriptor that it brought
        return;
    }
    const QVariant first = answer.arguments().value(0);
    if (answer.type() != QDBusMessage::ReplyMessage ||
        first.metaType() != QMetaType::fromType<QDBusUnixFileDescriptor>()) {
        refuse(answer.errorMessage());
        return;
    }
    lock_ = first.value<QDBusUnixFileDescriptor>();
    Q_EMIT granted();
}

void SleepLock::refuse(const QString& why) {
    qCInfo(lcDesktop) << "no lock against sleep:" << why;
    end();
    Q_EMIT refused();
}

void SleepLock::giveBack() {
    Q_ASSERT(thread() == QThread::currentThread());
    isWanted_ = false;
    lock_ = {};
    if (!answer_ || answer_->isFinished())
        end();
}
