#pragma once

#include <QLabel>

#include <array>

/// A line that tells without asking: plain text, hidden while there is none, cut in its middle
/// where the window is too narrow, with the whole of it in its tooltip and for screen readers. Main
/// thread; owned by its parent.
class QuietLine final : public QLabel {
    Q_OBJECT

public:
    /// What stands behind the line, in this order, until it is taken away.
    enum class Behind { Opened, TimeLeft };

    explicit QuietLine(QWidget* parent = nullptr);
    Q_DISABLE_COPY_MOVE(QuietLine)

    [[nodiscard]] const QString& line() const { return line_; }

    /// Line ends become blanks. An empty text hides it.
    void show(const QString& text);
    /// What goes with none of the user's actions; an empty text takes it away.
    void showBehind(Behind place, const QString& text);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void showAll();
    void cut();

    QString line_;
    std::array<QString, 2> behind_;
    QString whole_;
};
