#include "help/ManualText.h"

#include <QFile>
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

class Page final {
public:
    void take(const QString& line) {
        const QString macro = line.startsWith(u'.') ? line.section(u' ', 0, 0) : QString();
        if (macro == u".TH" || macro == u".RS" || macro == u".RE")
            return;
        if (macro == u".SH")
            begin(u"<h3>" + inlineHtml(line.mid(4)) + u"</h3>", QStringLiteral("p"));
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
        if (!text_.trimmed().isEmpty())
            html_ += u'<' + kind_ + u'>' + text_.trimmed() + u"</" + kind_ + u">\n";
        text_.clear();
        html_ += before;
        kind_ = kind;
    }
    void add(const QString& text) {
        text_ += text + (kind_ == u"pre" ? u'\n' : u' ');
        if (kind_ == u"dt")
            begin(QString(), QStringLiteral("dd"));
    }

    QString html_;
    QString kind_;
    QString text_;
};

} // namespace

QString manualAsHtml(const QByteArray& page) {
    Page result;
    for (const QString& line : QString::fromUtf8(page).split(u'\n', Qt::SkipEmptyParts))
        result.take(line);
    return result.html();
}

QByteArray manualPage() {
    QFile page(QStringLiteral(":/reelshift.1"));
    return page.open(QIODevice::ReadOnly) ? page.readAll() : QByteArray();
}
