#pragma once

#include <QString>
#include <QStringList>

/// The language of `available` (names like "de" and "pt_BR") that suits best a user who prefers
/// `preferred` (names like "de-AT", the dearest first, as `QLocale::uiLanguages` has them): that of
/// the first preferred language that is there at all, from the same country where there is a
/// choice. What is written in another script is another language. English where nothing suits. Any
/// thread.
[[nodiscard]] QString chooseLanguage(const QStringList& preferred, const QStringList& available);
