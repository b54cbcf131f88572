#pragma once

struct PausedTask;

/// What the list asks of the conversion engine. Main thread.
class RunControl {
public:
    virtual ~RunControl() = default;

    /// Begins the next job or ends the run.
    virtual void startConverting() = 0;
    /// Brings `convertingIndex` in line with the head of the queue.
    virtual void changeConvertingIndex() = 0;
    /// Asks for the row's encoder to be suspended at its next word.
    virtual void setConvertingIndexForPause(int row) = 0;
    /// Lets the row's suspended encoder go on.
    virtual void setConvertingIndexForResume(int row) = 0;
    /// Ends the suspended encoders and puts their rows back to waiting; waits for them.
    virtual void StopPausedTask() = 0;

    /// Deletes what the unfinished encoder of this movie has written.
    virtual void deletePartialOutput(int recordId) = 0;
    /// After rows were dragged: brings the lists and the run in line with the records. To be called
    /// before rows are removed: none is taken out of lists that speak of different movies in one
    /// place.
    virtual void alignWithRecords() = 0;
    /// A movie's row is being removed: its encoder, where it has one, is to end.
    virtual void rowRemoved(int recordId) = 0;
    /// Resumes and terminates a suspended encoder: a stopped process cannot end.
    virtual void endPausedTask(const PausedTask& paused) = 0;
};
