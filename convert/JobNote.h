#pragma once

#include "convert/PartialOutput.h"

#include <QString>

#include <chrono>
#include <memory>

class WorkerThreads;

/// The note of one job in the state folder, from before the launch of its encoder until the job has
/// had its outcome. The files are the business of threads of its own: nothing here blocks but
/// write(). A note that cannot be written is logged and stops nothing. Any thread.
class JobNote final {
public:
    JobNote();
    Q_DISABLE_COPY_MOVE(JobNote)

    struct Place {
        WorkerThreads& workers;
        QString folder;
        /// Between two looks for the encoder's file.
        std::chrono::milliseconds second;
    };

    /// Returns when the note lasts, or two seconds later: a home folder that does not answer holds
    /// no job up. Asks the file system about the source; may hang where that lies on a dead share.
    void write(const Place& place, const QString& source, const PartialOutput& output);
    /// The job has had its outcome: the note goes.
    void drop();
    /// The program closes, and the output may still be there: the note stays for the next start.
    void leave();

private:
    enum class End;
    struct Shared;

    static void keep(const std::shared_ptr<Shared>& shared, const QString& folder,
                     const QByteArray& text);
    static void lookForOutput(const std::shared_ptr<Shared>& shared, const PartialOutput& output,
                              std::chrono::milliseconds second);

    const std::shared_ptr<Shared> shared_;
};
