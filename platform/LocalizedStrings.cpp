#include "platform/LocalizedStrings.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

QString getLocalString(const char* key) {
    return qtTrId(key);
}

StringTable::StringTable(const QString& resourceFolder, const QLocale& locale) {
    auto translator = std::make_unique<QTranslator>();
    const QString name = QStringLiteral("LocalizedStrings");
    const QString separator = QStringLiteral("_");
    if (!translator->load(locale, name, separator, resourceFolder) &&
        !translator->load(name + separator + QStringLiteral("en"), resourceFolder))
        return;
    translator_ = std::move(translator);
    QCoreApplication::installTranslator(translator_.get());
}

StringTable::~StringTable() {
    if (translator_)
        QCoreApplication::removeTranslator(translator_.get());
}
