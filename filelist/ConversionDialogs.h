#pragma once

#include <QString>
#include <QStringList>

class ListWindow;
struct SharedState;

/// The questions of a run, of a row's button and of adding movies. Each throws Cancelled when the
/// program closes before it is answered; an answer is one of BoxAnswers.h. Main thread; owned by
/// main().
class ConversionDialogs final {
public:
    ConversionDialogs(SharedState& state, ListWindow& window) : state_(state), window_(window) {}
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
    ListWindow& window_;
};
