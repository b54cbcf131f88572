#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

#include <stdexcept>

/// The reports that ffmpeg 5.1 printed about movies made to mislead, as they came, and the files
/// that each of them is about.
namespace Reports {

struct Report {
    const char* name;
    QStringList paths;
};

inline QByteArray bytes(const char* name) {
    QFile file(QStringLiteral(REELSHIFT_MEDIA_REPORTS "/%1.txt").arg(QLatin1StringView(name)));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("a report is missing");
    return file.readAll();
}

inline QString text(const char* name) {
    return QString::fromUtf8(bytes(name));
}

inline QString video(const char* name) {
    return QStringLiteral("/home/u/Videos/") + QString::fromUtf8(name);
}

inline QString output(const char* name) {
    return QStringLiteral("/home/u/Converted/") + QString::fromUtf8(name);
}

inline const QList<Report>& all() {
    static const QString newline = video("new\nline 'q' \"dq\" ctl\x01\x1b.mp4");
    static const QString newlineOutput = output("new\nframe= error\x01.mp4");
    static const QList<Report> reports{
        {"avc", {video("avc.mp4")}},
        {"chapters-mp4", {video("chapters.mp4")}},
        {"encode-corrupt", {video("corrupt.mp4"), output("corrupt.mp4")}},
        {"encode-exists", {newline, newlineOutput}},
        {"encode-mkv", {video("chapters.mkv"), output("trial and error, time=1.mp4")}},
        {"encode-newline", {newline, newlineOutput}},
        {"encode-no-folder",
         {video("chapters.mp4"), QStringLiteral("/home/u/Invalid error/LPSNR=.mp4")}},
        {"folder", {video("dir.mp4")}},
        {"free-text-mkv", {video("chapters.mkv")}},
        {"hostile-folder", {video("Audio, Duration/time=1': Invalid.mkv")}},
        {"missing", {video("Holiday Video: Audio, 1.mp4")}},
        {"no-size", {video("nosize.mp4")}},
        {"noise", {video("Audio, noise.mp4")}},
        {"path-header-like", {video("a':\n  Metadata:\n.mp4")}},
        {"path-invalid-utf8", {video("bad\xff\xfeutf8.mp4")}},
        {"path-newline", {newline}},
        {"plain", {video("plain.mp4")}},
        {"rotated", {video("rotated.mp4")}},
        {"service-ts", {video("service.ts")}},
        {"uhd-flac-mkv", {video("uhd.mkv")}},
    };
    return reports;
}

inline const Report& named(const char* name) {
    for (const Report& report : all()) {
        if (qstrcmp(report.name, name) == 0)
            return report;
    }
    throw std::runtime_error("no such report");
}

} // namespace Reports
