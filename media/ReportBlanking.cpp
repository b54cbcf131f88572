#include "media/ReportBlanking.h"

#include "media/LineEnd.h"

#include <QRegularExpression>
#include <QStringView>

#include <algorithm>

namespace {

/// Stands for a blanked character until the text is done: no line of a report starts with it, as
/// one could with a blank.
constexpr QChar blanked(0xFDD0);

/// A line that goes on for longer than this is let go, so that a flood without line ends costs no
/// more than it is long.
constexpr qsizetype longestOpenText = 16384;

// What is known about the metadata block around a line, where it is not the number of blanks that
// the block's entries begin with.
constexpr int noEntries = 0;
constexpr int unknownEntries = -1;

qsizetype leadingBlanks(QStringView line) {
    const auto end = std::find_if(line.begin(), line.end(), [](QChar c) { return c != u' '; });
    return end - line.begin();
}

/// Whether a line at the start of a piece is a metadata entry of a block that began before:
/// entries are the only lines whose first words are padded to 16 bytes before their colon.
bool looksLikeEntry(QStringView line) {
    const qsizetype indent = leadingBlanks(line);
    const QStringView words = line.sliced(indent);
    if (indent >= 20 && words.startsWith(u": "))
        return true;
    for (const QStringView other :
         {u"Chapter #", u"audio service type", u"DOVI configuration", u"unknown side data"}) {
        if (words.startsWith(other))
            return false;
    }
    const qsizetype colon = words.indexOf(u": ");
    return indent >= 4 && colon >= 0 && words.first(colon).toUtf8().size() >= 16;
}

/// The lines that only stand outside of every metadata block, however far they are indented.
bool endsEveryBlock(QStringView line) {
    for (const QStringView start : {u"Stream mapping:", u"Press [q]", u"frame=", u"size="}) {
        if (line.startsWith(start))
            return true;
    }
    return line.trimmed() == u"Side data:";
}

/// One walk over the lines of a text, which it blanks in place.
class Walk final {
public:
    Walk(QString& text, const QStringList& paths, int entryIndent);

    /// Start of what the text's end leaves unfinished; the text's length when nothing is.
    [[nodiscard]] qsizetype openFrom() const { return openFrom_; }
    /// State of the walk at `openFrom`.
    [[nodiscard]] int entryIndent() const { return entryIndent_; }

    void run();

private:
    [[nodiscard]] QStringView lineAt(qsizetype start) const;
    void blank(qsizetype start, qsizetype end);
    void blankPath(const QString& path);
    void blankRestOfPath(const QString& path);
    void blankCutPath(const QString& path);
    void blankTimestamps();

    // Each takes the line that begins at `start` and returns the end of what it took, line end
    // excluded; -1 when the line is another one's.
    qsizetype takeHeader(qsizetype start, QStringView line);
    qsizetype takeStream(qsizetype start, QStringView line);
    qsizetype takeEntry(qsizetype start, QStringView line);
    qsizetype takeOther(qsizetype start, QStringView line);
    [[nodiscard]] qsizetype languageEnd(qsizetype start, QStringView line) const;

    QString& text_;
    int entryIndent_;
    qsizetype openFrom_ = 0;
};

Walk::Walk(QString& text, const QStringList& paths, int entryIndent)
    : text_(text), entryIndent_(entryIndent) {
    text_.detach(); // the views of lines stay valid while their characters are blanked
    for (const QString& path : paths) {
        blankPath(path);
        blankRestOfPath(path);
        blankCutPath(path);
    }
}

void Walk::run() {
    qsizetype at = 0;
    while (at < text_.size()) {
        openFrom_ = at;
        const int entryIndent = entryIndent_;
        const QStringView line = lineAt(at);
        qsizetype end = takeHeader(at, line);
        if (end < 0)
            end = takeStream(at, line);
        if (end < 0)
            end = takeEntry(at, line);
        if (end < 0)
            end = takeOther(at, line);
        if (end >= text_.size()) {
            entryIndent_ = entryIndent;
            break;
        }
        at = end + 1;
        openFrom_ = at;
    }
    blankTimestamps();
    text_.replace(blanked, u' ');
}

QStringView Walk::lineAt(qsizetype start) const {
    const QStringView rest = QStringView(text_).sliced(start);
    const auto end = std::find_if(rest.begin(), rest.end(), isLineEnd);
    return rest.first(end - rest.begin());
}

void Walk::blank(qsizetype start, qsizetype end) {
    std::fill(text_.begin() + start, text_.begin() + end, blanked);
}

/// Every place where the path is printed; not where it is the end of another word ("kb/s").
void Walk::blankPath(const QString& path) {
    qsizetype at = 0;
    while ((at = text_.indexOf(path, at)) >= 0) {
        if (at > 0 && text_.at(at - 1).isLetterOrNumber()) {
            ++at;
            continue;
        }
        blank(at, at + path.size());
        at += path.size();
    }
}

/// The rest of a path with line ends in it, whose first lines were in the piece before.
void Walk::blankRestOfPath(const QString& path) {
    for (qsizetype cut = 0; cut + 1 < path.size(); ++cut) {
        if (!isLineEnd(path.at(cut)))
            continue;
        const QStringView rest = QStringView(path).sliced(cut + 1);
        const bool isHere = text_.startsWith(rest) && text_.size() > rest.size() &&
                            (text_.at(rest.size()) == u'\'' || text_.at(rest.size()) == u':');
        if (isHere)
            blank(0, rest.size());
    }
}

/// The beginning of a path with which the text ends.
void Walk::blankCutPath(const QString& path) {
    if (!path.startsWith(u'/'))
        return;
    const QStringView text(text_);
    for (qsizetype size = qMin(path.size() - 1, text.size()); size > 0; --size) {
        const qsizetype at = text.size() - size;
        if (!text.endsWith(QStringView(path).first(size)) ||
            (at > 0 && text.at(at - 1).isLetterOrNumber()))
            continue;
        blank(at, text.size());
        return;
    }
}

/// "[mov @ 0x1] Invalid timestamps stream=0, pts=20, dts=60, size=9": a remark about the order of
/// the pictures in a good movie, which a phone's camera often causes. Another thread may have put
/// it into the middle of a line.
void Walk::blankTimestamps() {
    const QString remark = QStringLiteral("Invalid timestamps stream=");
    for (qsizetype at = text_.indexOf(remark); at >= 0; at = text_.indexOf(remark, at))
        blank(at, at + lineAt(at).size());
}

/// "Input #0, mov,mp4, from 'PATH':" and "Output #0, mp4, to 'PATH':".
qsizetype Walk::takeHeader(qsizetype start, QStringView line) {
    static const QRegularExpression opening(
        QStringLiteral("^(?:Input|Output) #\\d+, [^']*, (?:from|to) '"));
    if (!line.startsWith(u"Input #") && !line.startsWith(u"Output #"))
        return -1;
    const QRegularExpressionMatch match = opening.match(line);
    if (!match.hasMatch())
        return -1;
    entryIndent_ = noEntries;
    const qsizetype path = start + match.capturedEnd();
    qsizetype quote = text_.indexOf(u"':", path);
    while (quote >= 0 && quote + 2 < text_.size() && !isLineEnd(text_.at(quote + 2)))
        quote = text_.indexOf(u"':", quote + 1);
    if (quote < 0) {
        blank(path, text_.size());
        return text_.size();
    }
    blank(path, quote);
    return quote + 2;
}

/// "  Stream #0:0[0x1](LANGUAGE): Video: ...". The language is any text at all in some containers.
qsizetype Walk::takeStream(qsizetype start, QStringView line) {
    static const QRegularExpression opening(
        QStringLiteral("^ *Stream #\\d+:\\d+(?:\\[0x[0-9a-fA-F]+\\])?([(:])"));
    const qsizetype indent = leadingBlanks(line);
    if (!line.sliced(indent).startsWith(u"Stream #") ||
        (entryIndent_ != unknownEntries && entryIndent_ != noEntries && indent >= entryIndent_))
        return -1;
    const QRegularExpressionMatch match = opening.match(line);
    if (!match.hasMatch())
        return -1;
    entryIndent_ = noEntries;
    const qsizetype lineEnd = start + line.size();
    if (match.capturedView(1) == u":")
        return lineEnd;
    const qsizetype language = start + match.capturedEnd();
    const qsizetype end = languageEnd(language, line.sliced(match.capturedEnd()));
    blank(language, end);
    return end >= lineEnd ? end + lineAt(end).size() : lineEnd;
}

/// End of a language that begins at `start`; `line` is what is left of its line.
qsizetype Walk::languageEnd(qsizetype start, QStringView line) const {
    static const QString closing =
        QStringLiteral("\\): (?:Video|Audio|Subtitle|Data|Attachment|Unknown): ");
    static const QRegularExpression lastInLine(QLatin1StringView("^.*(") % closing % u')');
    static const QRegularExpression firstInText(QLatin1StringView("(") % closing %
                                                QLatin1StringView(")|[\r\n] *Stream #\\d+:\\d+"));
    const QRegularExpressionMatch inLine = lastInLine.match(line);
    if (inLine.hasMatch())
        return start + inLine.capturedStart(1);
    const QRegularExpressionMatch inText =
        firstInText.match(QStringView(text_).sliced(start + line.size()));
    if (inText.hasMatch() && inText.capturedStart(1) >= 0)
        return start + line.size() + inText.capturedStart(1);
    return start + line.size();
}

/// "    title           : TEXT" and "                    : MORE".
qsizetype Walk::takeEntry(qsizetype start, QStringView line) {
    const qsizetype indent = leadingBlanks(line);
    const bool isEntry = entryIndent_ == unknownEntries
                             ? looksLikeEntry(line)
                             : entryIndent_ != noEntries && indent >= entryIndent_;
    if (!isEntry)
        return -1;
    // A carriage return is part of a key that holds one: in values ffmpeg prints a blank for it.
    const qsizetype newline = text_.indexOf(u'\n', start);
    const qsizetype end = newline < 0 ? text_.size() : newline;
    blank(start + indent, end);
    return end;
}

qsizetype Walk::takeOther(qsizetype start, QStringView line) {
    static const QRegularExpression program(QStringLiteral("^ *Program \\d+ "));
    const qsizetype end = start + line.size();
    const qsizetype indent = leadingBlanks(line);
    const QStringView words = line.sliced(indent);
    if (words == u"Metadata:") {
        entryIndent_ = static_cast<int>(indent) + 2;
        return end;
    }
    // A block goes on behind a message that another thread printed into the middle of it.
    const bool isMessage = indent == 0 || (entryIndent_ == unknownEntries && indent >= 4);
    if (!isMessage || endsEveryBlock(line))
        entryIndent_ = noEntries;
    if (words.startsWith(u"Program ")) {
        if (const QRegularExpressionMatch match = program.match(line); match.hasMatch())
            blank(start + match.capturedEnd(), end);
    } else if (line.startsWith(u'/')) {
        // A file that cannot be opened; what is wrong with it holds no further colon.
        const qsizetype colon = line.lastIndexOf(u": ");
        if (colon >= 0 || end == text_.size())
            blank(start, colon >= 0 ? start + colon : end);
    }
    return end;
}

/// The paths as they can stand in a report: ffmpeg's messages have a question mark for a control
/// character, its questions have the character.
QStringList printedPaths(const QStringList& paths) {
    QStringList printed;
    for (const QString& path : paths) {
        QString shown = path;
        for (QChar& c : shown) {
            const bool isHidden = c.unicode() < 0x08 || (c.unicode() > 0x0d && c.unicode() < 0x20);
            if (isHidden)
                c = u'?';
        }
        printed << path << shown;
    }
    printed.removeAll(QString());
    printed.removeDuplicates();
    // A path that is the beginning of another one must not hide it.
    std::stable_sort(printed.begin(), printed.end(),
                     [](const QString& a, const QString& b) { return a.size() > b.size(); });
    return printed;
}

} // namespace

ReportBlanker::ReportBlanker(const QStringList& paths)
    : paths_(printedPaths(paths)), entryIndent_(unknownEntries) {}

QString ReportBlanker::blank(const QString& piece) {
    QString text = open_ % piece;
    const qsizetype alreadyShown = open_.size();
    QString walked = text;
    Walk walk(walked, paths_, entryIndent_);
    walk.run();
    const bool isTooLong = text.size() - walk.openFrom() > longestOpenText;
    open_ = isTooLong ? QString() : text.sliced(walk.openFrom());
    entryIndent_ = walk.entryIndent();
    return walked.sliced(alreadyShown);
}

QString blankReport(const QString& report, const QStringList& paths) {
    return ReportBlanker(paths).blank(report);
}
