// The picture before a restore: what the drawing looks like after it, and a pane that draws it when it must.
#include "tests/module/layer_states/layer_states_fixture.h"

#include "layer_states/preview/preview_picture.h"
#include "layer_states/preview/restore_preview.h"

#include "sdk/hxpreview.h"

#include <QLabel>
#include <QTest>
#include <QToolButton>

using namespace korvex::test;

namespace {

constexpr int kAll = HxLyState::kAllProperties;
constexpr int kNoLimit = 600000;  // milliseconds: the tests may run on a busy machine

/// Counts all that a drawing tells.
class Listener final : public HxDbDatabaseReactor {
public:
    explicit Listener(HxDbDatabase& database) : m_database(database) { m_database.addReactor(this); }
    ~Listener() override { m_database.removeReactor(this); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    void objectAppended(const HxDbDatabase*, const HxDbObject*) override { ++told; }
    void objectOpenedForModify(const HxDbDatabase*, const HxDbObject*) override { ++told; }
    void objectModified(const HxDbDatabase*, const HxDbObject*) override { ++told; }
    void objectErased(const HxDbDatabase*, const HxDbObject*, bool) override { ++told; }
    int told = 0;

private:
    HxDbDatabase& m_database;
};

class PreviewTest : public LayerStatesTest {
protected:
    ~PreviewTest() override {
        CKvLayerStateManDlg::m_bCloseNoFindChecked = 0;
        CKvLayerStateManDlg::m_bViewportReplaceChecked = 0;
    }
    QImage drawn(const std::vector<HxUiLayerAs>& layers) {
        QImage image;
        EXPECT_EQ(Hx::eOk, m_preview.draw(image, &database(), layers, QSize(400, 300), 1, kNoLimit));
        return image;
    }
    /// The picture of a restore is that of the drawing afterwards, another one than now, and takes nothing.
    void expectSameAsRestored(const wchar_t* name, const KvRestoreOptions& options) {
        const auto states = engine();
        CKvLayerState* const state = states->states().find(name);
        ASSERT_NE(state, nullptr);
        const std::string before = fileNow();
        const QImage now = drawn({});
        std::vector<HxUiLayerAs> layers;
        int told = 0;
        QImage preview;
        {
            const Listener listener(database());
            ASSERT_TRUE(layersAfterRestore(database(), states->states(), state, options, layers));
            preview = drawn(layers);
            told = listener.told;
        }
        EXPECT_EQ(0, told);
        EXPECT_EQ(before, fileNow()) << "neither layers nor linetypes are made";
        EXPECT_NE(now, preview);
        CKvLayerStateManDlg::m_bCloseNoFindChecked = options.turnOffOthers ? 1 : 0;
        CKvLayerStateManDlg::m_bViewportReplaceChecked = options.asViewportOverrides ? 1 : 0;
        ASSERT_TRUE(states->restoreLayerState(*state, options.mask, options.viewport));
        EXPECT_EQ(drawn({}), preview);
        run(L"U\n");
        EXPECT_EQ(now, drawn({}));
    }
    /// A state "S" in which the layers differ from the drawing's in all that can be seen.
    void saveStateOfChanges() {
        change(L"WALLS", [](auto& l) {
            l.setColor(HxCmColor::byRgb(200, 90, 7));
            l.setLineWeight(static_cast<HxDb::LineWeight>(200));
            l.setTransparency(HxCmTransparency(std::uint8_t(120)));
        });
        change(L"NOTES", [](auto& l) {
            l.setIsOff(true);
            l.setIsFrozen(true);
        });
        change(L"VIEWS", [](auto& l) {
            l.setIsLocked(true);
            l.setColor(HxCmColor::byIndex(3));
        });
        saveState(L"S");
        run(L"U\nU\nU\nU\n");
    }
    static KvRestoreOptions with(std::int32_t mask) {
        KvRestoreOptions options;
        options.mask = mask;
        return options;
    }
    static SmallDrawing crossed() {
        SmallDrawing drawing = LayerStatesTest::drawing();
        drawing.model(drawing.line("VIEWS", 0, 0, 10, 8) + drawing.line("0", 0, 8, 10, 0));
        return drawing;
    }

private:
    HxUiLayerPreview m_preview;
};

TEST_F(PreviewTest, IsTheDrawingAfterARestoreInModelSpace) {
    openDrawing(crossed());
    run(L"LWDISPLAY 1\n");
    CKvLayerStateManDlg states(&database());
    saveState(L"AsItWas");
    saveStateOfChanges();
    if (HasFailure()) return;
    change(L"NOTES", [](auto& l) { l.setIsOff(false); });
    expectSameAsRestored(L"S", with(kAll));
    for (const HxLyState::Property property : {HxLyState::kOn, HxLyState::kColor, HxLyState::kLineweight,
                                               HxLyState::kTransparency, HxLyState::kLocked}) {
        SCOPED_TRACE(property);
        expectSameAsRestored(L"S", with(property));
    }
}

}  // namespace
