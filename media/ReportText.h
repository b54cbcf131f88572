#pragma once

#include <QByteArray>
#include <QString>
#include <QStringConverter>

/// Collects the report of a first probe, in order of arrival. Used by one thread at a time; owned
/// by the probe that runs.
class ReportText final {
public:
    [[nodiscard]] const QString& text() const { return text_; }

    /// A character cut by the end of a chunk is joined with the next one.
    void append(const QByteArray& chunk) { text_ += decoder_.decode(chunk); }

private:
    QStringDecoder decoder_{QStringConverter::Utf8};
    QString text_;
};
