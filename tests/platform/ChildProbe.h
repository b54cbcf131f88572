#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <chrono>

#include <sys/types.h>

/// More than any child takes that does what it should.
inline constexpr auto longEnough = std::chrono::seconds(20);

/// What the kernel says about a process or a thread: its state letter ('R', 'S', 'T', 'Z', ...), or
/// 0 where there is none.
[[nodiscard]] inline char stateOfProcess(pid_t pid) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray line = file.readAll();
    const qsizetype name = line.lastIndexOf(')');
    return name >= 0 && name + 2 < line.size() ? line[name + 2] : '\0';
}

/// Gone, or dead and waiting for whoever inherited it.
[[nodiscard]] inline bool isDead(pid_t pid) {
    const char state = stateOfProcess(pid);
    return state == 0 || state == 'Z' || state == 'X';
}
