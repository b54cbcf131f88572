#include "filelist/FolderMovies.h"

#include <QCollator>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include <sys/stat.h>

namespace {

// MP4, QuickTime, Matroska, MPEG-TS, raw HEVC: what the menu entry says it opens.
constexpr std::array movieEndings{u"mp4", u"m4v",  u"mov",  u"qt",   u"mkv", u"ts",
                                  u"mts", u"m2ts", u"hevc", u"h265", u"265"};

// In the C locale the collator knows neither numbers nor case.
QCollator fileManagersOrder() {
    const QLocale own;
    QCollator collator(own.language() == QLocale::C ? QLocale(QLocale::English) : own);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

bool isMovieName(const QString& name) {
    return std::any_of(movieEndings.begin(), movieEndings.end(), [&](const char16_t* ending) {
        const QStringView text(ending);
        return name.size() > text.size() + 1 && name.endsWith(text, Qt::CaseInsensitive) &&
               name[name.size() - text.size() - 1] == u'.';
    });
}

class Walk final {
public:
    Walk(FolderMovies& found, const std::atomic<bool>& stop) : found_(found), stop_(stop) {}

    void add(const QString& path) {
        if (found_.paths.size() < FolderMovies::most)
            found_.paths += path;
        else
            found_.isCut = true;
    }

    void addFolder(const QString& folder) {
        if (stop_ || found_.isCut || !isNew(folder))
            return;
        const QDir dir(folder);
        for (const QString& name : sorted(dir, QDir::Dirs))
            addFolder(dir.filePath(name));
        for (const QString& name : sorted(dir, QDir::Files)) {
            if (isMovieName(name))
                add(dir.filePath(name));
        }
    }

private:
    // By a link a folder may be in itself.
    bool isNew(const QString& folder) {
        struct stat status {};
        if (::stat(QFile::encodeName(folder).constData(), &status) != 0)
            return false;
        return seen_.insert({status.st_dev, status.st_ino}).second;
    }

    QStringList sorted(const QDir& dir, QDir::Filters kind) const {
        QStringList names = dir.entryList(kind | QDir::NoDotAndDotDot, QDir::Unsorted);
        std::sort(names.begin(), names.end(), [this](const QString& one, const QString& other) {
            const int order = collator_.compare(one, other);
            return order != 0 ? order < 0 : one < other;
        });
        return names;
    }

    FolderMovies& found_;
    const std::atomic<bool>& stop_;
    const QCollator collator_ = fileManagersOrder();
    std::set<std::pair<dev_t, ino_t>> seen_;
};

} // namespace

FolderMovies moviesOf(const QStringList& paths, const std::atomic<bool>& stop) {
    FolderMovies found;
    Walk walk(found, stop);
    for (const QString& path : paths) {
        if (QFileInfo(path).isDir()) {
            found.hadFolder = true;
            walk.addFolder(path);
        } else {
            walk.add(path);
        }
    }
    return found;
}
