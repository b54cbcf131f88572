#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// What the update server's document says.
struct ServerDocument {
    std::optional<QString> version; ///< text of the root's child that holds the version
    std::optional<QString> url;     ///< text of "url" inside the root's child "setupFile"
    QString error;                  ///< why nothing could be read; empty when the document is sound
};

/// A longer document is not read.
inline constexpr qsizetype maximumServerDocumentSize = 1024 * 1024;

/// Reads the document. All children are walked and later matches overwrite earlier ones; a document
/// that is not well-formed to its very end says nothing at all. Texts keep their white space, CDATA
/// is part of them; who uses them trims. Nothing outside the document is ever fetched, and one that
/// declares entities or attributes, or holds a tag or text of more than 64 KB, is refused. Pure.
[[nodiscard]] ServerDocument
parseServerDocument(const QByteArray& bytes,
                    const QString& versionElement = QStringLiteral("version"));
