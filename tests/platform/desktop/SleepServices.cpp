#include "platform/desktop/SleepServices.h"

#include <utility>

#include <poll.h>
#include <unistd.h>

namespace {

const QString requestPath = QStringLiteral("/org/freedesktop/portal/desktop/request/1_1/t");

} // namespace

LoginManager::~LoginManager() {
    for (const int each : ours_)
        ::close(each);
}

int LoginManager::heldLocks() const {
    int held = 0;
    for (const int each : ours_) {
        pollfd state{each, 0, 0};
        held += ::poll(&state, 1, 0) == 1 && (state.revents & POLLHUP) ? 0 : 1;
    }
    return held;
}

void LoginManager::grantLate() {
    for (const auto& [connection, call] : std::exchange(unanswered_, {}))
        connection.send(call.createReply(QVariant::fromValue(newLock())));
}

QDBusUnixFileDescriptor LoginManager::Inhibit(const QString& what, const QString& who,
                                              const QString& why, const QString& mode) {
    calls += QStringList{what, who, why, mode}.join(u'|');
    switch (manner) {
    case Manner::Grants:
        return newLock();
    case Manner::Refuses:
        sendErrorReply(QDBusError::AccessDenied, QStringLiteral("not for you"));
        break;
    case Manner::Silent:
        setDelayedReply(true);
        unanswered_.append({connection(), message()});
        break;
    case Manner::WrongType:
        setDelayedReply(true);
        connection().send(message().createReply(QStringLiteral("a lock")));
        break;
    }
    return {};
}

QDBusUnixFileDescriptor LoginManager::newLock() {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0)
        return {};
    ours_.push_back(ends[0]);
    QDBusUnixFileDescriptor theirs;
    theirs.giveFileDescriptor(ends[1]);
    return theirs;
}

void PortalRegistry::Register(const QString& program, const QVariantMap&,
                              const QDBusMessage& call) {
    call.setDelayedReply(isSilent);
    programs[call.service()] = program;
}

void Portal::grantLate() {
    for (const auto& [connection, call] : std::exchange(unanswered_, {})) {
        request.isOpen = true;
        connection.send(call.createReply(QVariant::fromValue(QDBusObjectPath(requestPath))));
    }
}

QDBusObjectPath Portal::Inhibit(const QString& window, uint flags, const QVariantMap& options) {
    calls += QStringList{window, QString::number(flags),
                         options.value(QStringLiteral("reason")).toString()}
                 .join(u'|');
    programs += registry.programs.value(message().service());
    switch (manner) {
    case Manner::Grants:
        request.isOpen = true;
        return QDBusObjectPath(requestPath);
    case Manner::Refuses:
        sendErrorReply(QDBusError::UnknownMethod, QStringLiteral("no such method"));
        break;
    case Manner::Silent:
        setDelayedReply(true);
        unanswered_.append({connection(), message()});
        break;
    case Manner::WrongType:
        setDelayedReply(true);
        connection().send(message().createReply(7U));
        break;
    }
    return QDBusObjectPath(QStringLiteral("/"));
}

uint ScreenSaver::Inhibit(const QString& application, const QString& reason) {
    calls += application % u'|' % reason;
    switch (manner) {
    case Manner::Grants:
        held += 4711U;
        return held.last();
    case Manner::Refuses:
        sendErrorReply(QDBusError::Failed, QStringLiteral("no"));
        break;
    case Manner::Silent:
        setDelayedReply(true);
        break;
    case Manner::WrongType:
        setDelayedReply(true);
        connection().send(message().createReply(QStringLiteral("cookie")));
        break;
    }
    return 0;
}
