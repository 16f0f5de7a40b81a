// Zooming and panning by hand: of the window, or of the floating viewport that is worked in.
#pragma once

#include "host/editor/pick/floating_windows.h"
#include "host/ui/view/screen_map.h"

namespace korvex {

class Document;

/// Changes what a document's window shows. Where the cursor is over the floating viewport that is worked in,
/// that viewport's own view changes, which is a change of the drawing: one undo step for all movements of a
/// gesture.
class Navigation {
public:
    /// A new gesture begins: at this point of the window.
    void begin(Document& document, const ScreenMap& map, const QPointF& pixel);
    /// What is under `pixel` stays there and becomes `factor` times as large.
    void zoom(const ScreenMap& map, const QPointF& pixel, double factor);
    /// What is under `from` comes to lie under `to`.
    void pan(const ScreenMap& map, const QPointF& from, const QPointF& to);
    void zoomExtents();
    /// The document goes, or a gesture is over.
    void end() { m_document = nullptr; }
    bool isOf(const Document& document) const { return m_document == &document; }

private:
    /// Where the journal stood after the last movement.
    struct Step {
        std::size_t count = 0, size = 0;
        std::uint32_t segment = 0;
        bool operator==(const Step& o) const {
            return count == o.count && size == o.size && segment == o.segment;
        }
    };
    Step now() const;
    void keep(const View& view, const wchar_t* name);

    Document* m_document = nullptr;
    bool m_inViewport = false;
    Step m_last;
};

/// True for a viewport whose view is locked against zooming and panning.
bool isViewLocked(HxDbObjectId viewport);

}  // namespace korvex
