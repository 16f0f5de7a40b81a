// Whole runs of the program: arguments in, dialogue and saved drawing out.
#pragma once

#include "sdk/hxdbdatabase.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace korvex::test {

/// What a run left behind.
struct ProgramRun {
    int status = -1;  ///< -1: it crashed or did not end
    QString out;
    QString err;

    bool says(const QString& text) const { return out.contains(text); }
    bool complains(const QString& text) const { return err.contains(text); }
};

/// A folder of its own, with a profile of its own, and runs of the program in it.
class KorvexTest : public ::testing::Test {
protected:
    /// Runs the program headless.
    ProgramRun korvex(const QStringList& arguments, const QByteArray& input = {}) {
        return start(QStringList("--headless") + arguments, input);
    }
    /// Runs it with a window, on a screen that nobody sees.
    ProgramRun windowed(const QStringList& arguments) { return start(arguments, {}); }
    /// Each command string as a -c option.
    ProgramRun commands(const QStringList& files, const QStringList& strings) {
        QStringList arguments = files;
        for (const QString& string : strings) {
            arguments << "-c" << string;
        }
        return korvex(arguments);
    }

    QString path(const QString& name) const { return m_folder.filePath(name); }
    void write(const QString& name, const QByteArray& text) {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QByteArray read(const QString& name) {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// A saved drawing, to be looked at. Null when it cannot be read.
    std::unique_ptr<HxDbDatabase> drawing(const QString& name) {
        auto database = std::make_unique<HxDbDatabase>(false);
        const Hx::ErrorStatus status = database->readDwgFile(path(name).toStdWString().c_str());
        EXPECT_EQ(status, Hx::eOk) << QString::fromWCharArray(database->readError()).toStdString();
        return status == Hx::eOk ? std::move(database) : nullptr;
    }

private:
    ProgramRun start(const QStringList& arguments, const QByteArray& input) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KORVEX_PROFILE_DIR", m_folder.filePath("profile"));
        environment.remove("DISPLAY");
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder.path());
        process.start(QString(KORVEX_BINARY_DIR) + "/host/korvex", arguments);
        process.write(input);
        process.closeWriteChannel();
        ProgramRun run;
        if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit) {
            run.status = process.exitCode();
        } else {
            process.kill();
            process.waitForFinished();
        }
        run.out = QString::fromUtf8(process.readAllStandardOutput());
        run.err = QString::fromUtf8(process.readAllStandardError());
        return run;
    }

    QTemporaryDir m_folder;
};

}  // namespace korvex::test
