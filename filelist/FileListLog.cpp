#include "filelist/FileListLog.h"

Q_LOGGING_CATEGORY(lcFileList, "reelshift.filelist")
