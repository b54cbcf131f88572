#pragma once

#include "app/WindowKeys.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class Announcer;

namespace Ui {
class MainWindow;
}

/// The main window: its form and its texts, and nothing of what its controls do. Main thread;
/// owned by the controller.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;
    Q_DISABLE_COPY_MOVE(MainWindow)

    [[nodiscard]] Ui::MainWindow& form() { return *form_; }
    [[nodiscard]] Announcer& announcer() { return *announcer_; }

    /// Titles, captions, names for screen readers and tooltips, from the string table.
    void setTexts();
    /// Makes the window no larger than its screen has room for.
    void fitToScreen();
    /// Asked when the user closes the window; the window stays open unless it answers true.
    void setCloseHandler(std::function<bool()> handler) { closeHandler_ = std::move(handler); }

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitToFont();
    void becomeActive();
    void setTip(QAbstractButton* button, const char* id);

    const std::unique_ptr<Ui::MainWindow> form_;
    const WindowKeys keys_;
    Announcer* const announcer_;
    std::function<bool()> closeHandler_;
};
