#include "platform/desktop/PrivateBus.h"

#include <QFile>
#include <QStandardPaths>

#include <csignal>

namespace {

constexpr int startLimitMs = 10'000;

const char* const busConfig =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

QString daemonProgram() {
    return QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
}

} // namespace

PrivateBus::~PrivateBus() {
    thaw();
    daemon_.kill();
    daemon_.waitForFinished();
}

bool PrivateBus::isAvailable() {
    return !daemonProgram().isEmpty();
}

QString PrivateBus::start() {
    QFile config(folder_.filePath(QStringLiteral("bus.conf")));
    const QByteArray text = QString::fromLatin1(busConfig).arg(folder_.path()).toUtf8();
    if (!config.open(QIODevice::WriteOnly) || config.write(text) != text.size()) {
        return config.errorString();
    }
    config.close();
    daemon_.start(daemonProgram(), {u"--config-file=" % config.fileName(),
                                    QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    while (!daemon_.canReadLine()) {
        if (!daemon_.waitForReadyRead(startLimitMs)) {
            return daemon_.errorString() + QString::fromUtf8(daemon_.readAllStandardError());
        }
    }
    address_ = QString::fromUtf8(daemon_.readLine().trimmed());
    return {};
}

void PrivateBus::freeze() {
    ::kill(static_cast<pid_t>(daemon_.processId()), SIGSTOP);
}

void PrivateBus::thaw() {
    if (daemon_.state() == QProcess::Running) {
        ::kill(static_cast<pid_t>(daemon_.processId()), SIGCONT);
    }
}
