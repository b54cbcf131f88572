#pragma once

#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

class FaultScene;

/// A box that must come: the key of its message and the button that is pressed.
struct BoxAnswer {
    const char* key = nullptr;
    int code = 1000;
    /// Runs while the box is open.
    std::function<void(FaultScene&)> meanwhile = {};
};

/// A fault: how it is brought about, what the user answers, and what must be left of it.
struct Fault {
    enum class Encoder { Scripted, Real };

    QString name = {};
    QString answer = {}; ///< as the table has it
    Encoder encoder = Encoder::Scripted;
    /// Fills the list and sees to the fault. Names why it cannot, or nothing.
    std::function<QString(FaultScene&)> prepare = {};
    /// Runs once Convert was pressed.
    std::function<void(FaultScene&)> meanwhile = {};
    QList<BoxAnswer> boxes = {};
    QStringList waiting = {}; ///< names of the rows that are left
    QStringList outputs = {}; ///< names of the new files in the output folder
    /// Looks at more of what is left. Names what is not as it must be, or nothing.
    std::function<QString(FaultScene&)> afterwards = {};
    std::chrono::milliseconds second = std::chrono::milliseconds(50);
};

Q_DECLARE_METATYPE(Fault)
