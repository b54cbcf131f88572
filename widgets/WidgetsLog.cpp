#include "widgets/WidgetsLog.h"

Q_LOGGING_CATEGORY(lcWidgets, "reelshift.widgets")
