// Pictures with other layers, drawn like those of the window by a painter of their own.
#include "sdk/hxpreview.h"

#include "host/editor/documents.h"
#include "host/editor/pick/assumed_layers.h"
#include "host/ui/theme/theme.h"
#include "host/ui/view/scene_layers.h"

#include <QGuiApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace korvex {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kMostPixels = 16384;
constexpr std::chrono::milliseconds kLeastForCoarse(50);

QSize inPixels(const QSize& size, double ratio) {
    return (QSizeF(size) * ratio).toSize().expandedTo(QSize(1, 1));
}

bool isPictureSize(const QSize& size, double ratio) {
    const double most = kMostPixels / std::max(ratio, 1e-6);
    return size.width() > 0 && size.height() > 0 && ratio > 0 && size.width() <= most &&
           size.height() <= most;
}

/// A view for a picture of any shape: the window's, whole.
View pictureView(const View& window, const QSize& size) {
    View view = window;
    view.aspect = static_cast<double>(size.width()) / size.height();
    view.height *= std::max(1.0, window.aspect / view.aspect);
    return view;
}

}  // namespace

}  // namespace korvex

using namespace korvex;

class HxUiLayerPreview::Imp {
public:
    /// One try at `scale` device pixels in a device-independent one; null when there is no memory for it.
    QImage paint(const SceneView& view, const SceneStyle& style, const QSize& size, double scale,
                 const SceneEffort& effort) {
        QImage image(inPixels(size, scale), QImage::Format_RGB32);
        QPainter on;
        if (image.isNull() || !on.begin(&image)) {
            return {};
        }
        on.scale(scale, scale);
        painter.paint(on, QRectF({0, 0}, QSizeF(size)), view, style, effort);
        return image;
    }

    ScenePainter painter;
    bool isCoarse = false;
};

HxUiLayerPreview::HxUiLayerPreview() : m_imp(new Imp) {}
HxUiLayerPreview::~HxUiLayerPreview() { delete m_imp; }

bool HxUiLayerPreview::isCoarse() const { return m_imp->isCoarse; }
bool HxUiLayerPreview::isComplete() const { return m_imp->painter.isComplete(); }

Hx::ErrorStatus HxUiLayerPreview::draw(QImage& image, HxDbDatabase* database,
                                       const std::vector<HxUiLayerAs>& layers, const QSize& size,
                                       double pixelRatio, int milliseconds) {
    image = QImage();
    m_imp->isCoarse = false;
    if (!database) {
        return Hx::eNoDatabase;
    }
    if (!hxDocManager()->document(database)) {
        return Hx::eNoDocument;
    }
    if (!isPictureSize(size, pixelRatio)) {
        return Hx::eInvalidInput;
    }
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        return Hx::eNotApplicable;
    }
    const std::chrono::milliseconds budget(std::max(milliseconds, 0));
    const Clock::time_point start = Clock::now();
    const AssumedLayers assumed(*database, layers);
    const View window = screenView(*database);
    const Frame frame{ScreenMap(pictureView(window, size), size), size, pixelRatio};
    SceneView view = sceneView(*database, frame);
    view.assumed = &assumed;
    SceneStyle style = SceneStyle::ofTheme(isDark());
    style.lineweights = showsLineweights(*database);
    style.pixelsPerMillimetre *= window.unitsPerPixel / frame.map.unitsPerPixel();
    image = m_imp->paint(view, style, size, pixelRatio, {start + budget, false});
    if (!isComplete() && Clock::now() >= start + budget) {
        m_imp->isCoarse = true;
        const Clock::time_point until = Clock::now() + std::max(budget, kLeastForCoarse);
        const QImage coarse = m_imp->paint(view, style, size, pixelRatio / 2, {until, true});
        image = coarse.scaled(inPixels(size, pixelRatio), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    image.setDevicePixelRatio(pixelRatio);
    return image.isNull() ? Hx::eOutOfMemory : Hx::eOk;
}
