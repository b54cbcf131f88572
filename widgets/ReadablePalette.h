#pragma once

#include <QColor>
#include <QObject>
#include <QPalette>

/// Halfway between two colours.
[[nodiscard]] QColor mixed(const QColor& one, const QColor& other);

/// Ink that is faint on its ground and can be read all the same, where the full ink can.
[[nodiscard]] QColor faint(const QColor& ink, const QColor& ground);

/// For a thin mark on the ground of a list: the highlight, or the colour of the text where the
/// highlight is made for bands alone and a line of it could not be seen.
[[nodiscard]] QColor markColour(const QPalette& palette);

/// Mends the palettes that the desktop may give. What is disabled stays readable: Qt makes the
/// disabled inks of a high-contrast one out of its black buttons, and they come out black as well.
/// And it is dark where the desktop is: of GNOME's dark style Qt knows and stays light all the
/// same. Main thread; owned by main().
class ReadablePalette final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ReadablePalette)

public:
    ReadablePalette();

    /// The palette with a faint ink wherever a disabled one cannot be seen; else as it is.
    [[nodiscard]] static QPalette of(QPalette palette);
    /// Dark, with the accent of the one that is given.
    [[nodiscard]] static QPalette darkOf(const QPalette& given);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void apply();
    void applySoon();

private:
    bool isDarkOurs_ = false;
};
