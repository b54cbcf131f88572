#include "update/UpdateLog.h"

Q_LOGGING_CATEGORY(lcUpdate, "reelshift.update")
