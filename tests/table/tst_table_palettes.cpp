#include "Palettes.h"
#include "TestProgram.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"
#include "table/EmptyList.h"
#include "table/TableApplication.h"
#include "table/TableWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QStyleFactory>
#include <QTest>

namespace {

constexpr double least = 4.5;     // for text
constexpr double leastSign = 3.0; // for images, and for what is locked

/// A converting row, a paused one, a converted one and a waiting one.
struct PaintedTable : TableWindow {
    PaintedTable() : TableWindow(4) {
        const auto mark = [this](int row, const char* text, const QString& image) {
            f.list.recordAt(row)->set(key::progress, getLocalString(text));
            f.list.recordAt(row)->set(key::image, image);
        };
        mark(0, "IDS_TXT_STATUS_WAITING", rowimage::pause);
        setBar(37);
        mark(1, "IDS_TXT_STATUS_PAUSED", rowimage::resume);
        mark(2, "IDS_TXT_STATUS_CONVERTED", rowimage::remove);
        f.model.reload();
    }
    void setBar(int percent) {
        f.list.progressObjects[0]->changestat(status::STATCR);
        f.list.progressObjects[0]->incrementStep(percent);
        f.model.rowChanged(0);
    }
    [[nodiscard]] QImage picture(int row, TableColumn column) {
        return view.viewport()->grab(view.visualRect(f.cell(row, column))).toImage();
    }
    void save(const char* name) {
        QDir folder(QCoreApplication::applicationDirPath());
        folder.mkpath(QStringLiteral("pictures"));
        view.grab().save(folder.filePath(
            QStringLiteral("pictures/table-%1.png").arg(QString::fromLatin1(name))));
    }
};

/// The palette's own colours may stand less far apart than text should; the table makes it no
/// worse.
double allowed(QPalette::ColorRole ink, QPalette::ColorRole ground, double wanted) {
    const QPalette palette = QApplication::palette();
    constexpr double thinness = 0.9; // of letters, which hardly ever fill a pixel
    return std::min(wanted, thinness * contrast(palette.color(ink), palette.color(ground)));
}

} // namespace

/// The colours of the table in each palette, measured in pictures of it.
class TestTablePalettes final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void textStandsOut_data() { addPalettes(); }
    void textStandsOut();
    void selectedTextStandsOut_data() { addPalettes(); }
    void selectedTextStandsOut();
    void selectedTextInAnotherWindow();
    void lockedTextCanBeRead_data() { addPalettes(); }
    void lockedTextCanBeRead();
    void theBarCanBeRead_data() { addPalettes(); }
    void theBarCanBeRead();
    void theButtonsStandOut_data() { addPalettes(); }
    void theButtonsStandOut();
    void theCheckBoxesStandOut_data() { addPalettes(); }
    void theCheckBoxesStandOut();
    void theQuietTextCanBeRead_data() { addPalettes(); }
    void theQuietTextCanBeRead();
    void theFocusStandsOut_data() { addPalettes(); }
    void theFocusStandsOut();
    void aChangeOfThePaletteReachesAll();

private:
    static void addPalettes();
    static void check(const QImage& picture, double wanted, const char* what, int pixels = 20);
};

void TestTablePalettes::addPalettes() {
    QTest::addColumn<int>("palette");
    for (int i = 0; i < int(std::size(palettes::all)); ++i)
        QTest::newRow(palettes::all[i].name) << i;
}

void TestTablePalettes::init() {
    if (!QTest::currentDataTag())
        return;
    QFETCH(int, palette);
    QApplication::setPalette(palettes::all[palette].make());
}

void TestTablePalettes::cleanup() {
    QApplication::setPalette(palettes::light());
}

void TestTablePalettes::check(const QImage& picture, double wanted, const char* what, int pixels) {
    const double found = contrastIn(picture, pixels);
    QVERIFY2(found >= wanted,
             qPrintable(QStringLiteral("%1: %2").arg(QString::fromLatin1(what)).arg(found)));
}

void TestTablePalettes::textStandsOut() {
    PaintedTable s;
    s.save(QTest::currentDataTag());
    for (const TableColumn each : {TableColumn::Name, TableColumn::Duration, TableColumn::Audio,
                                   TableColumn::Res, TableColumn::Cmb, TableColumn::Progress}) {
        check(s.picture(2, each), least, "even row");
        check(s.picture(3, each), least, "odd row");
    }
}

void TestTablePalettes::selectedTextStandsOut() {
    PaintedTable s;
    s.view.selectAll();
    s.save(qPrintable(QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral("-selected")));
    const double wanted = allowed(QPalette::HighlightedText, QPalette::Highlight, least);
    for (const TableColumn each : {TableColumn::Name, TableColumn::Duration, TableColumn::Audio,
                                   TableColumn::Res, TableColumn::Cmb, TableColumn::Progress})
        check(s.picture(2, each), wanted, "selected");
}

// As desktops have it that fade the selection in windows that are not in use.
void TestTablePalettes::selectedTextInAnotherWindow() {
    QPalette palette = palettes::light();
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0xc2, 0xe0, 0xf5));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, Qt::black);
    QApplication::setPalette(palette);
    PaintedTable s;
    s.view.selectAll();
    QApplication::setActiveWindow(nullptr);
    QTRY_VERIFY(!s.view.isActiveWindow());
    for (const TableColumn each : {TableColumn::Name, TableColumn::Duration, TableColumn::Audio,
                                   TableColumn::Res, TableColumn::Cmb, TableColumn::Progress})
        check(s.picture(2, each), least, "selected");
    s.f.state.isConversionRunning = true;
    s.f.model.reload();
    for (const TableColumn each : {TableColumn::Res, TableColumn::Cmb})
        check(s.picture(2, each), leastSign, "locked and selected");
}

void TestTablePalettes::lockedTextCanBeRead() {
    PaintedTable s;
    s.f.state.isConversionRunning = true;
    s.f.model.reload();
    for (const TableColumn each : {TableColumn::Res, TableColumn::Cmb}) {
        check(s.picture(2, each), leastSign, "locked");
        check(s.picture(3, each), leastSign, "locked, odd row");
    }
    s.view.selectAll();
    s.save(qPrintable(QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral("-locked")));
    for (const TableColumn each : {TableColumn::Res, TableColumn::Cmb})
        check(s.picture(2, each),
              0.9 * allowed(QPalette::HighlightedText, QPalette::Highlight, leastSign),
              "locked and selected");
}

void TestTablePalettes::theBarCanBeRead() {
    PaintedTable s;
    for (const bool isSelected : {false, true}) {
        if (isSelected)
            s.view.selectAll();
        for (const int percent : {3, 50, 100}) {
            s.setBar(percent);
            QImage bar = s.picture(0, TableColumn::Progress);
            // The two halves of the text, each done or not. Kept: the fill lies over the text.
            const int middle = bar.width() / 2;
            for (const int left : {middle - 14, middle})
                check(bar.copy(left, 8, 14, bar.height() - 14), leastSign,
                      qPrintable(QStringLiteral("text from %1 at %2 %").arg(left).arg(percent)), 5);
        }
    }
}

void TestTablePalettes::theButtonsStandOut() {
    PaintedTable s;
    for (const int row : {0, 1, 2})
        check(s.picture(row, TableColumn::Im), leastSign, "button");
    s.view.selectAll();
    for (const int row : {0, 1, 2})
        check(s.picture(row, TableColumn::Im), 1.8, "disc of a selected row's button");
}

void TestTablePalettes::theCheckBoxesStandOut() {
    PaintedTable s;
    s.f.list.setCheck(0, 0);
    s.f.list.setCheck(1, 1);
    s.f.list.setCheck(2, 0);
    s.f.list.setCheck(3, 1);
    s.f.model.reload();
    for (const int row : {0, 1}) {
        const QImage cell = s.picture(row, TableColumn::Check);
        check(cell.copy(0, 0, cell.width() / 2, cell.height()), 1.4, "check box");
    }
    check(s.view.btnSelectAll()->grab().toImage(), 1.4, "box of the header");
}

void TestTablePalettes::theQuietTextCanBeRead() {
    TableWindow w(0);
    w.view.clearFocus();
    const EmptyList empty(w.view, w.view.viewport()->rect());
    check(w.view.viewport()->grab(empty.sentence()).toImage(), least, "quiet text");
}

void TestTablePalettes::theFocusStandsOut() {
    PaintedTable s;
    s.view.clearFocus();
    s.view.setFocus(Qt::TabFocusReason);
    for (const bool isSelected : {false, true}) {
        s.view.selectionModel()->setCurrentIndex(
            s.f.cell(2, TableColumn::Audio),
            QItemSelectionModel::Rows |
                (isSelected ? QItemSelectionModel::Select : QItemSelectionModel::Clear));
        const QImage with = s.picture(2, TableColumn::Audio);
        // The frame, a pixel inside the cell, and what it frames.
        const QColor ground = with.pixelColor(with.width() - 5, with.height() / 2);
        const double found = contrast(ground, with.pixelColor(with.width() / 2, 1));
        const double wanted = std::min(
            leastSign,
            0.97 * contrast(QApplication::palette().color(isSelected ? QPalette::HighlightedText
                                                                     : QPalette::Highlight),
                            ground));
        QVERIFY2(found >= wanted, qPrintable(QString::number(found)));
        QVERIFY2(found >= 2.0, qPrintable(QString::number(found)));
    }
}

void TestTablePalettes::aChangeOfThePaletteReachesAll() {
    for (const palettes::Named& next : palettes::all) {
        PaintedTable old;
        QApplication::setPalette(next.make());
        QCoreApplication::processEvents();
        PaintedTable fresh;
        old.view.clearFocus();
        fresh.view.clearFocus();
        QApplication::setActiveWindow(nullptr);
        QCoreApplication::processEvents();
        const QImage changed = old.view.grab().toImage();
        QVERIFY2(changed == fresh.view.grab().toImage(), next.name);
    }
}

namespace {

class FusionApplication final : public TableApplication {
public:
    FusionApplication(int& argc, char** argv) : TableApplication(argc, argv) {
        setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    }
};

} // namespace

REELSHIFT_TEST(tst_table_palettes, TestTablePalettes, FusionApplication)
#include "tst_table_palettes.moc"
