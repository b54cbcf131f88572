#pragma once

#include <QDialog>
#include <QStringList>

#include <optional>

class MessageText;
class QAbstractButton;
class QBoxLayout;
class QCheckBox;
class QScrollArea;

/// A modal question with its buttons in the order asked for on every desktop, the first one being
/// the default. Shows plain text only. Main thread; lives as long as the question is open.
class MessageBox final : public QDialog {
    Q_OBJECT

public:
    struct Request {
        QString title;
        QString message; ///< never with mnemonics: names of files come in it
        /// Titles with mnemonics. One OK button where there is none.
        QStringList buttons;
        /// Title with a mnemonic; no check box where it is empty.
        QString checkBox;
    };
    struct Answer {
        /// 1000 for the first button, 1001 for the second, and so on.
        int code;
        bool ticked;
    };

    ~MessageBox() override;
    Q_DISABLE_COPY_MOVE(MessageBox)

    /// Asks and blocks until the user answers. Escape and the close button answer the Cancel
    /// button or the only button, and do nothing where there is neither. Throws Cancelled when the
    /// box goes without an answer.
    static Answer ask(const Request& request, QWidget* parent);
    /// Ends every open box without an answer.
    static void dismissAll();
    /// The same for those with that message.
    static void dismiss(const QString& message);

public Q_SLOTS:
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    MessageBox(const Request& request, QWidget* parent);

    QWidget* makeMessage(const QString& message);
    QLayout* makeButtons(const QStringList& titles);
    void fitToScreen();
    void abandon();

    MessageText* text_ = nullptr;
    QScrollArea* textArea_ = nullptr;
    QBoxLayout* buttonRow_ = nullptr;
    QCheckBox* checkBox_ = nullptr;
    QAbstractButton* escapeButton_ = nullptr;
    std::optional<int> answer_;
};
