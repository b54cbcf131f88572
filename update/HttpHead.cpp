#include "update/HttpHead.h"

bool HttpHead::isRedirection() const {
    switch (status_) {
    case 301:
    case 302:
    case 303:
    case 307:
    case 308:
        return true;
    default:
        return false;
    }
}

void HttpHead::addLine(const QByteArray& line) {
    size_ += line.size();
    if (isTooLarge())
        return;
    // What comes behind the body is counted and otherwise ignored.
    if (complete_)
        return;
    if (line.startsWith("HTTP/")) {
        begin(line.trimmed());
        return;
    }
    if (line.trimmed().isEmpty()) {
        complete_ = status_ >= 200;
        return;
    }
    const qsizetype colon = line.indexOf(':');
    if (colon > 0)
        addField(line.first(colon).trimmed().toLower(), line.sliced(colon + 1).trimmed());
}

void HttpHead::startOver() {
    const qsizetype size = size_;
    *this = HttpHead();
    size_ = size;
}

void HttpHead::begin(const QByteArray& statusLine) {
    startOver();
    const qsizetype status = statusLine.indexOf(' ') + 1;
    status_ = status > 0 ? statusLine.mid(status, 3).toInt() : 0;
    reason_ = status > 0 ? statusLine.mid(status + 3).trimmed() : QByteArray();
}

void HttpHead::addField(const QByteArray& name, const QByteArray& value) {
    if (name == "location" && location_.isEmpty()) {
        location_ = value;
    } else if (name == "content-disposition" && contentDisposition_.isEmpty()) {
        contentDisposition_ = value;
    } else if (name == "content-length") {
        bool isNumber = false;
        const qint64 length = value.toLongLong(&isNumber);
        contentLength_ = isNumber && length >= 0 ? length : -1;
    } else if (name == "transfer-encoding") {
        isChunked_ = true;
        isPacked_ = value.compare("chunked", Qt::CaseInsensitive) != 0;
    } else if (name == "content-encoding") {
        isPacked_ = isPacked_ || value.compare("identity", Qt::CaseInsensitive) != 0;
    }
}
