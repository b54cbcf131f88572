#pragma once

#include "app/WindowKeys.h"
#include "convert/RunWindow.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class Announcer;
class FileManager;

namespace Ui {
class MainWindow;
}

/// The main window: its form, its texts and what the work on the list and a run ask of it, and
/// nothing of what its controls do. Main thread; owned by main().
class MainWindow final : public QMainWindow, public RunWindow {
    Q_OBJECT

public:
    explicit MainWindow(FileManager& fileManager);
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

    /// The user wants to close the window, which has to wait.
    void askForClose() { closeAsked_ = true; }

    // RunWindow
    [[nodiscard]] QWidget* boxParent() override { return this; }
    [[nodiscard]] bool isCloseAsked() const override { return closeAsked_; }
    void forgetClose() override { closeAsked_ = false; }
    [[nodiscard]] QString outputFolderText() const override;
    [[nodiscard]] bool isOpenFolderChecked() const override;
    void setRunControlsEnabled(bool enabled) override;
    void setRemoveEnabled(bool enabled) override;
    void setSelectAllChecked(bool checked) override;
    void uncheckOpenFolder() override;
    void showCaption(const QString& text) override;
    void showQuietLine(const QString& text) override;
    void showFolder(const QString& path) override;

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
    FileManager& fileManager_;
    std::function<bool()> closeHandler_;
    bool closeAsked_ = false;
    bool hasBeenPainted_ = false;
};
