#include "convert/Stopping.h"

#include "convert/ConversionContext.h"
#include "convert/LiveJobs.h"
#include "convert/RowControl.h"
#include "convert/RunLock.h"
#include "convert/RunSummary.h"
#include "filelist/ConversionDialogs.h"
#include "filelist/FileList.h"
#include "platform/LocalizedStrings.h"
#include "widgets/BoxAnswers.h"

void Stopping::stop() {
    if (context_.files.conversionTaskList.empty())
        return;
    const int answer = context_.dialogs.ask(
        {getLocalString("IDS_TXT_POPUP_STOPCONVERTING") + u'\n' +
             getLocalString("IDS_TXT_POPUP_STOPCONVERTING2"),
         getLocalString("IDS_BTN_POPUP_CANCEL"), getLocalString("IDS_BTN_POPUP_OK")});
    if (answer == boxanswer::second)
        stopConversion();
}

void Stopping::stopConversion() {
    context_.state.stopped = true;
    const JobPtr job = context_.jobs.current();
    if (job && !job->life().isSettled())
        stopJob(job);
    if (!context_.files.pausedList.empty())
        rows_.StopPausedTask();
    context_.files.clearQueue();
    lock_.unlock();
    context_.jobs.waitUntilSettled(job);
    summary_.removeConvertedRows();
}

void Stopping::stopJob(const JobPtr& job) {
    if (job->life().phase() != EncoderLife::Phase::Preparing) {
        job->ask(EncoderLife::Request::Stop);
        return;
    }
    // Before its encoder there is nothing to wait for: the job's thread finds itself alone.
    (void)context_.jobs.settle(job);
    context_.jobs.showWaiting(*job);
    context_.state.convertingIndex.clear();
}
