#pragma once

#include <QByteArray>

/// The head of an answer, read line by line, and the sum of all that came as heads: of provisional
/// answers, of redirections and behind the body. A value; pure.
class HttpHead final {
public:
    /// Bytes that all heads of one fetch may take.
    static constexpr qsizetype maximumSize = 64 * 1024;

    [[nodiscard]] bool isTooLarge() const { return size_ > maximumSize; }
    /// Whether the head of the answer itself is there, not only of a provisional one (1xx).
    [[nodiscard]] bool isComplete() const { return complete_; }
    /// 0 before the first line.
    [[nodiscard]] int status() const { return status_; }
    [[nodiscard]] bool isSuccess() const { return status_ >= 200 && status_ < 300; }
    /// Whether the answer sends whoever asks to its location.
    [[nodiscard]] bool isRedirection() const;
    /// What the server says beside the status, as it came.
    [[nodiscard]] const QByteArray& reason() const { return reason_; }
    [[nodiscard]] const QByteArray& location() const { return location_; }
    [[nodiscard]] const QByteArray& contentDisposition() const { return contentDisposition_; }
    /// Bytes of the body, -1 when the server does not say.
    [[nodiscard]] qint64 contentLength() const { return isChunked_ ? -1 : contentLength_; }
    /// Whether the body says itself where it ends.
    [[nodiscard]] bool isFramed() const { return isChunked_ || contentLength_ >= 0; }
    /// Whether the body comes packed although nobody asked for it.
    [[nodiscard]] bool isPacked() const { return isPacked_; }

    /// Another request begins; the sum stays.
    void startOver();
    /// The next line with its end.
    void addLine(const QByteArray& line);

private:
    void begin(const QByteArray& statusLine);
    void addField(const QByteArray& name, const QByteArray& value);

    qsizetype size_ = 0;
    bool complete_ = false;
    int status_ = 0;
    QByteArray reason_;
    QByteArray location_;
    QByteArray contentDisposition_;
    qint64 contentLength_ = -1;
    bool isChunked_ = false;
    bool isPacked_ = false;
};
