#include "app/FolderText.h"

#include <QStringDecoder>

std::optional<QString> folderInText(const QByteArray& content) {
    if (content.isEmpty() || content.size() > maximumFolderText)
        return std::nullopt;
    // Stateless: a character that is cut by the file's end is an error, too.
    // A byte-order mark belongs to the text like everything else.
    QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless |
                                                       QStringConverter::Flag::ConvertInitialBom);
    const QString text = decoder.decode(content);
    if (decoder.hasError() || text.contains(QChar::Null))
        return std::nullopt;
    return text;
}
