#pragma once

#include <QStringList>
#include <QTimer>
#include <QWidget>

/// Has screen readers say what changed although nobody moved the focus there: a notification in
/// the window's accessibility tree that is never seen. Texts that come together are said as one,
/// because a reader asks for the text when it has time to speak. Main thread; owned by its parent.
class Announcer final : public QWidget {
    Q_OBJECT

public:
    explicit Announcer(QWidget* parent);
    Q_DISABLE_COPY_MOVE(Announcer)

    /// What was said last.
    [[nodiscard]] const QString& text() const { return text_; }

    void say(const QString& text);

Q_SIGNALS:
    void said(const QString& text);

private:
    void speak();

    QStringList waiting_;
    QString text_;
    QTimer pause_;
};
