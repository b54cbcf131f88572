#pragma once

#include <QString>
#include <QStringList>

class RunWindow;
struct SharedState;

/// The questions of a run and of adding movies. Each throws Cancelled when the program closes
/// before it is answered; an answer is 1000 for the first button, 1001 for the second, and so on.
/// Main thread; owned by the engine.
class ConversionDialogs final {
public:
    static constexpr int firstButton = 1000;
    static constexpr int secondButton = 1001;
    static constexpr int thirdButton = 1002;
    static constexpr int fourthButton = 1003;

    ConversionDialogs(SharedState& state, RunWindow& window) : state_(state), window_(window) {}
    Q_DISABLE_COPY_MOVE(ConversionDialogs)

    /// Cancel, Duplicate, Skip, Replace.
    int popUpforReplaceSkipDuplicateCancel(const QString& path);
    /// Stop, Skip.
    int popUpforConversionError(const QString& name);
    /// Cancel, OK.
    int popUpforSdCardDelay();
    /// Skip, Try again.
    int askSourceUnavailable();
    /// OK, Try again.
    int askSourceRemoved();
    void tellOutputFolderUnavailable();
    void tellMemoryFull();
    /// A box without a check box: the message, then the buttons.
    int ask(const QStringList& request);

private:
    struct Remembered {
        bool& mark;
        int& answer;
    };

    int askAndRemember(const QStringList& request, Remembered remembered);

    SharedState& state_;
    RunWindow& window_;
};
