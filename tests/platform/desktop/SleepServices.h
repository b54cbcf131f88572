#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <vector>

/// How a service behaves when it is asked.
enum class Manner { Grants, Refuses, Silent, WrongType };

/// A login manager (logind) that hands out locks and sees when they are given back.
class LoginManager final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

public:
    ~LoginManager() override;

    Manner manner = Manner::Grants;
    QStringList calls;

    /// Locks whose other end is open.
    [[nodiscard]] int heldLocks() const;
    /// Answers the calls that were met with silence.
    void grantLate();

public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& why,
                                    const QString& mode);

private:
    [[nodiscard]] QDBusUnixFileDescriptor newLock();

    std::vector<int> ours_; ///< this end of each lock
    QList<std::pair<QDBusConnection, QDBusMessage>> unanswered_;
};

/// A request of the portal: what it granted, until it is closed.
class PortalRequest final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")

public:
    bool isOpen = false;

public Q_SLOTS:
    void Close() { isOpen = false; }
};

/// Where the portal is told who somebody on the bus is.
class PortalRegistry final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.host.portal.Registry")

public:
    explicit PortalRegistry(QObject* portal) : QDBusAbstractAdaptor(portal) {}

    bool isSilent = false;
    QMap<QString, QString> programs; ///< by their names on the bus

public Q_SLOTS:
    void Register(const QString& program, const QVariantMap& options, const QDBusMessage& call);
};

class Portal final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Inhibit")

public:
    Manner manner = Manner::Grants;
    QStringList calls;
    QStringList programs; ///< that made the calls
    PortalRequest request;
    PortalRegistry registry{this};

    void grantLate();

public Q_SLOTS:
    QDBusObjectPath Inhibit(const QString& window, uint flags, const QVariantMap& options);

private:
    QList<std::pair<QDBusConnection, QDBusMessage>> unanswered_;
};

class ScreenSaver final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    Manner manner = Manner::Grants;
    QStringList calls;
    QList<uint> held;

public Q_SLOTS:
    uint Inhibit(const QString& application, const QString& reason);
    void UnInhibit(uint cookie) { held.removeOne(cookie); }
};
