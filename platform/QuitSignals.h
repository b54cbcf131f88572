#pragma once

#include <QObject>

class QSocketNotifier;

/// Tells the main loop of SIGTERM, SIGINT and SIGHUP, which then close the program in good order.
/// One at a time; main thread; owned by main().
class QuitSignals final : public QObject {
    Q_OBJECT

public:
    explicit QuitSignals(QObject* parent = nullptr);
    /// The signals have their usual meaning again.
    ~QuitSignals() override;
    Q_DISABLE_COPY_MOVE(QuitSignals)

Q_SIGNALS:
    void quitAsked();

private:
    QSocketNotifier* notifier_ = nullptr;
};
