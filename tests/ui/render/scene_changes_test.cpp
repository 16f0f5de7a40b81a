// What the next paint shows after a change; pictures in parts; how much one paint does; highlighting.
#include "sdk/hxads.h"
#include "sdk/hxdbtransaction.h"
#include "tests/ui/render/scene_fixture.h"

namespace korvex::test {
namespace {

void setColor(HxDbObjectId entity, int index) {
    const HxDbObjectPointer<HxDbEntity> object(entity, HxDb::kForWrite);
    ASSERT_TRUE(object);
    ASSERT_EQ(Hx::eOk, object->setColor(HxCmColor::byIndex(static_cast<std::int16_t>(index))));
}

/// Changes the first group of a code.
void setPoint(HxDbObjectId entity, int code, double x, double y) {
    zds_name name = {0, 0};
    ASSERT_EQ(Hx::eOk, hxdbGetZdsName(name, entity));
    resbuf* list = hxdbEntGet(name);
    for (resbuf* node = list; node; node = node->rbnext) {
        if (node->restype == code) {
            node->resval.rpoint[0] = x;
            node->resval.rpoint[1] = y;
            break;
        }
    }
    EXPECT_EQ(RTNORM, hxdbEntMod(list));
    hxutRelRb(list);
}

TEST_F(SceneTest, ChangesOfEntitiesShowAtTheNextPaint) {
    load(SceneText()
             .block("B", "0 LINE | 5 B1 | 8 0 | 10 0 | 20 0.5 | 11 40 | 21 0.5")
             .add("0 LINE | 5 A1 | 8 RED | 10 0 | 20 10.5 | 11 90 | 21 10.5")
             .add("0 INSERT | 5 A2 | 8 RED | 2 B | 10 100 | 20 100"));
    paint();
    EXPECT_EQ(kRed, at(50, 10.5));
    EXPECT_EQ(kRed, at(120, 100.5));
    HxDbTransactionManager& transactions = *database->transactionManager();
    transactions.startTransaction();
    setColor(byHandle(0xA1), 3);
    setPoint(byHandle(0xA1), 10, 50, 90.5);
    setColor(byHandle(0xB1), 5);
    setPoint(byHandle(0xA2), 10, 100, 150);
    paint();
    EXPECT_EQ(kBlack, at(30, 10.5));
    EXPECT_EQ(kGreen, at(51, 88.5)) << "its new place";
    EXPECT_EQ(kBlack, at(120, 100.5));
    EXPECT_EQ(kBlue, at(120, 150.5)) << "within the block, and the reference moved";
    erase(*database, byHandle(0xA1).stub());
    paint();
    EXPECT_EQ(0, count(kGreen, 0, 0, kSize, kSize)) << "erased";
    transactions.abortTransaction();
    paint();
    EXPECT_EQ(kRed, at(50, 10.5)) << "all taken back";
    EXPECT_EQ(kRed, at(120, 100.5));
    EXPECT_EQ(0, ink(90, 120, kSize, kSize));
}

TEST_F(SceneTest, NewAndErasedBlocksAndAttributesShow) {
    load(SceneText()
             .block("TAG", line("0", 0, 0.5, 20, 0.5))
             .add("0 INSERT | 5 A1 | 8 RED | 66 1 | 2 TAG | 10 20 | 20 20\n"
                  "0 ATTRIB | 5 A2 | 8 0 | 10 100 | 20 100 | 40 20 | 1 HH | 2 NO | 70 0\n0 SEQEND | 5 A3 | 8 "
                  "0"));
    paint();
    setColor(byHandle(0xA2), 3);
    paint();
    EXPECT_GT(count(kGreen, 100, 100, 140, 121), 40);
    erase(*database, byHandle(0xA1).stub());
    paint();
    EXPECT_EQ(0, ink(0, 0, kSize, kSize));
    HxDbObjectPointer<HxDbBlockTableRecord> space(database->modelSpaceId(), HxDb::kForWrite);
    auto* reference = new HxDbBlockReference;
    HxDbObjectId id;
    ASSERT_EQ(Hx::eOk, space->appendHxDbEntity(id, reference));
    reference->setBlockTableRecord(recordId(*database, TableKind::block, L"TAG"));
    reference->setLayer(layer(L"GREEN"));
    reference->close();
    space.close();
    paint();
    EXPECT_EQ(kGreen, at(10, 0.5));
}

TEST_F(SceneTest, ChangesOfLayersShowAtTheNextPaint) {
    load(SceneText().add(line("RED", 0, 10.5, 90, 10.5)));
    paint();
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> red(layer(L"RED"), HxDb::kForWrite);
        red->setColor(HxCmColor::byIndex(3));
        red->setName(L"ROT");
    }
    paint();
    EXPECT_EQ(kGreen, at(50, 10.5));
    freeze(*database, L"ROT");
    paint();
    EXPECT_EQ(kBlack, at(50, 10.5));
}

TEST_F(SceneTest, DrawingsMayGoBetweenPaints) {
    load(SceneText().add(line("RED", 0, 10.5, 90, 10.5)));
    paint();
    EXPECT_GT(painter.bytes(), 0U);
    database.reset();
    EXPECT_EQ(0U, painter.bytes());
    load(SceneText().add(line("GREEN", 0, 10.5, 90, 10.5)));
    paint();
    EXPECT_EQ(kGreen, at(50, 10.5));
    paint(SceneView());
    EXPECT_EQ(0, ink(0, 0, kSize, kSize)) << "no drawing, no space";
}

/// A drawing with something of every kind all over the picture.
SceneText everything() {
    return SceneText()
        .linetype("DASHED", "73 4 | 40 20 | 49 10 | 49 -4 | 49 0 | 49 -6")
        .block("B", line("0", 0, 0, 7, 9) + "0 ARC | 8 BLUE | 10 0 | 20 0 | 40 9 | 50 0 | 51 90")
        .add(line("RED", -20, 3, 230, 187, "6 DASHED") + line("GREEN", 250, -10, -30, 171))
        .add("0 CIRCLE | 8 BLUE | 6 DASHED | 10 100 | 20 100 | 40 83.3")
        .add("0 HATCH | 8 RED | 440 33554559 | 30 0 | 2 SOLID | 70 1 | 91 1 | 92 2 | 72 0 | 73 1 | 93 3 | 10 "
             "20 | 20 30 | 10 "
             "180 | 20 60 | 10 90 | 20 170 | 97 0")
        .add("0 INSERT | 8 GREEN | 2 B | 10 5 | 20 5 | 50 20 | 70 12 | 71 9 | 44 16.3 | 45 21.7")
        .add("0 LWPOLYLINE | 8 0 | 90 3 | 70 0 | 43 9 | 10 30 | 20 150 | 42 0.4 | 10 120 | 20 20 | 10 190 | "
             "20 110");
}

TEST_F(SceneTest, PartsOfAPictureFitTogether) {
    load(everything());
    paint();
    const QImage whole = picture;
    QImage parts(kSize, kSize, QImage::Format_RGB32);
    parts.fill(kUntouched);
    {
        QPainter on(&parts);
        for (int y = 0; y < kSize; y += 70) {
            for (int x = 0; x < kSize; x += 45) {
                painter.paint(on, QRectF(x, y, 45, 70), model(), style);
            }
        }
    }
    int different = 0;
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            different += whole.pixel(x, y) != parts.pixel(x, y) ? 1 : 0;
        }
    }
    EXPECT_LE(different, 60) << "of 40,000 pixels: only where lines were cut at other places";
}

TEST_F(SceneTest, SharpScreensGetTwiceThePixels) {
    load(SceneText().add(line("RED", 10, 50.5, 90, 50.5) + line("GREEN", 10, 20.25, 90, 20.25)));
    QImage sharp(2 * kSize, 2 * kSize, QImage::Format_RGB32);
    sharp.setDevicePixelRatio(2);
    {
        QPainter on(&sharp);
        on.translate(10, 0);
        painter.paint(on, QRectF(0, 0, 150, kSize), model(), style);
    }
    EXPECT_EQ(kRed, sharp.pixel(120, 2 * kSize - 101));
    EXPECT_EQ(kBlack, sharp.pixel(30, 2 * kSize - 101)) << "moved by the painter";
    int wide = 0;
    for (int y = 0; y < 2 * kSize; ++y) {
        wide += sharp.pixel(120, y) == kGreen ? 1 : 0;
    }
    EXPECT_EQ(2, wide);
}

TEST_F(SceneTest, BlocksThatMultiplyEachOtherArePaintedAsFarAsTheyGo) {
    SceneText text;
    text.block("B0", line("0", 0, 0.5, 100, 0.5));
    for (int level = 1; level < 14; ++level) {
        std::string references;
        for (int i = 0; i < 20; ++i) {
            references += "0 INSERT | 8 0 | 2 B" + std::to_string(level - 1) + " | 10 " + std::to_string(i) +
                          " | 20 0\n";
        }
        text.block("B" + std::to_string(level), references);
    }
    text.block("SELF", line("0", 0, 50.5, 100, 50.5) + "0 INSERT | 8 0 | 2 SELF | 10 1 | 20 1");
    load(text.add("0 INSERT | 8 RED | 2 SELF | 10 0 | 20 0\n0 INSERT | 8 RED | 2 B13 | 10 0 | 20 10"));
    paint();
    EXPECT_FALSE(painter.isComplete());
    EXPECT_EQ(kRed, at(60, 10.5));
    EXPECT_EQ(kRed, at(60, 50.5));
    paint(model(1e-6));
    EXPECT_TRUE(painter.isComplete()) << "nothing to go into at this scale";
}

TEST_F(SceneTest, HighlightsOneOccurrenceOfAnObject) {
    load(SceneText()
             .block("B",
                    "0 LINE | 5 B1 | 8 0 | 10 0 | 20 0.5 | 11 40 | 21 0.5\n" + line("0", 0, 20.5, 40, 20.5))
             .block("C", "0 INSERT | 5 C1 | 8 0 | 2 B | 10 0 | 20 0")
             .add("0 INSERT | 5 A1 | 8 RED | 2 C | 10 10 | 20 10\n0 INSERT | 5 A2 | 8 RED | 2 C | 10 100 | "
                  "20 100"));
    const auto highlight = [&](const std::vector<HxDbObjectId>& path) {
        paint();
        QPainter on(&picture);
        painter.paintHighlighted(on, QRectF(0, 0, kSize, kSize), model(), style, path);
    };
    const QRgb lit = style.highlight.rgb();
    highlight({byHandle(0xB1), byHandle(0xC1), byHandle(0xA2)});
    EXPECT_EQ(lit, at(120, 100.5));
    EXPECT_EQ(kRed, at(120, 120.5)) << "another line of the block";
    EXPECT_EQ(kRed, at(30, 10.5)) << "the same line elsewhere";
    highlight({byHandle(0xA1)});
    EXPECT_EQ(lit, at(30, 10.5));
    EXPECT_EQ(lit, at(30, 30.5)) << "all of a reference";
    EXPECT_EQ(kRed, at(120, 100.5));
    highlight({byHandle(0xB1), byHandle(0xA1)});
    EXPECT_EQ(0, count(lit, 0, 0, kSize, kSize)) << "a path that leads nowhere";
}

TEST_F(SceneTest, HighlightsThroughViewports) {
    load(SceneText()
             .add("0 LINE | 5 A1 | 8 RED | 10 -500 | 20 20.5 | 11 500 | 21 20.5")
             .add("0 VIEWPORT | 67 1 | 8 BLUE | 10 50 | 20 60 | 40 60 | 41 80 | 68 2 | 69 2 | 12 30 | 22 40 "
                  "| 45 80 | 90 0"));
    paint(paper());
    QPainter on(&picture);
    painter.paintHighlighted(on, QRectF(0, 0, kSize, kSize), paper(), style, {byHandle(0xA1)});
    EXPECT_EQ(style.highlight.rgb(), at(50, 40.5));
    EXPECT_EQ(style.paper.rgb(), at(95, 40.5));
}

TEST_F(SceneTest, CoarsePaintsShowTheSameLinesWithoutTheirDress) {
    SceneText text;
    text.linetype("DASHED", "73 2 | 40 8 | 49 4 | 49 -4");
    for (int i = 0; i < 190; ++i) {  // large ones and some of a pixel
        text.add(line("RED", i, i % 7, i + (i % 3 == 0 ? 0.5 : 9), 20 + i % 5));
    }
    load(text.add(line("GREEN", 0, 100.5, 200, 100.5, "6 DASHED"))
             .add("0 SOLID | 8 BLUE | 10 50 | 20 120 | 11 150 | 21 120 | 12 50 | 22 180 | 13 150 | 23 180"));
    paint();
    const QImage fine = picture;
    EXPECT_LT(count(kGreen, 0, 100, 200, 101), 150);
    EXPECT_EQ(kBlue, at(100, 150));
    const auto paintWith = [this](const SceneEffort& effort) {
        QPainter on(&picture);
        painter.paint(on, QRectF(0, 0, kSize, kSize), model(), style, effort);
    };
    SceneEffort coarse;
    coarse.isCoarse = true;
    paintWith(coarse);
    EXPECT_TRUE(painter.isComplete());
    EXPECT_EQ(200, count(kGreen, 0, 100, 200, 101)) << "solid";
    EXPECT_EQ(kBlack, at(100, 150)) << "not filled";
    EXPECT_GT(count(kBlue, 45, 115, 155, 185), 250) << "but its edges are there";
    const QRect lines(0, kSize - 40, kSize, 40);
    EXPECT_EQ(fine.copy(lines), picture.copy(lines)) << "none is left out, whatever their order";
    SceneEffort late;
    late.until = std::chrono::steady_clock::now();
    paintWith(late);
    EXPECT_FALSE(painter.isComplete());
    EXPECT_EQ(0, ink(0, 0, kSize, kSize)) << "the time was over before it began";
    paint();
    EXPECT_TRUE(painter.isComplete());
    EXPECT_EQ(fine, picture);
}

}  // namespace
}  // namespace korvex::test
