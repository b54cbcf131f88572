#pragma once

#include "faults/Fault.h"
#include "faults/FaultScene.h"
#include "faults/FaultTable.h"

#include <QTest>

// The rows that most faults are made of: a.mp4 goes wrong, b.mp4 is good and comes after it.

inline const QString badName = QStringLiteral("a.mp4");
inline const QString goodName = QStringLiteral("b.mp4");
inline const QString badOutput = QStringLiteral("a_HQ_640x480.mp4");
inline const QString goodOutput = QStringLiteral("b_HQ_640x480.mp4");

inline constexpr const char* summaryBox = "IDS_TXT_POPUP_OPERATION_SUCCESSFUL";
inline constexpr const char* errorBox = "IDS_TXT_POPUP_ERROR";
inline constexpr const char* diskFullBox = "IDS_TXT_POPUP_MEMORYFULL";
inline constexpr const char* sourceGoneBox = "IDS_TXT_POPUP_SOURCE_UNAVAILABLE";
inline constexpr const char* sourceWentBox = "IDS_TXT_POPUP_UNEXPECTEDREMOVE";
inline constexpr const char* folderGoneBox = "IDS_BTN_POPUP_OUTFLDRUNAVAILABLE";
inline constexpr const char* stopBox = "IDS_TXT_POPUP_STOPCONVERTING";
inline constexpr const char* unsupportedBox = "IDS_TXT_UNSUPPORTED";
inline constexpr const char* conflictBox = "IDS_TXT_POPUP_SAMENAME";

using Encoder = Fault::Encoder;

inline QStringList steps(std::initializer_list<const char*> lines) {
    QStringList result;
    for (const char* each : lines)
        result += QString::fromUtf8(each);
    return result;
}

/// Two good movies.
inline QString addBoth(FaultScene& scene) {
    return scene.addGood(badName) && scene.addGood(goodName)
               ? QString()
               : QStringLiteral("no movie could be made");
}

/// A movie a.mp4 that is encoded like this, and the good one.
inline std::function<QString(FaultScene&)> scripted(const QStringList& encode) {
    return [encode](FaultScene& scene) {
        scene.addScripted(badName, encode);
        return scene.addGood(goodName) ? QString() : QStringLiteral("no movie could be written");
    };
}

inline void addRow(const Fault& fault) {
    const QString encoder =
        fault.encoder == Encoder::Real ? QStringLiteral("real") : QStringLiteral("scripted");
    QTest::newRow(qPrintable(fault.name + QStringLiteral(", ") + fault.answer +
                             QStringLiteral(", ") + encoder))
        << fault;
}

/// A fault that the conversion-error question comes of: once skipped, once stopped.
inline void addErrorRows(Fault fault) {
    fault.answer = QStringLiteral("Skip");
    fault.boxes = {{errorBox, 1001}, {summaryBox}};
    fault.waiting = QStringList(badName);
    fault.outputs = QStringList(goodOutput);
    addRow(fault);
    fault.answer = QStringLiteral("Stop");
    fault.boxes = {{errorBox, 1000}, {summaryBox}};
    fault.waiting = QStringList({badName, goodName});
    fault.outputs.clear();
    addRow(fault);
}

/// One that the message about the full disk comes of: the run ends.
inline void addDiskFullRow(Fault fault) {
    fault.answer = QStringLiteral("OK");
    fault.boxes = {{diskFullBox}, {summaryBox}};
    fault.waiting = QStringList({badName, goodName});
    addRow(fault);
}

/// One that nobody is asked about: both are converted.
inline void addHarmlessRow(Fault fault) {
    fault.answer = QStringLiteral("none asked");
    fault.boxes = {{summaryBox}};
    fault.outputs = QStringList({badOutput, goodOutput});
    addRow(fault);
}

/// Puts the fault of this row on the table.
#define SURVIVE(table)                                                                             \
    do {                                                                                           \
        QFETCH(Fault, fault);                                                                      \
        const FaultRow row = survive(fault);                                                       \
        (table).add(row);                                                                          \
        if (row.verdict.startsWith(QStringLiteral("skipped: ")))                                   \
            QSKIP(qPrintable(row.verdict));                                                        \
        QVERIFY2(row.verdict == QStringLiteral("survived"), qPrintable(row.verdict));              \
    } while (false)
