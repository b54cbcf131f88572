#pragma once

#include <QDialog>

class QTextBrowser;

/// A text to be read, scrolled and copied, beside the main window, which stays in use. Goes with
/// it. Main thread; owned by its parent.
class TextWindow final : public QDialog {
    Q_OBJECT

public:
    explicit TextWindow(QWidget* parent);
    Q_DISABLE_COPY_MOVE(TextWindow)

    /// Opens it, or brings it to the front with another text, which begins at the side where the
    /// window's language begins.
    void show(const QString& title, const QString& html);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;

    QTextBrowser* const text_;
};
