#pragma once

#include <QPointer>
#include <QStringList>
#include <QWidget>

/// Asks the user something, or tells them something, in a modal box that blocks its caller until
/// it is answered. A request is the message and then the titles of the buttons; the answer is 1000
/// for the first button, 1001 for the second, and so on. A box that goes without an answer, because
/// the program quits or the box was dismissed, throws Cancelled. Main thread; a value without state
/// of its own.
class PopUpBoxes final {
public:
    explicit PopUpBoxes(QWidget* parent = nullptr) : parent_(parent) {}

    /// The answer.
    int PopUpMesg(const QStringList& request);
    /// The last item of the request is the title of a check box. Two texts: the answer, and "1"
    /// when the box was ticked or "0" when it was not.
    QStringList PopUpMesgWithCheckBox(const QStringList& request);

    /// Ends every open box without an answer.
    static void dismissAll();
    /// The same for those with that message.
    static void dismiss(const QString& message);

private:
    QPointer<QWidget> parent_;
};
