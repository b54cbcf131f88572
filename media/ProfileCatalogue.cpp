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
    constexpr ProfileKind kinds[] = {ProfileKind::Pro, ProfileKind::HighQuality,
                                     ProfileKind::Normal};
    return kinds[itemOf(profile, comboBoxItems_)];
}

int ProfileCatalogue::itemOf(const QString& profile, const QStringList& names) {
    if (profile == names.value(0))
        return 0;
    return names.size() > 2 && profile == names.at(2) ? 2 : 1;
}

QString ProfileCatalogue::levelText(const QString& profile) {
    if (profile.size() <= levelIndex)
        throw std::out_of_range("a profile name without a level");
    return LEVELSTR % u' ' % profile.at(levelIndex);
}
