#pragma once

#include <QObject>

#include <functional>

struct ProgramParts;

/// The ways out of the program: the window's own close, also in the middle of a wait, and the end
/// of everything. Main thread; owned by the controller.
class Closing final : public QObject {
    Q_OBJECT

public:
    /// `cleanUp` is what is to be done before anything of the program goes, at every call anew.
    Closing(ProgramParts& parts, std::function<void()> cleanUp);
    ~Closing() override;
    Q_DISABLE_COPY_MOVE(Closing)

    /// Closes the program, whatever is open: the clean-up, then the end of the main loop.
    void quit();
    /// To be called after the main loop has returned: releases the threads and ends the encoders.
    /// False when a thread hangs in the kernel and must be left behind.
    [[nodiscard]] bool awaitEnd();

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Whether the window may close now.
    [[nodiscard]] bool closeWindow();
    void closeAtOnce();
    void windowWasClosed();
    void endWork();

    ProgramParts& parts_;
    const std::function<void()> cleanUp_;
    bool isQuitting_ = false;
};
