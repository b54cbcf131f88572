#include "TestProgram.h"
#include "update/ServerDocument.h"

#include <QtTest>

namespace {

const QString none = QStringLiteral("(none)");

QByteArray repeated(const QByteArray& text, qsizetype bytes) {
    return text.repeated(bytes / text.size() + 1);
}

QByteArray numbered(const QByteArray& before, const QByteArray& after, qsizetype bytes) {
    QByteArray all;
    for (int i = 0; all.size() < bytes; ++i)
        all += before + QByteArray::number(i) + after;
    return all;
}

} // namespace

class TestServerDocument final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void readsAnotherVersionElement();
    void saysNothingWhenCutAnywhere();
    void takesRubbishCalmly_data();
    void takesRubbishCalmly();
    void refusesWhatTakesLong_data();
    void refusesWhatTakesLong();
    void readsAsMuchAsIsFetched();
};

void TestServerDocument::reads_data() {
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("url");

    const QByteArray setup = "<setupFile><url>http://a/b.run</url></setupFile>";
    QTest::newRow("normal") << "<?xml version=\"1.0\" encoding=\"UTF-8\"?><reelshift>"
                               "<version>1.0.2.3</version>" +
                                   setup + "</reelshift>"
                            << "1.0.2.3"
                            << "http://a/b.run";
    QTest::newRow("CDATA") << QByteArray("<r><version><![CDATA[1.0.2.3]]></version><setupFile>"
                                         "<url><![CDATA[http://a/?b&c]]></url></setupFile></r>")
                           << "1.0.2.3"
                           << "http://a/?b&c";
    QTest::newRow("CDATA beside text")
        << QByteArray("<r><version>1.0<![CDATA[.2]]>.3</version></r>") << "1.0.2.3" << none;
    QTest::newRow("white space is kept")
        << QByteArray("<r>\n <version>\n 1.0.2.3 </version>\n <setupFile>\n  <url> http://a/b\n"
                      "</url></setupFile>\n</r>\n")
        << "\n 1.0.2.3 "
        << " http://a/b\n";
    QTest::newRow("white space alone") << QByteArray("<r><version> \n</version></r>") << " \n"
                                       << none;
    QTest::newRow("the last version counts")
        << QByteArray("<r><version>1.0.0.1</version><x/><version>1.0.0.2</version></r>")
        << "1.0.0.2" << none;
    QTest::newRow("an empty last version counts")
        << QByteArray("<r><version>1.0.0.1</version><version/></r>") << "" << none;
    QTest::newRow("the last url counts")
        << QByteArray("<r><setupFile><url>http://a/1</url><url>http://a/2</url></setupFile>"
                      "<setupFile><url>http://a/3</url></setupFile><setupFile/></r>")
        << none << "http://a/3";
    QTest::newRow("no setupFile") << QByteArray("<r><version>9.9.9.9</version></r>") << "9.9.9.9"
                                  << none;
    QTest::newRow("no url") << QByteArray("<r><setupFile><size>3</size></setupFile></r>") << none
                            << none;
    QTest::newRow("url outside setupFile")
        << QByteArray("<r><url>http://a/1</url><x><url>http://a/2</url></x></r>") << none << none;
    QTest::newRow("url too deep inside setupFile")
        << QByteArray("<r><setupFile><x><url>http://a/1</url></x></setupFile></r>") << none << none;
    QTest::newRow("version too deep")
        << QByteArray("<r><x><version>1.0.0.1</version></x></r>") << none << none;
    QTest::newRow("version as the root")
        << QByteArray("<version>1.0.0.1</version>") << none << none;
    QTest::newRow("other case") << QByteArray("<r><Version>1.0.0.1</Version></r>") << none << none;
    QTest::newRow("text of nested elements")
        << QByteArray("<r><version>1.<b>0</b>.<i>2</i>.3<!-- no --></version></r>") << "1.0.2.3"
        << none;
    QTest::newRow("references") << QByteArray("<r><setupFile><url>http://a/?b&amp;c&#x3d;1</url>"
                                              "</setupFile></r>")
                                << none << "http://a/?b&c=1";
    QTest::newRow("undeclared prefix")
        << QByteArray("<n:r><n:version>9.9.9.9</n:version><version>1.0.0.1</version></n:r>")
        << "1.0.0.1" << none;
    QTest::newRow("document type") << QByteArray("<!DOCTYPE r SYSTEM \"http://a/r.dtd\">"
                                                 "<r><version>1.0.0.1</version></r>")
                                   << "1.0.0.1" << none;
    QTest::newRow("not ASCII") << QByteArray("<r><setupFile><url>http://a/\xc3\xa9</url>"
                                             "</setupFile></r>")
                               << none << QStringLiteral("http://a/\u00e9");
    QTest::newRow("byte order mark")
        << QByteArray("\xef\xbb\xbf<r><version>1.0.0.1</version></r>") << "1.0.0.1" << none;
}

void TestServerDocument::reads() {
    QFETCH(QByteArray, document);
    const ServerDocument found = parseServerDocument(document);
    QVERIFY2(found.error.isEmpty(), qPrintable(found.error));
    QTEST(found.version.value_or(none), "version");
    QTEST(found.url.value_or(none), "url");
}

void TestServerDocument::readsAnotherVersionElement() {
    const QByteArray document = "<r><version>1.0.0.1</version><beta>1.0.0.2</beta></r>";
    QCOMPARE(parseServerDocument(document, QStringLiteral("beta")).version.value(),
             QStringLiteral("1.0.0.2"));
    QVERIFY(!parseServerDocument(document, QStringLiteral("alpha")).version);
}

void TestServerDocument::saysNothingWhenCutAnywhere() {
    const QByteArray document = "<?xml version='1.0'?><!-- c --><r><version><![CDATA[9.9.9.9]]>"
                                "</version><setupFile><url>http://a/b</url></setupFile></r>";
    for (qsizetype length = 0; length < document.size(); ++length) {
        const ServerDocument found = parseServerDocument(document.left(length));
        QVERIFY2(!found.version && !found.url && !found.error.isEmpty(),
                 qPrintable(QString::number(length)));
    }
    QVERIFY(parseServerDocument(document).version);
}

void TestServerDocument::takesRubbishCalmly_data() {
    QTest::addColumn<QByteArray>("document");
    constexpr qsizetype large = maximumServerDocumentSize - 100;
    const QByteArray sound = "<r><version>9.9.9.9</version></r>";

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("white space") << QByteArray(" \n\t");
    QTest::newRow("page") << QByteArray("<html><body><p>It works!<br></body></html>");
    QTest::newRow("words") << QByteArray("rubbish");
    QTest::newRow("zeros") << QByteArray(large, '\0');
    QTest::newRow("not UTF-8") << QByteArray("<r><version>\xff\xfe</version></r>");
    QTest::newRow("unknown encoding") << "<?xml version='1.0' encoding='EBCDIC-X'?>" + sound;
    QTest::newRow("after the end") << sound + "<r/>";
    QTest::newRow("after the end, further on") << sound + QByteArray(20000, ' ') + "x";
    QTest::newRow("unknown entity") << QByteArray("<r><version>&x;</version></r>");
    QTest::newRow("larger than is read") << sound + QByteArray(maximumServerDocumentSize, ' ');
    QTest::newRow("deep") << repeated("<a>", large);
}

void TestServerDocument::takesRubbishCalmly() {
    QFETCH(QByteArray, document);
    const ServerDocument found = parseServerDocument(document);
    QVERIFY(!found.version);
    QVERIFY(!found.url);
    QVERIFY(!found.error.isEmpty());
}

void TestServerDocument::refusesWhatTakesLong_data() {
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("error");
    constexpr qsizetype large = maximumServerDocumentSize - 100;
    const QString declares = QStringLiteral("Declarations");
    const QString longToken = QStringLiteral("longer than 64 KB");

    QByteArray laughs = "<!DOCTYPE r [<!ENTITY a \"lol\">";
    for (char c = 'b'; c <= 'j'; ++c) {
        const QByteArray before = QByteArray("&") + static_cast<char>(c - 1) + ";";
        laughs += QByteArray("<!ENTITY ") + c + " \"" + before.repeated(10) + "\">";
    }
    QTest::newRow("billion laughs") << laughs + "]><r><version>&j;</version></r>" << declares;
    QTest::newRow("one large entity, often")
        << "<!DOCTYPE r [<!ENTITY a \"" + QByteArray(4000, 'x') + "\">]><r><version>" +
               repeated("&a;", large / 2) + "</version></r>"
        << declares;
    QTest::newRow("entity from a file")
        << QByteArray("<!DOCTYPE r [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>"
                      "<r><version>&a;</version></r>")
        << declares;
    QTest::newRow("many attributes") << "<r " + numbered("a", "='' ", large) + "/>" << longToken;
    QTest::newRow("many prefixes")
        << "<r " + numbered("xmlns:a", "='u' ", large) + "/>" << longToken;
    QTest::newRow("many declared attributes")
        << "<!DOCTYPE r [" + numbered("<!ATTLIST r a", " CDATA ''>", large) + "]><r/>" << longToken;
    QTest::newRow("one long text")
        << "<r><version>" + QByteArray(large, '1') + "</version></r>" << longToken;
}

/// Unguarded, the reader took 3 to 20 s over most of these.
void TestServerDocument::refusesWhatTakesLong() {
    QFETCH(QByteArray, document);
    QFETCH(QString, error);
    const ServerDocument found = parseServerDocument(document);
    QVERIFY(!found.version);
    QVERIFY2(found.error.contains(error), qPrintable(found.error));
}

void TestServerDocument::readsAsMuchAsIsFetched() {
    const QByteArray start = "<r>";
    const QByteArray end = "<version>9.9.9.9</version></r>";
    QByteArray document = start + repeated("<a/>", 1024 * 1000) + end;
    QCOMPARE(parseServerDocument(document).version.value(), QStringLiteral("9.9.9.9"));

    constexpr qsizetype depth = 140000;
    document = QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
    QVERIFY(document.size() < maximumServerDocumentSize);
    QVERIFY(parseServerDocument(document).error.isEmpty());
}

REELSHIFT_TEST(test_server_document, TestServerDocument, NoApplication)
#include "TestServerDocument.moc"
