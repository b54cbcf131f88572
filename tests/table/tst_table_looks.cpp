#include "Palettes.h"
#include "TestProgram.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"
#include "table/EmptyList.h"
#include "table/FileTableDelegates.h"
#include "table/ProgressCell.h"
#include "table/TableApplication.h"
#include "table/TableWindow.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QHeaderView>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

/// Notes with which states cells and the panel of a row's button are drawn, and gives a check mark
/// no ground of its own, as some styles do.
class NotingStyle final : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_PanelItemViewItem)
            hovered = hovered || option->state & State_MouseOver;
        if (element == PE_PanelButtonTool)
            panels.push_back(option->state);
        if (element == PE_PanelItemViewRow && !(option->state & State_Enabled))
            lockedGrounds.push_back(option->palette.color(QPalette::AlternateBase));
        if (element == PE_IndicatorItemViewItemCheck && !givesGrounds)
            return painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    mutable std::vector<State> panels;
    mutable std::vector<QColor> lockedGrounds; ///< of the rows, under cells that are locked
    bool givesGrounds = true;
    mutable bool hovered = false; ///< a cell is drawn as if the pointer meant it
};

QImage pictureOf(TableWindow& w, int row, TableColumn column) {
    return w.view.viewport()->grab(w.view.visualRect(w.f.cell(row, column))).toImage();
}

/// Pixels that are told apart without colour.
int unlikePixels(const QImage& one, const QImage& other) {
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            count += contrast(one.pixelColor(x, y), other.pixelColor(x, y)) >= 2.0;
    }
    return count;
}

void usePalette() {
    QFETCH(int, palette);
    QApplication::setPalette(palettes::all[palette].make());
}

} // namespace

/// What the table makes of the style, the font and the colours that it is given.
class TestTableLooks final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void aRowHasRoomForAllThatStandsInIt_data();
    void aRowHasRoomForAllThatStandsInIt();
    void aLargerFontMakesRowsHigher();
    void aLargerFontAsksForAWiderList();
    void aClickLeavesNoMark();
    void theEmptyListHasAPicture_data();
    void theEmptyListHasAPicture();
    void theEmptyListIsSmall();
    void aLongNameShowsItsEnd();
    void aButtonRisesUnderThePointer();
    void checkedAndSelectedAreToldApart_data() { addPalettes(); }
    void checkedAndSelectedAreToldApart();
    void aCheckBoxHasItsGroundInASelectedRow_data() { addPalettes(); }
    void aCheckBoxHasItsGroundInASelectedRow();
    void aSelectedRowIsSeenWithoutColour_data() { addPalettes(); }
    void aSelectedRowIsSeenWithoutColour();
    void whatCanBeChosenHasAnArrow_data() { addPalettes(); }
    void whatCanBeChosenHasAnArrow();
    void lockedCellsStandOnTheirRowsGround();
    void theTipNamesTheSizes();
    void aTextThatItsArrowCutsIsTold();
    void theGrooveOfABarIsSeen_data() { addPalettes(); }
    void theGrooveOfABarIsSeen();

private:
    static void addPalettes();

    const QFont usualFont_ = QApplication::font();
};

void TestTableLooks::addPalettes() {
    QTest::addColumn<int>("palette");
    for (int i = 0; i < int(std::size(palettes::all)); ++i)
        QTest::newRow(palettes::all[i].name) << i;
}

void TestTableLooks::cleanup() {
    QApplication::setFont(usualFont_);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(palettes::light());
}

void TestTableLooks::aRowHasRoomForAllThatStandsInIt_data() {
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("points");
    for (const QString& style : QStyleFactory::keys()) {
        for (const int points : {9, 11, 14})
            QTest::addRow("%s %d", qPrintable(style), points) << style << points;
    }
}

void TestTableLooks::aRowHasRoomForAllThatStandsInIt() {
    QFETCH(QString, style);
    QFETCH(int, points);
    QApplication::setStyle(style);
    QFont font = usualFont_;
    font.setPointSize(points);
    QApplication::setFont(font);
    TableWindow w(2);
    const int height = w.view.rowHeight(0);
    QVERIFY(height >= w.view.style()->pixelMetric(QStyle::PM_HeaderDefaultSectionSizeVertical,
                                                  nullptr, &w.view));
    const QFontMetrics bar(ProgressCell::barFont(w.view.font()));
    const QRect cell(0, 0, 100, height);
    QVERIFY(ProgressCell::innerRect(cell, Qt::LeftToRight).height() >= bar.height());
    w.key(0, TableColumn::Res, Qt::Key_F2);
    QVERIFY(w.editor());
    QVERIFY2(height >= w.editor()->sizeHint().height(),
             qPrintable(QStringLiteral("%1, %2").arg(height).arg(w.editor()->sizeHint().height())));
    // No more than a line of air.
    QVERIFY(height <=
            std::max(w.editor()->sizeHint().height(), 30) + w.view.fontMetrics().height());
    QVERIFY(w.view.horizontalHeader()->rect().height() >=
            w.view.btnSelectAll()->sizeHint().height());
}

void TestTableLooks::aLargerFontAsksForAWiderList() {
    TableWindow w(100);
    for (const int points : {9, 14, 20}) {
        QFont font = w.view.font();
        font.setPointSize(points);
        w.view.setFont(font);
        w.view.resize(w.view.sizeHint().width(), 300);
        QTRY_VERIFY(w.view.verticalScrollBar()->isVisible());
        QTRY_COMPARE(w.view.horizontalScrollBar()->maximum(), 0);
    }
    QVERIFY(w.view.width() > 900);
}

void TestTableLooks::aClickLeavesNoMark() {
    TableWindow w(2);
    w.view.setAlternatingRowColors(false);
    w.view.selectAll();
    for (const TableColumn each : {TableColumn::Duration, TableColumn::Audio}) {
        w.view.selectionModel()->setCurrentIndex(w.f.cell(0, each), QItemSelectionModel::NoUpdate);
        QVERIFY(w.view.hasFocus());
        QVERIFY(pictureOf(w, 0, each) == pictureOf(w, 1, each));
    }
}

void TestTableLooks::aLargerFontMakesRowsHigher() {
    TableWindow w(1);
    const int before = w.view.rowHeight(0);
    QFont font = w.view.font();
    font.setPointSize(24);
    w.view.setFont(font);
    QVERIFY(w.view.rowHeight(0) > before);
    QVERIFY(w.view.rowHeight(0) >= w.view.fontMetrics().height());
}

void TestTableLooks::theEmptyListHasAPicture_data() {
    QTest::addColumn<int>("points");
    for (const int points : {9, 14})
        QTest::addRow("%d", points) << points;
}

void TestTableLooks::theEmptyListHasAPicture() {
    QFETCH(int, points);
    QFont font = usualFont_;
    font.setPointSize(points);
    QApplication::setFont(font);
    TableWindow w(0);
    w.view.clearFocus();
    const QRect area = w.view.viewport()->rect();
    const EmptyList empty(w.view, area);
    QVERIFY(area.contains(empty.picture()));
    QVERIFY(area.contains(empty.sentence()));
    QVERIFY(empty.picture().bottom() < empty.sentence().top());
    QVERIFY(std::abs(empty.picture().center().x() - empty.sentence().center().x()) <= 1);
    const QImage shown = w.view.viewport()->grab().toImage();
    QVERIFY(contrastIn(shown.copy(empty.picture()), 500) >= 1.5);
    QVERIFY(contrastIn(shown.copy(empty.sentence())) >= 4.5);
    w.f.addRows(1);
    w.f.model.reload();
    const QImage rows = w.view.viewport()->grab().toImage();
    QCOMPARE(contrastIn(rows.copy(empty.picture()), 1), 1.0);
}

void TestTableLooks::theEmptyListIsSmall() {
    TableWindow w(0);
    w.view.clearFocus();
    w.view.resize(300, 120);
    const QRect area = w.view.viewport()->rect();
    const EmptyList empty(w.view, area);
    QVERIFY(empty.picture().isEmpty());
    QVERIFY(area.contains(empty.sentence()));
    QVERIFY(contrastIn(w.view.viewport()->grab().toImage()) >= 4.5);
}

void TestTableLooks::aLongNameShowsItsEnd() {
    TableWindow w(0);
    const QString begin = QStringLiteral("1 week in the mountains ").repeated(8);
    for (const char* end : {"(1).mp4", "(2).mp4", "(1).mov"})
        w.f.addRow(begin + QLatin1StringView(end));
    w.f.addRow(u'2' + begin.mid(1) + QStringLiteral("(1).mp4"));
    w.f.model.reload();
    w.view.setAlternatingRowColors(false);
    std::vector<QImage> names;
    for (int row = 0; row < 4; ++row)
        names.push_back(pictureOf(w, row, TableColumn::Name));
    const int half = names[0].width() / 2;
    const auto endOf = [&](int row) {
        return names[size_t(row)].copy(half, 0, half, names[0].height());
    };
    QVERIFY(endOf(0) != endOf(1));
    QVERIFY(endOf(0) != endOf(2));
    QVERIFY(endOf(0) == endOf(3));
    QVERIFY(names[0] != names[3]);
}

void TestTableLooks::aButtonRisesUnderThePointer() {
    TableWindow w(2);
    auto* const style = new NotingStyle(QStringLiteral("Fusion"));
    style->setParent(&w.view);
    w.view.setStyle(style);
    const auto pointAt = [&](TableColumn column) {
        QTest::mouseMove(w.view.viewport(), w.center(0, column));
        style->panels.clear();
        return pictureOf(w, 0, TableColumn::Im);
    };
    const QImage usual = pointAt(TableColumn::Name);
    QVERIFY(style->panels.empty());
    const QImage risen = pointAt(TableColumn::Im);
    QCOMPARE(style->panels.size(), size_t(1));
    QVERIFY(style->panels.front() & QStyle::State_MouseOver);
    QVERIFY(style->panels.front() & QStyle::State_Raised);
    QVERIFY(style->panels.front() & QStyle::State_Enabled);
    QVERIFY(!(style->panels.front() & QStyle::State_Sunken));
    QVERIFY(usual != risen);
    QTest::mousePress(w.view.viewport(), Qt::LeftButton, {}, w.center(0, TableColumn::Im));
    style->panels.clear();
    pictureOf(w, 0, TableColumn::Im);
    QVERIFY(style->panels.front() & QStyle::State_Sunken);
    // What is not there to be pressed does not answer to the pointer.
    for (const TableColumn each : {TableColumn::Name, TableColumn::Duration, TableColumn::Progress,
                                   TableColumn::Res, TableColumn::Cmb, TableColumn::Check}) {
        w.f.state.isConversionRunning = each == TableColumn::Cmb;
        QTest::mouseMove(w.view.viewport(), w.center(1, each));
        style->hovered = false;
        pictureOf(w, 1, each);
        QCOMPARE(style->hovered, each == TableColumn::Res || each == TableColumn::Check);
    }
}

void TestTableLooks::checkedAndSelectedAreToldApart() {
    usePalette();
    TableWindow w(4);
    w.view.clearFocus();
    w.f.list.setCheck(1, 0);
    w.f.list.setCheck(3, 0);
    w.f.model.reload();
    for (const bool isSelected : {false, true}) {
        if (isSelected)
            w.view.selectAll();
        const QImage checked = pictureOf(w, 0, TableColumn::Check);
        const QImage unchecked = pictureOf(w, 1, TableColumn::Check);
        const QRect box(0, 0, checked.width() / 2, checked.height());
        QVERIFY(unlikePixels(checked.copy(box), unchecked.copy(box)) >= 8);
        // A check mark says nothing of the selection, nor the other way round.
        QVERIFY(isSelected ||
                pictureOf(w, 0, TableColumn::Name) != pictureOf(w, 1, TableColumn::Name));
    }
}

void TestTableLooks::aCheckBoxHasItsGroundInASelectedRow() {
    usePalette();
    TableWindow w(1);
    w.view.clearFocus();
    auto* const style = new NotingStyle(QStringLiteral("Fusion"));
    style->setParent(&w.view);
    style->givesGrounds = false;
    w.view.setStyle(style);
    w.view.selectAll();
    const QRect cell = w.view.visualRect(w.f.cell(0, TableColumn::Check));
    const QPoint inside = CheckDelegate::boxRect(cell, w.view).center();
    const QImage shown = w.view.viewport()->grab().toImage();
    QCOMPARE(shown.pixelColor(inside), QApplication::palette().color(QPalette::Base));
    QCOMPARE(shown.pixelColor(cell.bottomRight()),
             QApplication::palette().color(QPalette::Highlight));
}

void TestTableLooks::aSelectedRowIsSeenWithoutColour() {
    usePalette();
    TableWindow w(4);
    w.view.clearFocus();
    w.view.selectionModel()->select(w.f.cell(1, TableColumn::Name),
                                    QItemSelectionModel::Select | QItemSelectionModel::Rows);
    const auto ground = [&](int row) { return groundOf(pictureOf(w, row, TableColumn::Name)); };
    for (const int row : {0, 2, 3}) {
        const double found = contrast(ground(1), ground(row));
        QVERIFY2(found >= 2.0, qPrintable(QString::number(found)));
    }
    // Stripes are no selection.
    QVERIFY(contrast(ground(2), ground(3)) < 1.3);
}

void TestTableLooks::whatCanBeChosenHasAnArrow() {
    usePalette();
    TableWindow w(2);
    w.view.clearFocus();
    QTest::mouseMove(w.view.viewport(), w.center(1, TableColumn::Name));
    for (const TableColumn column : {TableColumn::Res, TableColumn::Cmb}) {
        w.f.state.isConversionRunning = false;
        w.f.model.reload();
        const auto arrow = [&] {
            const QImage cell = pictureOf(w, 0, column);
            return cell.copy(cell.width() - 18, 0, 18, cell.height());
        };
        QVERIFY(contrastIn(arrow(), 8) >= 3.0);
        w.f.state.isConversionRunning = true;
        w.f.model.reload();
        QCOMPARE(contrastIn(arrow(), 1), 1.0);
    }
}

void TestTableLooks::lockedCellsStandOnTheirRowsGround() {
    QPalette palette = palettes::light();
    palette.setColor(QPalette::Disabled, QPalette::AlternateBase, Qt::gray);
    QApplication::setPalette(palette);
    TableWindow w(2);
    auto* const style = new NotingStyle(QStringLiteral("Fusion"));
    style->setParent(&w.view);
    w.view.setStyle(style);
    w.f.state.isConversionRunning = true;
    w.f.model.reload();
    (void)w.view.viewport()->grab();
    QVERIFY(style->lockedGrounds.size() >= 4); // size and quality of both
    for (const QColor& ground : style->lockedGrounds)
        QCOMPARE(ground, palette.color(QPalette::Active, QPalette::AlternateBase));
}

void TestTableLooks::theTipNamesTheSizes() {
    TableWindow w(2);
    w.f.list.recordAt(1)->set(key::resolutionID, 5);
    const auto tip = [&](int row, TableColumn column) {
        return w.f.cell(row, column).data(Qt::ToolTipRole).toString().split(u'\n');
    };
    const QString choose = getLocalString("IDS_TIP_CELL_RESOLUTION");
    QCOMPARE(tip(0, TableColumn::Res),
             (QStringList{choose, QStringLiteral("1920x1080"), QStringLiteral("960x540")}));
    QCOMPARE(tip(1, TableColumn::Res), (QStringList{choose, QStringLiteral("640x480")}));
    QCOMPARE(tip(0, TableColumn::Cmb).mid(1), w.f.list.cmbItems);
    w.f.state.isConversionRunning = true;
    for (const TableColumn column : {TableColumn::Res, TableColumn::Cmb})
        QCOMPARE(tip(0, column), QStringList(getLocalString("IDS_TIP_CELL_LOCKED")));
}

void TestTableLooks::aTextThatItsArrowCutsIsTold() {
    TableWindow w(1);
    const int column = static_cast<int>(TableColumn::Res);
    const auto hint = [&] {
        return w.view.sizeHintForIndex(w.f.cell(0, TableColumn::Res)).width();
    };
    w.view.setColumnWidth(column, hint());
    const QImage whole = pictureOf(w, 0, TableColumn::Res);
    w.view.setColumnWidth(column, hint() + 40);
    const QImage wide = pictureOf(w, 0, TableColumn::Res);
    const int text = w.view.fontMetrics().horizontalAdvance(QStringLiteral("1920x1080")) + 4;
    QVERIFY(whole.copy(0, 0, text, whole.height()) == wide.copy(0, 0, text, wide.height()));
}

void TestTableLooks::theGrooveOfABarIsSeen() {
    usePalette();
    TableWindow w(2);
    w.view.clearFocus();
    w.f.list.progressObjects[0]->changestat(status::STATCR);
    w.f.list.progressObjects[0]->incrementStep(25);
    w.f.model.rowChanged(0);
    for (const bool isSelected : {false, true}) {
        if (isSelected)
            w.view.selectAll();
        const QImage cell = pictureOf(w, 0, TableColumn::Progress);
        const QRect bar = ProgressCell::innerRect(cell.rect(), Qt::LeftToRight);
        const int middle = bar.center().y();
        const QColor ground = QApplication::palette().color(QPalette::Base);
        const QColor done = cell.pixelColor(bar.left() + 4, middle);
        const QColor rest = cell.pixelColor(bar.right() - 4, middle);
        const QColor edge = cell.pixelColor(bar.right(), middle);
        QVERIFY(contrast(done, rest) >= 1.3);
        QVERIFY2(contrast(edge, ground) >= 1.8,
                 qPrintable(QString::number(contrast(edge, ground))));
        QVERIFY(contrast(rest, ground) > 1.05);
    }
}

namespace {

class LooksApplication final : public TableApplication {
public:
    LooksApplication(int& argc, char** argv) : TableApplication(argc, argv) {
        setStyle(QStringLiteral("Fusion"));
    }
};

} // namespace

REELSHIFT_TEST(tst_table_looks, TestTableLooks, LooksApplication)
#include "tst_table_looks.moc"
