#include "Palettes.h"
#include "TestProgram.h"
#include "filelist/ProgressObject.h"
#include "table/ProgressCell.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QStandardItemModel>
#include <QTest>

#include <cmath>
#include <memory>

namespace {

constexpr QSize cellSize(205, 28);
constexpr QRect inner(0, 5, 200, 20);

struct Shown {
    QString record;
    QString status;
    bool bar = false;
    double progress = 0.0;
    QString step;
};

QPalette darkBarPalette() {
    QPalette dark(QColor(0x2d, 0x2d, 0x30));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x1e));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Highlight, QColor(0x2a, 0x60, 0x99));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    return dark;
}

QPalette lightPalette() {
    QPalette light(QColor(0xef, 0xef, 0xef));
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, Qt::black);
    light.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
    light.setColor(QPalette::HighlightedText, Qt::white);
    return light;
}

/// A cell with room around it, so that what is painted outside would be seen.
QImage painted(const Shown& shown, const QPalette& palette, QStyle::State state = {},
               Qt::LayoutDirection direction = Qt::LeftToRight) {
    QStandardItemModel model(1, 1);
    const QModelIndex index = model.index(0, 0);
    model.setData(index, shown.record, ProgressCell::StatusTextRole);
    model.setData(index, shown.status, ProgressCell::ProgressStatusRole);
    model.setData(index, shown.bar, ProgressCell::ShowsBarRole);
    model.setData(index, shown.progress, ProgressCell::BarProgressRole);
    model.setData(index, shown.step, ProgressCell::StepTextRole);

    QImage image(cellSize + QSize(40, 0), QImage::Format_RGB32);
    image.fill(palette.color(QPalette::Base));
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = QRect(QPoint(direction == Qt::RightToLeft ? 40 : 0, 0), cellSize);
    option.palette = palette;
    option.state = state | QStyle::State_Enabled | QStyle::State_Active;
    option.direction = direction;
    option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.showDecorationSelected = true;
    option.font = QApplication::font();
    option.fontMetrics = QFontMetrics(option.font);
    ProgressCell().paint(&painter, option, index);
    return image;
}

QColor filled(const QColor& below) {
    const auto mix = [](int over, int under) { return (over + under) / 2; };
    return {mix(28, below.red()), mix(162, below.green()), mix(230, below.blue())};
}

bool alike(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) <= 2 && std::abs(a.green() - b.green()) <= 2 &&
           std::abs(a.blue() - b.blue()) <= 2;
}

/// How many pixels of a line, from the left, have this colour.
int countAlike(const QImage& image, int y, const QColor& colour) {
    int count = 0;
    for (int x = 0; x < image.width(); ++x)
        count += alike(image.pixelColor(x, y), colour);
    return count;
}

/// The largest contrast that a pixel of the area has against `ground`.
double textContrast(const QImage& image, const QRect& area, const QColor& ground) {
    double best = 1.0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            best = std::max(best, contrast(image.pixelColor(x, y), ground));
    }
    return best;
}

Shown bar(int percent) {
    return {QString(), QStringLiteral("Converting"), true, percent / 100.0,
            QStringLiteral("%1 %").arg(percent)};
}

} // namespace

class tst_ProgressCell : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void incrementStep_data();
    void incrementStep();
    void eachFieldByItself();
    void showsTheBarOnlyWhileConverting_data();
    void showsTheBarOnlyWhileConverting();
    void innerRect();
    void fillRect_data();
    void fillRect();
    void fontOfTheBar();
    void pixelsOfTheBar_data();
    void pixelsOfTheBar();
    void fillBeginsAtTheRightInRightToLeft();
    void recordTextBeneath();
    void statusHidesTheRecordText();
    void isReadable_data();
    void isReadable();
    void sizeHintHoldsTheBar();
    void pictures();
};

void tst_ProgressCell::incrementStep_data() {
    QTest::addColumn<int>("percent");
    QTest::addColumn<double>("progress");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("status");

    const QString converting = QStringLiteral("Converting");
    QTest::newRow("0") << 0 << 0.0 << QStringLiteral("0 %") << converting;
    QTest::newRow("37") << 37 << 0.37 << QStringLiteral("37 %") << converting;
    QTest::newRow("100") << 100 << 1.0 << QStringLiteral("100 %") << converting;
    QTest::newRow("109") << 109 << 1.09 << QStringLiteral("109 %") << converting;
    // Kept: 110 also wipes the status.
    QTest::newRow("110") << 110 << 1.1 << QStringLiteral("110 %") << QString();
    QTest::newRow("111") << 111 << 1.11 << QStringLiteral("111 %") << converting;
}

void tst_ProgressCell::incrementStep() {
    QFETCH(int, percent);
    QFETCH(double, progress);
    QFETCH(QString, text);
    QFETCH(QString, status);

    ProgressObject object;
    QCOMPARE(object.currentStep(), 0);
    QVERIFY(object.statusString().isEmpty());
    // Shown in a job's first second, before it has made a step.
    QCOMPARE(object.textProgress().text(), QStringLiteral("0 %"));
    object.changestat(QStringLiteral("Converting"));
    object.incrementStep(percent);
    QCOMPARE(object.currentStep(), percent);
    QCOMPARE(object.textProgress().progress(), progress);
    QCOMPARE(object.textProgress().text(), text);
    QCOMPARE(object.statusString(), status);
}

void tst_ProgressCell::eachFieldByItself() {
    ProgressObject object;
    object.incrementStep(42);
    object.setCurrentStep(77);
    QCOMPARE(object.currentStep(), qint64{77});
    QCOMPARE(object.textProgress().text(), QStringLiteral("42 %"));
    TextProgress bar;
    bar.setProgress(0.5);
    bar.setText(QStringLiteral("half"));
    object.setTextProgress(bar);
    QCOMPARE(object.currentStep(), qint64{77});
    QCOMPARE(object.textProgress().progress(), 0.5);
    QCOMPARE(object.textProgress().text(), QStringLiteral("half"));
}

void tst_ProgressCell::showsTheBarOnlyWhileConverting_data() {
    QTest::addColumn<QString>("status");
    QTest::addColumn<bool>("bar");

    QTest::newRow("Converting") << QStringLiteral("Converting") << true;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("Failed") << QStringLiteral("Failed") << false;
    QTest::newRow("Converted") << QStringLiteral("Converted") << false;
    QTest::newRow("another case") << QStringLiteral("converting") << false;
    QTest::newRow("a blank more") << QStringLiteral("Converting ") << false;
}

void tst_ProgressCell::showsTheBarOnlyWhileConverting() {
    QFETCH(QString, status);
    QFETCH(bool, bar);

    ProgressObject object;
    object.incrementStep(42);
    object.changestat(status);
    QCOMPARE(object.showsBar(), bar);
    const Shown shown{QString(), object.statusString(), object.showsBar(),
                      object.textProgress().progress(), object.textProgress().text()};
    const QImage image = painted(shown, lightPalette());
    QCOMPARE(countAlike(image, inner.top(), filled(Qt::white)), bar ? 84 : 0);
}

void tst_ProgressCell::innerRect() {
    const QRect cell(10, 20, 100, 30);
    QCOMPARE(ProgressCell::innerRect(cell, Qt::LeftToRight), QRect(10, 25, 95, 22));
    QCOMPARE(ProgressCell::innerRect(cell, Qt::RightToLeft), QRect(15, 25, 95, 22));
}

void tst_ProgressCell::fillRect_data() {
    QTest::addColumn<double>("progress");
    QTest::addColumn<QRectF>("leftToRight");
    QTest::addColumn<QRectF>("rightToLeft");

    QTest::newRow("0") << 0.0 << QRectF(10, 5, 0, 20) << QRectF(210, 5, 0, 20);
    QTest::newRow("37") << 0.37 << QRectF(10, 5, 74, 20) << QRectF(136, 5, 74, 20);
    QTest::newRow("100") << 1.0 << QRectF(10, 5, 200, 20) << QRectF(10, 5, 200, 20);
    // Kept: the share is not clamped.
    QTest::newRow("110") << 1.1 << QRectF(10, 5, 220, 20) << QRectF(-10, 5, 220, 20);
}

void tst_ProgressCell::fillRect() {
    QFETCH(double, progress);

    const QRect bar(10, 5, 200, 20);
    QTEST(ProgressCell::fillRect(bar, progress, Qt::LeftToRight), "leftToRight");
    QTEST(ProgressCell::fillRect(bar, progress, Qt::RightToLeft), "rightToLeft");
}

void tst_ProgressCell::fontOfTheBar() {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(30);
    QCOMPARE(ProgressCell::barFont(font).pointSize(), 9);
    QCOMPARE(ProgressCell::barFont(font).family(), font.family());
}

void tst_ProgressCell::pixelsOfTheBar_data() {
    QTest::addColumn<int>("percent");
    QTest::addColumn<int>("pixels");

    QTest::newRow("0") << 0 << 0;
    QTest::newRow("37") << 37 << 74;
    QTest::newRow("100") << 100 << 200;
    QTest::newRow("110, clipped to the cell") << 110 << 205;
    QTest::newRow("absurd") << 2000000000 << 205;
}

void tst_ProgressCell::pixelsOfTheBar() {
    QFETCH(int, percent);
    QFETCH(int, pixels);

    const QImage image = painted(bar(percent), lightPalette());
    const QColor done = filled(Qt::white);
    for (const int y : {inner.top(), inner.bottom()}) {
        QCOMPARE(countAlike(image, y, done), pixels);
        if (pixels > 0) {
            QVERIFY(alike(image.pixelColor(0, y), done));
            QVERIFY(alike(image.pixelColor(pixels - 1, y), done));
        }
    }
    QCOMPARE(countAlike(image, inner.top() - 1, Qt::white), image.width());
    QCOMPARE(countAlike(image, inner.bottom() + 1, Qt::white), image.width());
    // The percentage stands in the middle.
    QVERIFY(textContrast(image, QRect(80, 5, 40, 20), pixels > 100 ? done : Qt::white) > 4.5 ||
            percent > 110);
}

void tst_ProgressCell::fillBeginsAtTheRightInRightToLeft() {
    const QImage image = painted(bar(37), lightPalette(), {}, Qt::RightToLeft);
    const QColor done = filled(Qt::white);
    const int right = 40 + cellSize.width() - 1;
    QCOMPARE(countAlike(image, inner.top(), done), 74);
    QVERIFY(alike(image.pixelColor(right, inner.top()), done));
    QVERIFY(alike(image.pixelColor(right - 73, inner.top()), done));
}

void tst_ProgressCell::recordTextBeneath() {
    const QImage image =
        painted({QStringLiteral("Waiting"), QString(), false, 0.42, {}}, lightPalette());
    QVERIFY(textContrast(image, QRect(0, 0, 80, 28), Qt::white) > 10);
    QCOMPARE(textContrast(image, QRect(100, 0, 100, 28), Qt::white), 1.0);
}

void tst_ProgressCell::statusHidesTheRecordText() {
    const QString failed = QStringLiteral("Failed");
    const QPalette palette = lightPalette();
    QCOMPARE(painted({QStringLiteral("Waiting"), failed, false, 0.0, {}}, palette),
             painted({QString(), failed, false, 0.0, {}}, palette));
    Shown over = bar(37);
    over.record = QStringLiteral("Waiting");
    QCOMPARE(painted(over, palette), painted(bar(37), palette));
}

void tst_ProgressCell::isReadable_data() {
    QTest::addColumn<bool>("dark");
    QTest::addColumn<bool>("selected");

    for (const bool dark : {false, true}) {
        for (const bool selected : {false, true})
            QTest::addRow("%s%s", dark ? "dark" : "light", selected ? ", selected" : "")
                << dark << selected;
    }
}

void tst_ProgressCell::isReadable() {
    QFETCH(bool, dark);
    QFETCH(bool, selected);

    const QPalette palette = dark ? darkBarPalette() : lightPalette();
    const QStyle::State state = selected ? QStyle::State_Selected : QStyle::State_None;
    const QRect middle(80, 5, 40, 20);
    for (const int percent : {0, 37, 100}) {
        const QImage image = painted(bar(percent), palette, state);
        QVERIFY(textContrast(image, middle, image.pixelColor(75, inner.top() + 1)) >= 3.5);
    }
    // What is done stands out from what is not.
    const QImage half = painted(bar(50), palette, state);
    QVERIFY(contrast(half.pixelColor(10, 6), half.pixelColor(190, 6)) > 1.3);

    const QImage status =
        painted({QString(), QStringLiteral("Failed"), false, 0, {}}, palette, state);
    QVERIFY(textContrast(status, QRect(0, 5, 60, 20), status.pixelColor(150, 15)) > 3);
}

void tst_ProgressCell::sizeHintHoldsTheBar() {
    QStandardItemModel model(1, 1);
    QStyleOptionViewItem option;
    option.font = QApplication::font();
    option.fontMetrics = QFontMetrics(option.font);
    const QFontMetrics metrics(ProgressCell::barFont(option.font));
    const QSize hint = ProgressCell().sizeHint(option, model.index(0, 0));
    const QRect room = ProgressCell::innerRect(QRect(QPoint(), hint), Qt::LeftToRight);
    QVERIFY(room.height() >= metrics.height());
    QVERIFY(room.width() >= metrics.horizontalAdvance(QStringLiteral("100 %")));
}

void tst_ProgressCell::pictures() {
    QImage sheet(4 * (cellSize.width() + 45), 6 * cellSize.height(), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    int x = 0;
    for (const bool dark : {false, true}) {
        for (const auto state : {QStyle::State_None, QStyle::State_Selected}) {
            const QPalette palette = dark ? darkBarPalette() : lightPalette();
            int y = 0;
            const Shown all[] = {{QStringLiteral("Waiting"), {}, false, 0, {}},
                                 {{}, QStringLiteral("Failed"), false, 0, {}},
                                 bar(0),
                                 bar(37),
                                 bar(100),
                                 bar(110)};
            for (const Shown& shown : all) {
                painter.drawImage(x, y, painted(shown, palette, state));
                y += cellSize.height();
            }
            x += cellSize.width() + 45;
        }
    }
    QDir folder(QCoreApplication::applicationDirPath());
    folder.mkpath(QStringLiteral("pictures"));
    QVERIFY(sheet.save(folder.filePath(QStringLiteral("pictures/progresscell.png"))));
}

REELSHIFT_TEST(tst_progresscell, tst_ProgressCell, QApplication)
#include "tst_progresscell.moc"
