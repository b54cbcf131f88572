#include "faults/FaultTable.h"

#include <cstdio>

namespace {

/// A name may hold a line end.
QString inOneLine(QString text) {
    return text.replace(u'\n', QStringLiteral("\\n"))
        .replace(u'\r', QStringLiteral("\\r"))
        .replace(u'\t', QStringLiteral("\\t"));
}

void printLine(const FaultRow& row) {
    const QString line = row.fault.leftJustified(58) + QStringLiteral(" | ") +
                         row.encoder.leftJustified(8) + QStringLiteral(" | ") +
                         row.answer.leftJustified(22) + QStringLiteral(" | ") +
                         row.outcome.leftJustified(34) + QStringLiteral(" | ") + row.verdict;
    std::printf("%s\n", qPrintable(inOneLine(line)));
    std::fflush(stdout);
}

} // namespace

void FaultTable::add(const FaultRow& row) {
    if (!hasHeader_) {
        hasHeader_ = true;
        printLine({QStringLiteral("fault"), QStringLiteral("encoder"), QStringLiteral("answer"),
                   QStringLiteral("outcome"), QStringLiteral("verdict")});
    }
    printLine(row);
}
