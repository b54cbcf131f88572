#include "convert/Quitting.h"

#include "convert/ConversionContext.h"
#include "convert/LiveJobs.h"
#include "convert/RunWatch.h"

using namespace std::chrono_literals;

void Quitting::quit() {
    context_.watch.runIsOver();
    for (const JobPtr& job : context_.jobs.all()) {
        job->news.close();
        if (!job->task())
            continue;
        job->removeUnfinishedOutput(context_.mainThread);
        job->tellToEnd();
    }
    for (const auto& task : context_.jobs.strays())
        task->terminate();
}

void Quitting::awaitEnd() {
    for (const JobPtr& job : context_.jobs.all()) {
        if (!job->task()) {
            job->note.drop();
            continue;
        }
        if (!job->task()->waitForEnd(1s)) {
            job->kill();
            (void)job->task()->waitForEnd(1s);
        }
        // Its last words may tell that its file is not whole.
        if (job->hasFinished())
            (void)job->news.waitForLastWord(1s);
        job->removeUnfinishedOutput(context_.mainThread);
        if (job->isOutputOutOfReach())
            job->note.leave(); // it may still be there when the share answers again
        else
            job->note.drop();
    }
}
