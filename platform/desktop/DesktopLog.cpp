#include "platform/desktop/DesktopLog.h"

Q_LOGGING_CATEGORY(lcDesktop, "reelshift.desktop", QtInfoMsg)
