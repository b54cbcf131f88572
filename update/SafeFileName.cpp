#include "update/SafeFileName.h"

#include <QTextBoundaryFinder>
#include <QUrl>

namespace {

constexpr qsizetype maximumBytes = 255;
constexpr qsizetype maximumSuffixBytes = 32;

/// Value of a header parameter such as filename="a b.run"; quoted strings may hold semicolons.
QByteArray parameter(const QByteArray& header, const QByteArray& name) {
    qsizetype i = header.indexOf(';');
    while (i >= 0 && i < header.size()) {
        const qsizetype equals = header.indexOf('=', ++i);
        if (equals < 0)
            break;
        const QByteArray key = header.mid(i, equals - i).trimmed().toLower();
        QByteArray value;
        i = equals + 1;
        while (i < header.size() && header[i] == ' ')
            ++i;
        if (i < header.size() && header[i] == '"') {
            for (++i; i < header.size() && header[i] != '"'; ++i) {
                if (header[i] == '\\' && i + 1 < header.size())
                    ++i;
                value += header[i];
            }
            i = header.indexOf(';', i);
        } else {
            const qsizetype end = header.indexOf(';', i);
            value = header.mid(i, end < 0 ? -1 : end - i).trimmed();
            i = end;
        }
        if (key == name)
            return value;
    }
    return {};
}

/// filename*=UTF-8''name%20of%20the%20file
QString extendedValue(const QByteArray& value) {
    const QList<QByteArray> parts = value.split('\'');
    if (parts.size() != 3 || parts[0].compare("UTF-8", Qt::CaseInsensitive) != 0)
        return {};
    return QString::fromUtf8(QByteArray::fromPercentEncoding(parts[2]));
}

bool isKept(QChar c) {
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format: // among them the marks that turn the writing direction round
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

/// Half a surrogate pair is no character that a file name can have; releases of Qt differ in what
/// they make of it.
void replaceHalfPairs(QString& name) {
    for (qsizetype i = 0; i < name.size(); ++i) {
        if (name.at(i).isHighSurrogate() && i + 1 < name.size() && name.at(i + 1).isLowSurrogate())
            ++i;
        else if (name.at(i).isSurrogate())
            name[i] = u'?';
    }
}

int utf8Size(QChar c) {
    // Each half of a pair counts for half of its four bytes.
    return c.unicode() < 0x80 ? 1 : c.unicode() < 0x800 || c.isSurrogate() ? 2 : 3;
}

/// As much of the text as fits, without cutting anything that is seen as one character.
QString cut(const QString& text, qsizetype bytes) {
    qsizetype end = 0;
    for (qsizetype size = 0; end < text.size(); ++end) {
        size += utf8Size(text[end]);
        if (size > bytes)
            break;
    }
    if (end == text.size())
        return text;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(end);
    const qsizetype whole = finder.isAtBoundary() ? end : finder.toPreviousBoundary();
    if (whole > 0)
        return text.first(whole);
    // One character of hundreds of marks: then between two marks.
    return text.first(end > 0 && text[end - 1].isHighSurrogate() ? end - 1 : end);
}

/// Where the suffix begins; the end of a name that has none worth keeping.
qsizetype suffixStart(const QString& name) {
    qsizetype dot = name.lastIndexOf(u'.');
    if (dot > 4 && QStringView(name).first(dot).endsWith(u".tar"))
        dot -= 4;
    return dot <= 0 || name.sliced(dot).toUtf8().size() > maximumSuffixBytes ? name.size() : dot;
}

/// `addition` comes before the suffix, and the name gives way to both.
QString fitted(const QString& name, const QString& addition) {
    const qsizetype dot = suffixStart(name);
    const QString rest = addition % name.sliced(dot);
    return cut(name.first(dot), maximumBytes - rest.toUtf8().size()) % rest;
}

} // namespace

QString suggestedFileName(const QByteArray& contentDisposition, const QUrl& url) {
    const QString extended = extendedValue(parameter(contentDisposition, "filename*"));
    if (!extended.isEmpty())
        return extended;
    const QByteArray plain = parameter(contentDisposition, "filename");
    if (!plain.isEmpty())
        return QString::fromUtf8(plain);
    return url.fileName(QUrl::FullyDecoded);
}

QString safeFileName(const QString& suggested) {
    QString name = suggested;
    name.replace(u'\\', u'/');
    name = name.sliced(name.lastIndexOf(u'/') + 1);
    replaceHalfPairs(name);
    name.removeIf([](QChar c) { return !isKept(c); });
    name = name.trimmed();
    while (name.startsWith(u'.') || name.startsWith(u' '))
        name.remove(0, 1);
    if (name.isEmpty())
        return QStringLiteral("reelshift-update");
    return fitted(name, QString());
}

QString numberedFileName(const QString& name, int number) {
    return fitted(name, QStringLiteral(" (%1)").arg(number));
}
