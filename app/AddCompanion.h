#pragma once

#include <QObject>
#include <QTimer>

#include <chrono>

class AddWatch;
class LauncherProgress;
class MainWindow;

/// What the user sees of a long add and does to it: the line below the table and the icon show how
/// far it is, and Escape ends it. Main thread; owned by main().
class AddCompanion final : public QObject {
    Q_OBJECT

public:
    AddCompanion(AddWatch& watch, MainWindow& window, LauncherProgress& launcher);
    Q_DISABLE_COPY_MOVE(AddCompanion)

    /// A shorter add says nothing.
    static constexpr std::chrono::milliseconds shortAdd{500};

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void began();
    void movieAtHand(qsizetype index, qsizetype movies);
    void over();
    void show();

    AddWatch& watch_;
    MainWindow& window_;
    LauncherProgress& launcher_;
    QTimer shortAdd_;
    qsizetype index_ = 0;
    qsizetype movies_ = 0;
    bool isShown_ = false;
};
