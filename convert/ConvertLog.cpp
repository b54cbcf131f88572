#include "convert/ConvertLog.h"

Q_LOGGING_CATEGORY(lcConvert, "reelshift.convert")
