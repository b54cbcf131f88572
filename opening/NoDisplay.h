#pragma once

#include <QString>

/// As long as it lives, an application that finds no display ends the program with one line on
/// standard error and the status 1; left alone, the toolkit aborts it. One at a time; main thread.
class NoDisplay final {
public:
    explicit NoDisplay(const QString& line);
    /// What the toolkit has said meanwhile is logged now.
    ~NoDisplay();
    Q_DISABLE_COPY_MOVE(NoDisplay)
};
