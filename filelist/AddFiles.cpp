#include "filelist/AddFiles.h"

#include "filelist/AddWatch.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "filelist/FileListLog.h"
#include "filelist/FolderMovies.h"
#include "filelist/ListWindow.h"
#include "filelist/MovieProbe.h"
#include "filelist/StatusWords.h"
#include "media/ProbeReport.h"
#include "media/ProfileCatalogue.h"
#include "media/ResolutionCatalogue.h"
#include "platform/LocalizedStrings.h"
#include "platform/MainThread.h"
#include "widgets/BoxAnswers.h"
#include "widgets/PopUpBoxes.h"

#include <QFileInfo>
#include <QScopeGuard>

#include <stdexcept>

namespace {

// A position of the encoder has 11 characters; a shorter text means that none was read yet.
constexpr int shortestPosition = 8;

const QString none = QStringLiteral("None");
const QString hevc = QStringLiteral("HEVC");

} // namespace

// The time runs during an add alone.
AddFiles::AddFiles(Parts parts) : parts_(std::move(parts)) {
    QObject::connect(&parts_.watch, &AddWatch::endOverdue, &parts_.watch,
                     [this] { parts_.probe.setLeft(true); });
}

void AddFiles::beforePanel() {
    parts_.state.checkStatusForSdCardDelay = false;
}

void AddFiles::addPicked(const QStringList& paths) {
    begin();
    const auto over = qScopeGuard([this] { parts_.watch.end(); });
    addAll(paths, Origin::Panel);
}

void AddFiles::addDropped(const QStringList& paths) {
    begin();
    const auto over = qScopeGuard([this] { parts_.watch.end(); });
    addAll(withoutFolders(paths), Origin::Drop);
}

void AddFiles::begin() {
    // A closing that was asked for before, and that a box has swallowed, must not end this add.
    parts_.window.forgetClose();
    wordsAtTheEnd_.clear();
    parts_.probe.setLeft(false);
    parts_.watch.begin();
}

QStringList AddFiles::withoutFolders(const QStringList& paths) {
    const auto found = parts_.mainThread.waitForResultUnless(
        [this] { return parts_.probe.isLeft(); },
        [paths, stop = parts_.watch.endAsked()] { return moviesOf(paths, *stop); });
    if (!found)
        wordsAtTheEnd_ = getLocalString("IDS_TXT_ADD_STOPPED").arg(paths.size());
    if (!found || parts_.watch.isEndAsked())
        return {};
    tellOfFolders(*found);
    return found->paths;
}

void AddFiles::tellOfFolders(const FolderMovies& found) {
    if (found.hadFolder && found.paths.isEmpty())
        wordsAtTheEnd_ = getLocalString("IDS_TXT_NO_MOVIES_IN_FOLDER");
    else if (found.isCut)
        wordsAtTheEnd_ = getLocalString("IDS_TXT_TOO_MANY_MOVIES").arg(FolderMovies::most);
}

void AddFiles::addAll(const QStringList& paths, Origin origin) {
    unsupportedTold_ = false;
    parts_.window.setRemoveEnabled(true);
    AddAhead ahead(paths, isLookedAtTwice(), parts_.ahead);
    for (qsizetype at = 0; at < paths.size(); ++at) {
        qsizetype left = paths.size() - at - 1;
        try {
            parts_.watch.takeNext(at, paths.size());
            if (parts_.window.isCloseAsked())
                break;
            const Next next = addOne(paths[at], origin, ahead, at);
            if (next == Next::Stop)
                break;
            left += next == Next::Leave ? 1 : 0;
        } catch (const std::exception&) {
            parts_.watch.end();
            tellEnded(paths[at], left);
            throw;
        }
        if (parts_.watch.isEndAsked() && left > 0) {
            wordsAtTheEnd_ = getLocalString("IDS_TXT_ADD_STOPPED").arg(left);
            break;
        }
    }
    parts_.watch.end();
    if (const QString words = std::exchange(wordsAtTheEnd_, QString()); !words.isEmpty())
        parts_.window.showQuietLine(words);
    close();
}

void AddFiles::close() {
    parts_.files.showRecords();
    parts_.window.checkHeaderBtnStatus(parts_.files);
    parts_.files.reload();
}

AddFiles::Next AddFiles::addOne(const QString& path, Origin origin, AddAhead& ahead,
                                qsizetype index) {
    ++parts_.state.itemId;
    const std::optional<MovieFile> file = lookAt(path, ahead.lookedAt(index));
    if (!file)
        return Next::Leave;
    if (volumeIsRefused(file->volume))
        return Next::Stop;
    if (const auto stored = storedAnswer(); stored && *stored != boxanswer::first)
        ahead.allowRemovable();
    parts_.probe.setExamination(ahead.examine(index, *file));
    const auto forget = qScopeGuard([this] { parts_.probe.setExamination({}); });
    const JobRecordPtr record = buildRecord(path);
    parts_.files.append(record, parts_.profiles.defaultCmbItem());
    try {
        examine(record, path);
        const bool accepted = record->text(key::video) == hevc;
        if (isLookedAtTwice() && !parts_.probe.gaveUp())
            parts_.probe.getVideoInfo(path, parts_.files.rowCount());
        throwIfLeft();
        if (!accepted) {
            reject(origin);
            // Without the encoder nothing is known about the movie.
            if (!parts_.probe.isEncoderMissing())
                tellUnsupported();
        } else {
            parts_.files.show(record);
        }
        refreshCount();
        return Next::GoOn;
    } catch (const Left&) {
        undoHalfBuilt(record);
        return Next::Leave;
    } catch (const std::exception&) {
        undoHalfBuilt(record);
        throw;
    } catch (const Cancelled&) {
        undoHalfBuilt(record);
        throw;
    }
}

std::optional<MovieFile> AddFiles::lookAt(const QString& path,
                                          const std::optional<MovieFile>& before) {
    const auto file =
        parts_.mainThread.waitForResultUnless([this] { return parts_.probe.isLeft(); },
                                              [path, before, volumes = parts_.ahead.volumes] {
                                                  return lookAtMovieFile(path, *volumes, before);
                                              });
    const double size = file && file->identity ? static_cast<double>(file->identity->size) : 0;
    qCDebug(lcFileList, "%s: %.2lfM", qPrintable(path), size / 1'000'000.0);
    return file;
}

bool AddFiles::volumeIsRefused(const VolumeFacts& volume) {
    if (!volume.removable)
        return false;
    if (parts_.window.isCloseAsked())
        return true;
    const auto stored = storedAnswer();
    return (stored ? *stored : parts_.dialogs.popUpforSdCardDelay()) == boxanswer::first;
}

std::optional<int> AddFiles::storedAnswer() const {
    const SharedState& state = parts_.state;
    if (!state.checkStatusForSdCardDelay)
        return std::nullopt;
    return state.resultStoredForSdCardDelay;
}

// Kept: the encoder's last position decides, which no probe sets, so movies are examined twice
// until one was converted.
bool AddFiles::isLookedAtTwice() const {
    return parts_.state.probe.duration.size() < shortestPosition;
}

JobRecordPtr AddFiles::buildRecord(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    const QString quality = parts_.profiles.defaultCmbItem();
    const auto record = std::make_shared<JobRecord>();
    record->set(key::id, static_cast<int>(parts_.state.itemId));
    record->set(key::name, name);
    record->set(key::srcpath, path);
    record->set(key::path, QString(parts_.state.outputFolder + u'/' + name));
    record->set(key::check, 1);
    record->set(key::audio, none);
    record->set(key::video, none);
    record->set(key::duration, none);
    record->set(key::profile, ProfileCatalogue::defaultProfile());
    record->set(key::profileForCol, quality);
    record->set(key::status, status::STATWT);
    record->set(key::progress, getLocalString("IDS_TXT_STATUS_WAITING"));
    record->set(key::image, rowimage::remove);
    record->set(key::converted, status::STATWT);
    record->set(key::conversionstat, status::CONRUNNING);
    record->set(key::cmb, quality);
    return record;
}

void AddFiles::examine(const JobRecordPtr& record, const QString& path) {
    const QString report = parts_.probe.getVideoInfo2(path, parts_.files.rowCount());
    throwIfLeft();
    if (parts_.probe.isEncoderMissing())
        tellEncoderMissing();
    if (parts_.probe.isEncoderUnsuitable())
        tellEncoderUnsuitable();
    try {
        takeReport(*record, report);
    } catch (const std::out_of_range&) {
        tellUnsupported();
        throw;
    }
}

void AddFiles::throwIfLeft() const {
    if (parts_.probe.wasLeft())
        throw Left();
}

void AddFiles::takeReport(JobRecord& record, const QString& report) {
    ProbeValues& values = parts_.state.probe;
    if (const auto duration = probedDuration(report)) {
        values.durationMain = *duration;
        record.set(key::duration, *duration);
    }
    if (const auto audio = probedAudio(report)) {
        values.audioCodec = audio->text;
        if (audio->isWanted)
            record.set(key::audio, audio->text);
    }
    const auto video = probedVideo(report);
    if (!video)
        return;
    values.videoCodec = video->text;
    if (!video->isWanted)
        return;
    record.set(key::video, video->text);
    takeSize(record, report);
}

void AddFiles::takeSize(JobRecord& record, const QString& report) {
    const PictureSize size = pictureSize(report);
    const auto id = ResolutionCatalogue::resolutionId(size.width, size.height);
    QStringList ownSizes;
    if (!id) {
        ownSizes = ResolutionCatalogue::sizesOf(size.width, size.height);
        if (ownSizes.isEmpty())
            throw std::out_of_range("a picture without a size to convert it to");
    }
    const QString resolution = id ? parts_.resolutions.getDefaultResolution(*id) : ownSizes.first();
    record.set(key::resolutionID, id.value_or(ResolutionCatalogue::ownListId));
    parts_.files.appendResolution(resolution);
    record.set(key::resolution, resolution);
    if (!id)
        record.set(key::ownSizes, ownSizes);
}

void AddFiles::reject(Origin origin) {
    if (origin == Origin::Panel)
        parts_.files.dropRejectedPicked();
    else
        parts_.files.dropRejectedDropped();
}

void AddFiles::undoHalfBuilt(const JobRecordPtr& record) {
    parts_.files.undoAppend(record);
    parts_.files.reload();
}

void AddFiles::tellUnsupported() {
    if (parts_.window.isCloseAsked() || std::exchange(unsupportedTold_, true))
        return;
    PopUpBoxes(parts_.window.boxParent())
        .PopUpMesg({getLocalString("IDS_TXT_UNSUPPORTED"), getLocalString("IDS_BTN_POPUP_OK")});
}

void AddFiles::tellEncoderMissing() {
    if (parts_.window.isCloseAsked() || std::exchange(encoderMissingTold_, true))
        return;
    PopUpBoxes(parts_.window.boxParent())
        .PopUpMesg({getLocalString("IDS_TXT_ENCODER_MISSING"), getLocalString("IDS_BTN_POPUP_OK")});
}

void AddFiles::tellEncoderUnsuitable() {
    if (parts_.window.isCloseAsked() || std::exchange(encoderUnsuitableTold_, true))
        return;
    PopUpBoxes(parts_.window.boxParent())
        .PopUpMesg(
            {getLocalString("IDS_TXT_ENCODER_UNSUITABLE"), getLocalString("IDS_BTN_POPUP_OK")});
}

void AddFiles::tellEnded(const QString& path, qsizetype notLookedAt) {
    QString line = getLocalString("IDS_TXT_ADD_ENDED").arg(QFileInfo(path).fileName());
    if (notLookedAt > 0)
        line += u' ' + getLocalString("IDS_TXT_ADD_NOT_LOOKED_AT").arg(notLookedAt);
    parts_.window.showQuietLine(line);
}

void AddFiles::refreshCount() {
    parts_.state.count = parts_.files.rowCount();
    parts_.window.showFileCount(parts_.state, parts_.state.count);
}
