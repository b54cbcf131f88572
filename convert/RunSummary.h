#pragma once

struct ConversionContext;

/// The end of a run as the user sees it. Main thread; owned by the engine.
class RunSummary final {
public:
    explicit RunSummary(const ConversionContext& context) : context_(context) {}

    /// Shows the summary box of a run that had something queued, empties the run's lists and takes
    /// the converted rows out of the list.
    void popUpForNoOfConvertedfiles();
    /// Takes the rows that were converted in this run out of the list and brings the count up to
    /// date.
    void removeConvertedRows();

private:
    const ConversionContext& context_;
};
