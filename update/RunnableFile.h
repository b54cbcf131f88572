#pragma once

class QByteArray;
class QString;

/// Bytes of a file's beginning that tell what it is.
inline constexpr int runnableFileBeginning = 4096;

/// Whether the system might run a file instead of handing it to an installer: a program, a script,
/// or something that names a program, by its name or by how it begins. Pure but for the system's
/// list of file types.
[[nodiscard]] bool isRunnableFile(const QString& name, const QByteArray& beginning);
