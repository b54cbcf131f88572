#pragma once

#include "app/RunCompanion.h"
#include "platform/desktop/LauncherProgress.h"
#include "platform/desktop/Notifications.h"
#include "platform/desktop/SleepInhibitor.h"

#include <QStringList>

/// Notes whether the machine is to be kept awake. Whether that is granted is the test's to say.
class FakeSleepInhibitor final : public SleepInhibitor {
public:
    bool isHeld = false;
    QStringList reasons; ///< of every hold
    bool refuses = false;

    void hold(const QString& reason) override {
        isHeld = true;
        reasons += reason;
        if (refuses)
            Q_EMIT refused();
        else
            Q_EMIT granted();
    }
    void release() override { isHeld = false; }
};

class FakeNotifications final : public Notifications {
public:
    QStringList texts; ///< summary and body, a line end between

    void notify(const QString& summary, const QString& body) override {
        texts += summary % u'\n' % body;
    }
};

class FakeLauncherProgress final : public LauncherProgress {
public:
    QList<double> shares; ///< since it was hidden last
    int hidden = 0;

    void show(double share) override { shares += share; }
    void hide() override {
        shares.clear();
        ++hidden;
    }
};

/// A desktop that only takes notes.
struct FakeDesktop final {
    FakeSleepInhibitor sleep;
    FakeNotifications notifications;
    FakeLauncherProgress launcher;

    [[nodiscard]] RunCompanion::Desktop parts() { return {sleep, notifications, launcher}; }
};
