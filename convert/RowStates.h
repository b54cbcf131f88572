#pragma once

class JobRecord;
class ProgressObject;

// The states of a row: what each writes into its record and its progress record.

void setWaiting(JobRecord& record);
void setProcessing(JobRecord& record);
void setPaused(JobRecord& record);
void setConverted(JobRecord& record);

/// No status text, an empty bar at step 0.
void clearProgress(ProgressObject& progress);
