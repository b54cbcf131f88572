#pragma once

#include <QObject>

/// One thing that keeps the machine awake, from asking for it to giving it back. Main thread; a
/// child of the inhibitor that asked, and deletes itself when it is refused or given back.
class Inhibition : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;
    Q_DISABLE_COPY_MOVE(Inhibition)

    /// Asks; the answer is one of the two signals, which may come at once.
    virtual void ask() = 0;
    /// Gives back what was granted. What is granted later is given back at once, and no signal
    /// comes any more.
    virtual void giveBack() = 0;

Q_SIGNALS:
    void granted();
    void refused();

protected:
    /// Not deleteLater(): that would wait for a box that opens now to be closed again.
    void end() {
        QMetaObject::invokeMethod(
            this, [this] { delete this; }, Qt::QueuedConnection);
    }
};
