#include "TestProgram.h"
#include "app/ControllerFixture.h"
#include "app/MainWindow.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "platform/MainThreadCalls.h"
#include "platform/WorkerThreads.h"
#include "table/FileTableColumns.h"
#include "table/FileTableDelegates.h"
#include "table/FileTableModel.h"
#include "table/FileTableView.h"
#include "table/ProgressCell.h"
#include "update/KXDownloadController.h"
#include "widgets/BoxDriver.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QTest>
#include <QTextLayout>

namespace {

using Keys = QList<const char*>;

/// A message and its buttons, as the program puts them together; a check box below them, or null.
struct Box {
    Keys message;
    Keys buttons;
    const char* checkBox;
};

constexpr const char* again = "IDS_TXT_POPUP_DOFORERROR";

const QList<Box> boxes{
    {{"IDS_TXT_SDCARD_CANNOT_BEUSED", "IDS_TXT_USE_ANOTHER_FOLDER"}, {"IDS_BTN_POPUP_OK"}, nullptr},
    {{"IDS_TXT_FAT32_UNSUPPORTED"}, {"IDS_BTN_POPUP_OK"}, nullptr},
    {{"IDS_BTN_POPUP_OUTFLDRUNAVAILABLE"}, {"IDS_BTN_POPUP_OK"}, nullptr},
    {{"IDS_TXT_UNSUPPORTED"}, {"IDS_BTN_POPUP_OK"}, nullptr},
    {{"IDS_TXT_ENCODER_MISSING"}, {"IDS_BTN_POPUP_OK"}, nullptr},
    {{"IDS_TXT_ENCODER_UNSUITABLE"}, {"IDS_BTN_POPUP_OK"}, nullptr},
    {{"IDS_TXT_SDCARD_DELAY", "IDS_TXT_CONTINUE"},
     {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_OK"},
     again},
    {{"IDS_TXT_POPUP_SAMENAME"},
     {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_DUPLICATE", "IDS_BTN_POPUP_SKIP",
      "IDS_BTN_POPUP_REPLACE"},
     again},
    {{"IDS_TXT_POPUP_ERROR", "IDS_TXT_POPUP_WANTTOSKIP"},
     {"IDS_BTN_STOP", "IDS_BTN_POPUP_SKIP"},
     again},
    {{"IDS_TXT_POPUP_SOURCE_UNAVAILABLE"},
     {"IDS_BTN_POPUP_SKIP", "IDS_TXT_POPUP_TRYAGAIN"},
     nullptr},
    {{"IDS_TXT_POPUP_UNEXPECTEDREMOVE"}, {"IDS_BTN_POPUP_OK", "IDS_TXT_POPUP_TRYAGAIN"}, nullptr},
    {{"IDS_TXT_POPUP_MEMORYFULL", "IDS_TXT_DATA_NOTCONVERTED"}, {"IDS_BTN_POPUP_OK"}, nullptr},
    {{"IDS_TXT_POPUP_STOPCONVERTING", "IDS_TXT_POPUP_STOPCONVERTING2"},
     {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_OK"},
     nullptr},
    {{"IDS_TXT_POPUP_PUASEDJOBS", "IDS_TXT_POPUP_CLICKTOCONTINUE"},
     {"IDS_BTN_POPUP_CANCEL", "IDS_BTN_CONVERT"},
     nullptr},
    {{"IDS_TXT_POPUP_OPERATION_SUCCESSFUL"}, {"IDS_BTN_POPUP_OK", "IDS_BTN_OPEN_FOLDER"}, nullptr},
};

/// The smallest screen that the program is made for, less a frame and a panel.
constexpr QSize smallestScreen(1024 - 16, 600 - 48);
/// The same at a scale of one and a half, where the frame has no sides.
constexpr QSize scaledScreen(1024 * 2 / 3 - 10, 600 * 2 / 3 - 48);
/// Where a screen is large enough; the one that nobody sees is not.
constexpr QSize usualSize(900, 552);

/// What the window is measured with besides the font that is there: what desktops show their texts
/// in. The first one comes with the program's package.
QList<QFont> desktopFonts() {
    return {{QStringLiteral("DejaVu Sans"), 9},
            {QStringLiteral("Liberation Sans"), 10},
            {QStringLiteral("Cantarell"), 11}};
}

QStringList languages() {
    QStringList result;
    for (const QString& table : QDir(QStringLiteral(REELSHIFT_TEST_RESOURCES))
                                    .entryList({QStringLiteral("LocalizedStrings_*.qm")}))
        result << table.chopped(3).section(QLatin1Char('_'), 1);
    return result;
}

QStringList texts(const Keys& keys) {
    QStringList result;
    for (const char* key : keys)
        result << getLocalString(key);
    return result;
}

/// A push button also has air at the sides of its text, which the style's hint leaves out; a
/// caption may go on in a second line.
bool hasRoom(const QWidget& widget) {
    if (const auto* const label = qobject_cast<const QLabel*>(&widget); label && label->wordWrap())
        return label->width() >= label->minimumSizeHint().width() &&
               label->height() >= label->heightForWidth(label->width());
    int least = widget.sizeHint().width();
    if (const auto* const button = qobject_cast<const QPushButton*>(&widget))
        least = std::max(
            least, button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() + 16);
    return widget.width() >= least && widget.height() >= widget.sizeHint().height();
}

QByteArray nameOf(const QWidget& widget) {
    return widget.objectName().toUtf8() + ' ' + widget.property("text").toString().toUtf8();
}

int advance(const QWidget& widget, const char* key) {
    return widget.fontMetrics().horizontalAdvance(getLocalString(key));
}

/// A delegate that tells what it is going to paint.
class Shown final : public TextDelegate {
public:
    using TextDelegate::TextDelegate;

    [[nodiscard]] QString text(const QTableView& view, const QModelIndex& index) const {
        QStyleOptionViewItem option;
        option.initFrom(&view);
        initStyleOption(&option, index);
        return option.text;
    }
};

/// Whether every letter of `part` stands right of the one before in a line of text.
bool runsToTheRight(const QString& text, const QString& part, Qt::LayoutDirection direction) {
    QTextLayout layout(text);
    QTextOption option;
    option.setTextDirection(direction);
    layout.setTextOption(option);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    const int from = static_cast<int>(text.indexOf(part));
    if (from < 0)
        return false;
    const auto left = [&](int at) {
        const auto glyphs = line.glyphRuns(at, 1);
        return glyphs.isEmpty() ? -1.0 : glyphs.first().boundingRect().left();
    };
    for (int at = from + 1; at < from + part.size(); ++at) {
        if (part.at(at - from).isSpace() || part.at(at - from - 1).isSpace())
            continue; // without a picture of its own
        if (left(at) <= left(at - 1))
            return false;
    }
    return true;
}

/// The answer to a box that is looked at once it is open; 0 when that found a fault.
int look(const MessageBox::Request& request, QWidget* parent,
         const std::function<void(MessageBox&)>& then) {
    onceBoxOpen(then);
    try {
        return MessageBox::ask(request, parent).code;
    } catch (const Cancelled&) {
        return 0;
    }
}

} // namespace

/// The window and its boxes in every language: nothing is cut, all of it is laid out in the
/// direction of the language.
class TestLanguages final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void window_data();
    void window();
    void qualityOfANewMovie_data();
    void qualityOfANewMovie();
    void columns_data();
    void columns();
    void messageBoxes_data();
    void messageBoxes();
    void updateWindow_data();
    void updateWindow();
    void arabicIsMirrored();
    void arabicBoxIsMirrored();
    void namesOfFilesKeepTheirOrder_data();
    void namesOfFilesKeepTheirOrder();

private:
    static std::unique_ptr<ControllerFixture> start(const QString& language);
    static FileTableView& table(ControllerFixture& program);
    static void add(ControllerFixture& program, const QStringList& names);

    const QFont usualFont_ = QApplication::font();
};

std::unique_ptr<ControllerFixture> TestLanguages::start(const QString& language) {
    return std::make_unique<ControllerFixture>(std::chrono::milliseconds(50), QLocale(language));
}

FileTableView& TestLanguages::table(ControllerFixture& program) {
    return *program.window().findChild<FileTableView*>();
}

void TestLanguages::add(ControllerFixture& program, const QStringList& names) {
    QStringList paths;
    for (const QString& name : names)
        paths << program.movie(name).write();
    program.add(paths);
}

void TestLanguages::initTestCase() {
    QVERIFY(languages().size() >= 16);
    for (const QFont& font : desktopFonts())
        QVERIFY2(QFontDatabase::hasFamily(font.family()),
                 qPrintable(font.family() + QStringLiteral(" is not installed")));
}

void TestLanguages::cleanup() {
    QApplication::setFont(usualFont_);
}

void TestLanguages::window_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<QFont>("font");
    const auto isUsual = [this](const QFont& font) {
        return QFontInfo(font).family() == QFontInfo(usualFont_).family() &&
               QFontInfo(font).pixelSize() == QFontInfo(usualFont_).pixelSize();
    };
    for (const QString& language : languages()) {
        QTest::newRow(qPrintable(language)) << language << usualFont_;
        for (const QFont& font : desktopFonts()) {
            if (!isUsual(font))
                QTest::addRow("%s, %s %d", qPrintable(language), qPrintable(font.family()),
                              font.pointSize())
                    << language << font;
        }
    }
}

void TestLanguages::window() {
    QFETCH(QString, language);
    QFETCH(QFont, font);
    QApplication::setFont(font);
    const auto program = start(language);
    add(*program, {QStringLiteral("a.mp4"), QStringLiteral("b.mp4")});
    QMainWindow& window = program->window();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // With the line that is seldom there.
    program->widget<QLabel>("notKeptAwake")->show();
    const QSize shown = window.minimumSizeHint();
    QVERIFY2(shown.width() <= scaledScreen.width() && shown.height() <= scaledScreen.height(),
             qPrintable(QStringLiteral("%1x%2").arg(shown.width()).arg(shown.height())));
    const auto& caption = *program->widget<QLabel>("profileTxtFld");
    const auto isWithin = [&](int lines) {
        return caption.heightForWidth(caption.width()) <
               (lines + 1) * caption.fontMetrics().height();
    };
    for (const QSize size : {scaledScreen, usualSize}) {
        window.resize(size);
        QVERIFY(isWithin(2));
        int seen = 0;
        for (const QWidget* const widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisible() ||
                !(qobject_cast<const QAbstractButton*>(widget) ||
                  qobject_cast<const QLabel*>(widget) || qobject_cast<const QComboBox*>(widget)))
                continue;
            if (widget == table(*program).btnSelectAll())
                continue; // without a text, as large as its column allows
            if (const auto* const list = qobject_cast<const QComboBox*>(widget);
                list && size == scaledScreen) {
                // Narrow itself, but what it offers is not.
                QVERIFY(list->view()->minimumWidth() >= list->sizeHint().width());
                continue;
            }
            QVERIFY2(hasRoom(*widget), nameOf(*widget));
            ++seen;
        }
        QVERIFY(seen >= 12);
    }
    // What stands in the way of nothing is left for the path.
    QVERIFY(program->widget<QLineEdit>("outputFolderPath")->width() >= 200);
    // Where there is room, nothing is in two lines.
    window.resize(smallestScreen);
    QVERIFY(isWithin(1));
}

void TestLanguages::qualityOfANewMovie_data() {
    window_data();
}

void TestLanguages::qualityOfANewMovie() {
    QFETCH(QString, language);
    const auto program = start(language);
    add(*program, {QStringLiteral("a.mp4")});
    const auto* const list = program->widget<QComboBox>("comboBox");
    QCOMPARE(list->currentIndex(), 0);
    FileTableView& view = table(*program);
    view.setCurrentIndex(view.model()->index(0, static_cast<int>(TableColumn::Name)));
    QCOMPARE(list->currentIndex(), 1);
    QCOMPARE(list->currentText(), getLocalString("IDS_TXT_PROFILELIST").split(u';').at(1));
}

void TestLanguages::columns_data() {
    window_data();
}

void TestLanguages::columns() {
    QFETCH(QString, language);
    QFETCH(QFont, font);
    QApplication::setFont(font);
    const auto program = start(language);
    add(*program, {QStringLiteral("a.mp4")});
    QVERIFY(QTest::qWaitForWindowExposed(&program->window()));
    program->window().resize(usualSize);
    FileTableView& view = table(*program);
    const QHeaderView& header = *view.horizontalHeader();
    for (int column = 0; column < header.count(); ++column)
        QVERIFY2(header.sectionSize(column) >= header.sectionSizeHint(column),
                 view.model()->headerData(column, Qt::Horizontal).toString().toUtf8());
    QVERIFY2(header.length() <= view.viewport()->width(), "scrolls");
    const int margin = view.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &view) + 1;
    for (const char* key :
         {"IDS_TXT_PROFILELIST_1", "IDS_TXT_PROFILELIST_2", "IDS_TXT_PROFILELIST_3"})
        QVERIFY2(advance(view, key) + 2 * margin <=
                     view.columnWidth(static_cast<int>(TableColumn::Cmb)),
                 key);
    const QRect cell(0, 0, view.columnWidth(static_cast<int>(TableColumn::Progress)), 32);
    const int room = ProgressCell::innerRect(cell, view.layoutDirection()).width();
    for (const char* key :
         {"IDS_TXT_STATUS_WAITING", "IDS_TXT_STATUS_PAUSED", "IDS_TXT_STATUS_CONVERTED"})
        QVERIFY2(advance(view, key) + 2 * margin <= room, key);
}

void TestLanguages::messageBoxes_data() {
    window_data();
}

void TestLanguages::messageBoxes() {
    QFETCH(QString, language);
    QFETCH(QFont, font);
    QApplication::setFont(font);
    const auto program = start(language);
    for (const Box& each : boxes) {
        MessageBox::Request request{QStringLiteral("Quorvex Reelshift"),
                                    texts(each.message).join(u'\n'), texts(each.buttons),
                                    each.checkBox ? getLocalString(each.checkBox) : QString()};
        const QByteArray what = each.message.first();
        const auto check = [&](MessageBox& box) {
            QVERIFY2(box.width() <= smallestScreen.width(), what);
            QVERIFY2(box.height() <= smallestScreen.height(), what);
            for (const QAbstractButton* const button : box.findChildren<QAbstractButton*>()) {
                QVERIFY2(hasRoom(*button), QByteArray(what + ": " + nameOf(*button)));
                QVERIFY2(box.rect().contains(button->geometry()),
                         QByteArray(what + ": " + nameOf(*button)));
            }
            const auto* const text = box.findChild<QLabel*>(QStringLiteral("popUpMessage"));
            QVERIFY2(text->height() >= text->heightForWidth(text->width()), what);
            const auto* const area = box.findChild<QScrollArea*>();
            QVERIFY2(area->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOff, what);
            press(box, 1000);
        };
        QCOMPARE(look(request, &program->window(), check), 1000);
    }
}

void TestLanguages::updateWindow_data() {
    window_data();
}

void TestLanguages::updateWindow() {
    QFETCH(QString, language);
    QFETCH(QFont, font);
    QApplication::setFont(font);
    const StringTable strings(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale(language));
    QApplication::setLayoutDirection(strings.direction());
    WorkerThreads threads;
    KXDownloadController window(UpdateSettings{}, threads);
    window.showWindow();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.width() <= smallestScreen.width());
    const auto* const question = window.findChild<QLabel*>(QStringLiteral("downloadQuest"));
    QVERIFY(question->height() >= question->heightForWidth(question->width()));
    const auto* const caption = window.findChild<QLabel*>(QStringLiteral("downloadCaption"));
    QVERIFY(question->width() >= caption->sizeHint().width());
    for (const QPushButton* const button : window.findChildren<QPushButton*>())
        QVERIFY2(hasRoom(*button), nameOf(*button));
}

void TestLanguages::arabicIsMirrored() {
    const auto program = start(QStringLiteral("ar"));
    add(*program, {QStringLiteral("a.mp4"), QStringLiteral("b.mp4")});
    QMainWindow& window = program->window();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto x = [&](const char* name) {
        return program->widget<QWidget>(name)->mapTo(&window, QPoint()).x();
    };
    QVERIFY(x("btnAddFile") > x("btnRemoveFile"));
    QVERIFY(x("btnRemoveFile") > x("profileTxtFld"));
    QVERIFY(x("profileTxtFld") > x("comboBox"));
    QVERIFY(x("outputFolderTxtFld") > x("outputFolderPath"));
    QVERIFY(x("outputFolderPath") > x("btnSelectFolder"));
    QVERIFY(x("btnSelectFolder") > x("btnOpenFolder"));
    QVERIFY(x("openFolderCheckBtn") > x("openFldrAftrFnsh"));
    QVERIFY(x("btnStop") > x("btnConvertFile"));

    FileTableView& view = table(*program);
    const QHeaderView& header = *view.horizontalHeader();
    for (int column = 1; column < header.count(); ++column)
        QVERIFY(header.sectionViewportPosition(column) <
                header.sectionViewportPosition(column - 1));
    // The box above the check marks stands above them.
    const QRect marks(header.x() + header.sectionViewportPosition(0), header.y(),
                      header.sectionSize(0), header.height());
    QVERIFY(marks.contains(view.btnSelectAll()->geometry()));

    const auto click = [&](int row, TableColumn column) {
        const QModelIndex index = view.model()->index(row, static_cast<int>(column));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(index).center());
    };
    // A path is written from its root whatever the direction of the window.
    auto& path = *program->widget<QLineEdit>("outputFolderPath");
    path.setCursorPosition(0);
    QVERIFY(path.cursorPositionAt({10, 10}) < path.cursorPositionAt({60, 10}));

    QCOMPARE(view.model()->rowCount(), 2);
    click(0, TableColumn::Im);
    QTRY_COMPARE(view.model()->rowCount(), 1);
    QCOMPARE(view.model()->index(0, static_cast<int>(TableColumn::Name)).data().toString(),
             QStringLiteral("b.mp4"));
}

void TestLanguages::arabicBoxIsMirrored() {
    const auto program = start(QStringLiteral("ar"));
    const MessageBox::Request request{
        QStringLiteral("Quorvex Reelshift"),
        getLocalString("IDS_TXT_POPUP_SAMENAME") + QStringLiteral("\n/home/u/a (1).mp4"),
        texts({"IDS_BTN_POPUP_CANCEL", "IDS_BTN_POPUP_OK"}), getLocalString(again)};
    const auto check = [&](MessageBox& box) {
        const auto* const message = box.findChild<QLabel*>(QStringLiteral("popUpMessage"));
        const int left = message->mapTo(&box, QPoint()).x();
        // The picture.
        for (const QLabel* const label : box.findChildren<QLabel*>()) {
            if (label != message)
                QVERIFY(label->mapTo(&box, QPoint()).x() > left);
        }
        const auto* const tick = box.findChild<QCheckBox*>();
        QVERIFY(tick->isRightToLeft());
        const auto buttons = buttonsByPlace(box);
        QCOMPARE(buttons.last()->text(), getLocalString("IDS_BTN_POPUP_CANCEL"));
        press(box, 1000);
    };
    QCOMPARE(look(request, &program->window(), check), 1000);
}

void TestLanguages::namesOfFilesKeepTheirOrder_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("letters") << QStringLiteral("Evening.mp4");
    QTest::newRow("a date and a number") << QStringLiteral("2024-05-01 (1).mp4");
    QTest::newRow("brackets") << QStringLiteral("[new] clip (2)");
}

void TestLanguages::namesOfFilesKeepTheirOrder() {
    QFETCH(QString, name);
    for (const char* language : {"en", "ar"}) {
        const auto program = start(QString::fromUtf8(language));
        add(*program, {name});
        FileTableView& view = table(*program);
        const QModelIndex index = view.model()->index(0, static_cast<int>(TableColumn::Name));
        const QString text = Shown().text(view, index);
        QVERIFY2(runsToTheRight(text, name, view.layoutDirection()), language);
        const QString tip = getLocalString("IDS_TIP_ROW_PAUSE").arg(name);
        QVERIFY2(runsToTheRight(tip, name, view.layoutDirection()), language);
    }
}

REELSHIFT_TEST(tst_languages, TestLanguages, QApplication)
#include "tst_languages.moc"
