#include "app/OutputFolder.h"

#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "platform/desktop/FileManager.h"
#include "platform/desktop/VolumeInfo.h"
#include "widgets/PopUpBoxes.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

const QString fatType = QStringLiteral("msdos");

struct FolderFacts {
    bool isFolder = false;
    VolumeFacts volume;
};

void tell(QWidget* parent, const QString& message) {
    PopUpBoxes(parent).PopUpMesg({message, getLocalString("IDS_BTN_POPUP_OK")});
}

} // namespace

QString withTildeExpanded(const QString& path) {
    if (path == QStringLiteral("~") || path.startsWith(QStringLiteral("~/")))
        return QDir::homePath() + path.mid(1);
    return path;
}

namespace {

// The panel has gone when this returns: it looks at its folder as long as it lives.
std::optional<QString> pickFolder(const QString& current, QWidget* parent) {
    QFileDialog panel(parent, getLocalString("IDS_TXT_PANEL_FOLDER"), withTildeExpanded(current));
    panel.setFileMode(QFileDialog::Directory);
    panel.setOption(QFileDialog::ShowDirsOnly);
    if (panel.exec() != QDialog::Accepted)
        return std::nullopt;
    const QList<QUrl> chosen = panel.selectedUrls();
    if (chosen.isEmpty() || !chosen.first().isLocalFile())
        return std::nullopt;
    return chosen.first().toLocalFile();
}

} // namespace

std::optional<QString> OutputFolder::selectFolder(const QString& current, QWidget* parent) {
    const auto folder = pickFolder(current, parent);
    return folder && isTaken(*folder, parent) ? folder : std::nullopt;
}

bool OutputFolder::isTaken(const QString& folder, QWidget* parent) {
    const FolderFacts facts = mainThread_.waitForResult([folder, volumes = volumes_] {
        return FolderFacts{QFileInfo(folder).isDir(), volumes->facts(folder)};
    });
    if (!facts.isFolder)
        return false;
    if (facts.volume.removable) {
        tell(parent, getLocalString("IDS_TXT_SDCARD_CANNOT_BEUSED") + u'\n' +
                         getLocalString("IDS_TXT_USE_ANOTHER_FOLDER"));
        return false;
    }
    if (facts.volume.type == fatType) {
        tell(parent, getLocalString("IDS_TXT_FAT32_UNSUPPORTED"));
        return false;
    }
    return true;
}

void OutputFolder::openFolder(const QString& shown, QWidget* parent) {
    const bool exists = mainThread_.waitForResult([shown] { return QFileInfo::exists(shown); });
    if (exists)
        fileManager_.showFolder(shown);
    else
        tell(parent, getLocalString("IDS_BTN_POPUP_OUTFLDRUNAVAILABLE"));
}
