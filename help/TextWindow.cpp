#include "help/TextWindow.h"

#include "platform/LocalizedStrings.h"

#include <QEvent>
#include <QPushButton>
#include <QStringBuilder>
#include <QTextBrowser>
#include <QVBoxLayout>

TextWindow::TextWindow(QWidget* parent) : QDialog(parent), text_(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("textWindow"));
    auto* const close = new QPushButton(getLocalString("IDS_BTN_CLOSE"), this);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(text_);
    layout->addWidget(close, 0, Qt::AlignRight);
    text_->setTabChangesFocus(true);
    text_->setOpenLinks(false);
    const int letter = fontMetrics().averageCharWidth();
    resize(80 * letter, 60 * letter);
    parent->window()->installEventFilter(this);
}

void TextWindow::show(const QString& title, const QString& html) {
    setWindowTitle(title);
    text_->setAccessibleName(title);
    const auto* const direction = layoutDirection() == Qt::RightToLeft ? u"rtl" : u"ltr";
    text_->setHtml(u"<html dir=" % QStringView(direction) % u'>' % html % u"</html>");
    text_->setFocus();
    QDialog::show();
    raise();
    activateWindow();
}

// Left open, it would keep the program.
bool TextWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide && !event->spontaneous())
        close();
    return QDialog::eventFilter(watched, event);
}
