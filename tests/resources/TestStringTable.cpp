#include "TestProgram.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

struct Table {
    QMap<QString, QString> texts;
    QMap<QString, QString> sources;
    QStringList repeated;
    QStringList unfinished;
};

Table readTable(const QString& path) {
    Table table;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return table;
    }
    QXmlStreamReader xml(&file);
    QString id;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        if (xml.name() == QLatin1StringView("message")) {
            id = xml.attributes().value(QLatin1StringView("id")).toString();
        } else if (xml.name() == QLatin1StringView("source")) {
            table.sources.insert(id, xml.readElementText());
        } else if (xml.name() == QLatin1StringView("translation")) {
            if (xml.attributes().hasAttribute(QLatin1StringView("type"))) {
                table.unfinished << id;
            }
            if (table.texts.contains(id)) {
                table.repeated << id;
            }
            table.texts.insert(id, xml.readElementText());
        }
    }
    return table;
}

QString sourcePath(const QString& relative) {
    return QStringLiteral(REELSHIFT_SOURCE_DIR "/") + relative;
}

QStringList keysIn(const QString& folder) {
    static const QRegularExpression key(QStringLiteral("\"(IDS_[A-Z0-9_]+)\""));
    QStringList keys;
    QDirIterator files(sourcePath(folder), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly)) {
            return {};
        }
        auto matches = key.globalMatch(QString::fromUtf8(file.readAll()));
        while (matches.hasNext()) {
            keys << matches.next().captured(1);
        }
    }
    return keys;
}

} // namespace

/// Every rule is checked in every language that has a table.
class TestStringTable final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void wellFormed_data();
    void wellFormed();
    void compiledTableAnswersEveryId_data();
    void compiledTableAnswersEveryId();
    void everyKeyOfTheProgramHasAText_data();
    void everyKeyOfTheProgramHasAText();
    void misspeltKeysAreKept();
    void profileNames_data();
    void profileNames();
    void profileTextsOfTheTableAgree_data();
    void profileTextsOfTheTableAgree();
    void statusTextsNeverTurnOnTheBar_data();
    void statusTextsNeverTurnOnTheBar();
    void placeholders_data();
    void placeholders();

private:
    void addLanguages() const;
    [[nodiscard]] QString text(const char* key) const;

    QMap<QString, Table> tables_;
};

void TestStringTable::initTestCase() {
    QDirIterator files(sourcePath(QStringLiteral("resources")),
                       {QStringLiteral("LocalizedStrings_*.ts")}, QDir::Files);
    while (files.hasNext()) {
        files.next();
        const QString language = files.fileInfo().completeBaseName().section(QLatin1Char('_'), 1);
        tables_.insert(language, readTable(files.filePath()));
    }
    QVERIFY(tables_.contains(QStringLiteral("en")));
}

void TestStringTable::addLanguages() const {
    QTest::addColumn<QString>("language");
    for (auto table = tables_.cbegin(); table != tables_.cend(); ++table) {
        QTest::newRow(qPrintable(table.key())) << table.key();
    }
}

QString TestStringTable::text(const char* key) const {
    const QString language = QString::fromUtf8(QTest::currentDataTag());
    return tables_.value(language).texts.value(QString::fromUtf8(key));
}

void TestStringTable::wellFormed_data() {
    addLanguages();
}

void TestStringTable::wellFormed() {
    QFETCH(QString, language);
    const Table& table = tables_[language];
    QVERIFY2(table.repeated.isEmpty(), qPrintable(table.repeated.join(QLatin1Char(' '))));
    QVERIFY2(table.unfinished.isEmpty(), qPrintable(table.unfinished.join(QLatin1Char(' '))));
    const Table& english = tables_[QStringLiteral("en")];
    QCOMPARE(table.texts.keys(), english.texts.keys());
    // What a translation was made from is still what English says.
    for (auto entry = table.sources.cbegin(); entry != table.sources.cend(); ++entry)
        QCOMPARE(entry.value(), english.texts.value(entry.key()));
    for (auto entry = table.texts.cbegin(); entry != table.texts.cend(); ++entry) {
        QVERIFY2(entry.key().startsWith(QLatin1StringView("IDS_")), qPrintable(entry.key()));
        QVERIFY2(!entry.value().isEmpty(), qPrintable(entry.key()));
        // Callers join texts with line breaks of their own.
        QVERIFY2(entry.value() == entry.value().trimmed(), qPrintable(entry.key()));
    }
}

void TestStringTable::compiledTableAnswersEveryId_data() {
    addLanguages();
}

void TestStringTable::compiledTableAnswersEveryId() {
    QFETCH(QString, language);
    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral("LocalizedStrings_") + language,
                            QStringLiteral(REELSHIFT_TEST_RESOURCES)));
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const Table& table = tables_[language];
    for (auto entry = table.texts.cbegin(); entry != table.texts.cend(); ++entry) {
        QCOMPARE(qtTrId(entry.key().toUtf8().constData()), entry.value());
    }
    QCOMPARE(qtTrId("IDS_TXT_NOBODY_WROTE"), QStringLiteral("IDS_TXT_NOBODY_WROTE"));
}

void TestStringTable::everyKeyOfTheProgramHasAText_data() {
    QTest::addColumn<QString>("folder");
    for (const char* folder :
         {"app", "convert", "filelist", "media", "platform", "table", "update", "widgets"}) {
        QTest::newRow(folder) << QString::fromUtf8(folder);
    }
}

void TestStringTable::everyKeyOfTheProgramHasAText() {
    QFETCH(QString, folder);
    QStringList missing;
    const Table& table = tables_[QStringLiteral("en")];
    for (const QString& key : keysIn(folder)) {
        if (!table.texts.contains(key)) {
            missing << key;
        }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QLatin1Char(' '))));
}

void TestStringTable::misspeltKeysAreKept() {
    const Table& table = tables_[QStringLiteral("en")];
    QVERIFY(table.texts.contains(QStringLiteral("IDS_TXT_POPUP_PUASEDJOBS")));
    QVERIFY(!table.texts.contains(QStringLiteral("IDS_TXT_POPUP_PAUSEDJOBS")));
    // A key of the buttons that names a message.
    QVERIFY(table.texts.contains(QStringLiteral("IDS_BTN_POPUP_OUTFLDRUNAVAILABLE")));
    QVERIFY(!table.texts.contains(QStringLiteral("IDS_TXT_POPUP_OUTFLDRUNAVAILABLE")));
}

void TestStringTable::profileNames_data() {
    addLanguages();
}

void TestStringTable::profileNames() {
    const QStringList names = text("IDS_TXT_PROFILELIST").split(QLatin1Char(';'));
    QCOMPARE(names.size(), 3);
    QCOMPARE(QSet<QString>(names.cbegin(), names.cend()).size(), 3);
    // The profile of a new movie; in the other languages it is found by its kind.
    if (qstrcmp(QTest::currentDataTag(), "en") == 0)
        QCOMPARE(names.at(1), QStringLiteral("H.264 LV1 : Best Quality"));
    for (const QString& name : names) {
        QVERIFY2(name.size() >= 9, qPrintable(name));
        QVERIFY2(name.at(8).isDigit(), qPrintable(name));
    }
}

void TestStringTable::profileTextsOfTheTableAgree_data() {
    addLanguages();
}

void TestStringTable::profileTextsOfTheTableAgree() {
    const QStringList items{text("IDS_TXT_PROFILELIST_1"), text("IDS_TXT_PROFILELIST_2"),
                            text("IDS_TXT_PROFILELIST_3")};
    QCOMPARE(text("IDS_TXT_PROFILELIST_DROPDOWN").split(QLatin1Char(';')), items);
    QCOMPARE(QSet<QString>(items.cbegin(), items.cend()).size(), 3);
}

void TestStringTable::statusTextsNeverTurnOnTheBar_data() {
    addLanguages();
}

void TestStringTable::statusTextsNeverTurnOnTheBar() {
    const QStringList texts{text("IDS_TXT_STATUS_WAITING"), text("IDS_TXT_STATUS_PAUSED"),
                            text("IDS_TXT_STATUS_CONVERTED")};
    QCOMPARE(QSet<QString>(texts.cbegin(), texts.cend()).size(), 3);
    QVERIFY(!texts.contains(QStringLiteral("Converting")));
}

void TestStringTable::placeholders_data() {
    addLanguages();
}

void TestStringTable::placeholders() {
    QFETCH(QString, language);
    // The same as in English, each once: in any other text a '%' would stay as it is.
    static const QRegularExpression placeholder(QStringLiteral("%[12]"));
    const Table& table = tables_[language];
    const Table& english = tables_[QStringLiteral("en")];
    for (auto entry = table.texts.cbegin(); entry != table.texts.cend(); ++entry) {
        const auto found = [](const QString& text) {
            QStringList names;
            auto matches = placeholder.globalMatch(text);
            while (matches.hasNext())
                names << matches.next().captured();
            names.sort();
            return names;
        };
        const QStringList names = found(entry.value());
        QCOMPARE(names, found(english.texts.value(entry.key())));
        QVERIFY2(QSet<QString>(names.cbegin(), names.cend()).size() == names.size(),
                 qPrintable(entry.key()));
        QVERIFY2(entry.value().count(QLatin1Char('%')) == names.size(), qPrintable(entry.key()));
    }
}

REELSHIFT_TEST(test_string_table, TestStringTable, QCoreApplication)
#include "TestStringTable.moc"
