// The command line of the program.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace korvex {

/// A script to run, in the order of the command line.
struct ScriptToRun {
    bool isFile = false;
    QString text;  ///< the file's path ("-" is the standard input), or the commands themselves
};

struct Options {
    QStringList files;
    QStringList modules;
    std::vector<ScriptToRun> scripts;
    bool headless = false;
    bool help = false;
    bool version = false;
};

/// False with a message for an option that does not exist or lacks its value.
bool readOptions(const QStringList& arguments, Options& options, QString& error);
QString helpText();

}  // namespace korvex
