#pragma once

#include <QString>

/// The server that knows of newer versions, without a slash at its end. Defined beside main(): the
/// program that the tests of the version check start is linked with another one.
[[nodiscard]] QString updateBaseUrl();
