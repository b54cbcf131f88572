#include "update/SafeFileName.h"

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

QString cut(const QString& text, qsizetype bytes) {
    QString shorter = text;
    while (shorter.toUtf8().size() > bytes) {
        const bool pair = shorter.size() > 1 && shorter.back().isLowSurrogate();
        shorter.chop(pair ? 2 : 1);
    }
    return shorter;
}

QString fitted(const QString& name) {
    if (name.toUtf8().size() <= maximumBytes)
        return name;
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString suffix = dot > 0 ? name.sliced(dot) : QString();
    const qsizetype suffixBytes = suffix.toUtf8().size();
    if (suffixBytes > maximumSuffixBytes)
        return cut(name.left(maximumBytes), maximumBytes);
    return cut(name.left(qMin(dot < 0 ? name.size() : dot, maximumBytes)),
               maximumBytes - suffixBytes) +
           suffix;
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
    // Through UTF-8 and back: half a surrogate pair is no character a file name can have.
    name = QString::fromUtf8(name.toUtf8());
    name.removeIf([](QChar c) { return !isKept(c); });
    name = name.trimmed();
    while (name.startsWith(u'.') || name.startsWith(u' '))
        name.remove(0, 1);
    if (name.isEmpty())
        return QStringLiteral("reelshift-update");
    return fitted(name);
}
