// Reads the program's command line.
#include "host/app/options.h"

#include <QCommandLineParser>
#include <QMap>

namespace korvex {

namespace {

struct Parser {
    Parser() {
        parser.setApplicationDescription("The KORVEX drawing host.");
        parser.addOptions({script, command, module, headless, help, version});
        parser.addPositionalArgument("FILE", "Drawings to open; a new drawing when none is named.",
                                     "[FILE...]");
    }
    QCommandLineOption script{"script", "Run the commands of a script file; - is the standard input.",
                              "FILE"};
    QCommandLineOption command{"c", "Run commands, as typed.", "COMMANDS"};
    QCommandLineOption module{"module", "Load a module besides the layer manager.", "PATH"};
    QCommandLineOption headless{"headless", "Run without windows."};
    QCommandLineOption help{{"h", "help"}, "Show this help."};
    QCommandLineOption version{"version", "Show the version."};
    QCommandLineParser parser;
};

}  // namespace

bool readOptions(const QStringList& arguments, Options& options, QString& error) {
    Parser p;
    if (!p.parser.parse(arguments)) {
        error = p.parser.errorText() + " korvex --help lists the options.";
        return false;
    }
    options.files = p.parser.positionalArguments();
    options.modules = p.parser.values(p.module);
    options.headless = p.parser.isSet(p.headless);
    options.help = p.parser.isSet(p.help);
    options.version = p.parser.isSet(p.version);
    QStringList files = p.parser.values(p.script);
    QStringList strings = p.parser.values(p.command);
    for (const QString& name : p.parser.optionNames()) {
        if (name == "script") {
            options.scripts.push_back({true, files.takeFirst()});
        } else if (name == "c") {
            options.scripts.push_back({false, strings.takeFirst()});
        }
    }
    return true;
}

QString helpText() {
    Parser p;
    p.parser.parse({"korvex"});
    return p.parser.helpText() +
           "\nScripts and -c strings run in the order in which they are given. The dialogue goes to the "
           "standard\n"
           "output, errors to the standard error. The exit status is 0, or 1 when something went wrong.\n";
}

}  // namespace korvex
