#pragma once

#include <QByteArray>
#include <QString>

/// A manual page as rich text. Of the formatter's language it knows what our own page uses:
/// headings, paragraphs, lists of terms, fonts, and lines that stay as they are. Pure.
[[nodiscard]] QString manualAsHtml(const QByteArray& page);

/// The program's own.
[[nodiscard]] QByteArray manualPage();
