#include "TestProgram.h"
#include "help/AboutText.h"
#include "help/EncoderVersion.h"
#include "help/ManualText.h"
#include "platform/LocalizedStrings.h"

#include <QApplication>
#include <QLocale>
#include <QTextDocument>

/// What the help and About are made of.
class TestHelpTexts final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pages_data();
    void pages();
    void ownPage();
    void versions_data();
    void versions();
    void about();
};

void TestHelpTexts::pages_data() {
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<QString>("html");
    const auto row = [](const char* what, const char* page, const QString& html) {
        QTest::newRow(what) << QByteArray(page) << html;
    };
    row("paragraphs", ".TH A 1\n.SH NAME\na \\- b\nc\n.PP\nd\n",
        QStringLiteral("<h3>NAME</h3><p>a - b c</p>\n<p>d</p>\n"));
    row("fonts", ".SH S\n.B x y\n.BR ffmpeg (1),\n.IR \"a b\" c\n",
        QStringLiteral("<h3>S</h3><p><b>x y</b> <b>ffmpeg</b>(1), <i>a b</i>c</p>\n"));
    row("terms", ".SH S\n.TP\n.B x\nsays\nmore\n.TP\n\\fBy\\fR, z\nother\n",
        QStringLiteral("<h3>S</h3><dt><b>x</b></dt>\n<dd>says more</dd>\n<dt><b>y</b>, z</dt>\n"
                       "<dd>other</dd>\n"));
    row("lines", ".SH S\n.PP\n.RS\n.nf\na  b\nc\n.fi\n.RE\nd\n",
        QStringLiteral("<h3>S</h3><pre>a  b\nc</pre>\n<p>d</p>\n"));
    row("signs", ".SH S\n\\(ti/x \\(dqq\\(dq a<b & c\\&\n",
        QStringLiteral("<h3>S</h3><p>~/x \"q\" a&lt;b &amp; c</p>\n"));
    row("letters that need no blanks", ".SH S\n\u3042\u3002\n\u3044\nx\uff1b\n\u3046\n",
        QStringLiteral("<h3>S</h3><p>\u3042\u3002\u3044 x\uff1b\u3046</p>\n"));
    row("what is said of lines", ".\\\" x\n.mso ja.tmac\n.nh\n.ad l\n.ds AD l\n.SH S\na\n",
        QStringLiteral("<h3>S</h3><p>a</p>\n"));
    row("a page that breaks off", ".SH S\nx\\", QStringLiteral("<h3>S</h3><p>x</p>\n"));
    row("nothing", "", QString());
}

void TestHelpTexts::pages() {
    QFETCH(QByteArray, page);
    QTEST(manualAsHtml(page), "html");
}

void TestHelpTexts::ownPage() {
    QTextDocument document;
    document.setHtml(manualHtml(QStringLiteral("en")));
    const QString text = document.toPlainText();
    for (const char* each :
         {"SYNOPSIS", "reelshift [MOVIE...]", "--version", "~/.local/state/reelshift",
          "journalctl --user _COMM=reelshift", "ffprobe(1)"})
        QVERIFY2(text.contains(QString::fromLatin1(each)), each);
    // Nothing of the formatter's language is left.
    QVERIFY2(!text.contains(u'\\') && !text.contains(QStringLiteral("\n.")), qPrintable(text));
}

void TestHelpTexts::versions_data() {
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<QString>("version");
    QTest::newRow("Debian's") << QByteArray(
                                     "ffmpeg version 5.1.9-0+deb12u1 Copyright (c) 2000\n  b")
                              << QStringLiteral("5.1.9-0+deb12u1");
    QTest::newRow("after other words")
        << QByteArray("x\nffmpeg version 7.1\nffmpeg version 2 z") << QStringLiteral("7.1");
    QTest::newRow("cut") << QByteArray("ffmpeg version N-1") << QStringLiteral("N-1");
    QTest::newRow("none") << QByteArray("reelshift: no ffmpeg") << QString();
}

void TestHelpTexts::versions() {
    QFETCH(QByteArray, report);
    QTEST(encoderVersionIn(report), "version");
}

void TestHelpTexts::about() {
    const StringTable strings(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale::English);
    QTextDocument document;
    document.setHtml(aboutHtml({QStringLiteral("Program <1>"), QStringLiteral("1.2.3.4"),
                                QStringLiteral("5.1"), QStringLiteral("/usr/bin/ffmpeg")}));
    const QString text = document.toPlainText();
    QVERIFY2(text.startsWith(QStringLiteral("Program <1> 1.2.3.4\n")), qPrintable(text));
    QVERIFY(text.contains(getLocalString("IDS_ABOUT_ENCODER")
                              .arg(QStringLiteral("5.1"), QStringLiteral("/usr/bin/ffmpeg"))));
    QVERIFY(text.contains(QStringLiteral("Qt ") + QString::fromLatin1(qVersion())));
    document.setHtml(aboutHtml({QStringLiteral("P"), QStringLiteral("1"), QString(), QString()}));
    QVERIFY(document.toPlainText().contains(getLocalString("IDS_ABOUT_NO_ENCODER")));
}

REELSHIFT_TEST(tst_help_texts, TestHelpTexts, QApplication)
#include "tst_help_texts.moc"
