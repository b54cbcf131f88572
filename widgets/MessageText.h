#pragma once

#include <QLabel>
#include <QTextDocument>

/// A label for text that came from outside: never markup, never mnemonics, and a word that is
/// wider than the label (a file name) is broken anywhere, which a plain label cannot do.
/// Main thread; owned by its parent.
class MessageText final : public QLabel {
public:
    explicit MessageText(const QString& text, QWidget* parent = nullptr);
    Q_DISABLE_COPY_MOVE(MessageText)

    /// Width of the longest line when nothing is wrapped, in pixels.
    [[nodiscard]] int naturalWidth() const;
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The text laid out in `width` pixels; no limit when negative.
    QTextDocument& laidOut(int width) const;

    mutable QTextDocument document_;
};
