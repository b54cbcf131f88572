#include "opening/Beginning.h"

#include "opening/CommandLineTexts.h"
#include "opening/HandOver.h"
#include "opening/MovieAddress.h"
#include "platform/LocalizedStrings.h"

#include <QCoreApplication>
#include <QLocale>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int mistakeStatus = 2;

void print(std::FILE* stream, const QString& text) {
    std::fputs(text.toLocal8Bit().constData(), stream);
}

HandOver handOverAll(const CommandLine& line) {
    const QString address = sessionBusAddress();
    if (address.isEmpty())
        return HandOver::NoBus;
    MessageBus bus(address);
    const HandOver outcome = handOver(bus, line.addresses);
    if (outcome == HandOver::NoBus)
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    return outcome;
}

void takeOutcome(Beginning& beginning, HandOver outcome) {
    if (outcome == HandOver::Taken)
        beginning.status = EXIT_SUCCESS;
    beginning.isRefused = outcome == HandOver::NotTaken;
}

} // namespace

Beginning Beginning::of(int argc, char** argv, const QString& version) {
    // The application removes arguments of its own from those that it gets.
    const QByteArrayList arguments(argv, argv + argc);
    const QCoreApplication application(argc, argv);
    const StringTable strings(
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/reelshift"), QLocale());
    Beginning beginning{std::nullopt, readCommandLine(arguments, workingFolder()), noDisplayText(),
                        false};
    switch (beginning.line.wish) {
    case CommandLine::Wish::Help:
        print(stdout, helpText());
        beginning.status = EXIT_SUCCESS;
        break;
    case CommandLine::Wish::Version:
        print(stdout, versionText(version));
        beginning.status = EXIT_SUCCESS;
        break;
    case CommandLine::Wish::Mistake:
        print(stderr, mistakeText(beginning.line.mistake));
        beginning.status = mistakeStatus;
        break;
    case CommandLine::Wish::Window:
        takeOutcome(beginning, handOverAll(beginning.line));
        break;
    case CommandLine::Wish::Service:
        break;
    }
    return beginning;
}
