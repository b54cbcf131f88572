#include "platform/LanguageChoice.h"

#include <QLocale>

QString chooseLanguage(const QStringList& preferred, const QStringList& available) {
    for (const QString& name : preferred) {
        const QLocale wanted(name);
        // Qt names a language that it does not know "C", in the middle of the list too.
        if (wanted.language() == QLocale::C)
            continue;
        QString found;
        for (const QString& candidate : available) {
            const QLocale offered(candidate);
            if (offered.language() != wanted.language() || offered.script() != wanted.script())
                continue;
            if (offered.territory() == wanted.territory())
                return candidate;
            if (found.isEmpty())
                found = candidate;
        }
        if (!found.isEmpty())
            return found;
    }
    return QStringLiteral("en");
}
