#include "convert/LastWords.h"

namespace {

/// Control characters, and what may move the text that stands after it.
bool isUnsafe(char32_t c) {
    if (QChar::category(c) == QChar::Other_Control || QChar::category(c) == QChar::Other_Surrogate)
        return true;
    return c == U'\u2028' || c == U'\u2029' || (c >= U'\u202A' && c <= U'\u202E') ||
           (c >= U'\u2066' && c <= U'\u2069');
}

bool isProgress(const QByteArray& line) {
    return line.startsWith("frame=");
}

} // namespace

void LastWords::add(const QByteArray& bytes) {
    for (const char c : bytes) {
        if (c == '\n' || c == '\r')
            endLine();
        else if (open_.size() < longestLine)
            open_ += c;
    }
}

QStringList LastWords::lines() const {
    std::deque<QByteArray> all = lines_;
    append(all, open_);
    QStringList result;
    for (const QByteArray& line : all)
        result += QString::fromUtf8(line);
    return result;
}

void LastWords::endLine() {
    append(lines_, open_);
    open_.clear();
}

void LastWords::append(std::deque<QByteArray>& lines, const QByteArray& line) {
    if (line.trimmed().isEmpty())
        return;
    if (isProgress(line) && !lines.empty() && isProgress(lines.back()))
        lines.pop_back();
    lines.push_back(line);
    if (lines.size() > mostLines)
        lines.pop_front();
}

QString onOneLine(const QString& text) {
    QString result;
    result.reserve(text.size());
    for (const char32_t c : text.toUcs4()) {
        if (c == U'\n')
            result += u"\\n";
        else if (isUnsafe(c))
            result += u"\\x" % QString::number(static_cast<uint>(c), 16);
        else
            result += QString::fromUcs4(&c, 1);
    }
    return result;
}
