// Changes only mark; painting brings everything up to date.
#include "host/ui/view/view_contents.h"

#include "host/editor/documents.h"
#include "host/editor/selection.h"
#include "host/editor/view.h"

#include <QPainter>
#include <QTimer>
#include <QWidget>

namespace korvex {

namespace {

const char* const kTooMuch = "Too much to show at once: some objects are left out. Zoom in to see them.";

}  // namespace

ViewContents::ViewContents(QWidget& widget, std::function<void()> settled)
    : m_widget(widget), m_settled(std::move(settled)),
      m_watch({[this] { changed(); },
               [this] {
                   m_selectionChanged = true;
                   schedule();
               },
               [this] { schedule(); }, [this] { setDocument(nullptr); },
               [this](HxDbObjectId object, bool on) { highlight(object, on); }}) {}

void ViewContents::setDocument(Document* document) {
    m_document = document;
    m_layers.clear();
    lit = {};
    m_watch.watch(document);
    m_selectionChanged = true;
    changed();
}

void ViewContents::setStyle(const SceneStyle& style) {
    m_layers.setStyle(style);
    schedule();
}

Frame ViewContents::frame() const {
    return {ScreenMap(screenView(*m_document->database()), m_widget.size()), m_widget.size(),
            m_widget.devicePixelRatioF()};
}

FloatingWindow ViewContents::floating() const { return currentFloatingWindow(*m_document->database()); }

SpaceMap ViewContents::map() const { return {frame().map, floating().window}; }

bool ViewContents::isInSpace(const QPointF& pixel) const {
    const FloatingWindow in = floating();
    return !in || showsAt(*m_document->database(), *in.window, frame().map.toSheet(pixel));
}

void ViewContents::litChanged() {
    m_layers.setLit(lit.all());
    m_widget.update();
}

void ViewContents::changed() {
    m_layers.invalidate();
    m_grips.invalidate();
    schedule();
}

void ViewContents::highlight(HxDbObjectId object, bool on) {
    lit.redraw(object, on);
    litChanged();
}

void ViewContents::schedule() {
    if (m_scheduled) {
        return;
    }
    m_scheduled = true;
    m_widget.update();
    QTimer::singleShot(0, &m_widget, [this] {
        m_scheduled = false;
        m_settled();
    });
}

MarkColors ViewContents::colors() const {
    const SceneStyle& style = m_layers.style();
    return MarkColors::on(m_document->database()->tilemode() ? style.background : style.paper);
}

void ViewContents::paint(QPainter& painter, const MovingMarks& marks) {
    if (!m_document) {
        painter.fillRect(m_widget.rect(), m_layers.style().desk);
        return;
    }
    HxDbDatabase& database = *m_document->database();
    if (m_selectionChanged) {
        m_selectionChanged = false;
        m_layers.setSelection(selectionOf(database).objects());
        m_grips.invalidate();
    }
    m_layers.setLineweights(showsLineweights(database));
    const Frame now = frame();
    m_layers.draw(painter, database, now, m_hasty);
    const SpaceMap space(now.map, floating().window);
    drawSelectionGrips(painter, space);
    if (!marks.window.isNull()) {
        drawSelectionWindow(painter, marks.window, marks.crossing, colors());
    }
    if (marks.cursor && marks.rubberFrom) {
        drawRubberBand(painter, space.pixel(*marks.rubberFrom), *marks.cursor, colors());
    }
    if (!m_layers.isComplete()) {
        drawNote(painter, m_widget.rect(), kTooMuch, colors());
    }
    if (marks.cursor) {
        drawCursor(painter, *marks.cursor, marks.look, colors());
    }
}

/// Through a viewport only those that it shows.
void ViewContents::drawSelectionGrips(QPainter& painter, const SpaceMap& map) {
    QRectF area = m_widget.rect();
    if (const FloatingWindow in = floating()) {
        const Box frame = in.window->frame();
        area &= QRectF(map.screen().toPixel({frame.x.low, frame.y.high}),
                       map.screen().toPixel({frame.x.high, frame.y.low}));
    }
    const std::vector<HxDbObjectId>& selection = selectionOf(*m_document->database()).objects();
    drawGrips(painter, m_grips.pixels(selection, map, area), colors());
}

}  // namespace korvex
