// An editor with one new drawing, commands as text, the dialogue as text.
#pragma once

#include "host/editor/command_processor.h"
#include "host/editor/command_stack.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/layer_names.h"
#include "host/editor/system_variables.h"
#include "sdk/hxdbentity.h"
#include "tests/io/saving.h"

#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace korvex::test {

using Lines = std::vector<std::wstring>;

/// Writes down what the editor tells.
class Recorder : public HxEditorReactor {
public:
    Recorder() { hxedEditor()->addReactor(this); }
    ~Recorder() override { hxedEditor()->removeReactor(this); }
    void commandWillStart(const wchar_t* name) override { log.push_back(std::wstring(L"start ") + name); }
    void commandEnded(const wchar_t* name) override { log.push_back(std::wstring(L"end ") + name); }
    void commandCancelled(const wchar_t* name) override { log.push_back(std::wstring(L"cancel ") + name); }
    void commandFailed(const wchar_t* name) override { log.push_back(std::wstring(L"fail ") + name); }
    void sysVarWillChange(const wchar_t* name) override { log.push_back(std::wstring(L"will ") + name); }
    void sysVarChanged(const wchar_t* name, bool success) override {
        log.push_back(std::wstring(success ? L"did " : L"did not ") + name);
    }
    Lines log;
};

class EditorTest : public ::testing::Test {
protected:
    EditorTest() {
        qputenv("KORVEX_PROFILE_DIR", m_folder.path().toUtf8());
        editor().console().setWriter([this](std::wstring_view text) { m_shown += text; });
        editor().console().setFailureWriter([this](std::wstring_view text) { failures.emplace_back(text); });
        editor().documents().newDocument();
    }
    ~EditorTest() override {
        editor().input().clear();
        for (Document* document : editor().documents().all()) {
            written(*document->database());  // whatever a test made of it
            editor().documents().closeDocument(document);
        }
        editor().commands().removeGroup(L"TEST");
        editor().processor().reset();
        resetSessionVariables();
        editor().console().setWriter(nullptr);
        editor().console().setFailureWriter(nullptr);
    }

    /// Runs commands as a -c string would; the dialogue comes back, without the last "Command:" line.
    std::wstring run(const std::wstring& commands) {
        m_shown.clear();
        editor().input().append(std::make_unique<ScriptSource>(commands, ScriptOptions()));
        editor().processor().runAll();
        return m_shown;
    }
    /// A command of a test's own.
    void define(const wchar_t* name, std::function<void()> body, int flags = HXCMD_MODAL) {
        static std::vector<std::function<void()>> bodies(8);
        static const std::vector<HxCommandFunction> functions = {
            [] { bodies[0](); },
            [] { bodies[1](); },
            [] { bodies[2](); },
            [] { bodies[3](); },
        };
        const std::size_t slot = m_defined++ % functions.size();
        bodies[slot] = std::move(body);
        editor().commands().addCommand(L"TEST", name, nullptr, flags, functions[slot], nullptr, -1, nullptr);
    }

    HxDbDatabase& database() { return *curDocDatabase(); }
    void write(const char* name, const std::string& text) {
        QFile file(QString::fromStdWString(path(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
    }
    std::wstring path(const char* name) { return m_folder.filePath(name).toStdWString(); }

    int entities() {
        const HxDbObjectPointer<HxDbBlockTableRecord> space(database().modelSpaceId(), HxDb::kForRead);
        HxDbBlockTableRecordIterator* steps = nullptr;
        space->newIterator(steps);
        const std::unique_ptr<HxDbBlockTableRecordIterator> owner(steps);
        int count = 0;
        for (; !steps->done(); steps->step()) {
            ++count;
        }
        return count;
    }
    bool hasLayer(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        return table->has(name);
    }
    HxDbObjectId layer(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        HxDbObjectId id;
        table->getAt(name, id);
        return id;
    }
    std::wstring variable(const wchar_t* name) { return valueText(variableValue(*findSystemVariable(name))); }

    Lines failures;

private:
    QTemporaryDir m_folder;
    std::wstring m_shown;
    std::size_t m_defined = 0;
};

inline bool contains(const std::wstring& text, const std::wstring& part) {
    return text.find(part) != std::wstring::npos;
}

}  // namespace korvex::test
