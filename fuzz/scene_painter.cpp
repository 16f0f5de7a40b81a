// Fuzz target: any bytes are read as a drawing, and its spaces are painted whole, close to and from far away.
#include "host/ui/render/scene_painter.h"
#include "host/editor/picker.h"
#include "host/io/drawing_reader.h"
#include "sdk/hxdbdatabase.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cstdint>

namespace {

using namespace korvex;

constexpr int kSize = 64;

void startGui() {
    static int count = 1;
    static char name[] = "scene_painter_fuzz";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(count, arguments);
}

void paintSpace(ScenePainter& painter, HxDbDatabase& database, HxDbObjectId space) {
    HxGePoint3d low, high;
    if (!spaceExtents(database, space, low, high)) {
        low = high = HxGePoint3d();
    }
    QImage picture(kSize, kSize, QImage::Format_RGB32);
    const double whole = kSize / std::max({high.x - low.x, high.y - low.y, 1e-3});
    for (const double scale : {whole, whole * 100, whole * 1e7, whole * 1e-3}) {
        SceneView view;
        view.database = &database;
        view.space = space;
        view.toView =
            HxGeMatrix3d::scaling(scale, -scale, 1) * HxGeMatrix3d::translation({-low.x, -high.y, 0});
        SceneStyle style = SceneStyle::dark();
        style.lineweights = true;
        QPainter on(&picture);
        painter.paint(on, QRectF(0, 0, kSize, kSize), view, style);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    startGui();
    ScenePainter painter;
    HxDbDatabase database(false);
    std::wstring error;
    if (readDrawing(database, std::string(reinterpret_cast<const char*>(data), size), error) == Hx::eOk) {
        paintSpace(painter, database, database.modelSpaceId());
        paintSpace(painter, database, database.paperSpaceId());
    }
    return 0;
}
