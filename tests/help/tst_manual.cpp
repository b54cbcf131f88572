#include "TestProgram.h"
#include "help/ManualText.h"

#include <QDir>
#include <QLocale>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

/// A paragraph, a heading or a term of the manual.
struct Part {
    QString kind;
    QString html;
};

QStringList manualLanguages() {
    return QDir(QStringLiteral(":/manual")).entryList(QDir::Dirs);
}

QList<Part> partsOf(const QByteArray& page) {
    static const QRegularExpression part(QStringLiteral("<(h3|p|dt|dd|pre)>(.*?)</\\1>"),
                                         QRegularExpression::DotMatchesEverythingOption);
    QList<Part> result;
    const QString html = manualAsHtml(page);
    for (auto each = part.globalMatch(html); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        result += {match.captured(1), match.captured(2)};
    }
    return result;
}

/// What is called the same in every language: what stands in a font of its own or has a digit.
QSet<QString> namesIn(const QString& html) {
    static const QRegularExpression name(
        QStringLiteral("<([bi])>(.*?)</\\1>|(?:\\w+[.])?[A-Za-z]*\\d[.\\d]*\\b"));
    QSet<QString> result;
    for (auto each = name.globalMatch(html); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        result += match.captured(match.lastCapturedIndex() == 0 ? 0 : 2);
    }
    return result;
}

/// The words of a part that are to be translated.
QString proseOf(const QString& html) {
    static const QRegularExpression rest(
        QStringLiteral("<([bi])>.*?</\\1>|<[^>]*>|\\b[A-Za-z]*\\d[.\\d]*\\b|\\b[A-Z]{2,}\\b|"
                       "\\b(reelshift|Qt)\\b"));
    return QString(html).remove(rest).simplified();
}

bool isLetter(QChar sign) {
    return sign.isLetter();
}

bool isLetterOf(QChar letter, const QString& language) {
    switch (QLocale(language).language()) {
    case QLocale::Arabic:
        return letter.script() == QChar::Script_Arabic;
    case QLocale::Japanese:
        return letter.script() == QChar::Script_Hiragana ||
               letter.script() == QChar::Script_Katakana || letter.script() == QChar::Script_Han;
    case QLocale::Chinese:
        return letter.script() == QChar::Script_Han;
    case QLocale::Korean:
        return letter.script() == QChar::Script_Hangul;
    case QLocale::Russian:
    case QLocale::Ukrainian:
        return letter.script() == QChar::Script_Cyrillic;
    default:
        return letter.script() == QChar::Script_Latin;
    }
}

/// The part is no sentence of another language, as far as its letters and commonest words tell.
bool isIn(const QString& language, const QString& prose) {
    static const QRegularExpression english(QStringLiteral("\\b(the|that|which|with|it|and)\\b"),
                                            QRegularExpression::CaseInsensitiveOption);
    int own = 0;
    int others = 0;
    for (const QChar each : prose) {
        if (each.isLetter() && each.script() > QChar::Script_Common)
            ++(isLetterOf(each, language) ? own : others);
    }
    return own > 4 * others && (language == u"en" || !prose.contains(english));
}

/// What a translated page lacks of the English one, and what of it is not translated.
QStringList faultsOf(const QByteArray& translated, const QString& language) {
    const QList<Part> ours = partsOf(translated);
    const QList<Part> english = partsOf(manualPage(QStringLiteral("en")));
    if (ours.size() != english.size())
        return {QStringLiteral("%1 parts, not %2").arg(ours.size()).arg(english.size())};
    QStringList faults;
    for (qsizetype i = 0; i < ours.size(); ++i) {
        const Part& own = ours[i];
        const Part& model = english[i];
        if (own.kind != model.kind)
            faults += own.kind + u": " + own.html;
        const bool isName = model.kind == u"dt" || model.kind == u"pre";
        if (isName && own.html != model.html)
            faults += QStringLiteral("instead of ") + model.html + u": " + own.html;
        const QSet<QString> lost = namesIn(model.html) - namesIn(own.html);
        if (!lost.isEmpty())
            faults += QStringList(lost.values()).join(u' ') + u" in: " + own.html;
        const QString prose = proseOf(model.html);
        if (isName || model.kind == u"h3" || std::none_of(prose.begin(), prose.end(), isLetter))
            continue;
        if (prose == proseOf(own.html) || !isIn(language, proseOf(own.html)))
            faults += QStringLiteral("not translated: ") + own.html;
    }
    return faults;
}

QByteArray without(QByteArray page, const char* what) {
    return page.replace(what, "");
}

} // namespace

/// The manual says the same in every language.
class TestManual final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyLanguageHasOne();
    void sameInEveryLanguage_data();
    void sameInEveryLanguage();
    void whatIsMissingIsTold_data();
    void whatIsMissingIsTold();
    void englishWhereThereIsNoOther();
    void rightToLeft_data();
    void rightToLeft();
};

void TestManual::everyLanguageHasOne() {
    QStringList tables = QDir(QStringLiteral(REELSHIFT_TEST_RESOURCES))
                             .entryList({QStringLiteral("LocalizedStrings_*.qm")});
    QSet<QString> languages;
    for (const QString& table : tables)
        languages += table.chopped(3).section(u'_', 1);
    const QStringList pages = manualLanguages();
    QCOMPARE(QSet<QString>(pages.begin(), pages.end()), languages);
    QSet<QByteArray> texts;
    for (const QString& language : pages)
        texts += manualPage(language);
    QCOMPARE(texts.size(), pages.size());
}

void TestManual::sameInEveryLanguage_data() {
    QTest::addColumn<QString>("language");
    for (const QString& language : manualLanguages()) {
        if (language != u"en")
            QTest::newRow(qPrintable(language)) << language;
    }
}

void TestManual::sameInEveryLanguage() {
    QFETCH(QString, language);
    const QByteArray page = manualPage(language);
    const QStringList faults = faultsOf(page, language);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    const auto headings = [](const QByteArray& of) {
        QStringList result;
        for (const Part& part : partsOf(of)) {
            if (part.kind == u"h3")
                result += part.html;
        }
        return result;
    };
    const QStringList model = headings(manualPage(QStringLiteral("en")));
    const QStringList own = headings(page);
    QCOMPARE(own.size(), model.size());
    // French, say, calls some of them the same.
    int translated = 0;
    for (qsizetype i = 0; i < own.size(); ++i)
        translated += own[i] != model[i];
    QVERIFY2(translated >= 5, qPrintable(own.join(u", ")));
    const QByteArray title = page.left(page.indexOf('\n'));
    QVERIFY2(title.startsWith(".TH REELSHIFT 1 \"\" \"reelshift 1.") &&
                 !title.contains("User Commands"),
             title);
}

void TestManual::whatIsMissingIsTold_data() {
    QTest::addColumn<QByteArray>("page");
    const QByteArray page = manualPage(QStringLiteral("de"));
    const auto row = [&](const char* what, const QByteArray& changed) {
        QVERIFY2(changed != page, what);
        QTest::newRow(what) << changed;
    };
    row("an option", without(page, "\", \" \\-\\-help"));
    row("a term", without(page, ".TP\n.B XDG_STATE_HOME\n"));
    row("a variable's name", without(page, "\\fBLC_MESSAGES\\fR, "));
    row("a heading", without(page, ".SH DATEIEN\n"));
    row("a file in a sentence", without(page, "\\fI_Pro_\\fR"));
    row("a number", without(page, "9.0"));
    row("a command", without(page, "\\-\\-user "));
    row("English", manualPage(QStringLiteral("en")));
    row("a sentence in English",
        QByteArray(page).replace("Zeigt die Version.", "Shows the version."));
}

void TestManual::whatIsMissingIsTold() {
    QFETCH(QByteArray, page);
    QVERIFY(!faultsOf(page, QStringLiteral("de")).isEmpty());
}

void TestManual::englishWhereThereIsNoOther() {
    QVERIFY(!manualHtml(QStringLiteral("en")).isEmpty());
    QCOMPARE(manualHtml(QStringLiteral("sv")), manualHtml(QStringLiteral("en")));
    QVERIFY(manualHtml(QStringLiteral("ar")) != manualHtml(QStringLiteral("en")));
}

void TestManual::rightToLeft_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("html");
    const auto row = [](const char* what, const char* line, const char* html) {
        QTest::newRow(what)
            << QByteArray(line)
            << QString::fromUtf8(html).replace(u'{', QChar(0x2066)).replace(u'}', QChar(0x2069));
    };
    row("an option", ".B \\-\\-help", "{<b>--help</b>}");
    row("options", ".BR \\-h \", \" \\-\\-help", "{<b>-h</b>, <b>--help</b>}");
    row("a section", "انظر \\fBffmpeg\\fR(1).", "انظر {<b>ffmpeg</b>(1)}.");
    row("in brackets", "عنوان (\\fIfile:///...\\&\\fR)", "عنوان ({<i>file:///...</i>})");
    row("an end of brackets", "(ملف MP4)", "(ملف {MP4})");
    row("a dash", "reelshift \\- يحوّل", "{reelshift} - يحوّل");
    row("words alone", "قائمة: نافذة.", "قائمة: نافذة.");
}

void TestManual::rightToLeft() {
    QFETCH(QByteArray, line);
    QFETCH(QString, html);
    QCOMPARE(manualAsHtml(".SH S\n" + line + '\n', Qt::RightToLeft),
             QString(QStringLiteral("<h3 dir=rtl>\u2066S\u2069</h3><p dir=rtl>") + html +
                     QStringLiteral("</p>\n")));
}

REELSHIFT_TEST(tst_manual, TestManual, QApplication)
#include "tst_manual.moc"
