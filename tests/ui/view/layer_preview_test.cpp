// Pictures with other layers: the same as the window's when the layers are like that, and nothing is touched.
#include "tests/database_listener.h"
#include "tests/ui/view/view_fixture.h"

#include "sdk/hxpreview.h"
#include "sdk/hxui.h"

namespace korvex::test {
namespace {

class LayerPreviewTest : public ViewTest {
protected:
    /// Layers A, B, C with a line each from left to right at 50, 100, 150, and a circle on A in a block on B
    /// around (300,200).
    static DrawingText lines() {
        return DrawingText()
            .layer("0")
            .layer("A", 0, 1)
            .layer("B", 0, 3)
            .layer("C", 0, 5)
            .block("DISC", "10 0 20 0", "0 CIRCLE 5 D1 8 A 10 0 20 0 40 20")
            .add("0 LINE 5 A1 8 A 10 20 20 50 11 380 21 50 0 LINE 5 A2 8 B 10 20 20 100 11 380 21 100")
            .add("0 LINE 5 A3 8 C 10 20 20 150 11 380 21 150 0 INSERT 5 A4 8 B 2 DISC 10 300 20 200");
    }
    /// The same on a sheet whose two viewports show all of it, at half the size.
    void openSheet() {
        const auto viewport = [](const char* handle, const char* number, const char* place) {
            return "0 VIEWPORT 5 " + std::string(handle) + " 67 1 8 0 " + place + " 68 " + number + " 69 " +
                   number + " 16 0 26 0 36 1 17 0 27 0 37 0 51 0 90 32800";
        };
        const std::string whole = " 40 190 41 200 12 200 22 150 45 400";
        open(lines()
                 .add(viewport("B1", "1", "10 200 20 150 40 400 41 300 12 200 22 150 45 300"))
                 .add(viewport("B2", "2", ("10 100 20 150" + whole).c_str()))
                 .add(viewport("B3", "3", ("10 300 20 150" + whole).c_str())));
        run(L"TILEMODE 0");
        settle();
        look(200, 150, 300);
    }
    HxUiLayerAs as(const wchar_t* name, std::int32_t properties, HxDbObjectId viewport = {}) {
        HxUiLayerAs made;
        made.layer = layer(name);
        made.viewport = viewport;
        made.properties = properties;
        return made;
    }
    HxUiLayerAs recolored(const wchar_t* name, std::int16_t index, HxDbObjectId viewport = {}) {
        HxUiLayerAs made = as(name, HxLyState::kColor, viewport);
        made.color = HxCmColor::byIndex(index);
        return made;
    }
    HxUiLayerAs off(const wchar_t* name) {
        HxUiLayerAs made = as(name, HxLyState::kOn);
        made.isOff = true;
        return made;
    }
    HxUiLayerAs frozen(const wchar_t* name, HxDbObjectId viewport = {}) {
        HxUiLayerAs made =
            as(name, viewport.isNull() ? HxLyState::kFrozen : HxLyState::kCurrentViewportFrozen, viewport);
        made.isFrozen = true;
        return made;
    }
    HxDbObjectId makeDashes() {
        const HxDbWorkingDatabaseScope scope(&database());
        resbuf* const list = hxutBuildList(RTDXF0, L"LTYPE", 100, L"AcDbSymbolTableRecord", 100,
                                           L"AcDbLinetypeTableRecord", 2, L"DASHES", 70, 0, 3, L"", 72, 65,
                                           73, 2, 40, 20.0, 49, 10.0, 74, 0, 49, -10.0, 74, 0, 0);
        zds_name name = {0, 0};
        HxDbObjectId id;
        if (hxdbEntMakeX(list, name) == RTNORM) {
            hxdbGetObjectId(id, name);
        }
        hxutRelRb(list);
        return id;
    }
    /// Without a limit of time: the tests may run on a busy machine.
    QImage picture(const std::vector<HxUiLayerAs>& layers) {
        QImage image;
        EXPECT_EQ(Hx::eOk, preview.draw(image, &database(), layers, view->size(), 1, 600000));
        EXPECT_FALSE(preview.isCoarse());
        EXPECT_TRUE(preview.isComplete());
        return image;
    }
    QImage window() {
        view->setDark(hxuiIsDarkTheme());
        settle();
        return view->grab().toImage();
    }
    static QRgb at(const QImage& image, double x, double y) { return image.pixel(pixel(x, y)); }
    void change(const wchar_t* name, const std::function<void(HxDbLayerTableRecord&)>& edit) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForWrite);
        edit(*record.object());
    }

    HxUiLayerPreview preview;
};

TEST_F(LayerPreviewTest, LayersThatAreNotNamedLookAsInTheWindow) {
    open(lines());
    EXPECT_EQ(window(), picture({}));
    EXPECT_EQ(window(), picture({as(L"A", 0)})) << "nothing of it counts";
    const QImage before = window();
    const std::wstring theme = variable(L"COLORTHEME");
    run(theme == L"0" ? L"COLORTHEME 1" : L"COLORTHEME 0");
    EXPECT_NE(before, picture({})) << "in the theme's colours";
    EXPECT_EQ(window(), picture({}));
    run(L"COLORTHEME " + theme);
}

TEST_F(LayerPreviewTest, LooksAsTheWindowWillWithSuchLayers) {
    open(lines());
    run(L"LWDISPLAY 1");
    HxUiLayerAs thick = as(L"B", HxLyState::kLineweight | HxLyState::kLocked | HxLyState::kColor);
    thick.lineweight = HxDb::LineWeight(200);
    thick.isLocked = true;
    thick.color = HxCmColor::byIndex(6);
    HxUiLayerAs faint = as(L"C", HxLyState::kTransparency);
    faint.transparency = HxCmTransparency(std::uint8_t(90));
    const QImage before = window();
    const QImage seen = picture({off(L"A"), thick, faint});
    EXPECT_NE(before, seen);
    change(L"A", [](HxDbLayerTableRecord& record) { record.setIsOff(true); });
    change(L"B", [](HxDbLayerTableRecord& record) {
        record.setLineWeight(HxDb::LineWeight(200));
        record.setIsLocked(true);
        record.setColor(HxCmColor::byIndex(6));
    });
    change(L"C",
           [](HxDbLayerTableRecord& record) { record.setTransparency(HxCmTransparency(std::uint8_t(90))); });
    EXPECT_EQ(window(), seen);
    HxUiLayerAs on = as(L"A", HxLyState::kOn);
    HxUiLayerAs unlocked = as(L"B", HxLyState::kLocked);
    const QImage back = picture({on, unlocked});
    EXPECT_NE(seen, back) << "and the other way round";
    change(L"A", [](HxDbLayerTableRecord& record) { record.setIsOff(false); });
    change(L"B", [](HxDbLayerTableRecord& record) { record.setIsLocked(false); });
    EXPECT_EQ(window(), back);
}

TEST_F(LayerPreviewTest, HidesAndRecoloursInPlace) {
    open(lines());
    const QRgb ground = at(window(), 200, 75);
    const QImage seen = picture({off(L"A"), recolored(L"C", 2), frozen(L"C"), recolored(L"C", 4)});
    EXPECT_EQ(ground, at(seen, 200, 50));
    EXPECT_EQ(ground, at(seen, 320, 200)) << "in a block, too";
    EXPECT_EQ(qRgb(0, 255, 0), at(seen, 200, 100));
    EXPECT_EQ(qRgb(0, 255, 255), at(seen, 200, 150)) << "the last entry of a layer counts, alone";
    const QImage without = picture({frozen(L"B")});
    EXPECT_EQ(ground, at(without, 200, 100));
    EXPECT_EQ(ground, at(without, 320, 200)) << "a frozen reference hides its block";
    HxUiLayerAs dashed = as(L"A", HxLyState::kLinetype);
    dashed.linetype = makeDashes();
    ASSERT_FALSE(dashed.linetype.isNull());
    EXPECT_NE(picture({}), picture({dashed}));
}

TEST_F(LayerPreviewTest, ValuesThatALayerCannotHaveDoNotCount) {
    open(lines());  // of release 2000, which has no true colours
    HxUiLayerAs odd = as(L"A", HxLyState::kColor | HxLyState::kLinetype | HxLyState::kLineweight);
    odd.color = HxCmColor::byRgb(1, 200, 3);
    odd.linetype = layer(L"B");
    odd.lineweight = 77;
    HxUiLayerAs meta = as(L"B", HxLyState::kColor);
    meta.color = HxCmColor::byIndex(HxCmColor::kIndexByLayer);
    EXPECT_EQ(window(), picture({odd, meta, HxUiLayerAs()}));
}

TEST_F(LayerPreviewTest, AViewportAloneIsOtherwise) {
    openSheet();
    const HxDbObjectId left = byHandle(0xB2);
    const QRgb paper = at(window(), 100, 110);
    const QImage seen = picture({frozen(L"C", left), recolored(L"B", 6, left), recolored(L"B", 2)});
    EXPECT_EQ(paper, at(seen, 100, 150));
    EXPECT_EQ(qRgb(0, 0, 255), at(seen, 300, 150)) << "frozen in the left one only";
    EXPECT_EQ(qRgb(255, 0, 255), at(seen, 100, 125)) << "its own colour";
    EXPECT_EQ(qRgb(255, 255, 0), at(seen, 300, 125)) << "the layer's";
    {
        const HxDbObjectPointer<HxDbViewport> viewport(left, HxDb::kForWrite);
        HxArray<HxDbObjectId> layers;
        layers.append(layer(L"C"));
        viewport->freezeLayersInViewport(layers);
    }
    change(L"B", [&](HxDbLayerTableRecord& record) {
        record.setColor(HxCmColor::byIndex(6), left);
        record.setColor(HxCmColor::byIndex(2));
    });
    EXPECT_EQ(window(), seen);
    HxUiLayerAs thawed = as(L"C", HxLyState::kCurrentViewportFrozen, left);
    const QImage back = picture({thawed, recolored(L"B", 1)});
    EXPECT_EQ(qRgb(0, 0, 255), at(back, 100, 150));
    EXPECT_EQ(qRgb(255, 0, 255), at(back, 100, 125)) << "the viewport's override stays before the layer's";
    EXPECT_EQ(qRgb(255, 0, 0), at(back, 300, 125));
}

TEST_F(LayerPreviewTest, TouchesNothing) {
    openSheet();
    window();
    const std::string bytes = written(database());
    const std::wstring modified = variable(L"DBMOD");
    const std::size_t steps = undoSteps();
    const int paints = view->paintCount();
    const auto isUsed = [&] {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(L"A"), HxDb::kForRead);
        return record->isInUse();
    };
    const bool wasUsed = isUsed();
    const Listener listener(database());
    picture({off(L"A"), frozen(L"B"), recolored(L"C", 2, byHandle(0xB3))});
    QImage image;
    preview.draw(image, &database(), {off(L"A")}, view->size(), 1, 0);
    settle();
    EXPECT_EQ(0, listener.told);
    EXPECT_EQ(modified, variable(L"DBMOD"));
    EXPECT_EQ(steps, undoSteps());
    EXPECT_EQ(paints, view->paintCount());
    EXPECT_EQ(wasUsed, isUsed());
    EXPECT_EQ(bytes, written(database()));
}

TEST_F(LayerPreviewTest, WithoutTimeThePictureIsCoarse) {
    std::string many;
    for (int i = 0; i < 300; ++i) {
        many += std::string(i == 0 ? "" : " ") + "0 CIRCLE 5 " + std::to_string(1000 + i) + " 8 C 10 " +
                std::to_string(20 + i) + " 20 250 40 " + std::to_string(1 + i % 20);
    }
    open(lines().add(many));
    const QImage fine = picture({});
    QImage coarse;
    EXPECT_EQ(Hx::eOk, preview.draw(coarse, &database(), {off(L"A")}, view->size(), 1, 0));
    EXPECT_TRUE(preview.isCoarse());
    EXPECT_EQ(fine.size(), coarse.size());
    EXPECT_NE(fine, coarse);
    const auto isNear = [&](double x, double y, auto isColor) {
        bool found = false;
        for (int dy = -2; dy <= 2; ++dy) {
            found = found || isColor(QColor(at(coarse, x, y + dy)));
        }
        return found;
    };
    EXPECT_TRUE(isNear(200, 100, [](const QColor& c) { return c.green() > 90 && c.red() < 60; }));
    EXPECT_TRUE(isNear(200, 150, [](const QColor& c) { return c.blue() > 90 && c.red() < 60; }));
    EXPECT_FALSE(isNear(200, 50, [](const QColor& c) { return c.red() > 90; })) << "layer A is off";
    EXPECT_EQ(fine, picture({})) << "the next one is not";
}

TEST_F(LayerPreviewTest, PicturesOfAnyShapeShowTheWholeWindow) {
    open(lines());
    run(L"LINE 1,1 399,1 399,299 1,299 1,1  ");
    settle();
    for (const QSize& size : {QSize(100, 300), QSize(300, 60), QSize(130, 97)}) {
        QImage image;
        ASSERT_EQ(Hx::eOk, preview.draw(image, &database(), {}, size, 2, 600000));
        ASSERT_EQ(size * 2, image.size());
        EXPECT_EQ(2, image.devicePixelRatio());
        int colored = 0;
        for (int y = 0; y < image.height(); ++y) {
            colored += image.pixel(size.width(), y) == qRgb(255, 0, 0) ? 1 : 0;
        }
        EXPECT_GT(colored, 0) << size.width();
        const double shown = std::min(size.width() * 2 / 400.0, size.height() * 2 / 300.0);
        const QPointF middle(size.width(), size.height());
        const QPoint corner = (middle + QPointF(199 * shown, -149 * shown)).toPoint();
        int near = 0;
        for (int i = -2; i <= 2; ++i) {
            const QPoint on(qBound(0, corner.x() - 5, image.width() - 1),
                            qBound(0, corner.y() + i, image.height() - 1));
            near += image.pixel(on) == qRgb(255, 255, 255) ? 1 : 0;
        }
        EXPECT_GT(near, 0) << "the frame's corner, " << size.width();
    }
}

TEST_F(LayerPreviewTest, TellsWhyThereIsNoPicture) {
    open(lines());
    QImage image(view->size(), QImage::Format_RGB32);
    EXPECT_EQ(Hx::eNoDatabase, preview.draw(image, nullptr, {}, view->size()));
    EXPECT_TRUE(image.isNull());
    HxDbDatabase aside(true);
    EXPECT_EQ(Hx::eNoDocument, preview.draw(image, &aside, {}, view->size()));
    EXPECT_EQ(Hx::eInvalidInput, preview.draw(image, &database(), {}, QSize(0, 10)));
    EXPECT_EQ(Hx::eInvalidInput, preview.draw(image, &database(), {}, QSize(20000, 10)));
    EXPECT_EQ(Hx::eInvalidInput, preview.draw(image, &database(), {}, QSize(10, 10), 0));
    EXPECT_TRUE(image.isNull());
    picture({});
    hxDocManager()->closeDocument(view->document());
    hxDocManager()->newDocument();
    EXPECT_EQ(Hx::eOk, preview.draw(image, &database(), {}, view->size()))
        << "what it kept of the closed drawing does no harm";
}

}  // namespace
}  // namespace korvex::test
