#include "convert/Timecode.h"

#include <QRegularExpression>

#include <stdexcept>

QString substring(const QString& text, qint64 position, qint64 length) {
    if (position < 0 || length < 0 || position + length > text.size())
        throw std::out_of_range("characters " + std::to_string(position) + " to " +
                                std::to_string(position + length) + " of a text of " +
                                std::to_string(text.size()));
    return text.mid(position, length);
}

double leadingDecimal(const QString& text) {
    static const QRegularExpression number(
        QStringLiteral(R"(^\s*([+-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:[eE][+-]?[0-9]+)?))"));
    const QRegularExpressionMatch match = number.match(text);
    return match.hasMatch() ? match.captured(1).toDouble() : 0.0;
}

double secondsOfTimecode(const QString& text) {
    const double hours = leadingDecimal(substring(text, 0, 2));
    const double minutes = leadingDecimal(substring(text, 3, 2));
    const double seconds = leadingDecimal(substring(text, 6, text.size() - 6));
    return hours * 3600 + minutes * 60 + seconds;
}
