#include "filelist/ProgressObject.h"

bool ProgressObject::showsBar() const {
    return statusString_ == QStringLiteral("Converting");
}

void ProgressObject::incrementStep(qint64 percentage) {
    currentStep_ = percentage;
    if (percentage == wipeStep)
        statusString_.clear();
    textProgress_.setProgress(static_cast<double>(percentage) / 100.0);
    textProgress_.setText(QStringLiteral("%1 %").arg(percentage));
}
