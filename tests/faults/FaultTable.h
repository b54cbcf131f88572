#pragma once

#include <QString>

/// One line of the table.
struct FaultRow {
    QString fault;
    QString encoder; ///< scripted or real
    QString answer;  ///< what the user did
    QString outcome; ///< what was left
    QString verdict; ///< survived, skipped and why, or what went wrong
};

/// What was survived, a line a fault, in the test's output. Main thread; owned by the test.
class FaultTable final {
public:
    void add(const FaultRow& row);

private:
    bool hasHeader_ = false;
};
