#pragma once

#include "encoder/ScriptedMovie.h"
#include "platform/ChildProbe.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/// What the summary of an encode has and nothing else.
inline const QByteArray quality("LPSNR=");

[[nodiscard]] inline bool isGone(pid_t pid) {
    return QTest::qWaitFor([&] { return isDead(pid); }, 10000);
}

/// A folder that is the system's whole PATH, with a scripted ffmpeg. A base of test classes.
class LauncherScene {
protected:
    void installEncoder() {
        folder_ = std::make_unique<QTemporaryDir>();
        log_ = installFakeEncoder(system());
        QVERIFY(!log_.isEmpty());
        beRelease(QStringLiteral("7.1"));
    }
    void removeFolder() { folder_.reset(); }

    [[nodiscard]] QString system() const { return folder_->path(); }
    [[nodiscard]] QString path(const QString& name) const { return folder_->filePath(name); }
    [[nodiscard]] QStringList job(std::initializer_list<const char*> encode) const {
        const QString movie =
            ScriptedMovie(system(), QStringLiteral("a.mp4")).encode(encode).write();
        return {
            QStringLiteral("-psnr"),    QStringLiteral("-i"),      movie,
            QStringLiteral("-codec:v"), QStringLiteral("libx264"), path(QStringLiteral("out.mp4"))};
    }
    void beRelease(const QString& release) { QVERIFY(setEncoderRelease(system(), release)); }
    void beScript(const QByteArray& script) { putScript(QStringLiteral("ffmpeg"), script); }
    void putScript(const QString& name, const QByteArray& script) {
        QFile::remove(path(name));
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write("#!/bin/sh\n" + script), script.size() + 10);
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    }
    void touch(const QString& name) const {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    std::unique_ptr<QTemporaryDir> folder_;
    QString log_; ///< of the scripted ffmpeg's starts
};
