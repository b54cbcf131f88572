#include "TestProgram.h"
#include "opening/CommandLine.h"
#include "opening/DisplayName.h"
#include "opening/MovieAddress.h"
#include "table/DroppedFiles.h"

#include <QCoreApplication>
#include <QUrl>

Q_DECLARE_METATYPE(CommandLine::Wish)

/// What a start is asked for, and which movies it names.
class TestCommandLine final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void wishes_data();
    void wishes();
    void movies_data();
    void movies();
    void namesComeBack_data();
    void namesComeBack();
    void displays_data();
    void displays();
};

namespace {

CommandLine readLine(const QByteArrayList& arguments) {
    return readCommandLine(QByteArrayList{"reelshift"} + arguments, "/folder");
}

} // namespace

void TestCommandLine::wishes_data() {
    QTest::addColumn<QByteArrayList>("arguments");
    QTest::addColumn<CommandLine::Wish>("wish");
    QTest::addColumn<QString>("mistake");
    using Wish = CommandLine::Wish;
    const auto row = [](const QByteArrayList& arguments, Wish wish, const QString& mistake = {}) {
        QTest::newRow(QByteArray("reelshift " + arguments.join(' ')).constData())
            << arguments << wish << mistake;
    };
    row({}, Wish::Window);
    row({"a.mp4"}, Wish::Window);
    row({"-h"}, Wish::Help);
    row({"a.mp4", "--help"}, Wish::Help);
    row({"-v", "--help"}, Wish::Help);
    row({"--version"}, Wish::Version);
    row({"-v"}, Wish::Version);
    row({"--gapplication-service"}, Wish::Service);
    row({"--", "--help"}, Wish::Window);
    row({"--hlep"}, Wish::Mistake, QStringLiteral("--hlep"));
    row({"-x"}, Wish::Mistake, QStringLiteral("-x"));
    row({"--\xc3\xa4"
         "b"},
        Wish::Mistake, QStringLiteral("--\u00e4b"));
    row({"--help", "--hlep"}, Wish::Mistake, QStringLiteral("--hlep"));
    // Those of every Qt program, and how a session manager starts programs again.
    row({"-platform", "offscreen", "a.mp4"}, Wish::Window);
    row({"--style=fusion"}, Wish::Window);
    row({"-session", "10a_1"}, Wish::Window);
}

void TestCommandLine::wishes() {
    QFETCH(QByteArrayList, arguments);
    const CommandLine line = readLine(arguments);
    QTEST(line.wish, "wish");
    QTEST(line.mistake, "mistake");
}

void TestCommandLine::movies_data() {
    QTest::addColumn<QByteArrayList>("arguments");
    QTest::addColumn<QStringList>("addresses");
    const auto row = [](const char* what, const QByteArrayList& arguments,
                        const QStringList& addresses) {
        QTest::newRow(what) << arguments << addresses;
    };
    row("paths", {"a.mp4", "/b/c.mp4", "../d.mp4"},
        {QStringLiteral("file:///folder/a.mp4"), QStringLiteral("file:///b/c.mp4"),
         QStringLiteral("file:///folder/../d.mp4")});
    row("an address, and a name that looks like one", {"file:///a%20b.mp4", "file:a.mp4"},
        {QStringLiteral("file:///a%20b.mp4"), QStringLiteral("file:///folder/file%3Aa.mp4")});
    row("after the options", {"--", "-v"}, {QStringLiteral("file:///folder/-v")});
    row("signs of addresses", {"a b#c?d%e.mp4"},
        {QStringLiteral("file:///folder/a%20b%23c%3Fd%25e.mp4")});
    row("no text", {"\xff\xfe.mp4"}, {QStringLiteral("file:///folder/%FF%FE.mp4")});
}

void TestCommandLine::movies() {
    QFETCH(QByteArrayList, arguments);
    QTEST(readLine(arguments).addresses, "addresses");
}

void TestCommandLine::namesComeBack_data() {
    QTest::addColumn<QByteArray>("name");
    for (const char* name :
         {"plain.mp4", " two  blanks ", "line\nend\t", "100%41 #1?.mp4", "a;b&c=d",
          "\xd9\x85\xd9\x82\xd8\xb7\xd8\xb9.mp4", "\"'`$\\", "~", "file:"})
        QTest::newRow(name) << QByteArray(name);
}

void TestCommandLine::namesComeBack() {
    QFETCH(QByteArray, name);
    const QUrl url = QUrl::fromEncoded(movieAddress(name, "/f \xc3\xa9").toUtf8());
    QCOMPARE(droppedFiles({url}), QStringList(QString::fromUtf8("/f \xc3\xa9/" + name)));
}

void TestCommandLine::displays_data() {
    QTest::addColumn<QStringList>("one");
    QTest::addColumn<QStringList>("other");
    QTest::addColumn<bool>("same");
    const auto row = [](const char* what, const QStringList& one, const QStringList& other,
                        bool same) { QTest::newRow(what) << one << other << same; };
    const QString w1 = QStringLiteral("/run/user/1/wayland-0");
    const QString w2 = QStringLiteral("/run/user/1/wayland-1");
    const QString x1 = QStringLiteral(":0");
    const QString x2 = QStringLiteral(":1");
    row("one X server", {QString(), x1}, {QString(), x1}, true);
    row("two X servers", {QString(), x1}, {QString(), x2}, false);
    row("one compositor", {w1, x1}, {w1, x1}, true);
    row("one compositor, no X there", {w1, x1}, {w1, QString()}, true);
    row("two compositors", {w1, x1}, {w2, x1}, false);
    row("from a program that knows X alone", {w1, x1}, {QString(), x1}, true);
    row("a terminal without any", {w1, x1}, {QString(), QString()}, false);
    row("nothing in common", {w1, QString()}, {QString(), x1}, false);
}

void TestCommandLine::displays() {
    QFETCH(QStringList, one);
    QFETCH(QStringList, other);
    QFETCH(bool, same);
    const DisplayName left{one[0], one[1]};
    const DisplayName right{other[0], other[1]};
    QCOMPARE(isSameDisplay(left, right), same);
    QCOMPARE(isSameDisplay(right, left), same);
    QCOMPARE(isSameDisplay(left, DisplayName::fromText(right.text())), same);
}

REELSHIFT_TEST(tst_command_line, TestCommandLine, QCoreApplication)
#include "tst_command_line.moc"
