#include "opening/CommandLine.h"

#include "opening/MovieAddress.h"

#include <QCommandLineParser>

namespace {

const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
const QCommandLineOption version(QStringList{QStringLiteral("v"), QStringLiteral("version")});
// As GLib's programs have it.
const QCommandLineOption service(QStringLiteral("gapplication-service"));

// The toolkit takes them out of the arguments itself, later. A session manager starts programs
// again with -session.
constexpr const char* toolkitOptions[] = {"reverse", "nograb", "dograb", "sync", "widgetcount"};
constexpr const char* toolkitOptionsWithValue[] = {"session",
                                                   "platform",
                                                   "platformpluginpath",
                                                   "platformtheme",
                                                   "plugin",
                                                   "style",
                                                   "stylesheet",
                                                   "display",
                                                   "geometry",
                                                   "qwindowgeometry",
                                                   "title",
                                                   "qwindowtitle",
                                                   "icon",
                                                   "qwindowicon",
                                                   "name",
                                                   "fontengine"};

void addOptions(QCommandLineParser& parser) {
    parser.addOption(help);
    parser.addOption(version);
    parser.addOption(service);
    for (const char* name : toolkitOptions)
        parser.addOption(QCommandLineOption(QString::fromLatin1(name)));
    for (const char* name : toolkitOptionsWithValue)
        parser.addOption(
            QCommandLineOption(QString::fromLatin1(name), QString(), QStringLiteral("value")));
}

QString mistakeOf(const QCommandLineParser& parser) {
    const QStringList unknown = parser.unknownOptionNames();
    if (unknown.isEmpty())
        return parser.errorText();
    const QString name = QString::fromUtf8(unknown.first().toLatin1());
    return (name.size() == 1 ? u"-" : u"--") + name;
}

CommandLine::Wish wishOf(const QCommandLineParser& parser) {
    if (parser.isSet(help))
        return CommandLine::Wish::Help;
    if (parser.isSet(version))
        return CommandLine::Wish::Version;
    return parser.isSet(service) ? CommandLine::Wish::Service : CommandLine::Wish::Window;
}

} // namespace

CommandLine readCommandLine(const QByteArrayList& arguments, const QByteArray& folder) {
    // Every byte as a character of its own, because names of files may be no text.
    QStringList bytes;
    for (const QByteArray& argument : arguments)
        bytes += QString::fromLatin1(argument);

    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    addOptions(parser);
    CommandLine line;
    if (!parser.parse(bytes)) {
        line.wish = CommandLine::Wish::Mistake;
        line.mistake = mistakeOf(parser);
        return line;
    }
    line.wish = wishOf(parser);
    for (const QString& movie : parser.positionalArguments())
        line.addresses += movieAddress(movie.toLatin1(), folder);
    return line;
}
