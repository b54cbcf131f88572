#pragma once

#include <QString>

/// What a row's bar shows: the share that is done and the text over it.
/// A value; main thread.
class TextProgress final {
public:
    /// Share done, 0.0 to 1.0; more than 1.0 is kept as it is and clipped when painted.
    [[nodiscard]] double progress() const { return progress_; }
    [[nodiscard]] const QString& text() const { return text_; }

    void setProgress(double progress) { progress_ = progress; }
    void setText(const QString& text) { text_ = text; }

private:
    double progress_ = 0.0;
    QString text_;
};

/// A row's progress record: its percentage, its bar and its status text.
/// Main thread; shared between the list of rows and the run that converts the row.
class ProgressObject final {
public:
    /// A step that is more than a percentage: it also wipes the status text.
    static constexpr qint64 wipeStep = 110;

    ProgressObject() { incrementStep(0); }

    [[nodiscard]] qint64 currentStep() const { return currentStep_; }
    [[nodiscard]] const TextProgress& textProgress() const { return textProgress_; }
    [[nodiscard]] const QString& statusString() const { return statusString_; }
    /// What is known of the time that its conversion will yet take, empty where nothing is.
    [[nodiscard]] const QString& timeLeft() const { return timeLeft_; }
    /// Whether the bar is shown in place of the status text.
    [[nodiscard]] bool showsBar() const;

    /// Takes a percentage, 0 to 100, or `wipeStep`.
    void incrementStep(qint64 percentage);
    void changestat(const QString& text) { statusString_ = text; }
    /// The step alone: the bar and its text stay.
    void setCurrentStep(qint64 step) { currentStep_ = step; }
    void setTextProgress(const TextProgress& bar) { textProgress_ = bar; }
    void setStatusString(const QString& text) { statusString_ = text; }
    void setTimeLeft(const QString& text) { timeLeft_ = text; }
    /// Share done, 0.0 to 1.0, without a change of the step or the text.
    void setBar(double progress) { textProgress_.setProgress(progress); }

private:
    qint64 currentStep_ = 0;
    TextProgress textProgress_;
    QString statusString_;
    QString timeLeft_;
};
