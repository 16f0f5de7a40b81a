// Whatever happens outside of the palette, and however it is shown: at every idle it shows what a palette
// that is loaded afresh shows, and rows that stay keep their order.
#include "tests/module/manager_ui/palette_fixture.h"
#include "tests/walk_seed.h"

#include <QAction>
#include <QSet>

#include <random>

namespace korvex::test {
namespace {

class PaletteWalk : public PaletteTest {
protected:
    void SetUp() override {
        PaletteTest::SetUp();
        define(L"CHANGE", [this] { m_change(); });
    }
    const std::uint32_t seed = walkSeed(20261125);
    std::mt19937 random{seed};

    template <class T>
    const T& any(const std::vector<T>& items) {
        return items[random() % items.size()];
    }
    std::wstring anyLayer() {
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        HxDbSymbolTableIterator* steps = nullptr;
        table->newIterator(steps);
        const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
        for (std::size_t skip = random() % table->numRecords(); skip > 0; --skip) {
            steps->step();
        }
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(steps->getRecordId(), HxDb::kForRead);
        return layer->name();
    }
    QStringList texts() {
        QStringList all;
        for (const Row& row : rows()) {
            all << row.join('|');
        }
        return all;
    }
    /// A change of one layer's record within a command.
    void change(const std::function<void(HxDbLayerTableRecord&)>& body) {
        const HxDbObjectId id = layer(anyLayer().c_str());
        m_change = [&] {
            const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForWrite);
            if (record) body(*record.object());
        };
        run(L"CHANGE\n");
    }
    void aborted() {
        const HxDbObjectId id = layer(anyLayer().c_str());
        HxDbTransactionManager& transactions = *database().transactionManager();
        HxDbObject* object = nullptr;
        transactions.startTransaction();
        if (transactions.getObject(object, id, HxDb::kForWrite) == Hx::eOk) {
            static_cast<HxDbLayerTableRecord*>(object)->setDescription(L"aborted");
        }
        transactions.abortTransaction();
    }
    void step() {
        const std::wstring number = std::to_wstring(random() % 40);
        switch (random() % 20) {
        case 0: run(L"-LAYER N Layer" + number + L"\n\n"); break;
        case 1:
            run(L"-LAYER " + any<std::wstring>({L"ON", L"OFF", L"LOCK", L"UNLOCK"}) + L" *" + number +
                L"\n\n");
            break;
        case 2:
            run(L"-LAYER " + any<std::wstring>({L"FREEZE", L"THAW"}) + L" " + anyLayer() + L"\n\n");
            break;
        case 3:
            run(L"-LAYER COLOR " + std::to_wstring(1 + random() % 9) + L" " + anyLayer() + L"\n\n");
            break;
        case 4: run(L"-LAYER SET " + anyLayer() + L"\n\n"); break;
        case 5: change([&](HxDbLayerTableRecord& l) { l.setName((L"Name" + number).c_str()); }); break;
        case 6: change([&](HxDbLayerTableRecord& l) { l.setDescription(number.c_str()); }); break;
        case 7:
            change([&](HxDbLayerTableRecord& l) {
                if (!l.isInUse() && l.objectId() != database().clayer()) l.erase();
            });
            break;
        case 8:
        case 9: run(L"U\n"); break;
        case 10: run(L"REDO\n"); break;
        case 11: aborted(); break;
        case 12: run(database().tilemode() ? L"LAYOUT S Layout1\nMSPACE\n" : L"MODEL\n"); break;
        case 13: run(L"VPLAYER FREEZE " + anyLayer() + L"\n\n\n"); break;
        case 14: run(any<std::wstring>({L"XREF D PLAN\n", L"XREF A plan.dxf\n0,0\n\n\n\n"})); break;
        case 15: run(any<std::wstring>({L"LINE 0,0 1,1\n\n", L"ERASE L\n\n"})); break;
        case 16: showOrHide(); break;
        case 17: clickHeader(); break;
        default: switchDocument(); break;
        }
    }
    void switchDocument() {
        DocumentManager& documents = editor().documents();
        const std::vector<Document*> all = documents.all();
        isMadeAnew = true;
        switch (random() % 4) {
        case 0: open("floor.dxf"); break;
        case 1: documents.closeDocument(any(all)); break;
        case 2: documents.newDocument(); break;
        default: documents.activateDocument(any(all)); break;
        }
        while (documents.all().size() > 4) {
            documents.closeDocument(any(documents.all()));
        }
        if (documents.all().empty()) {
            if (random() % 2) idle();
            documents.newDocument();
        }
    }
    /// Every way there is.
    void showOrHide() {
        isMadeAnew = true;
        switch (random() % 6) {
        case 0: run(L"LAYERCLOSE\n"); break;
        case 1: run(L"LAYERPALETTE\n"); break;
        case 2: panel()->toggleViewAction()->trigger(); break;
        case 3: panel()->close(); break;
        case 4: panel()->setFloating(!panel()->isFloating()); break;
        default: frame().restoreState(frame().saveState()); break;
        }
    }
    void clickHeader() {
        const QHeaderView& header = *grid()->horizontalHeader();
        isMadeAnew = true;
        emit grid()->horizontalHeader()->sectionClicked(
            header.logicalIndex(static_cast<int>(random() % static_cast<std::size_t>(header.count()))));
    }
    /// The rows that there were keep their order, unless the list was made anew.
    void expectOrder(const QStringList& before, const QStringList& now) {
        const QSet<QString> stayed(now.begin(), now.end());
        const QSet<QString> were(before.begin(), before.end());
        QStringList then = before;
        QStringList later = now;
        then.erase(std::remove_if(then.begin(), then.end(), [&](auto& n) { return !stayed.contains(n); }),
                   then.end());
        later.erase(std::remove_if(later.begin(), later.end(), [&](auto& n) { return !were.contains(n); }),
                    later.end());
        EXPECT_EQ(then.join(' ').toStdString(), later.join(' ').toStdString());
    }
    bool isMadeAnew = false;

private:
    std::function<void()> m_change;
};

TEST_F(PaletteWalk, TheGridEqualsAFreshReload) {
    SCOPED_TRACE("KORVEX_WALK_SEED=" + std::to_string(seed));
    showPalette();
    for (int i = 0; i < 500; ++i) {
        const QStringList before = names();
        isMadeAnew = false;
        for (std::size_t steps = 1 + random() % 3; steps > 0; --steps) {
            const std::wstring space = variable(L"TILEMODE") + variable(L"CVPORT");
            step();
            isMadeAnew = isMadeAnew || space != variable(L"TILEMODE") + variable(L"CVPORT");
        }
        idle();
        if (!panel()->isVisible()) continue;
        if (!isMadeAnew) expectOrder(before, names());
        QStringList shown = texts();
        run(L"LAYERPALETTE\n");
        QStringList fresh = texts();
        shown.sort();
        fresh.sort();
        ASSERT_EQ(shown.join('\n').toStdString(), fresh.join('\n').toStdString()) << "after step " << i;
        ASSERT_FALSE(HasFailure()) << "after step " << i;
    }
}

}  // namespace
}  // namespace korvex::test
