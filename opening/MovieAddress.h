#pragma once

#include <QByteArray>
#include <QString>

/// A movie as the command line names it, as a `file:` address that any program understands,
/// whatever folder it works in: every byte of the name is kept, also of one that is no text.
/// `folder` is what a relative path begins at. An argument that is a `file:` address stays one.
/// Pure.
[[nodiscard]] QString movieAddress(const QByteArray& argument, const QByteArray& folder);

/// The folder that the program was started in, byte for byte; empty where it has gone.
[[nodiscard]] QByteArray workingFolder();
