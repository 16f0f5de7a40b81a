// Documents: opening, switching, locking, saving and closing.
#include "tests/editor/editor_fixture.h"

#include <QFile>

namespace korvex::test {
namespace {

class Watcher : public HxApDocManagerReactor {
public:
    Watcher() { hxDocManager()->addReactor(this); }
    ~Watcher() override { hxDocManager()->removeReactor(this); }
    void documentCreated(HxApDocument* d) override { note(L"created ", d); }
    void documentToBeDestroyed(HxApDocument* d) override { note(L"destroy ", d); }
    void documentDestroyed(const wchar_t* name) override {
        log.push_back(std::wstring(L"destroyed ") + name);
    }
    void documentActivated(HxApDocument* d) override { note(L"activated ", d); }
    void documentToBeDeactivated(HxApDocument* d) override { note(L"deactivate ", d); }
    void documentBecameCurrent(HxApDocument* d) override { note(L"current ", d); }
    void documentTitleUpdated(HxApDocument* d) override { note(L"title ", d); }
    Lines log;

private:
    void note(const wchar_t* what, HxApDocument* d) {
        EXPECT_NE(d->database(), nullptr);
        log.push_back(what + std::wstring(d->docTitle()));
    }
};

class Documents : public EditorTest {
protected:
    HxApDocManager& manager() { return *hxDocManager(); }
};

TEST_F(Documents, TellWhatHappensInOrder) {
    HxApDocument* first = curDoc();
    const std::wstring one = first->docTitle();
    Watcher watcher;
    HxApDocument* second = manager().newDocument();
    const std::wstring two = second->docTitle();
    EXPECT_EQ(hxdbWorkingDatabase(), second->database());
    EXPECT_EQ(manager().document(first->database()), first);
    manager().setCurDocument(first);
    EXPECT_EQ(curDoc(), first);
    EXPECT_EQ(manager().mdiActiveDocument(), second);
    EXPECT_EQ(hxdbWorkingDatabase(), first->database());
    manager().activateDocument(second);
    manager().closeDocument(second);
    EXPECT_EQ(curDoc(), first);
    EXPECT_EQ(watcher.log,
              (Lines{L"created " + two, L"deactivate " + one, L"current " + two, L"activated " + two,
                     L"current " + one, L"current " + two, L"deactivate " + two, L"destroy " + two,
                     L"destroyed ", L"current " + one, L"activated " + one}));
    manager().closeDocument(first);
    EXPECT_EQ(curDoc(), nullptr);
    EXPECT_EQ(curDocDatabase(), nullptr);
    EXPECT_EQ(curDocUndoController(), nullptr);
    EXPECT_EQ(hxdbWorkingDatabase(), nullptr);
    EXPECT_EQ(manager().closeDocument(first), Hx::eNoDocument);
}

/// Notes the current document at the beginning and the end of commands.
class CommandWatcher : public HxEditorReactor {
public:
    CommandWatcher() { hxedEditor()->addReactor(this); }
    ~CommandWatcher() override { hxedEditor()->removeReactor(this); }
    void commandWillStart(const wchar_t*) override { documents.push_back(curDoc()); }
    void commandEnded(const wchar_t*) override { documents.push_back(curDoc()); }
    std::vector<HxApDocument*> documents;
};

TEST_F(Documents, CommandsEndWhereTheyBegan) {
    HxApDocument* const first = curDoc();
    CommandWatcher watcher;
    run(L"NEW\n");
    HxApDocument* const second = curDoc();
    EXPECT_NE(second, first);
    EXPECT_EQ(hxdbWorkingDatabase(), second->database());
    EXPECT_EQ(watcher.documents, (std::vector<HxApDocument*>{first, first}));
    watcher.documents.clear();
    run(L"CLOSE\n");
    EXPECT_EQ(curDoc(), first);
    EXPECT_EQ(watcher.documents, (std::vector<HxApDocument*>{second, first})) << "which is gone";
}

TEST_F(Documents, LocksNest) {
    HxApDocument* doc = curDoc();
    EXPECT_EQ(manager().lockMode(doc), kNone);
    EXPECT_EQ(manager().unlockDocument(doc), Hx::eLockViolation);
    EXPECT_EQ(manager().lockDocument(doc, kWrite), Hx::eOk);
    EXPECT_EQ(manager().lockDocument(doc, kRead), Hx::eOk);
    EXPECT_EQ(manager().lockMode(doc), kWrite);
    EXPECT_EQ(manager().unlockDocument(doc), Hx::eOk);
    EXPECT_EQ(manager().unlockDocument(doc), Hx::eOk);
    EXPECT_EQ(manager().lockMode(doc), kNone);
    EXPECT_EQ(manager().lockDocument(nullptr), Hx::eNoDocument);
    define(L"LOOK", [&] {
        EXPECT_EQ(manager().lockMode(curDoc()), kWrite);
        EXPECT_STREQ(curDoc()->commandInProgress(), L"LOOK");
        EXPECT_FALSE(curDoc()->isQuiescent());
        EXPECT_EQ(manager().closeDocument(curDoc()), Hx::eInvalidContext);
        EXPECT_EQ(manager().newDocument(), nullptr);
    });
    run(L"LOOK\n");
}

TEST_F(Documents, SaveOpenAndCloseAsk) {
    const std::wstring file = path("a b.dxf");
    Watcher watcher;
    run(L"LINE 0,0 1,1 \nSAVEAS " + file + L"\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(watcher.log, Lines{L"title a b.dxf"});
    EXPECT_EQ(variable(L"DBMOD"), L"0");
    EXPECT_EQ(variable(L"DWGNAME"), L"\"a b.dxf\"");
    EXPECT_EQ(curDoc()->fileName(), file);
    // Open already: it becomes active, nothing is read again.
    const int before = manager().documentCount();
    run(L"NEW\nOPEN " + file + L"\n");
    EXPECT_EQ(manager().documentCount(), before + 1);
    EXPECT_EQ(entities(), 1);
    // Changes: Cancel keeps it open, Yes saves it.
    run(L"LINE 5,5 6,6 \n");
    EXPECT_TRUE(contains(run(L"CLOSE C\n"), L"Save changes to \"a b.dxf\"? [Yes/No/Cancel] <Yes>: C"));
    EXPECT_STREQ(curDoc()->docTitle(), L"a b.dxf");
    run(L"CLOSE Y\n");
    EXPECT_EQ(manager().documentCount(), before);
    run(L"OPEN " + file + L"\n");
    EXPECT_EQ(entities(), 2);
}

TEST_F(Documents, QuitStaysWithoutAnAnswer) {
    run(L"LINE 0,0 1,1 \n");
    run(L"QUIT\n");
    EXPECT_FALSE(editor().processor().isQuitting());
    EXPECT_EQ(entities(), 1);
    run(L"QUIT N\nLINE 0,0 1,1 \n");
    EXPECT_TRUE(editor().processor().isQuitting());
    EXPECT_EQ(manager().documentCount(), 0);
}

TEST_F(Documents, FailuresNameTheFile) {
    QFile bad(QString::fromStdWString(path("bad.dxf")));
    bad.open(QIODevice::WriteOnly);
    bad.write("  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nabc\n  0\nENDSEC\n  0\nEOF\n");
    bad.close();
    const int before = manager().documentCount();
    run(L"OPEN " + path("none.dxf") + L"\nOPEN " + path("bad.dxf") + L"\nSAVEAS " + path("no/such/x.dxf") +
        L"\n");
    ASSERT_EQ(failures.size(), 3U);
    EXPECT_TRUE(contains(failures[0], L"none.dxf"));
    EXPECT_TRUE(contains(failures[1], L"bad.dxf"));
    EXPECT_TRUE(contains(failures[1], L"line 8, group 10"));
    EXPECT_TRUE(contains(failures[2], L"was not saved"));
    EXPECT_EQ(manager().documentCount(), before);
    run(L"CLOSE N\nLINE\nQSAVE\n");
    EXPECT_EQ(failures.back(), L"QSAVE needs a drawing, and none is open: use NEW or OPEN first.");
}

TEST_F(Documents, SavingOverAnotherOpenDrawingIsRefused) {
    run(L"SAVEAS " + path("one.dxf") + L"\nNEW\nSAVEAS " + path("one.dxf") + L"\nY\n");
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"open as another drawing"));
}

TEST_F(Documents, StringsRunInTheirDocument) {
    HxApDocument* first = curDoc();
    HxApDocument* second = manager().newDocument();
    manager().sendStringToExecute(first, L"-LAYER N Here\n ", false);
    run(L"");
    EXPECT_EQ(manager().mdiActiveDocument(), second);
    EXPECT_FALSE(hasLayer(L"Here"));
    manager().activateDocument(first);
    EXPECT_TRUE(hasLayer(L"Here"));
}

}  // namespace
}  // namespace korvex::test
