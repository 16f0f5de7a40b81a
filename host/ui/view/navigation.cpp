// A movement in a viewport takes the one before it back first, so that a gesture is one step without leaving
// an undo group open between events.
#include "host/ui/view/navigation.h"

#include "host/db/kernel/journal.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "sdk/hxads.h"

namespace korvex {

namespace {

/// A viewport's view may be locked against zooming and panning.
bool isViewLocked(HxDbObjectId viewport) {
    constexpr int kStatusBits = 90;
    constexpr int kLocked = 0x4000;
    zds_name name = {0, 0};
    resbuf* groups = hxdbGetZdsName(name, viewport) == Hx::eOk ? hxdbEntGet(name) : nullptr;
    bool locked = false;
    for (const resbuf* group = groups; group; group = group->rbnext) {
        locked = locked || (group->restype == kStatusBits && (group->resval.rlong & kLocked) != 0);
    }
    hxutRelRb(groups);
    return locked;
}

/// The viewport that is worked in, if it is there and its view can be moved.
HxDbObjectId viewportAt(const HxDbDatabase& database, Point2 sheet) {
    const FloatingWindow floating = currentFloatingWindow(database);
    const HxDbObjectId viewport(floating.viewport);
    return floating && showsAt(database, *floating.window, sheet) && !isViewLocked(viewport) ? viewport
                                                                                             : HxDbObjectId();
}

}  // namespace

void Navigation::begin(Document& document, const ScreenMap& map, const QPointF& pixel) {
    m_document = &document;
    m_last = {};
    m_viewport = viewportAt(*document.database(), map.toSheet(pixel));
}

bool Navigation::goesOn(const Document& document, const ScreenMap& map, const QPointF& pixel) const {
    return m_document == &document && m_viewport == viewportAt(*document.database(), map.toSheet(pixel));
}

void Navigation::zoom(const ScreenMap& map, const QPointF& pixel, double factor) {
    HxDbDatabase& database = *m_document->database();
    const FloatingWindow floating = moving(database);
    if (!floating) {
        setScreenView(database, map.zoomedAbout(pixel, factor));
        return;
    }
    const HxGePoint3d fixed = SpaceMap(map, floating.window).point(pixel);
    View view = currentView(database);
    view.height /= factor;
    view.center = fixed + (view.center - fixed) * (1 / factor);
    keep(view, L"ZOOM");
}

void Navigation::pan(const ScreenMap& map, const QPointF& from, const QPointF& to) {
    HxDbDatabase& database = *m_document->database();
    const FloatingWindow floating = moving(database);
    if (!floating) {
        setScreenView(database, map.movedBy(to - from));
        return;
    }
    const SpaceMap model(map, floating.window);
    View view = currentView(database);
    view.center = view.center + (model.point(from) - model.point(to));
    keep(view, L"PAN");
}

void Navigation::zoomExtents() {
    HxDbDatabase& database = *m_document->database();
    if (moving(database)) {
        View view = currentView(database);
        if (extentsView(database, view)) {
            keep(view, L"ZOOM");
        }
        return;
    }
    View view = screenView(database);
    if (screenExtents(database, view)) {
        setScreenView(database, view);
    }
}

/// The viewport of the gesture, as long as it is the one that is worked in.
FloatingWindow Navigation::moving(const HxDbDatabase& database) const {
    const FloatingWindow floating = currentFloatingWindow(database);
    return floating && HxDbObjectId(floating.viewport) == m_viewport ? floating : FloatingWindow();
}

Navigation::Step Navigation::now() const {
    const Journal& steps = journal(*m_document->database());
    return {steps.undoCount(), steps.size(), steps.segment()};
}

void Navigation::keep(const View& view, const wchar_t* name) {
    HxDbDatabase& database = *m_document->database();
    Journal& steps = journal(database);
    DocumentManager& documents = editor().documents();
    documents.lockDocument(m_document, kWrite);
    if (m_last.count > 0 && now() == m_last) {
        steps.undo();
    }
    steps.beginGroup(name);
    const Hx::ErrorStatus status = setCurrentView(database, view);
    steps.endGroup();
    documents.unlockDocument(m_document);
    m_last = now();
    if (status != Hx::eOk) {
        m_viewport = {};  // its view cannot be changed: the window's is from now on
    }
}

}  // namespace korvex
