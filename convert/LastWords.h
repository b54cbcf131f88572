#pragma once

#include <QByteArray>
#include <QStringList>

#include <deque>

/// The last lines that an encoder said, for the log of a failure. Progress lines that follow one
/// another count as one. One thread, which owns it.
class LastWords final {
public:
    static constexpr size_t mostLines = 40;
    static constexpr qsizetype longestLine = 1000; ///< bytes; the rest of a longer one is left out

    void add(const QByteArray& bytes);
    /// As printed, an unfinished line too.
    [[nodiscard]] QStringList lines() const;

private:
    void endLine();
    static void append(std::deque<QByteArray>& lines, const QByteArray& line);

    std::deque<QByteArray> lines_;
    QByteArray open_;
};

/// A text on one line of a log, whatever it holds: line ends, escape sequences and marks that turn
/// the direction of writing are spelt out.
[[nodiscard]] QString onOneLine(const QString& text);
