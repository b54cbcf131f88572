#pragma once

#include <QString>
#include <QStringList>

/// Blanks what a movie says about itself in ffmpeg's report: its path, its metadata, the titles of
/// its chapters and the languages of its streams. A film called "Holiday Video" in ~/Videos must
/// not be taken for a stream line, nor "trial and error" for a failure. A remark about timestamps,
/// which says "Invalid" of good movies, is blanked with it. Every character stays a
/// character, so positions hold. Takes the report in pieces that may be cut anywhere; used by one
/// thread at a time, owned by whoever reads the report.
class ReportBlanker final {
public:
    /// `paths`: the files that the report may name, the source and the output.
    explicit ReportBlanker(const QStringList& paths);

    [[nodiscard]] QString blank(const QString& piece);

private:
    QStringList paths_;
    QString open_; ///< the unfinished line, as printed, that the next piece goes on with
    int entryIndent_;
};

/// Blanks a whole report or a piece of one that begins at the start of a line.
[[nodiscard]] QString blankReport(const QString& report, const QStringList& paths);
