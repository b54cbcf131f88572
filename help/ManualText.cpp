#include "help/ManualText.h"

#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QStringBuilder>
#include <QStringList>

namespace {

/// Letters and signs that have names of their own, and changes of the font.
QString inlineHtml(const QString& text) {
    QString result;
    QString open;
    const auto change = [&](const QString& tag) {
        if (!open.isEmpty())
            result += u"</" + open + u'>';
        open = tag;
        if (!open.isEmpty())
            result += u'<' + open + u'>';
    };
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QStringView rest = QStringView(text).sliced(at);
        if (rest.startsWith(u"\\f") && rest.size() > 2) {
            change(rest[2] == u'B'   ? QStringLiteral("b")
                   : rest[2] == u'I' ? QStringLiteral("i")
                                     : QString());
            at += 2;
        } else if (rest.startsWith(u"\\(ti") || rest.startsWith(u"\\(dq")) {
            result += rest[2] == u't' ? u'~' : u'"';
            at += 3;
        } else if (rest.startsWith(u"\\&")) {
            ++at;
        } else if (rest[0] != u'\\') {
            result += QString(rest[0]).toHtmlEscaped();
        }
    }
    change(QString());
    return result;
}

/// As the formatter splits them: by blanks, quoted ones together.
QStringList argumentsOf(const QString& line) {
    QStringList result;
    bool isQuoted = false;
    bool isNew = true;
    for (const QChar c : line) {
        if (c == u'"') {
            isQuoted = !isQuoted;
            if (isQuoted)
                result += QString();
            isNew = !isQuoted;
        } else if (c == u' ' && !isQuoted) {
            isNew = true;
        } else {
            if (isNew && !isQuoted)
                result += QString();
            isNew = false;
            result.last() += c;
        }
    }
    return result;
}

QString inFont(QChar font, const QString& text) {
    if (font == u'R')
        return inlineHtml(text);
    const QString tag = font == u'B' ? QStringLiteral("b") : QStringLiteral("i");
    return u'<' + tag + u'>' + inlineHtml(text) + u"</" + tag + u'>';
}

/// The text of a line that is no paragraph's mark: a plain one, or one of a font or of two in turn.
QString textOf(const QString& line) {
    if (!line.startsWith(u'.'))
        return inlineHtml(line);
    const QString fonts = line.section(u' ', 0, 0).mid(1);
    const QString rest = line.section(u' ', 1);
    if (fonts.size() == 1)
        return inFont(fonts[0], argumentsOf(rest).join(u' '));
    QString result;
    const QStringList arguments = argumentsOf(rest);
    for (qsizetype i = 0; i < arguments.size(); ++i)
        result += inFont(fonts[i % 2], arguments[i]);
    return result;
}

/// What of a run of Latin letters and signs is no sign of the sentence around it.
QStringView commandIn(QStringView run) {
    while (run.startsWith(u'('))
        run = run.sliced(1);
    while (!run.isEmpty() && QStringView(u".,:- ").contains(run.back()))
        run.chop(1);
    if (run.endsWith(u')') && run.count(u')') > run.count(u'('))
        run.chop(1);
    return run;
}

/// Without the isolates' marks "--help" would be read "help--" between words from right to left.
QString withIsolates(const QString& html) {
    static const QRegularExpression latin(QStringLiteral("[!-~](?:[ -~]*[!-~])?"));
    QString result;
    const QStringView all(html);
    qsizetype end = 0;
    for (auto each = latin.globalMatch(html); each.hasNext();) {
        const QRegularExpressionMatch run = each.next();
        const QStringView command =
            commandIn(all.sliced(run.capturedStart(), run.capturedLength()));
        if (command.isEmpty())
            continue;
        const qsizetype start = command.data() - all.data();
        result += all.sliced(end, start - end) % QChar(0x2066) % command % QChar(0x2069);
        end = start + command.size();
    }
    return result % all.sliced(end);
}

/// Whether a letter of another line may follow without a blank, as after a full stop in Chinese.
bool bringsItsBlank(const QString& text) {
    if (text.isEmpty())
        return true;
    const char16_t last = text.back().unicode();
    return (last >= 0x3000 && last <= 0x303f) || (last >= 0xff00 && last <= 0xff60);
}

/// What is for the printed page alone, and comments: the small letters are the formatter's own.
bool isForPaper(const QString& macro) {
    if (macro == u".TH" || macro == u".RS" || macro == u".RE")
        return true;
    return macro.size() > 1 && !macro[1].isUpper() && macro != u".br" && macro != u".nf" &&
           macro != u".fi";
}

class Page final {
public:
    explicit Page(Qt::LayoutDirection direction) : direction_(direction) {}

    void take(const QString& line) {
        const QString macro = line.startsWith(u'.') ? line.section(u' ', 0, 0) : QString();
        if (isForPaper(macro))
            return;
        if (macro == u".SH")
            begin(inBlock(QStringLiteral("h3"), inlineHtml(line.mid(4))), QStringLiteral("p"));
        else if (macro == u".PP")
            begin(QString(), QStringLiteral("p"));
        else if (macro == u".TP")
            begin(QString(), QStringLiteral("dt"));
        else if (macro == u".nf")
            begin(QString(), QStringLiteral("pre"));
        else if (macro == u".fi")
            begin(QString(), QStringLiteral("p"));
        else if (macro == u".br")
            text_ += QStringLiteral("<br>");
        else
            add(textOf(line));
    }
    [[nodiscard]] QString html() {
        begin(QString(), QString());
        return html_;
    }

private:
    void begin(const QString& before, const QString& kind) {
        const QString text = text_.trimmed();
        if (!text.isEmpty())
            html_ += inBlock(kind_, text) + u'\n';
        text_.clear();
        html_ += before;
        kind_ = kind;
    }
    // Each says the direction itself: the toolkit's terms do not take it over, and what is said of
    // them it sets off at the left.
    [[nodiscard]] QString inBlock(const QString& kind, const QString& text) const {
        if (direction_ == Qt::LeftToRight)
            return u'<' % kind % u'>' % text % u"</" % kind % u'>';
        const QStringView margin(kind == u"dd" ? u" style=margin-left:0;margin-right:30px" : u"");
        return u'<' % kind % u" dir=rtl" % margin % u'>' % withIsolates(text) % u"</" % kind % u'>';
    }
    void add(const QString& text) {
        text_ += text;
        if (kind_ == u"pre")
            text_ += u'\n';
        else if (!bringsItsBlank(text))
            text_ += u' ';
        if (kind_ == u"dt")
            begin(QString(), QStringLiteral("dd"));
    }

    const Qt::LayoutDirection direction_;
    QString html_;
    QString kind_;
    QString text_;
};

} // namespace

QString manualAsHtml(const QByteArray& page, Qt::LayoutDirection direction) {
    Page result(direction);
    for (const QString& line : QString::fromUtf8(page).split(u'\n', Qt::SkipEmptyParts))
        result.take(line);
    return result.html();
}

QByteArray manualPage(const QString& language) {
    QFile page(u":/manual/" % language % u"/man1/reelshift.1");
    return page.open(QIODevice::ReadOnly) ? page.readAll() : QByteArray();
}

QString manualHtml(const QString& language) {
    const QByteArray page = manualPage(language);
    if (page.isEmpty())
        return language == u"en" ? QString() : manualHtml(QStringLiteral("en"));
    const Qt::LayoutDirection direction = QLocale(language).textDirection();
    return u"<div dir=" % QStringView(direction == Qt::RightToLeft ? u"rtl" : u"ltr") % u'>' %
           manualAsHtml(page, direction) % u"</div>";
}
