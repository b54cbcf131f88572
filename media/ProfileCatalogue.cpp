#include "media/ProfileCatalogue.h"

#include <stdexcept>

namespace {

constexpr qsizetype levelIndex = 8;

const QString& itemAt(const QStringList& items, qsizetype index) {
    if (index < 0 || index >= items.size())
        throw std::out_of_range("no such profile");
    return items.at(index);
}

} // namespace

ProfileCatalogue::ProfileCatalogue(const QString& profileList, const QString& dropDownList)
    : comboBoxItems_(profileList.split(u';')), cmbItems_(dropDownList.split(u';')) {}

QString ProfileCatalogue::defaultProfile() {
    return QStringLiteral("H.264 LV1 : Best Quality");
}

const QString& ProfileCatalogue::comboBoxItem(qsizetype index) const {
    return itemAt(comboBoxItems_, index);
}

const QString& ProfileCatalogue::cmbItem(qsizetype index) const {
    return itemAt(cmbItems_, index);
}

ProfileKind ProfileCatalogue::kindOf(const QString& profile) const {
    if (profile == comboBoxItems_.value(0))
        return ProfileKind::Pro;
    if (comboBoxItems_.size() > 2 && profile == comboBoxItems_.at(2))
        return ProfileKind::Normal;
    return ProfileKind::HighQuality;
}

QString ProfileCatalogue::levelText(const QString& profile) {
    if (profile.size() <= levelIndex)
        throw std::out_of_range("a profile name without a level");
    return QLatin1StringView("Level ") % profile.at(levelIndex);
}
