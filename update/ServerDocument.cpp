#include "update/ServerDocument.h"

#include <QIODevice>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstring>

namespace {

/// Bytes a single tag, text or comment may take. The reader compares every attribute of a tag with
/// every other, which at a megabyte takes it many seconds.
constexpr qint64 maximumTokenSize = 64 * 1024;

/// Hands the document over and runs dry when a token takes too long to end.
class TokenSource final : public QIODevice {
public:
    explicit TokenSource(const QByteArray& bytes) : bytes_(bytes) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] bool isTokenTooLong() const { return position_ - token_ > maximumTokenSize; }
    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] bool atEnd() const override {
        return position_ >= bytes_.size() || isTokenTooLong();
    }
    [[nodiscard]] qint64 bytesAvailable() const override { return bytes_.size() - position_; }

    void tokenRead() { token_ = position_; }

protected:
    qint64 readData(char* data, qint64 size) override {
        if (atEnd())
            return 0;
        const qint64 length = std::min<qint64>(size, bytes_.size() - position_);
        std::memcpy(data, bytes_.constData() + position_, static_cast<std::size_t>(length));
        position_ += length;
        return length;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    const QByteArray bytes_;
    qint64 position_ = 0;
    qint64 token_ = 0; ///< where the last token was complete
};

/// Walks the document token by token: no tree, so neither its depth nor its size costs more than
/// the document itself.
class Walk final {
public:
    Walk(const QByteArray& bytes, const QString& versionElement)
        : source_(bytes), xml_(&source_), versionElement_(versionElement) {
        // An undeclared prefix is no reason to refuse a document.
        xml_.setNamespaceProcessing(false);
    }

    [[nodiscard]] ServerDocument run() {
        while (!xml_.atEnd() && !xml_.hasError()) {
            read(xml_.readNext());
            if (!xml_.hasError())
                source_.tokenRead();
        }
        if (!xml_.hasError())
            return found_;
        ServerDocument nothing;
        nothing.error = source_.isTokenTooLong()
                            ? QStringLiteral("A tag or text is longer than 64 KB")
                            : xml_.errorString();
        return nothing;
    }

private:
    void read(QXmlStreamReader::TokenType token) {
        switch (token) {
        case QXmlStreamReader::StartElement:
            startElement(xml_.qualifiedName());
            break;
        case QXmlStreamReader::Characters:
            if (inVersion_)
                *found_.version += xml_.text();
            if (inUrl_)
                *found_.url += xml_.text();
            break;
        case QXmlStreamReader::EndElement:
            endElement();
            break;
        case QXmlStreamReader::DTD:
            // Declarations make texts and tags grow beyond what the document's size allows.
            if (xml_.text().contains(u'['))
                xml_.raiseError(QStringLiteral("Declarations of its own are not accepted"));
            break;
        default:
            break;
        }
    }

    void startElement(QStringView name) {
        ++depth_;
        if (depth_ == 2) {
            inSetupFile_ = name == u"setupFile";
            inVersion_ = name == versionElement_;
            if (inVersion_)
                found_.version = QString();
        } else if (depth_ == 3 && inSetupFile_ && name == u"url") {
            inUrl_ = true;
            found_.url = QString();
        }
    }

    void endElement() {
        if (depth_ == 2)
            inSetupFile_ = inVersion_ = false;
        else if (depth_ == 3)
            inUrl_ = false;
        --depth_;
    }

    TokenSource source_;
    QXmlStreamReader xml_;
    const QString versionElement_;
    ServerDocument found_;
    int depth_ = 0;
    bool inVersion_ = false;
    bool inSetupFile_ = false;
    bool inUrl_ = false;
};

} // namespace

ServerDocument parseServerDocument(const QByteArray& bytes, const QString& versionElement) {
    if (bytes.size() > maximumServerDocumentSize) {
        ServerDocument tooLarge;
        tooLarge.error = QStringLiteral("The document is larger than 1 MB");
        return tooLarge;
    }
    return Walk(bytes, versionElement).run();
}
