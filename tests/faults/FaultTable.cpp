#include "faults/FaultTable.h"

#include <cstdio>

namespace {

void printLine(const FaultRow& row) {
    const QString line = row.fault.leftJustified(58) + QStringLiteral(" | ") +
                         row.encoder.leftJustified(8) + QStringLiteral(" | ") +
                         row.answer.leftJustified(22) + QStringLiteral(" | ") +
                         row.outcome.leftJustified(34) + QStringLiteral(" | ") + row.verdict;
    std::printf("%s\n", qPrintable(line));
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
