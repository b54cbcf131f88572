#include "Palettes.h"
#include "TestProgram.h"
#include "widgets/ReadablePalette.h"

#include <QApplication>
#include <QScopeGuard>
#include <QStyleHints>
#include <QTest>

#include <algorithm>
#include <utility>

using Inks = std::pair<QPalette::ColorRole, QPalette::ColorRole>;

static constexpr Inks inks[] = {{QPalette::WindowText, QPalette::Window},
                                {QPalette::Text, QPalette::Base},
                                {QPalette::ButtonText, QPalette::Button}};

/// What Qt's theme for KDE makes of a high-contrast scheme.
static QPalette blackOnBlack() {
    QPalette palette = palettes::contrastBlack();
    for (const Inks& each : inks)
        palette.setColor(QPalette::Disabled, each.first, Qt::black);
    palette.setColor(QPalette::Button, Qt::black);
    return palette;
}

static double leastContrast(const QPalette& palette) {
    double least = 21;
    for (const auto& [ink, ground] : inks)
        least = std::min(least, contrast(palette.color(QPalette::Disabled, ink),
                                         palette.color(QPalette::Disabled, ground)));
    return least;
}

class ReadablePaletteTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void disabledTextIsReadable() {
        const QPalette given = blackOnBlack();
        QCOMPARE(leastContrast(given), 1.0);
        const QPalette readable = ReadablePalette::of(given);
        QVERIFY(leastContrast(readable) >= 3.0);
        for (const Inks& each : inks) {
            QCOMPARE(readable.color(QPalette::Active, each.first), QColor(Qt::white));
            QCOMPARE(readable.color(QPalette::Inactive, each.first), QColor(Qt::white));
            // Faint: it can be told from what is enabled.
            QVERIFY(contrast(readable.color(QPalette::Disabled, each.first), Qt::white) > 1.5);
        }
    }

    void usualPalettesStay() {
        for (const palettes::Named& each : palettes::all) {
            const QPalette given = each.make();
            if (leastContrast(given) >= 1.5)
                QVERIFY2(ReadablePalette::of(given) == given, each.name);
        }
        QVERIFY(ReadablePalette::of(palettes::light()) == palettes::light());
    }

    void aMarkIsSeen() {
        QPalette dimBand = palettes::dark();
        dimBand.setColor(QPalette::Base, QColor(0x33, 0x33, 0x33));
        dimBand.setColor(QPalette::Highlight, QColor(0x15, 0x53, 0x9e));
        QVERIFY(contrast(dimBand.color(QPalette::Highlight), dimBand.color(QPalette::Base)) < 2.0);
        QCOMPARE(markColour(dimBand), dimBand.color(QPalette::Text));
        for (const palettes::Named& each : palettes::all)
            QCOMPARE(markColour(each.make()), each.make().color(QPalette::Highlight));
    }

    void darkPalette() {
        const QPalette given = palettes::light();
        const QPalette dark = ReadablePalette::darkOf(given);
        for (const auto& [ink, ground] : inks) {
            QVERIFY(dark.color(ground).lightness() < 64);
            QVERIFY(contrast(dark.color(ink), dark.color(ground)) >= 7.0);
        }
        QVERIFY(leastContrast(dark) >= 3.0);
        QVERIFY(ReadablePalette::of(dark) == dark);
        QCOMPARE(dark.color(QPalette::Highlight), given.color(QPalette::Highlight));
    }

    // The toolkit of GNOME says so, and gives the light palette all the same.
    void darkWhereTheDesktopIs() {
        QStyleHints* const hints = QGuiApplication::styleHints();
        const auto setScheme = [hints](const QVariant& scheme) {
            hints->setProperty("colorScheme", scheme);
            QEvent change(QEvent::ApplicationPaletteChange);
            QCoreApplication::sendEvent(qApp, &change);
        };
        const auto lightness = [] {
            return QApplication::palette().color(QPalette::Window).lightness();
        };
        const auto reset = qScopeGuard([&] {
            setScheme(QVariant());
            QApplication::setPalette(QPalette());
        });
        QApplication::setPalette(QPalette());
        const int before = lightness();
        QVERIFY(before > 128);
        const ReadablePalette readable;
        QCOMPARE(lightness(), before);
        setScheme(2);
        if (hints->property("colorScheme").toInt() != 2)
            QSKIP("this Qt does not let the scheme be played");
        QVERIFY(lightness() < 64);
        setScheme(1);
        QCOMPARE(lightness(), before);
    }

    void everyPaletteOfTheDesktop() {
        QApplication::setPalette(blackOnBlack());
        const ReadablePalette readable;
        QVERIFY(leastContrast(QApplication::palette()) >= 3.0);
        QApplication::setPalette(palettes::light());
        QVERIFY(QApplication::palette() == palettes::light());
        QApplication::setPalette(blackOnBlack());
        QVERIFY(leastContrast(QApplication::palette()) >= 3.0);
    }
};

REELSHIFT_TEST(tst_readablepalette, ReadablePaletteTest, QApplication)
#include "tst_readablepalette.moc"
