#include "platform/LocalizedStrings.h"

#include "platform/LanguageChoice.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

constexpr QLatin1StringView prefix("LocalizedStrings_");

QStringList languagesIn(const QString& folder) {
    QStringList names = QDir(folder).entryList({prefix + QLatin1StringView("*.qm")}, QDir::Files);
    for (QString& name : names)
        name = name.chopped(3).mid(prefix.size());
    return names;
}

std::unique_ptr<QTranslator> install(const QString& table, const QString& folder) {
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(table, folder))
        return nullptr;
    QCoreApplication::installTranslator(translator.get());
    return translator;
}

void remove(QTranslator* translator) {
    if (translator)
        QCoreApplication::removeTranslator(translator);
}

} // namespace

QString getLocalString(const char* key) {
    return qtTrId(key);
}

StringTable::StringTable(const QString& resourceFolder, const QLocale& locale)
    // Not QTranslator::load(locale): it tries one of the wishes alone.
    : language_(chooseLanguage(locale.uiLanguages(), languagesIn(resourceFolder))),
      qtTranslator_(install(QStringLiteral("qtbase_") + language_,
                            QLibraryInfo::path(QLibraryInfo::TranslationsPath))),
      translator_(install(prefix + language_, resourceFolder)) {}

StringTable::~StringTable() {
    remove(translator_.get());
    remove(qtTranslator_.get());
}

Qt::LayoutDirection StringTable::direction() const {
    return QLocale(language_).textDirection();
}
