#pragma once

class QAbstractItemModel;
class QByteArray;
class QObject;

/// What a traced program shows and logs, beside what trace.cpp sees of it and in the same file.
/// Does nothing where REELSHIFT_BENCH_TRACE is not set. Main thread, but for `note`.
namespace TraceNotes {

/// From now on the texts of the table's status column, and what the program logs of a run.
void begin(QAbstractItemModel& model, QObject* context);
/// A line with the time and the calling thread. Any thread.
void note(const QByteArray& line);

} // namespace TraceNotes
