#pragma once

#include "platform/LocalizedStrings.h"

#include <QApplication>
#include <QLocale>

/// The application around the tests of the table, with the texts in English.
class TableApplication : public QApplication {
public:
    TableApplication(int& argc, char** argv) : QApplication(argc, argv) {}

private:
    StringTable texts_{QStringLiteral(REELSHIFT_TEST_RESOURCES), QLocale::c()};
};
