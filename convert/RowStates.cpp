#include "convert/RowStates.h"

#include "filelist/JobRecord.h"
#include "filelist/ProgressObject.h"
#include "filelist/StatusWords.h"
#include "platform/LocalizedStrings.h"

void setWaiting(JobRecord& record) {
    record.set(key::status, status::STATWT);
    record.set(key::image, rowimage::remove);
    record.set(key::progress, getLocalString("IDS_TXT_STATUS_WAITING"));
}

void setProcessing(JobRecord& record) {
    record.set(key::status, status::STATPR);
    record.set(key::image, rowimage::pause);
}

void setPaused(JobRecord& record) {
    record.set(key::status, status::STATPS);
    record.set(key::image, rowimage::resume);
    record.set(key::progress, getLocalString("IDS_TXT_STATUS_PAUSED"));
}

void setConverted(JobRecord& record) {
    record.set(key::image, rowimage::remove);
    record.set(key::status, status::STATCO);
    record.set(key::progress, getLocalString("IDS_TXT_STATUS_CONVERTED"));
    record.set(key::conversionstat, status::CONCOMPLETE);
}

void clearProgress(ProgressObject& progress) {
    progress.setStatusString(QString());
    progress.setBar(0.0);
    progress.incrementStep(0);
}
