#include "app/HelpMenu.h"

#include "app/MainWindow.h"
#include "convert/RunWatch.h"
#include "filelist/FileList.h"
#include "help/AboutText.h"
#include "help/EncoderVersion.h"
#include "help/ManualText.h"
#include "media/ProbeRunner.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "platform/ProgramName.h"
#include "table/FileTableView.h"
#include "ui_MainWindow.h"
#include "widgets/ActionGate.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QSysInfo>

#include <memory>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto longestVersion = 3s;

} // namespace

HelpMenu::HelpMenu(Parts parts, Names names, QObject* parent)
    : QObject(parent),
      parts_(parts),
      names_(std::move(names)),
      text_(new TextWindow(&parts.window)) {
    MainWindow& window = parts_.window;
    window.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&window, &QWidget::customContextMenuRequested, this, &HelpMenu::openWindowMenu);
    connect(window.form().theTableNew, &FileTableView::rowMenuOpens, this,
            [this](QMenu* menu, int row) { addToRowMenu(*menu, row); });
    auto* const key = new QShortcut(QKeySequence(QKeySequence::HelpContents), &window);
    key->setAutoRepeat(false);
    connect(key, &QShortcut::activated, this, &HelpMenu::showHelp);
    // On X11 and Wayland the toolkit knows the menu key alone.
    auto* const menuKey = new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F10), &window);
    menuKey->setAutoRepeat(false);
    connect(menuKey, &QShortcut::activated, this, &HelpMenu::openMenuAtFocus);
}

QString HelpMenu::detailsOf(int row) const {
    const std::vector<int>& ids = parts_.files.idList;
    if (row < 0 || row >= static_cast<int>(ids.size()))
        return {};
    const QString details = parts_.watch.detailsOf(ids[static_cast<size_t>(row)]);
    return details.isEmpty()
               ? details
               : appName % u' ' % names_.version % u", Qt " % QLatin1StringView(qVersion()) %
                     u", " % QSysInfo::prettyProductName() % u'\n' % details % u'\n';
}

void HelpMenu::addTo(QMenu& menu) {
    QAction* const help =
        menu.addAction(getLocalString("IDS_MENU_HELP"), this, &HelpMenu::showHelp);
    help->setShortcut(QKeySequence::HelpContents);
    help->setShortcutContext(Qt::WidgetShortcut); // shown here; the window has it already
    menu.addAction(getLocalString("IDS_MENU_ABOUT"), this, &HelpMenu::showAbout);
}

void HelpMenu::addToRowMenu(QMenu& menu, int row) {
    if (const QString details = detailsOf(row); !details.isEmpty())
        menu.addAction(getLocalString("IDS_MENU_COPY_DETAILS"), this,
                       [this, details] { copy(details); });
    menu.addSeparator();
    addTo(menu);
}

void HelpMenu::openWindowMenu(const QPoint& position) {
    MainWindow& window = parts_.window;
    auto* const menu = new QMenu(&window);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (const QString details = detailsOf(window.form().theTableNew->selectedRow());
        !details.isEmpty())
        menu->addAction(getLocalString("IDS_MENU_COPY_DETAILS"), this,
                        [this, details] { copy(details); });
    addTo(*menu);
    menu->popup(window.mapToGlobal(position));
    menu->setActiveAction(menu->actions().constFirst());
}

void HelpMenu::openMenuAtFocus() {
    MainWindow& window = parts_.window;
    QWidget* const focused = window.focusWidget() ? window.focusWidget() : &window;
    const QPoint middle = focused->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, middle, focused->mapToGlobal(middle));
    QCoreApplication::sendEvent(focused, &event);
}

void HelpMenu::showHelp() {
    text_->show(getLocalString("IDS_MENU_HELP"), keysHtml() + manualHtml(names_.language));
}

// The buttons' own words, with their keys.
QString HelpMenu::keysHtml() const {
    QString html = u"<h3>" + getLocalString("IDS_HELP_KEYS").toHtmlEscaped() + u"</h3>\n<ul>\n";
    for (const QPushButton* const button : parts_.window.findChildren<QPushButton*>()) {
        if (!button->toolTip().isEmpty())
            html += u"<li>" + button->toolTip().toHtmlEscaped() + u"</li>\n";
    }
    return html + QStringLiteral("</ul>\n");
}

void HelpMenu::showAbout() {
    parts_.gate.pass([this] {
        const QString place = encoderPlace();
        text_->show(getLocalString("IDS_MENU_ABOUT"),
                    aboutHtml({appName, names_.version,
                               place.isEmpty() ? QString() : encoderVersion(), place}));
    });
}

QString HelpMenu::encoderVersion() const {
    const auto runner = std::make_shared<ProbeRunner>(parts_.processes, names_.encoderPath);
    runner->setPatience(longestVersion);
    return parts_.mainThread.waitForResult([runner] {
        QByteArray report;
        ProbeRunner::Stop stop;
        // Of no movie: what comes first is all that is wanted.
        (void)runner->run(
            QString(),
            [&](const QByteArray& chunk) {
                report += chunk;
                return ProbeRunner::Answer::ReadOn;
            },
            stop);
        return encoderVersionIn(report);
    });
}

void HelpMenu::copy(const QString& details) {
    QGuiApplication::clipboard()->setText(details);
    const QString line = getLocalString("IDS_TXT_DETAILS_COPIED");
    parts_.window.showQuietLine(line);
}
