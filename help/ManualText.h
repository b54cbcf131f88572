#pragma once

#include <QByteArray>
#include <QString>

/// A manual page as rich text. Of the formatter's language it knows what our own pages use:
/// headings, paragraphs, lists of terms, fonts, and lines that stay as they are. Where the page is
/// written from right to left, each command or path in it is isolated. Pure.
[[nodiscard]] QString manualAsHtml(const QByteArray& page,
                                   Qt::LayoutDirection direction = Qt::LeftToRight);

/// The program's own page in a language (a name like "de" or "pt_BR"), in English where it is not
/// there; empty where there is none at all.
[[nodiscard]] QString manualHtml(const QString& language);

/// The same, as the formatter takes it.
[[nodiscard]] QByteArray manualPage(const QString& language);
