#include "convert/RunLock.h"

#include "convert/ConversionContext.h"
#include "convert/RunWatch.h"
#include "convert/RunWindow.h"
#include "filelist/FileList.h"

void RunLock::lock() {
    context_.window.setRunControlsEnabled(false);
    context_.state.isConversionRunning = true;
    context_.watch.runGoesOn();
    context_.files.reload();
}

void RunLock::unlock() {
    context_.window.setRunControlsEnabled(true);
    context_.state.isConversionRunning = false;
    context_.watch.runIsOver();
    context_.files.reload();
}
