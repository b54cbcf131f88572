#pragma once

#include "opening/DisplayName.h"
#include "opening/StartupTokens.h"
#include "platform/desktop/MessageBus.h"

#include <QDBusContext>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <functional>
#include <memory>

/// The program as others find it on the session's message bus (org.freedesktop.Application): they
/// bring it to the front, open movies with it, or have it quit. Main thread; owned by main().
class BusApplication final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Claim { Ours, Anothers, NoBus };

    explicit BusApplication(const QString& busAddress = sessionBusAddress(),
                            QObject* parent = nullptr);
    ~BusApplication() override;
    Q_DISABLE_COPY_MOVE(BusApplication)

    [[nodiscard]] MessageBus& bus() { return bus_; }

    /// Takes the program's name on the bus, now or when the one who has it ends. Blocks for `limit`
    /// at the most.
    Claim claim(std::chrono::milliseconds limit = std::chrono::milliseconds(1000));
    /// Whether requests are carried out; those that are not end with an error, so that who asks
    /// opens a window of its own. Until it is set they are.
    void setReadiness(std::function<bool()> isReady) { isReady_ = std::move(isReady); }
    /// The name is free for another: the program is about to end.
    void release();

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& addresses, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameters,
                                     const QVariantMap& platformData);

Q_SIGNALS:
    void activated(const StartupTokens& tokens);
    void opened(const QStringList& addresses, const StartupTokens& tokens);
    void quitAsked();

private:
    [[nodiscard]] bool takes(const QVariantMap& platformData);

    MessageBus bus_;
    const DisplayName display_ = DisplayName::here();
    std::function<bool()> isReady_;
};
