#include "TestProgram.h"
#include "platform/LanguageChoice.h"
#include "platform/LocalizedStrings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QMap>
#include <QProcess>
#include <QTranslator>
#include <QtTest>

#include <cstdio>

namespace {

using Keys = QList<const char*>;

/// What the test program is asked when it starts itself.
constexpr const char* sayChoice = "say_choice";
constexpr const char* resources = REELSHIFT_TEST_RESOURCES;

QStringList languages() {
    QStringList names = QDir(QString::fromUtf8(resources))
                            .entryList({QStringLiteral("LocalizedStrings_*.qm")}, QDir::Files);
    for (QString& name : names)
        name = name.chopped(3).section(QLatin1Char('_'), 1);
    return names;
}

/// The letter after the '&', in upper case; null where there is none.
QChar mnemonic(const QString& text) {
    const qsizetype at = text.indexOf(QLatin1Char('&'));
    return at < 0 || at + 1 == text.size() ? QChar() : text.at(at + 1).toUpper();
}

/// Whether a letter reaches out to the one before or after it, as most of the Arabic ones do.
bool joins(const QString& text, qsizetype at, bool forwards) {
    if (at < 0 || at >= text.size())
        return false;
    const auto type = text.at(at).joiningType();
    return type == QChar::Joining_Dual || type == QChar::Joining_Causing ||
           type == (forwards ? QChar::Joining_Left : QChar::Joining_Right);
}

QMap<QString, QStringList> sets(const QList<Keys>& all) {
    QMap<QString, QStringList> result;
    for (const Keys& keys : all) {
        QStringList names;
        for (const char* key : keys)
            names << QString::fromUtf8(key);
        result.insert(names.join(QLatin1Char(' ')), names);
    }
    return result;
}

/// What can be seen at the same time, and so needs letters of its own.
QMap<QString, QStringList> seenTogether() {
    return sets({
        {"IDS_BTN_ADD_FILE", "IDS_BTN_REMOVE_FILE", "IDS_BTN_CONVERT", "IDS_BTN_STOP",
         "IDS_BTN_SELECT_FOLDER", "IDS_BTN_OPEN_FOLDER", "IDS_TXTFLD_OUTPUTFOLDER",
         "IDS_TXTFLD_OPNFLDRAFTRFNSH", "IDS_TXT_PROFILE_CAPTION", "IDS_TXT_FILELIST"},
        {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_DUPLICATE", "IDS_BTN_POPUP_SKIP",
         "IDS_BTN_POPUP_REPLACE", "IDS_TXT_POPUP_DOFORERROR"},
        {"IDS_BTN_STOP", "IDS_BTN_POPUP_SKIP", "IDS_TXT_POPUP_DOFORERROR"},
        {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_OK", "IDS_TXT_POPUP_DOFORERROR"},
        {"IDS_BTN_POPUP_OK", "IDS_BTN_OPEN_FOLDER"},
        {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_CONVERT"},
        {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_TRASH"},
        {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_ENDSESSION"},
        {"IDS_BTN_POPUP_SKIP", "IDS_TXT_POPUP_TRYAGAIN"},
        {"IDS_BTN_POPUP_OK", "IDS_TXT_POPUP_TRYAGAIN"},
    });
}

} // namespace

/// The choice of the language, and what each must have in common with English.
class TestLanguages final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choice_data();
    void choice();
    void choiceAmongCountries();
    void choiceFromTheEnvironment_data();
    void choiceFromTheEnvironment();
    void tableOfTheUsersLanguage_data();
    void tableOfTheUsersLanguage();
    void qtSpeaksTheSameLanguage_data();
    void qtSpeaksTheSameLanguage();
    void withoutTables();
    void shape_data();
    void shape();
    void profileNamesAreTranslated_data();
    void profileNamesAreTranslated();
    void mnemonics_data();
    void mnemonics();
    void menuEntry_data();
    void menuEntry();

private:
    [[nodiscard]] QString text(const QString& language, const QString& key);

    QMap<QString, std::shared_ptr<QTranslator>> tables_;
};

QString TestLanguages::text(const QString& language, const QString& key) {
    auto& table = tables_[language];
    if (!table) {
        table = std::make_shared<QTranslator>();
        if (!table->load(QStringLiteral("LocalizedStrings_") + language,
                         QString::fromUtf8(resources)))
            return {};
    }
    return table->translate(nullptr, key.toUtf8().constData());
}

void TestLanguages::choice_data() {
    QTest::addColumn<QStringList>("preferred");
    QTest::addColumn<QString>("chosen");
    const auto row = [](const char* preferred, const char* chosen) {
        QTest::newRow(preferred) << QString::fromUtf8(preferred).split(QLatin1Char(' '))
                                 << QString::fromUtf8(chosen);
    };
    row("de", "de");
    row("de-DE de-Latn-DE de", "de");
    row("de-AT", "de");
    row("pt-BR", "pt_BR");
    row("pt-PT", "pt_BR");
    row("pt", "pt_BR");
    row("zh-CN", "zh_CN");
    row("zh", "zh_CN");
    row("zh-SG", "zh_CN");
    row("zh-Hans-HK", "zh_CN");
    row("zh-TW", "zh_TW");
    row("zh-HK", "zh_TW");
    row("zh-MO", "zh_TW");
    row("zh-Hant-TW", "zh_TW");
    row("zh_Hant", "zh_TW");
    row("ar-EG", "ar");
    row("en-US en-Latn-US en", "en");
    row("en-GB", "en");
    // English counts as a wish, in its place.
    row("en-US en-Latn-US en de", "en");
    row("de en-US", "de");
    row("fi en-US de", "en");
    row("fi de en", "de");
    // What Qt does not know, it names C.
    row("xx C de de-Latn-DE de-DE", "de");
    row("C", "en");
    row("fi", "en");
    row("uz-Arab", "en");
    row("sr-Latn", "en");
    QTest::newRow("no wish") << QStringList() << QStringLiteral("en");
}

void TestLanguages::choice() {
    QFETCH(QStringList, preferred);
    const QStringList available{
        QStringLiteral("ar"), QStringLiteral("de"),    QStringLiteral("en"),
        QStringLiteral("ja"), QStringLiteral("pt_BR"), QStringLiteral("sr_Cyrl"),
        QStringLiteral("uk"), QStringLiteral("zh_CN"), QStringLiteral("zh_TW")};
    QTEST(chooseLanguage(preferred, available), "chosen");
}

void TestLanguages::choiceAmongCountries() {
    const QStringList available{QStringLiteral("pt_BR"), QStringLiteral("pt_PT")};
    QCOMPARE(chooseLanguage({QStringLiteral("pt-PT")}, available), QStringLiteral("pt_PT"));
    QCOMPARE(chooseLanguage({QStringLiteral("pt-BR")}, available), QStringLiteral("pt_BR"));
    QCOMPARE(chooseLanguage({QStringLiteral("pt-AO")}, available), QStringLiteral("pt_BR"));
    QCOMPARE(chooseLanguage({QStringLiteral("de")}, {}), QStringLiteral("en"));
}

void TestLanguages::choiceFromTheEnvironment_data() {
    QTest::addColumn<QByteArray>("lang");
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QString>("chosen");
    const auto row = [](const char* lang, const char* language, const char* chosen) {
        QTest::addRow("LANG=%s LANGUAGE=%s", lang, language)
            << QByteArray(lang) << QByteArray(language) << QString::fromUtf8(chosen);
    };
    row("C.UTF-8", "", "en");
    row("C.UTF-8", "de", "de");
    row("en_US.UTF-8", "", "en");
    row("en_US.UTF-8", "de", "de");
    row("en_US.UTF-8", "xx:fi:de:fr", "de");
    row("en_GB.UTF-8", "en_GB:en:de", "en");
    row("de_AT.UTF-8", "", "de");
    row("de_DE.UTF-8", "en", "en");
    row("fi_FI.UTF-8", "", "en");
    row("fr_CA.UTF-8", "fr_CA:fr", "fr");
    row("pt_BR", "", "pt_BR");
    row("pt_PT.UTF-8", "pt:en", "pt_BR");
    row("nl_BE@euro", "", "nl");
}

void TestLanguages::choiceFromTheEnvironment() {
    QFETCH(QByteArray, lang);
    QFETCH(QByteArray, language);
    QFETCH(QString, chosen);
    // Qt reads the environment once: a process each.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* each : {"LC_ALL", "LC_MESSAGES"})
        environment.remove(QString::fromUtf8(each));
    environment.insert(QStringLiteral("LANG"), QString::fromUtf8(lang));
    environment.insert(QStringLiteral("LANGUAGE"), QString::fromUtf8(language));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {QString::fromUtf8(sayChoice)});
    QVERIFY(process.waitForFinished());
    const QString found = QString::fromUtf8(process.readAllStandardOutput());
    QCOMPARE(found, chosen);
}

void TestLanguages::tableOfTheUsersLanguage_data() {
    QTest::addColumn<QString>("language");
    for (const QString& language : languages())
        QTest::newRow(qPrintable(language)) << language;
}

void TestLanguages::tableOfTheUsersLanguage() {
    QFETCH(QString, language);
    const StringTable strings(QString::fromUtf8(resources), QLocale(language));
    QVERIFY(strings.isLoaded());
    QCOMPARE(strings.language(), language);
    QCOMPARE(strings.direction(),
             language == QLatin1StringView("ar") ? Qt::RightToLeft : Qt::LeftToRight);
    QCOMPARE(getLocalString("IDS_BTN_CONVERT"), text(language, QStringLiteral("IDS_BTN_CONVERT")));
    QCOMPARE(getLocalString("IDS_TXT_NOBODY_WROTE"), QStringLiteral("IDS_TXT_NOBODY_WROTE"));
}

void TestLanguages::qtSpeaksTheSameLanguage_data() {
    tableOfTheUsersLanguage_data();
}

void TestLanguages::qtSpeaksTheSameLanguage() {
    QFETCH(QString, language);
    if (language == QLatin1StringView("en"))
        QSKIP("Qt's own texts are English");
    if (!QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) +
                       QStringLiteral("/qtbase_%1.qm").arg(language)))
        QSKIP("Qt's own texts are not installed in this language");
    const auto cancel = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel"); };
    {
        const StringTable strings(QString::fromUtf8(resources), QLocale(language));
        QVERIFY(cancel() != QLatin1StringView("Cancel"));
    }
    QCOMPARE(cancel(), QStringLiteral("Cancel"));
}

void TestLanguages::withoutTables() {
    const StringTable strings(QStringLiteral("/nonexistent"), QLocale(QLocale::German));
    QVERIFY(!strings.isLoaded());
    QCOMPARE(strings.language(), QStringLiteral("en"));
    QCOMPARE(getLocalString("IDS_BTN_CONVERT"), QStringLiteral("IDS_BTN_CONVERT"));
}

void TestLanguages::shape_data() {
    tableOfTheUsersLanguage_data();
}

void TestLanguages::shape() {
    QFETCH(QString, language);
    QFile file(QStringLiteral(REELSHIFT_SOURCE_DIR "/resources/LocalizedStrings_en.ts"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    static const QRegularExpression id(QStringLiteral("<message id=\"([A-Z0-9_]+)\""));
    auto matches = id.globalMatch(QString::fromUtf8(file.readAll()));
    QVERIFY(matches.hasNext());
    while (matches.hasNext()) {
        const QString key = matches.next().captured(1);
        const QString english = text(QStringLiteral("en"), key);
        const QString here = text(language, key);
        const QByteArray why = key.toUtf8() + ": " + here.toUtf8();
        QVERIFY2(!here.isEmpty(), why);
        for (const char sign : {';', '&', '\n'})
            QVERIFY2(here.count(QLatin1Char(sign)) == english.count(QLatin1Char(sign)), why);
        QVERIFY2(here.contains(QChar(0x2026)) == english.contains(QChar(0x2026)), why);
        for (const char* kept : {"(*.mp4 *.MP4)", "Quorvex Reelshift", "libx264"})
            QVERIFY2(here.contains(QLatin1StringView(kept)) ==
                         english.contains(QLatin1StringView(kept)),
                     why);
    }
}

void TestLanguages::profileNamesAreTranslated_data() {
    tableOfTheUsersLanguage_data();
}

void TestLanguages::profileNamesAreTranslated() {
    QFETCH(QString, language);
    const QString key = QStringLiteral("IDS_TXT_PROFILELIST");
    const QStringList english = text(QStringLiteral("en"), key).split(QLatin1Char(';'));
    const QStringList here = text(language, key).split(QLatin1Char(';'));
    const QStringList inTheTable =
        text(language, QStringLiteral("IDS_TXT_PROFILELIST_DROPDOWN")).split(QLatin1Char(';'));
    QCOMPARE(here.size(), english.size());
    for (int i = 0; i < here.size(); ++i) {
        QVERIFY2(here.at(i).startsWith(english.at(i).left(12)), qPrintable(here.at(i)));
        QVERIFY2(here.at(i).mid(12).startsWith(inTheTable.at(i), Qt::CaseInsensitive),
                 qPrintable(here.at(i)));
    }
}

void TestLanguages::mnemonics_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("keys");
    const auto together = seenTogether();
    for (const QString& language : languages())
        for (auto each = together.cbegin(); each != together.cend(); ++each)
            QTest::newRow(qPrintable(language + QLatin1Char(' ') + each.key()))
                << language << each.value();
}

void TestLanguages::mnemonics() {
    QFETCH(QString, language);
    QFETCH(QStringList, keys);
    QMap<QChar, QString> taken;
    for (const QString& key : keys) {
        const QString here = text(language, key);
        const QChar letter = mnemonic(here);
        const QByteArray why = key.toUtf8() + ": " + here.toUtf8();
        QVERIFY2(letter.isLetter(), why);
        // A letter with an accent may take a dead key.
        QVERIFY2(letter.unicode() < 0x80 || letter.script() != QChar::Script_Latin, why);
        QVERIFY2(!taken.contains(letter), QByteArray(why + " and " + taken.value(letter).toUtf8()));
        taken.insert(letter, here);
        // Qt shapes the underlined letter by itself: it must stand by itself, or the word breaks.
        const qsizetype at = here.indexOf(QLatin1Char('&'));
        QVERIFY2(!joins(here, at - 1, true) || !joins(here, at + 1, false), why);
        QVERIFY2(!joins(here, at + 1, true) || !joins(here, at + 2, false), why);
    }
}

void TestLanguages::menuEntry_data() {
    tableOfTheUsersLanguage_data();
}

void TestLanguages::menuEntry() {
    QFETCH(QString, language);
    QFile file(QStringLiteral(REELSHIFT_SOURCE_DIR "/resources/example.quorvex.reelshift.desktop"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    const QString tag =
        language == QLatin1StringView("en") ? QString() : QStringLiteral("[%1]").arg(language);
    QVERIFY(lines.contains(QStringLiteral("Comment") + tag + QLatin1Char('=') +
                           text(language, QStringLiteral("IDS_TXT_APP_DESCRIPTION"))));
    for (const char* key : {"GenericName", "Keywords"}) {
        const auto start = QString(QLatin1StringView(key) + tag + QLatin1Char('='));
        QCOMPARE(lines.filter(start).size(), 1);
        QVERIFY(lines.filter(start).first().size() > start.size());
    }
}

REELSHIFT_TEST(test_languages, TestLanguages, QCoreApplication)

static const TestProgram::Entry chosenLanguage(sayChoice, [](int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    std::fputs(qPrintable(chooseLanguage(QLocale().uiLanguages(), languages())), stdout);
    return 0;
});

#include "TestLanguages.moc"
