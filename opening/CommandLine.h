#pragma once

#include <QByteArrayList>
#include <QString>
#include <QStringList>

/// What the program was told when it was started.
struct CommandLine {
    enum class Wish {
        Window,
        Service, ///< for the message bus, which says what is to be opened
        Help,
        Version,
        Mistake,
    };

    Wish wish = Wish::Window;
    QString mistake;       ///< the option that nobody knows, or what else is wrong, for the user
    QStringList addresses; ///< of the movies, in order; see movieAddress()

    [[nodiscard]] bool operator==(const CommandLine&) const = default;
};

/// Reads the arguments of a start, the program's name first. `folder` is where it was started. The
/// options that every Qt program has are let through. Pure, but for the language of Qt's own words.
[[nodiscard]] CommandLine readCommandLine(const QByteArrayList& arguments,
                                          const QByteArray& folder);
