#pragma once

#include <QString>
#include <QStringList>

/// How the name of a profile's level begins.
inline const QString LEVELSTR = QStringLiteral("Level");

/// Which encoder settings a profile stands for, in the order of the catalogue.
enum class ProfileKind { Pro, HighQuality, Normal };

/// The output profiles: their names and, in the same order, the texts that the table shows for
/// them. Immutable, any thread; owned by main().
class ProfileCatalogue final {
public:
    /// Both texts are items separated by semicolons.
    ProfileCatalogue(const QString& profileList, const QString& dropDownList);

    /// Profile of a movie that was just added.
    [[nodiscard]] static QString defaultProfile();

    [[nodiscard]] const QStringList& comboBoxItems() const { return comboBoxItems_; }
    [[nodiscard]] const QStringList& cmbItems() const { return cmbItems_; }

    // The three below throw std::out_of_range where the lists have no such item.
    [[nodiscard]] const QString& comboBoxItem(qsizetype index) const;
    [[nodiscard]] const QString& cmbItem(qsizetype index) const;
    [[nodiscard]] const QString& defaultCmbItem() const { return cmbItem(1); }

    /// Any text but the first and the third profile's name is the high-quality one.
    [[nodiscard]] ProfileKind kindOf(const QString& profile) const;

    /// Position, in both lists, of the profile that a movie with this one is converted in; `names`
    /// is a list like `comboBoxItems`. Never behind the third item.
    [[nodiscard]] static int itemOf(const QString& profile, const QStringList& names);

    /// "Level" and the digit at index 8 of the profile's name; std::out_of_range when the name is
    /// shorter than nine characters.
    [[nodiscard]] static QString levelText(const QString& profile);

private:
    QStringList comboBoxItems_;
    QStringList cmbItems_;
};
