// Draws the main window with made-up rows into PNG files, in palettes of all kinds, for a
// person to look at: window_preview [folder]. With --show it leaves one such window open, for the
// mouse, the keyboard and a screen reader; what it is asked to do it prints.

#include "Palettes.h"
#include "filelist/FileTableView.h"
#include "filelist/StatusWords.h"
#include "filelist/TableFixture.h"
#include "platform/LocalizedStrings.h"
#include "ui_MainWindow.h"
#include "widgets/ProgressObject.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QMainWindow>
#include <QStyleFactory>

#include <array>
#include <cstdio>

namespace {

void fillRows(TableFixture& fixture) {
    const std::array names{"A day at the lake.mp4", "Holiday Video.mp4",
                           "GH010042_a very long name that the camera has given to its movie.mp4",
                           "Birthday.MP4", "Football.mp4"};
    for (const char* const name : names)
        fixture.addRow(QString::fromUtf8(name));
    FileList& list = fixture.list;
    const auto mark = [&](int row, const QString& word, const char* text, const QString& image) {
        list.fileInfoArr[size_t(row)]->set(key::status, word);
        list.fileInfoArr[size_t(row)]->set(key::progress, text ? getLocalString(text) : QString());
        list.fileInfoArr[size_t(row)]->set(key::image, image);
    };
    mark(0, status::STATCO, "IDS_TXT_STATUS_CONVERTED", rowimage::remove);
    mark(1, status::STATPR, nullptr, rowimage::pause);
    list.progressObjects[1]->incrementStep(37);
    list.progressObjects[1]->changestat(status::STATCR);
    mark(2, status::STATPS, "IDS_TXT_STATUS_PAUSED", rowimage::resume);
    list.check[3] = 0;
    list.cmb[4] = list.cmbItems.at(0);
    list.resolutionListForTable[4] = QStringLiteral("4096x2160");
}

void label(Ui::MainWindow& ui, TableFixture& fixture) {
    ui.btnAddFile->setText(getLocalString("IDS_BTN_ADD_FILE"));
    ui.btnRemoveFile->setText(getLocalString("IDS_BTN_REMOVE_FILE"));
    ui.btnConvertFile->setText(getLocalString("IDS_BTN_CONVERT"));
    ui.btnStop->setText(getLocalString("IDS_BTN_STOP"));
    ui.btnSelectFolder->setText(getLocalString("IDS_BTN_SELECT_FOLDER"));
    ui.btnOpenFolder->setText(getLocalString("IDS_BTN_OPEN_FOLDER"));
    ui.outputFolderTxtFld->setText(getLocalString("IDS_TXTFLD_OUTPUTFOLDER"));
    ui.openFldrAftrFnsh->setText(getLocalString("IDS_TXTFLD_OPNFLDRAFTRFNSH"));
    ui.profileTxtFld->setText(getLocalString("IDS_TXT_PROFILE_CAPTION"));
    ui.outputFolderPath->setText(QStringLiteral("/home/user/Movies/Converted"));
    ui.comboBox->addItems(getLocalString("IDS_TXT_PROFILELIST").split(QLatin1Char(';')));
    ui.comboBox->setCurrentIndex(1);
    ui.fileList->setText(getLocalString("IDS_TXT_FILELIST") %
                         QStringLiteral("  (%1)").arg(fixture.list.rowCount()));
    ui.btnRemoveFile->setEnabled(fixture.list.rowCount() > 0);
}

struct Look {
    const char* name;
    QPalette (*palette)() = palettes::light;
    bool isRunning = false;
    bool isEmpty = false;
    bool isEditing = false;
    QSize size{900, 560};
};

void draw(const Look& look, const QString& folder) {
    QApplication::setPalette(look.palette());
    TableFixture fixture;
    QMainWindow window;
    Ui::MainWindow ui;
    ui.setupUi(&window);
    ui.theTableNew->setFileModel(&fixture.model);
    if (!look.isEmpty)
        fillRows(fixture);
    fixture.model.reload();
    label(ui, fixture);
    ui.theTableNew->btnSelectAll()->setChecked(fixture.model.allChecked());
    fixture.state.isConversionRunning = look.isRunning;
    for (QWidget* const locked : std::initializer_list<QWidget*>{ui.btnAddFile, ui.btnSelectFolder,
                                                                 ui.btnConvertFile, ui.comboBox})
        locked->setEnabled(!look.isRunning);
    window.resize(look.size);
    window.show();
    window.activateWindow();
    if (!look.isEmpty)
        ui.theTableNew->setCurrentIndex(fixture.cell(2, TableColumn::Name));
    if (look.isEditing)
        ui.theTableNew->activateCell(fixture.cell(3, TableColumn::Res));
    QApplication::processEvents();
    const QString file =
        QDir(folder).filePath(QString::fromUtf8(look.name) + QStringLiteral(".png"));
    window.grab().save(file);
    std::printf("%s\n", qPrintable(file));
}

int show() {
    TableFixture fixture;
    QMainWindow window;
    Ui::MainWindow ui;
    ui.setupUi(&window);
    fillRows(fixture);
    ui.theTableNew->setFileModel(&fixture.model);
    fixture.model.reload();
    label(ui, fixture);
    QObject::connect(ui.theTableNew, &FileTableView::rowButtonPressed, &window, [](int row) {
        std::printf("button of row %d\n", row);
        std::fflush(stdout);
    });
    QObject::connect(ui.theTableNew, &FileTableView::rowSelected, &window, [](int row) {
        std::printf("row %d selected\n", row);
        std::fflush(stdout);
    });
    QObject::connect(ui.btnStop, &QPushButton::clicked, &window, [&] {
        fixture.state.isConversionRunning = !fixture.state.isConversionRunning;
        ui.theTableNew->closeEditors();
        fixture.model.editLockChanged();
    });
    window.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const StringTable texts(QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale::c());
    if (argc > 1 && qstrcmp(argv[1], "--show") == 0)
        return show();
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath();
    QDir().mkpath(folder);
    for (const Look& look :
         {Look{.name = "light"}, Look{.name = "dark", .palette = palettes::dark},
          Look{.name = "light_running", .isRunning = true},
          Look{.name = "dark_running", .palette = palettes::dark, .isRunning = true},
          Look{.name = "light_empty", .isEmpty = true},
          Look{.name = "dark_empty", .palette = palettes::dark, .isEmpty = true},
          Look{.name = "light_editing", .isEditing = true},
          Look{.name = "contrast_black", .palette = palettes::contrastBlack},
          Look{.name = "contrast_black_running",
          .palette = palettes::contrastBlack,
          .isRunning = true},
          Look{.name = "contrast_white", .palette = palettes::contrastWhite},
          Look{.name = "contrast_white_running",
          .palette = palettes::contrastWhite,
          .isRunning = true},
          Look{.name = "light_large", .size = {1400, 800}},
          Look{.name = "light_small", .size = {640, 400}}})
        draw(look, folder);
    return 0;
}
