#pragma once

#include "app/ControllerFixture.h"
#include "convert/ConversionEngine.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QTest>

#include <cerrno>

#include <signal.h>

// What the tests of a run look at again and again. Main thread.

// Of a list of one movie.
inline const QString soleMovie = QStringLiteral("a.mp4");
inline const QString soleOutput = QStringLiteral("a_HQ_640x480.mp4");

// Of the conversion error.
inline constexpr int stopError = 1000;
inline constexpr int skipError = 1001;
// Of the two boxes about a source.
inline constexpr int tryAgain = 1001;
// Of the name conflict.
inline constexpr int replaceAnswer = 1003;

[[nodiscard]] inline QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Writes a file, e.g. one that a scripted movie waits for.
inline QString writeContent(const QString& path, const QByteArray& content = "x") {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
    return path;
}

/// The texts of these keys, a line each: the message of a box.
[[nodiscard]] inline QString linesOf(std::initializer_list<const char*> keys) {
    QStringList lines;
    for (const char* each : keys)
        lines += getLocalString(each);
    return lines.join(u'\n');
}

[[nodiscard]] inline QStringList textsOf(std::initializer_list<const char*> keys) {
    QStringList texts;
    for (const char* each : keys)
        texts += getLocalString(each);
    return texts;
}

/// Whether Convert, Add File, Select Folder and the main quality list are all in this state.
[[nodiscard]] inline bool runControlsAre(bool enabled, ControllerFixture& program) {
    for (const char* name : {"btnConvertFile", "btnAddFile", "btnSelectFolder", "comboBox"}) {
        const auto* const control = program.widget<QWidget>(name);
        if (!control || control->isEnabled() != enabled)
            return false;
    }
    return true;
}

[[nodiscard]] inline ProgressObject& progressOf(int row, ControllerFixture& program) {
    return *program.files().progressObjects.at(static_cast<size_t>(row));
}

/// A row as it is before its turn and after a failure.
[[nodiscard]] inline bool isWaiting(int row, ControllerFixture& program) {
    return program.status(row) == status::STATWT &&
           program.progressText(row) == getLocalString("IDS_TXT_STATUS_WAITING") &&
           program.files().recordAt(row)->text(key::image) == rowimage::remove &&
           progressOf(row, program).statusString().isEmpty() &&
           progressOf(row, program).currentStep() == 0;
}

/// Whether no encoder that was ever started is left.
[[nodiscard]] inline bool noEncoderLives(const QList<EncoderStart>& starts) {
    for (const EncoderStart& each : starts) {
        if (::kill(static_cast<pid_t>(each.pid), 0) == 0 || errno != ESRCH)
            return false;
    }
    return true;
}

/// Whether no job is under way, and no process that is none.
[[nodiscard]] inline bool noJobIsLeft(ControllerFixture& program) {
    const LiveJobs& jobs = program.engine().jobs();
    return jobs.all().empty() && jobs.strays().empty();
}

/// Starts without any argument.
[[nodiscard]] inline int startsWithoutArguments(const ControllerFixture& program) {
    int count = 0;
    for (const EncoderStart& each : program.starts())
        count += each.arguments.isEmpty() ? 1 : 0;
    return count;
}

/// The names in a folder.
[[nodiscard]] inline QStringList namesIn(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::NoDotAndDotDot | QDir::System, QDir::Name);
}

constexpr int okAnswer = 1000;
