#pragma once

#include "platform/desktop/MessageBus.h"

#include <QObject>
#include <QPointer>

#include <chrono>

class Inhibition;

/// Keeps the machine from going to sleep while there is work to do. Main thread; owned by main().
class SleepInhibitor : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    Q_DISABLE_COPY_MOVE(SleepInhibitor)

    /// Asks for it and returns at once; does nothing where it was asked for and not released.
    /// `reason` is what the desktop may tell its user.
    virtual void hold(const QString& reason) = 0;
    /// Ends it, whether it was granted or not; what is granted later is given back at once.
    virtual void release() = 0;

Q_SIGNALS:
    /// The machine is kept awake, by one means at least.
    void granted();
    /// Nothing on this machine keeps it awake, or nobody answers.
    void refused();
};

/// By the login manager (system bus) and by the session (portal or screen saver) together: the one
/// knows nothing of a desktop's own ideas of idleness, the other may not be there.
class DesktopSleepInhibitor final : public SleepInhibitor {
    Q_OBJECT

public:
    /// How long a silent service is waited for before the user is told.
    static constexpr std::chrono::milliseconds defaultAnswerLimit{10'000};

    explicit DesktopSleepInhibitor(QString systemBus = systemBusAddress(),
                                   QString sessionBus = sessionBusAddress(),
                                   std::chrono::milliseconds answerLimit = defaultAnswerLimit,
                                   QObject* parent = nullptr);
    ~DesktopSleepInhibitor() override;
    Q_DISABLE_COPY_MOVE(DesktopSleepInhibitor)

    void hold(const QString& reason) override;
    void release() override;

private:
    const QString systemBus_;
    const QString sessionBus_;
    const std::chrono::milliseconds answerLimit_;
    QList<QPointer<Inhibition>> asked_;
    int refusals_ = 0;
};
