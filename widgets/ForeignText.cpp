#include "widgets/ForeignText.h"

#include <QTextBoundaryFinder>

namespace {

bool breaksTheLine(QChar c) {
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

/// Spaces of the text's own stay: names of files have them.
QString joined(const QString& text) {
    QString line;
    line.reserve(text.size());
    bool isBroken = false;
    for (const QChar c : text) {
        const bool breaks = breaksTheLine(c);
        if (!breaks || !isBroken)
            line += breaks ? QChar(u' ') : c;
        isBroken = breaks;
    }
    return line;
}

/// How much of the text's beginning can be taken without cutting a character; `maximum` at the
/// most.
qsizetype wholeCharacters(const QString& text, qsizetype maximum) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(maximum);
    return finder.isAtBoundary() ? maximum : finder.toPreviousBoundary();
}

/// Where its end begins, so that it is `maximum` long at the most.
qsizetype lastCharacters(const QString& text, qsizetype maximum) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(text.size() - maximum);
    return finder.isAtBoundary() ? text.size() - maximum : finder.toNextBoundary();
}

} // namespace

QString foreignLine(const QString& text, qsizetype maximum) {
    QString line = text;
    // What cannot be shown is not worth looking at: a text may be megabytes long.
    const qsizetype looked = 16 * maximum;
    if (line.size() > looked)
        line = line.first(looked / 2) % line.last(looked / 2);
    line = joined(line);
    if (line.size() <= maximum)
        return line;
    const qsizetype head = wholeCharacters(line, maximum / 2);
    return line.first(head) % u'…' % line.sliced(lastCharacters(line, maximum - head - 1));
}
